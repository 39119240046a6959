// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QByteArray>
#include <QDir>
#include <QString>

#include <cerrno>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace ostrel {

/// The disk of a simulated computer, in a folder of the real one. It knows what was flushed, fails when told to, and
/// loses at a power cut what was not flushed, in whole or in part.
class SimulatedDisk : public FileOperations {
public:
    explicit SimulatedDisk(QString root) : root_(std::move(root)) { standIn(this); }
    ~SimulatedDisk() override { standIn(nullptr); }

    int open(const char *path, int flags, mode_t mode) override;
    ssize_t readAt(int fd, const iovec *pieces, int count, off_t position) override;
    const dirent *nextEntry(DIR *folder) override { return fails() ? nullptr : FileOperations::nextEntry(folder); }
    ssize_t write(int fd, const void *data, std::size_t size) override;
    ssize_t writeAt(int fd, const void *data, std::size_t size, off_t position) override;
    int sync(int fd) override;
    int syncData(int fd) override { return sync(fd); }
    int rename(const char *from, const char *to) override;
    int link(const char *from, const char *to) override;
    int remove(const char *path) override;
    int makeFolder(const char *path, mode_t mode) override;
    int removeFolder(const char *path) override;

    /// The next operation but so many fails with this error.
    void failAt(int operations, int error) {
        countdown_ = operations;
        error_ = error;
    }
    /// The program dies there.
    void dieAt(int operations) { failAt(operations, 0); }
    int refuses = 0;               ///< the error of all that would write, 0 while it can
    QString unreadable;            ///< the file that cannot be read, while there is one
    int unread = 0;                ///< how often it was asked for
    bool dead = false;             ///< the program has been killed: nothing that it still asks for is done
    int failures = 0;              ///< so far
    std::function<void()> flushes; ///< time passes
    std::function<void()> dies;
    std::function<void(const QString &name)> asked; ///< to write this file or folder, whether it can or not
    /// A file has its name and its content now, or neither any more. Names are those below the folder.
    std::function<void(const QString &name)> changed;

    bool has(const QString &name) const { return entries_.contains(name); }
    QByteArray content(const QString &name) const;
    qint64 bytes() const; ///< that it keeps in memory
    /// All files whose names begin so.
    QStringList files(const QString &beginning = {}) const;

    /// The power goes and comes back: of what was not flushed, `chance` (of so many possibilities) decides what is
    /// left.
    void cutPower(const std::function<int(int)> &chance);

private:
    struct File {
        QByteArray content;
        QByteArray flushed;
        qsizetype changedFrom = 0; ///< the content before this place is flushed
    };
    using Entries = std::map<QString, std::shared_ptr<File>>; // a folder has no file

    void isAsked(const QString &name) const {
        if (asked && !dead)
            asked(name);
    }
    QString nameOf(const char *path) const { return QDir::cleanPath(QFile::decodeName(path)).mid(root_.size() + 1); }
    static QString folderOf(const QString &name) { return name.section(u'/', 0, -2); }
    bool fails();
    bool refusesToWrite();
    bool changesNothing();

    QString root_;
    Entries entries_;
    Entries flushedEntries_;
    std::map<int, std::pair<QString, std::shared_ptr<File>>> open_;
    int countdown_ = -1;
    int error_ = 0;
};

} // namespace ostrel
