// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <array>
#include <vector>

namespace ostrel {

/// What the instrument's bytes lead to, worked out beside the program: the pairs and marks of the recorder's chart and
/// of the log, the lamp of the link, and the commands that follow from both. It shares nothing with the program and is
/// told what happens from outside.
class StreamModel {
public:
    struct Mark {
        QByteArray label;
        qint64 sample; ///< that it stands on
    };
    /// The recorder's chart or the log.
    struct Side {
        qint64 samples = 0;
        qint64 marks = 0;
        qint64 texts = 0;
        std::vector<quint64>
            newSamples{}; ///< since somebody has looked: the bits of UV, and above them of conductivity
        std::vector<Mark> newMarks{};

        bool runActive = false;
        bool paused = false;
        bool endPending = false;
        bool pausePending = false;
        char label = 0; ///< that waits: 'S', 'E', '#' for a number, 'P', 'H', 'C', 'M'
        int eventNumber = 0;
    };

    void arrive(const QByteArray &bytes); ///< in the program's buffer
    void pass(qint64 now);                ///< the program has a look at its buffer, at ms
    void record();
    void stop();
    void loseLink();
    void switchLogging(bool on);
    void choosePort() { statusBlocksSeen_ = false; }
    void clearRecorder();
    void bringToFront(int tab);

    Side recorder, log;
    bool recording = false;
    bool logging = false;
    bool eventSeen = false; ///< the port has told of something since the watchdog's last look
    bool lamp = false;
    bool writesLog = false;     ///< every 20 s
    qint64 waitsForMethod = -1; ///< until then, ms; below 0 not at all
    qint64 recorderChanges = 0; ///< recordings, pairs and method texts: what makes the recorder unsaved
    int waiting() const { return count_; }
    /// What can be had of the commands and is not the same all the time.
    bool canStart = false, canStop = false, buttonsLive = false, canChoosePort = true, fileCommandsEnabled = true;
    int front = 0; ///< tab

private:
    static constexpr int size = 10000;

    unsigned char take();
    unsigned char look();
    void rebase();
    void findSync();
    void decodeBlocks();
    bool decodeBlock();
    void decode(char type);
    void fault() { synchronised_ = false; }
    void event(int value);
    void status(int value);
    void announce(char label, bool recorderToo);
    void startRun();
    void letter(char type);
    void pair();
    void addToRecorder();
    void addToLog();
    void takePair(Side &side, qint64 marked);
    static void draw(Side &side, qint64 sample);
    static void takePending(Side &side);

    std::array<unsigned char, size> ring_{};
    int put_ = 0, take_ = 0, count_ = 0, look_ = 0, lookCount_ = 0;
    bool synchronised_ = false;
    bool statusBlocksSeen_ = false;
    bool startArmed_ = false;
    qint64 now_ = 0;
    quint32 uv_ = 0, cond_ = 0;
};

} // namespace ostrel
