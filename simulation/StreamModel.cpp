// SPDX-License-Identifier: MIT
#include "simulation/StreamModel.h"

#include <QtEndian>

#include <algorithm>
#include <utility>

namespace ostrel {

namespace {

constexpr unsigned char sync = 0x96;
constexpr qint64 methodWait = 15000; // ms behind the end of a run

} // namespace

void StreamModel::arrive(const QByteArray &bytes) {
    for (const char byte : bytes) {
        ring_[std::size_t(put_)] = static_cast<unsigned char>(byte);
        put_ = (put_ + 1) % size;
        ++count_;
    }
}

unsigned char StreamModel::take() {
    --count_;
    return ring_[std::size_t(std::exchange(take_, (take_ + 1) % size))];
}

unsigned char StreamModel::look() {
    --lookCount_;
    return ring_[std::size_t(std::exchange(look_, (look_ + 1) % size))];
}

void StreamModel::rebase() {
    look_ = take_;
    lookCount_ = count_;
}

void StreamModel::pass(qint64 now) {
    now_ = now;
    if (count_ <= 2)
        return;
    rebase();
    if (!synchronised_)
        return findSync();
    decodeBlocks();
    while (!synchronised_ && lookCount_ >= 7) {
        findSync();
        if (synchronised_)
            decodeBlocks();
        rebase();
    }
}

void StreamModel::decodeBlocks() {
    while (decodeBlock()) {
    }
    rebase();
}

/// Looks for a UV block that another block follows.
void StreamModel::findSync() {
    while (lookCount_ >= 7) {
        int passed = 1;
        if (look() == sync) {
            const char type = static_cast<char>(look());
            passed = 2;
            if (type == 'U' || type == 'V') {
                passed = 7;
                for (int i = 0; i < 4; ++i)
                    look();
                if (look() == sync) {
                    recorder.runActive = false;
                    if (logging)
                        log.eventNumber = recorder.eventNumber;
                    writesLog = logging;
                    lamp = canStart = buttonsLive = synchronised_ = true;
                    return;
                }
            }
        }
        for (; passed > 0; --passed)
            take();
    }
}

/// False: there is no whole block.
bool StreamModel::decodeBlock() {
    rebase();
    if (lookCount_ < 3)
        return false;
    if (look() != sync) {
        fault();
        return false;
    }
    const char type = static_cast<char>(look());
    if (!QByteArray("CDEFHMPRUV").contains(type)) {
        fault();
        return false;
    }
    bool whole = lookCount_ >= (QByteArray("CDUV").contains(type) ? 4 : 1);
    if (type == 'M') {
        whole = false;
        while (lookCount_ > 0 && !whole)
            whole = look() == sync;
    }
    if (whole) {
        take();
        take();
        decode(type);
    }
    return whole;
}

void StreamModel::decode(char type) {
    const auto word = [this] {
        quint32 bits = 0;
        for (int i = 0; i < 4; ++i)
            bits = bits << 8 | take();
        return bits;
    };
    switch (type) {
    case 'U':
    case 'V': {
        const quint32 uv = word();
        letter(type);
        uv_ = uv;
        break;
    }
    case 'C':
    case 'D':
        cond_ = word();
        pair();
        break;
    case 'E':
        event(take());
        break;
    case 'F':
        word();
        statusBlocksSeen_ = true;
        break;
    case 'H': {
        const int value = take();
        value == 1 ? announce('H', recording) : value == 2 ? announce('C', recording) : fault();
        break;
    }
    case 'P': {
        const int value = take();
        statusBlocksSeen_ = true;
        value == 0 ? stop() : value == 1 ? record() : fault();
        break;
    }
    case 'R':
        statusBlocksSeen_ = true;
        status(take());
        break;
    default:
        while (take() != sync && count_ != 0) {
        }
        if (recording || waitsForMethod >= 0 || recorder.paused) {
            ++recorder.texts;
            ++recorderChanges;
            waitsForMethod = -1;
        }
        log.texts += logging;
    }
}

void StreamModel::announce(char label, bool recorderToo) {
    for (Side *side : {&recorder, &log}) {
        if (side == &recorder && !recorderToo)
            continue;
        side->endPending |= label == '#' && side->label == 'E'; // a number does not take an end's place
        side->label = label;
    }
}

void StreamModel::startRun() {
    recording = true;
    recorder.eventNumber = 0;
    recorder.label = 'S';
}

void StreamModel::event(int value) {
    switch (value) {
    case 2:
        return announce('#', recording || recorder.paused);
    case 3:
        recorder.runActive = false;
        recorder.endPending |= recording;
        recorder.pausePending = recorder.paused = false;
        log.endPending = true;
        log.pausePending = false;
        return;
    case 4:
        if (startArmed_) {
            startRun();
            log.eventNumber = 0;
            log.label = 'S';
        }
        startArmed_ = !startArmed_;
        return;
    case 8:
        return announce('M', recording);
    default:
        fault();
    }
}

void StreamModel::status(int value) {
    switch (value) {
    case 0:
        recorder.runActive = false;
        return announce('E', recording || recorder.paused);
    case 1:
        if (recorder.paused)
            recorder.paused = false;
        else if (!recorder.runActive)
            startRun();
        else if (recording)
            recorder.label = 'C';
        if (log.paused) {
            log.paused = false;
        } else {
            log.label = log.runActive ? 'C' : 'S';
            log.eventNumber = log.runActive ? log.eventNumber : 0;
        }
        return;
    case 2:
        return announce('P', recording);
    case 3:
        return announce('H', recording);
    default:
        fault();
    }
}

void StreamModel::letter(char type) {
    if (std::exchange(startArmed_, false) && type == 'V') {
        startRun();
        log.eventNumber = 0;
        log.label = 'S';
    }
    if (statusBlocksSeen_)
        return;
    for (Side *side : {&recorder, &log}) {
        if (type == 'V')
            side->paused = false;
        else if (side->runActive && !side->paused && (side == &log || recording))
            side->pausePending = true;
    }
}

void StreamModel::pair() {
    addToRecorder();
    addToLog();
}

void StreamModel::draw(Side &side, qint64 sample) {
    if (side.label == 0)
        return;
    side.newMarks.push_back(
        {side.label == '#' ? QByteArray::number(side.eventNumber) : QByteArray(1, side.label), sample});
    ++side.marks;
    side.label = 0;
}

void StreamModel::takePending(Side &side) {
    if (std::exchange(side.endPending, false)) {
        side.pausePending = false;
        side.label = 'E';
    }
    if (std::exchange(side.pausePending, false))
        side.label = 'P';
}

void StreamModel::addToRecorder() {
    Side &side = recorder;
    if (!recording || side.paused) {
        if (side.label == 'S')
            side.runActive = true;
        if (side.label == 'E')
            side.runActive = false;
        if (side.paused && (side.label == 'E' || side.label == '#')) {
            side.eventNumber += side.label == '#';
            side.paused = side.label == '#';
            draw(side, std::max<qint64>(side.samples - 1, 0));
        }
        return;
    }
    ++recorderChanges;
    if (side.label == 'S') {
        record();
    } else if (side.label == 'E') {
        waitsForMethod = now_ + methodWait;
        stop();
    }
    takePair(side, side.samples);
}

void StreamModel::addToLog() {
    Side &side = log;
    if (!logging) {
        if (side.label == 'S' || side.label == 'E')
            side.runActive = side.label == 'S';
        return;
    }
    if (side.paused)
        return;
    takePair(side, std::max<qint64>(side.samples - 1, 0)); // a log's mark stands on the sample before
}

/// The pair stands on the chart, and the waiting label on the sample of this number.
void StreamModel::takePair(Side &side, qint64 marked) {
    ++side.samples;
    side.newSamples.push_back(quint64(cond_) << 32 | uv_);
    switch (side.label) {
    case 'S':
        side.runActive = true;
        side.paused = false;
        break;
    case 'E':
        side.pausePending = side.endPending = side.runActive = side.paused = false;
        side.eventNumber = 0;
        break;
    case '#':
        ++side.eventNumber;
        break;
    case 'P':
        side.pausePending = false;
        side.paused = side.runActive;
        side.label = side.runActive ? 'P' : 0;
        break;
    default:
        break;
    }
    draw(side, marked);
    takePending(side);
}

void StreamModel::record() {
    ++recorderChanges;
    recording = true;
    recorder.eventNumber = 0;
    recorder.pausePending = false;
    canStop = true;
    canStart = canChoosePort = false;
    if (front == 0)
        fileCommandsEnabled = false;
}

void StreamModel::stop() {
    recording = false;
    canStop = false;
    canStart = canChoosePort = true;
    if (front == 0)
        fileCommandsEnabled = true;
}

void StreamModel::loseLink() {
    if (recording)
        stop();
    lamp = canStart = canStop = buttonsLive = writesLog = synchronised_ = false;
    recorder.label = 0;
}

void StreamModel::switchLogging(bool on) {
    logging = on;
    writesLog = on && writesLog;
    if (!on || !(eventSeen || synchronised_))
        return;
    log.eventNumber = recorder.eventNumber;
    log.label = 0;
    log.endPending = log.pausePending = false;
    log.paused = recorder.paused;
    writesLog = true;
}

void StreamModel::clearRecorder() {
    recorder.samples = recorder.marks = recorder.texts = 0;
    recorder.newSamples.clear();
    recorder.newMarks.clear();
}

void StreamModel::bringToFront(int tab) {
    front = tab;
    fileCommandsEnabled = tab != 0 || !recording;
}

} // namespace ostrel
