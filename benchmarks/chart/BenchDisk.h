// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <string>

using namespace ostrel;

/// A path on the disk of the build, gone at the end: where temporary files go, there may be no disk at all.
inline QString benchPath(const QString &name) {
    static const QTemporaryDir folder(QDir::current().filePath(QStringLiteral("bench-XXXXXX")));
    return folder.filePath(name);
}

/// What the disk below the path was made to write so far, whoever did it; 0 where the system does not tell.
inline double bytesAtDisk(const QString &path) {
    struct stat file {};
    ::stat(qPrintable(path), &file);
    QFile counters(QStringLiteral("/sys/dev/block/%1:%2/stat").arg(major(file.st_dev)).arg(minor(file.st_dev)));
    if (!counters.open(QIODevice::ReadOnly))
        return 0;
    constexpr int sectorsWritten = 6;
    return counters.readAll().simplified().split(' ').value(sectorsWritten).toDouble() * 512;
}

/// One table of a SQLite file, with a statement at work on it.
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
