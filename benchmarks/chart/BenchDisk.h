// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <string>

namespace ostrel {

/// A path on the disk of the build, removed at the end: the usual folder for temporary files may not be on a disk.
inline QString benchPath(const QString &name) {
    static const QTemporaryDir folder(QDir::current().filePath(QStringLiteral("bench-XXXXXX")));
    return folder.filePath(name);
}

/// The bytes written so far, by any program, to the disk of the path; 0 if unknown.
inline double bytesAtDisk(const QString &path) {
    struct stat file {};
    ::stat(qPrintable(path), &file);
    QFile counters(QStringLiteral("/sys/dev/block/%1:%2/stat").arg(major(file.st_dev)).arg(minor(file.st_dev)));
    if (!counters.open(QIODevice::ReadOnly))
        return 0;
    constexpr int sectorsWritten = 6;
    return counters.readAll().simplified().split(' ').value(sectorsWritten).toDouble() * 512;
}

/// A database file with one prepared statement.
class SqliteTable {
public:
    explicit SqliteTable(const QString &path) {
        ::sqlite3_open(qPrintable(path), &file_);
        run("PRAGMA synchronous = FULL");
    }
    ~SqliteTable() {
        ::sqlite3_finalize(statement_);
        ::sqlite3_close(file_);
    }
    SqliteTable(const SqliteTable &) = delete;
    SqliteTable &operator=(const SqliteTable &) = delete;

    void run(const char *sql) { ::sqlite3_exec(file_, sql, nullptr, nullptr, nullptr); }
    sqlite3_stmt *prepare(const char *sql) {
        ::sqlite3_prepare_v2(file_, sql, -1, &statement_, nullptr);
        return statement_;
    }

private:
    sqlite3 *file_ = nullptr;
    sqlite3_stmt *statement_ = nullptr;
};

} // namespace ostrel
