// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// A folder that is removed with the test, and its files. A name may be a whole path, too.
class TestFolder {
public:
    QString path() const { return folder_.path(); }
    QString at(const QString &name) const { return QDir(path()).absoluteFilePath(name); }
    /// As the operating system takes it.
    QByteArray native(const QString &name) const { return QFile::encodeName(at(name)); }

    void lay(const QString &name, const QByteArray &content = {}) const {
        QFile file(at(name));
        ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray content(const QString &name) const {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }
    /// Of all files and folders, hidden or not.
    QStringList names() const {
        return QDir(path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

private:
    QTemporaryDir folder_;
};
