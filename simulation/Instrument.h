// SPDX-License-Identifier: MIT
#pragma once

#include "simulation/Chance.h"

#include <QByteArray>

namespace ostrel {

/// Pairs are known by their numbers: a float tells so many apart.
inline constexpr qint64 mostPairs = 1 << 24;
inline float uvOf(qint64 pair) { return static_cast<float>(pair % mostPairs); }
inline float condOf(qint64 pair) { return static_cast<float>(pair % 499); }

/// The instrument at the other end of the line: it measures day and night, and now and then has news.
class Instrument {
public:
    /// What it has sent until now, in ms, but no more than the last 20 s.
    QByteArray send(qint64 now);
    /// Something happens to it, or several things at once; answers what, in words.
    QString haveNews(Chance &chance, qint64 now);
    qint64 &pairs() { return pairs_; } ///< so far, those of other instruments included

private:
    const char *haveOne(Chance &chance, qint64 now);
    const char *startOrEnd(Chance &chance);
    const char *pauseOrResume();
    const char *disturb(Chance &chance);
    const char *say(const QByteArray &bytes, const char *word) {
        unsent_ += bytes;
        return word;
    }

    bool inRun_ = false;
    bool paused_ = false;
    bool showsStateByLetters_ = false; ///< of its UV blocks
    qint64 pairs_ = 0;
    qint64 measuredUpTo_ = 0;
    qint64 silentUntil_ = 0;
    QByteArray unsent_;
};

} // namespace ostrel
