// SPDX-License-Identifier: MIT
#include "simulation/Papers.h"

#include <QStringList>
#include <QtEndian>
#include <zlib.h>

#include <algorithm>

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

int marksIn(const QByteArray &payload) {
    int marks = 0;
    for (qsizetype at = 8; at + 16 <= payload.size(); at += 16 + 2 * qsizetype(numberAt<quint32>(payload, at + 12)))
        ++marks;
    return marks;
}

} // namespace

Paper readPaper(const QByteArray &file) {
    Paper paper;
    if (file.size() < fileHeader || file.mid(1, 4) != "OSTR" || checksum(file.first(44)) != numberAt<quint32>(file, 44))
        return paper;
    paper.isLog = file.mid(8, 4) == "LOG ";
    qsizetype at = fileHeader;
    for (quint32 number = 0; at + recordHeader <= file.size() && !paper.whole; ++number) {
        const QByteArray kind = file.mid(at, 4);
        const auto length = numberAt<quint64>(file, at + 8);
        if (checksum(file.mid(16, 8) + file.mid(at, 20)) != numberAt<quint32>(file, at + 20) ||
            numberAt<quint32>(file, at + 4) != number || length > quint64(file.size() - at - recordHeader))
            return paper;
        const QByteArray payload = file.mid(at + recordHeader, qsizetype(length));
        if (checksum(payload) != numberAt<quint32>(file, at + 16))
            return paper;
        if (kind == "SAMP")
            paper.samples += payload.mid(8);
        else if (kind == "MARK")
            paper.marks += marksIn(payload);
        else if (kind == "TITL")
            paper.title = payload;
        else if (kind == "NOTE")
            paper.notes = payload;
        paper.whole = kind == "END " && numberAt<quint64>(payload, 0) == quint64(paper.samples.size() / 8) &&
                      numberAt<quint64>(payload, 8) == quint64(paper.marks);
        at += recordHeader + (payload.size() + 7) / 8 * 8;
    }
    return paper;
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

void Papers::wrote(const QString &name, bool saved) {
    auto &possible = possible_[name];
    if (saved)
        possible.clear();
    else if (possible.empty())
        possible.emplace_back();
    possible.push_back(disk_.content(name));
}

QStringList Papers::changed() {
    QStringList names;
    for (auto &[name, possible] : possible_) {
        const QByteArray now = disk_.content(name);
        if (std::find(possible.begin(), possible.end(), now) == possible.end())
            names << name;
        possible = {now};
    }
    return names;
}

qint64 Papers::bytes() const {
    qint64 sum = 0;
    for (const auto &[name, possible] : possible_) {
        for (const QByteArray &content : possible)
            sum += content.capacity();
    }
    return sum;
}

} // namespace ostrel
