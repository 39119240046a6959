// SPDX-License-Identifier: MIT
#include "simulation/Instrument.h"

#include "acquisition/StreamScript.h"

#include <algorithm>
#include <utility>

namespace ostrel {

namespace {

constexpr qint64 pairEvery = 200; // ms
constexpr qint64 mostUnsent = 20000;
constexpr char noisy[] = "\x96UVCDEFHMPR";

QByteArray block(char type, int value) { return QByteArray("\x96", 1) + type + char(value); }

} // namespace

QByteArray Instrument::send(qint64 now) {
    for (measuredUpTo_ = std::max(measuredUpTo_, now - mostUnsent); measuredUpTo_ + pairEvery <= now;
         measuredUpTo_ += pairEvery) {
        if (measuredUpTo_ < silentUntil_)
            continue;
        unsent_ += sampleBlock(inRun_ && !paused_ ? 'V' : 'U', uvOf(pairs_)) + sampleBlock('C', condOf(pairs_));
        ++pairs_;
    }
    return std::exchange(unsent_, {});
}

QString Instrument::haveNews(Chance &chance, qint64 now) {
    const QString news = QLatin1String(haveOne(chance, now));
    return chance.oneIn(6) ? news + QLatin1String(", ") + haveNews(chance, now) : news;
}

const char *Instrument::haveOne(Chance &chance, qint64 now) {
    switch (chance(10)) {
    case 0:
    case 1:
    case 2:
        return startOrEnd(chance);
    case 3:
    case 4:
        return inRun_ ? pauseOrResume() : say({}, "nothing");
    case 5:
        return chance.oneIn(3) ? say(block('E', 8), "mark") : say(block('E', 2), "number");
    case 6:
        return chance.oneIn(2) ? say(block('H', 1), "hold") : say(block('H', 2), "continue");
    case 7:
        return chance.oneIn(4) ? say(block('P', chance(2)), "pen") : say("\x96MLoad 5 ml\rWash\r\x96", "method");
    case 8:
        return disturb(chance);
    default:
        silentUntil_ = now + chance(15000);
        return "silence";
    }
}

const char *Instrument::startOrEnd(Chance &chance) {
    if (!inRun_)
        showsStateByLetters_ = chance.oneIn(3);
    inRun_ = !inRun_;
    paused_ = false;
    if (showsStateByLetters_)
        return inRun_ ? say(block('E', 4), "start event") : say(block('E', 3), "end event");
    return inRun_ ? say(block('R', 1), "start") : say(block('R', 0), "end");
}

const char *Instrument::pauseOrResume() {
    paused_ = !paused_;
    const QByteArray status = showsStateByLetters_ ? QByteArray() : block('R', paused_ ? 2 : 1);
    return say(status, paused_ ? "pause" : "resume");
}

const char *Instrument::disturb(Chance &chance) {
    QByteArray noise;
    for (int i = chance(chance.oneIn(5) ? 3000 : 60); i > 0; --i)
        noise += chance.oneIn(3) ? noisy[chance(sizeof noisy - 1)] : char(chance(256));
    return say(noise, "noise");
}

} // namespace ostrel
