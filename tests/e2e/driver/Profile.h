// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

/// A folder of its own for a recorder that a test runs: its settings, its data, and whatever the test lays beside them.
/// COM 1 is the device `file("instrument1")` and so on; there is no port where no device is.
class Profile {
public:
    Profile();

    QString file(const QString &name) const { return folder_.filePath(name); }
    void write(const QString &name, const QByteArray &content) const;
    /// From now on this process keeps its things here, and needs no display.
    void enter() const;

private:
    QTemporaryDir folder_;
};
