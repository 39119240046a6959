// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/Player.h"

#include <QtEndian>

#include <bit>
#include <string>
#include <vector>

/// A script played to its end as fast as it goes.
class Played {
public:
    explicit Played(const QString &script, Player::Settings settings = {}) {
        Player player{parseRunScript(script), settings};
        while (const std::optional<LineTick> tick = player.next())
            ticks.push_back(*tick);
    }

    QByteArray bytes() const {
        QByteArray all;
        for (const LineTick &tick : ticks)
            all += tick.bytes;
        return all;
    }

    /// The blocks in order, a pair as its UV letter: "R1 V V E2 V M R0 U". "F" blocks are left out.
    std::string blocks() const { return blocksWithout("CF"); }
    /// The same without the pairs.
    std::string news() const { return blocksWithout("CFUV"); }

    std::vector<float> values(const QByteArray &letters) const {
        std::vector<float> found;
        forEachBlock([&](char letter, const QByteArray &body) {
            if (letters.contains(letter))
                found.push_back(std::bit_cast<float>(qFromBigEndian<quint32>(body.data())));
        });
        return found;
    }

    std::vector<LineTick> ticks;

private:
    std::string blocksWithout(const QByteArray &letters) const {
        std::string text;
        forEachBlock([&](char letter, const QByteArray &body) {
            if (letters.contains(letter))
                return;
            text += text.empty() ? "" : " ";
            text += letter;
            if (body.size() == 1)
                text += std::to_string(int(body[0]));
        });
        return text;
    }

    template <typename Visit>
    void forEachBlock(Visit visit) const {
        const QByteArray all = bytes();
        for (qsizetype at = 0; at + 2 < all.size();) {
            const char letter = all[at + 1];
            const bool isParameter = QByteArray{"EHPR"}.contains(letter);
            const qsizetype end = letter == 'M' ? all.indexOf('\x96', at + 2) + 1 : at + (isParameter ? 3 : 6);
            visit(letter, all.mid(at + 2, end - at - 2));
            at = end;
        }
    }
};
