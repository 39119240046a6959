// SPDX-License-Identifier: MIT
#include "archive/Manifest.h"

#include "archive/ArchiveFiles.h"
#include "base/EarlyEnd.h"
#include "chart/files/ChartFile.h"
#include "chart/files/RunningLogFiles.h"
#include "files/DurableFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace ostrel {

namespace {

constexpr char mark[] = "# Ostrel manifest ";
constexpr qsizetype markSize = sizeof mark - 1;
constexpr int version = 1;
constexpr char about[] = ": SHA-256 of chart files, for \"ostrel-file check --manifest\" and \"sha256sum -c\"\n";
constexpr char between[] = "  ";
constexpr qsizetype sumSize = 64; // digits

struct Escape {
    char letter;
    char escaped;
};
constexpr Escape escapes[] = {{'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}};

QByteArray escaped(const QByteArray &name) {
    QByteArray text;
    for (const char c : name) {
        char shown = 0;
        for (const Escape &escape : escapes)
            shown = c == escape.letter ? escape.escaped : shown;
        if (shown != 0)
            (text += '\\') += shown;
        else
            text += c;
    }
    return text;
}

QByteArray original(const QByteArray &text) {
    QByteArray name;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '\\' && i + 1 < text.size()) {
            ++i;
            for (const Escape &escape : escapes)
                c = text[i] == escape.escaped ? escape.letter : c;
        }
        name += c;
    }
    return name;
}

QByteArray lineOf(const QByteArray &name, const QByteArray &sum) {
    const QByteArray text = escaped(name);
    return (text == name ? "" : "\\") + sum + between + text + '\n';
}

QByteArray lastLine(std::size_t count, const QByteArray &above) {
    return "# " + QByteArray::number(static_cast<qulonglong>(count)) + (count == 1 ? " file" : " files") +
           ". SHA-256 of the lines above: " + QCryptographicHash::hash(above, QCryptographicHash::Sha256).toHex() +
           '\n';
}

/// Why it is refused.
QString inWords(Manifest::Fault fault) {
    switch (fault) {
    case Manifest::Fault::None:
        return {};
    case Manifest::Fault::Foreign:
        return "is something else than a manifest";
    case Manifest::Fault::Newer:
        return "is a manifest of a newer version than this program knows";
    case Manifest::Fault::Damaged:
        return "is a manifest that is cut off or was changed";
    }
    return {};
}

} // namespace

QByteArray Manifest::bytes() const {
    QByteArray text = mark + QByteArray::number(version) + about;
    for (const auto &[name, sum] : sums)
        text += lineOf(name, sum);
    return text + lastLine(sums.size(), text);
}

Manifest::Fault Manifest::read(const QByteArray &bytes, Manifest &manifest) {
    if (!bytes.startsWith(mark))
        return Fault::Foreign;
    const qsizetype end = bytes.indexOf(':', markSize);
    const int written = bytes.mid(markSize, end - markSize).toInt();
    if (written > version)
        return Fault::Newer;
    Manifest found;
    for (const QByteArray &line : bytes.split('\n')) {
        const bool isEscaped = line.startsWith('\\');
        const qsizetype name = (isEscaped ? 1 : 0) + sumSize + static_cast<qsizetype>(sizeof between - 1);
        if (line.startsWith('#') || line.size() <= name)
            continue;
        found.sums[isEscaped ? original(line.mid(name)) : line.mid(name)] = line.mid(isEscaped ? 1 : 0, sumSize);
    }
    // That the bytes come out again proves all of them: head, names, order, count and checksum.
    if (found.bytes() != bytes)
        return Fault::Damaged;
    manifest = std::move(found);
    return Fault::None;
}

ManifestFile::ManifestFile(const QString &path)
    : path_(path), place_(ostrel::placeOf(path)), folder_(QFileInfo(place_).path()) {
    const QFileInfo file(path);
    if (path.isEmpty())
        throw EarlyEnd{Misused, "--manifest needs the name of a file"};
    if (isNamedAsDocument(path))
        throw EarlyEnd{Misused, path + ": is the name of a chart file, not of a manifest"};
    there_ = file.exists();
    if (there_)
        read();
    else
        expectRoom();
}

void ManifestFile::read() {
    const auto refuse = [this](const QString &why) {
        throw EarlyEnd{Failed, path_ + ": " + why + "; nothing was compared"};
    };
    QFile file(path_);
    if (!QFileInfo(path_).isFile())
        refuse("is no plain file");
    if (!file.open(QIODevice::ReadOnly))
        refuse("cannot be read: " + file.errorString());
    if (file.peek(markSize) != QByteArray(mark)) // it may be very large
        refuse(bearsChartMark(path_) ? "is a chart file, not a manifest" : inWords(Manifest::Fault::Foreign));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError)
        refuse("cannot be read: " + file.errorString());
    if (const Manifest::Fault fault = Manifest::read(bytes, manifest_); fault != Manifest::Fault::None)
        refuse(inWords(fault));
}

/// Better now than after hours of reading.
void ManifestFile::expectRoom() const {
    const QFileInfo folder(folder_);
    if (!folder.isDir() || !folder.isWritable())
        throw EarlyEnd{Failed, path_ + ": cannot be written there"};
}

QByteArray ManifestFile::nameOf(const QString &place) const {
    return QFile::encodeName(QDir(folder_).relativeFilePath(place));
}

QString ManifestFile::placeOf(const QByteArray &name) const {
    return QDir::cleanPath(folder_ + u'/' + QFile::decodeName(name));
}

QString ManifestFile::write(const Manifest &manifest) const {
    if (QFileInfo::exists(path_))
        return path_ + ": was not written: another program has made a file of that name";
    const std::error_code error = replaceFile(path_, manifest.bytes());
    return error ? path_ + ": cannot be written: " + QString::fromStdString(error.message()) : QString();
}

} // namespace ostrel
