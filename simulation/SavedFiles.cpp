// SPDX-License-Identifier: MIT
#include "simulation/SavedFiles.h"

#include <QStringList>
#include <QtEndian>
#include <zlib.h>

#include <algorithm>
#include <functional>

namespace ostrel {

namespace {

constexpr qsizetype fileHeader = 48;
constexpr qsizetype recordHeader = 24;

template <typename Number>
Number numberAt(const QByteArray &bytes, qsizetype at) {
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

quint32 checksum(const QByteArray &bytes) {
    return static_cast<quint32>(
        ::crc32(0, reinterpret_cast<const Bytef *>(bytes.constData()), static_cast<uInt>(bytes.size())));
}

/// How many items there are: each has so many bytes, then a length, then a text of that length.
int itemsIn(const QByteArray &payload, qsizetype bytes) {
    int items = 0;
    for (qsizetype at = 8; at + bytes + 4 <= payload.size(); ++items)
        at += bytes + 4 + 2 * qsizetype(numberAt<quint32>(payload, at + bytes));
    return items;
}

int marksIn(const QByteArray &payload) { return itemsIn(payload, 12); }
int textsIn(const QByteArray &payload) { return itemsIn(payload, 4); }

/// Hands over each record until one is not whole or `take` answers false.
void eachRecord(const QByteArray &file, const std::function<bool(const QByteArray &kind, const QByteArray &)> &take) {
    if (file.size() < fileHeader || file.mid(1, 4) != "OSTR" || checksum(file.first(44)) != numberAt<quint32>(file, 44))
        return;
    qsizetype at = fileHeader;
    for (quint32 number = 0; at + recordHeader <= file.size(); ++number) {
        const auto length = numberAt<quint64>(file, at + 8);
        if (checksum(file.mid(16, 8) + file.mid(at, 20)) != numberAt<quint32>(file, at + 20) ||
            numberAt<quint32>(file, at + 4) != number || length > quint64(file.size() - at - recordHeader))
            return;
        const QByteArray payload = file.mid(at + recordHeader, qsizetype(length));
        if (checksum(payload) != numberAt<quint32>(file, at + 16) || !take(file.mid(at, 4), payload))
            return;
        at += recordHeader + (payload.size() + 7) / 8 * 8;
    }
}

} // namespace

SavedFile readSavedFile(const QByteArray &file) {
    SavedFile saved;
    saved.isLog = file.mid(8, 4) == "LOG ";
    eachRecord(file, [&](const QByteArray &kind, const QByteArray &payload) {
        if (kind == "SAMP")
            saved.samples += payload.mid(8);
        else if (kind == "MARK")
            saved.marks += marksIn(payload);
        else if (kind == "METH")
            saved.texts += textsIn(payload);
        else if (kind == "TITL")
            saved.title = payload;
        else if (kind == "NOTE")
            saved.notes = payload;
        saved.whole = kind == "END " && numberAt<quint64>(payload, 0) == quint64(saved.samples.size() / 8) &&
                      numberAt<quint64>(payload, 8) == quint64(saved.marks) &&
                      numberAt<quint64>(payload, 16) == quint64(saved.texts);
        return !saved.whole;
    });
    return saved;
}

int entriesIn(const QByteArray &log) {
    int entries = 0;
    eachRecord(log, [&](const QByteArray &kind, const QByteArray &payload) {
        entries += kind == "MARK" ? marksIn(payload) : kind == "METH" ? textsIn(payload) : 0;
        return true;
    });
    return entries;
}

void findPairs(const QByteArray &bytes, std::vector<bool> &found) {
    for (qsizetype at = fileHeader; at + recordHeader <= bytes.size();) {
        const auto length = numberAt<quint64>(bytes, at + 8);
        if (std::memcmp(bytes.constData() + at, "SAMP", 4) != 0 || length > quint64(bytes.size() - at - recordHeader)) {
            at += 8;
            continue;
        }
        const qsizetype end = at + recordHeader + qsizetype(length);
        for (qsizetype sample = at + recordHeader + 8; sample + 8 <= end; sample += 8) {
            const auto uv = numberAt<float>(bytes, sample);
            if (uv >= 0 && uv < float(found.size()))
                found[static_cast<std::size_t>(uv)] = true;
        }
        at += recordHeader + (qsizetype(length) + 7) / 8 * 8;
    }
}

void SavedFiles::wrote(const QString &name, bool saved) {
    auto &possible = possible_[name];
    if (saved)
        possible.clear();
    else if (possible.empty())
        possible.emplace_back();
    possible.push_back(disk_.content(name));
}

QStringList SavedFiles::changed() {
    QStringList names;
    for (auto &[name, possible] : possible_) {
        const QByteArray now = disk_.content(name);
        if (std::find(possible.begin(), possible.end(), now) == possible.end())
            names << name;
        possible = {now};
    }
    return names;
}

qint64 SavedFiles::bytes() const {
    qint64 sum = 0;
    for (const auto &[name, possible] : possible_) {
        for (const QByteArray &content : possible)
            sum += content.capacity();
    }
    return sum;
}

} // namespace ostrel
