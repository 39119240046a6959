// SPDX-License-Identifier: MIT
#pragma once

#include "archive/Manifest.h"
#include "fuzz/Scenario.h"

#include <QByteArrayList>

/// Reads arbitrary bytes as a manifest, and as the names of files, with a zero between, that are written into one. What
/// was written comes back; cut or changed anywhere it is refused. The first two bytes tell where. Throws
/// std::logic_error otherwise.
class ManifestScenario {
public:
    explicit ManifestScenario(std::span<const std::uint8_t> bytes)
        : bytes_(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size())) {}

    void play() const {
        Manifest found;
        if (Manifest::read(bytes_, found) == Manifest::Fault::None)
            require(found.bytes() == bytes_);
        if (bytes_.size() < 2)
            return;
        Manifest written;
        for (const QByteArray &name : bytes_.mid(2).split('\0')) {
            if (!name.isEmpty())
                written.sums[name] = QByteArray(64, 'a');
        }
        const QByteArray text = written.bytes();
        require(Manifest::read(text, found) == Manifest::Fault::None && found.sums == written.sums);
        const qsizetype place = (uchar(bytes_[0]) + 256 * uchar(bytes_[1])) % text.size();
        QByteArray changed = text;
        changed[place] = static_cast<char>(changed[place] ^ 0x04);
        require(Manifest::read(text.left(place), found) != Manifest::Fault::None);
        require(Manifest::read(changed, found) != Manifest::Fault::None);
    }

private:
    QByteArray bytes_;
};
