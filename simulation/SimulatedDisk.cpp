// SPDX-License-Identifier: MIT
#include "simulation/SimulatedDisk.h"

#include <QFile>
#include <fcntl.h>

#include <algorithm>
#include <cstring>

namespace ostrel {

bool SimulatedDisk::fails() {
    errno = EIO;
    if (dead)
        return true;
    if (countdown_ < 0 || countdown_-- > 0) {
        errno = 0;
        return false;
    }
    ++failures;
    if (error_ == 0) {
        dead = true;
        dies();
    }
    errno = error_ != 0 ? error_ : EIO;
    return true;
}

bool SimulatedDisk::refusesToWrite() {
    if (fails())
        return true;
    errno = refuses;
    failures += refuses != 0;
    return refuses != 0;
}

/// Names can be taken away on a full disk, but not on one that is read only.
bool SimulatedDisk::changesNothing() { return refuses == EROFS ? refusesToWrite() : fails(); }

QByteArray SimulatedDisk::content(const QString &name) const {
    const auto entry = entries_.find(name);
    return entry != entries_.end() && entry->second ? entry->second->content : QByteArray();
}

qint64 SimulatedDisk::bytes() const {
    qint64 sum = 0;
    for (const auto &[name, file] : entries_)
        sum += file ? file->content.capacity() + file->flushed.capacity() : 0;
    return sum;
}

QStringList SimulatedDisk::files(const QString &beginning) const {
    QStringList names;
    for (auto entry = entries_.lower_bound(beginning); entry != entries_.end() && entry->first.startsWith(beginning);
         ++entry) {
        if (entry->second)
            names << entry->first;
    }
    return names;
}

int SimulatedDisk::open(const char *path, int flags, mode_t mode) {
    const bool makes = (flags & O_CREAT) != 0 && !entries_.contains(nameOf(path));
    if (makes)
        isAsked(nameOf(path));
    if (makes ? refusesToWrite() : fails())
        return -1;
    const int fd = FileOperations::open(path, flags, mode);
    if (fd < 0)
        return fd;
    if (makes)
        entries_.try_emplace(nameOf(path), std::make_shared<File>());
    const auto entry = entries_.find(nameOf(path));
    open_[fd] = {nameOf(path), entry != entries_.end() ? entry->second : nullptr};
    return fd;
}

ssize_t SimulatedDisk::readAt(int fd, const iovec *pieces, int count, off_t position) {
    if (fails())
        return -1;
    if (!unreadable.isEmpty() && open_[fd].first == unreadable) {
        ++unread;
        errno = EIO;
        return -1;
    }
    return FileOperations::readAt(fd, pieces, count, position);
}

ssize_t SimulatedDisk::write(int fd, const void *data, std::size_t size) {
    return writeAt(fd, data, size, open_[fd].second ? open_[fd].second->content.size() : 0);
}

ssize_t SimulatedDisk::writeAt(int fd, const void *data, std::size_t size, off_t position) {
    isAsked(open_[fd].first);
    if (refusesToWrite())
        return -1;
    const ssize_t written = FileOperations::writeAt(fd, data, size, position);
    if (const auto &file = open_[fd].second; file && written > 0) {
        const qsizetype end = position + written;
        if (file->content.size() < end)
            file->content.append(end - file->content.size(), '\0');
        std::memcpy(file->content.data() + position, data, static_cast<std::size_t>(written));
        file->changedFrom = std::min<qsizetype>(file->changedFrom, position);
    }
    return written;
}

int SimulatedDisk::sync(int fd) {
    const auto &[name, file] = open_[fd];
    if (fails()) {
        if (file && !dead) { // it will never be tried again
            file->flushed.truncate(file->changedFrom);
            file->flushed.append(file->content.size() - file->changedFrom, '\0');
            file->changedFrom = file->content.size();
        }
        return -1;
    }
    if (flushes)
        flushes();
    if (file) {
        file->flushed.truncate(file->changedFrom);
        file->flushed.append(file->content.constData() + file->changedFrom, file->content.size() - file->changedFrom);
        file->changedFrom = file->content.size();
    } else {
        const auto isHere = [folder = name](const auto &entry) { return folderOf(entry.first) == folder; };
        std::erase_if(flushedEntries_, isHere);
        std::copy_if(entries_.begin(), entries_.end(), std::inserter(flushedEntries_, flushedEntries_.end()), isHere);
    }
    return 0;
}

int SimulatedDisk::rename(const char *from, const char *to) {
    if (changesNothing() || FileOperations::rename(from, to) != 0)
        return -1;
    const QString before = nameOf(from);
    Entries moved;
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        const bool within = entry->first == before || entry->first.startsWith(before + u'/');
        if (within)
            moved[nameOf(to) + entry->first.mid(before.size())] = entry->second;
        entry = within ? entries_.erase(entry) : std::next(entry);
    }
    for (auto &[name, file] : moved) {
        entries_[name] = file;
        if (changed)
            changed(name);
    }
    return 0;
}

int SimulatedDisk::link(const char *from, const char *to) {
    if (refusesToWrite() || FileOperations::link(from, to) != 0)
        return -1;
    entries_[nameOf(to)] = entries_[nameOf(from)];
    return 0;
}

int SimulatedDisk::remove(const char *path) {
    if (changesNothing() || FileOperations::remove(path) != 0)
        return -1;
    entries_.erase(nameOf(path));
    if (changed)
        changed(nameOf(path));
    return 0;
}

int SimulatedDisk::makeFolder(const char *path, mode_t mode) {
    isAsked(nameOf(path) + u'/');
    if (refusesToWrite() || FileOperations::makeFolder(path, mode) != 0)
        return -1;
    entries_.try_emplace(nameOf(path));
    return 0;
}

int SimulatedDisk::removeFolder(const char *path) {
    if (changesNothing() || FileOperations::removeFolder(path) != 0)
        return -1;
    entries_.erase(nameOf(path));
    return 0;
}

void SimulatedDisk::cutPower(const std::function<int(int)> &chance) {
    // Each folder has the names that were flushed, or those of the end.
    std::map<QString, bool> flushedAlone;
    const auto isLeft = [&](const QString &name, bool flushed) {
        const auto [folder, isNew] = flushedAlone.try_emplace(folderOf(name));
        if (isNew)
            folder->second = chance(2) == 0;
        return folder->second == flushed;
    };
    Entries left;
    for (const auto &[entries, flushed] : {std::pair(&flushedEntries_, true), {&entries_, false}}) {
        for (const auto &[name, file] : *entries) {
            if (isLeft(name, flushed))
                left[name] = file;
        }
    }
    std::erase_if(left, [&](const auto &entry) { // what lies in a folder that was lost
        const QString folder = folderOf(entry.first);
        return !folder.isEmpty() && !left.contains(folder);
    });
    for (const QFileInfo &entry :
         QDir(root_).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        entry.isDir() && !entry.isSymLink() ? QDir(entry.filePath()).removeRecursively()
                                            : QFile::remove(entry.filePath());
    for (auto &[name, file] : left) {
        const QString path = root_ + u'/' + name;
        if (!file) {
            QDir().mkdir(path);
            continue;
        }
        auto kept = std::make_shared<File>(File{file->flushed, {}, 0});
        // Of the unflushed bytes nothing, a beginning or all has reached the disk.
        const qsizetype unflushed = file->content.size() - file->changedFrom;
        const qsizetype reached = unflushed * chance(3) / 2;
        if (kept->content.size() < file->changedFrom + reached)
            kept->content.resize(file->changedFrom + reached);
        std::copy_n(file->content.begin() + file->changedFrom, reached, kept->content.begin() + file->changedFrom);
        kept->flushed = kept->content;
        kept->changedFrom = kept->content.size();
        QFile written(path);
        if (written.open(QIODevice::WriteOnly))
            written.write(kept->content);
        file = kept;
    }
    flushedEntries_ = entries_ = left;
    open_.clear();
    countdown_ = -1;
}

} // namespace ostrel
