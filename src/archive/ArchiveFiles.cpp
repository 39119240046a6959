// SPDX-License-Identifier: MIT
#include "archive/ArchiveFiles.h"

#include "chart/files/ChartFile.h"
#include "chart/files/RunningLogFiles.h"
#include "files/TemporaryFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace ostrel {

namespace {

bool isPieceOfLog(const QString &path, const QString &name) {
    const RecordReader reader(path);
    return reader.head() ? reader.head()->kind == runningLogKind : logFileNumber(name) > 0;
}

class Search {
public:
    explicit Search(ArchiveFiles &found) : found_(found) {}

    void lookThrough(const ArchiveFile &folder);

private:
    void lookAt(const char *name);
    bool isWanted(const QString &path, const QString &name);
    void complain(const QString &path, const QString &why) { found_.unread << path + ": cannot be read" + why; }
    void complain(const QString &path, std::error_code error) {
        complain(path, ": " + QString::fromStdString(error.message()));
    }

    ArchiveFiles &found_;
    std::vector<ArchiveFile> waiting_; ///< folders
    ArchiveFile here_;
};

void Search::lookThrough(const ArchiveFile &folder) {
    waiting_ = {folder};
    while (!waiting_.empty()) {
        here_ = waiting_.back();
        waiting_.pop_back();
        const QByteArray path = QFile::encodeName(here_.path + u'/');
        const auto take = [this](const char *name) {
            lookAt(name);
            return true;
        };
        if (const std::error_code error = eachName(FileOperations::system(), path.constData(), take))
            complain(here_.path, error);
    }
}

void Search::lookAt(const char *name) {
    const QString decoded = QFile::decodeName(name);
    const ArchiveFile entry{here_.path + u'/' + decoded, here_.place + u'/' + decoded};
    if (QFile::encodeName(decoded) != name)
        return complain(entry.path, ", since its name is not UTF-8");
    const QByteArray path = QFile::encodeName(entry.path);
    struct stat self {};
    struct stat target {};
    if (::lstat(path.constData(), &self) != 0) {
        if (errno != ENOENT) // it may have been removed just now
            complain(entry.path, {errno, std::generic_category()});
    } else if (S_ISDIR(self.st_mode)) {
        waiting_.push_back(entry);
    } else if (const bool isThere = ::stat(path.constData(), &target) == 0; isThere && S_ISDIR(target.st_mode)) {
        return; // a link
    } else if (isWanted(entry.path, decoded)) {
        found_.files.push_back(entry);
    }
}

bool Search::isWanted(const QString &path, const QString &name) {
    if (TemporaryFiles::isName(QFile::encodeName(name)))
        return false;
    if (isNamedAsDocument(name))
        return true;
    if (bearsChartMark(path))
        return !isPieceOfLog(path, name);
    if (const QFileInfo file(path); file.isFile() && !file.isReadable())
        complain(path, ", and may be a chart file");
    return false;
}

QString withoutSeparator(QString path) {
    while (path.endsWith(u'/'))
        path.chop(1);
    return path;
}

} // namespace

void ArchiveFiles::sort() {
    std::sort(files.begin(), files.end(), [](const auto &a, const auto &b) { return a.path < b.path; });
    QSet<QString> places;
    std::erase_if(files, [&](const ArchiveFile &file) {
        const bool known = places.contains(file.place);
        places.insert(file.place);
        return known;
    });
}

QString placeOf(const QString &path) {
    const QFileInfo file(path);
    const QFileInfo folder(file.path());
    const QString resolved = folder.canonicalFilePath();
    return withoutSeparator(resolved.isEmpty() ? folder.absoluteFilePath() : resolved) + u'/' + file.fileName();
}

ArchiveFiles findArchiveFiles(const QStringList &operands) {
    ArchiveFiles found;
    for (const QString &operand : operands) {
        const QString path = withoutSeparator(operand);
        if (const QFileInfo named(operand); named.isDir())
            found.folders.push_back({path, withoutSeparator(named.canonicalFilePath())});
        else
            found.files.push_back({path, placeOf(path)});
    }
    for (const ArchiveFile &folder : found.folders)
        Search(found).lookThrough(folder);
    found.sort();
    found.unread.sort();
    return found;
}

} // namespace ostrel
