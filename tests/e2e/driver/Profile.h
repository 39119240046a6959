// SPDX-License-Identifier: MIT
#pragma once

#include <QProcessEnvironment>
#include <QTemporaryDir>

/// A folder of its own for a recorder that a test runs: its settings, its data, and whatever the test lays beside them.
/// COM 1 and COM 2 are the devices `file("instrument1")` and `file("instrument2")`; there is no other port.
class Profile {
public:
    Profile();

    QString file(const QString &name) const { return folder_.filePath(name); }
    /// All that is in it belongs to this user from now on.
    void giveTo(unsigned user) const;
    void write(const QString &name, const QByteArray &content) const;
    /// For a recorder in this profile, without a display, with one of our plugins loaded into it.
    QProcessEnvironment environment(const QString &plugin) const;

private:
    QTemporaryDir folder_;
};
