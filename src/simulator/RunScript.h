// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace ostrel {

/// How an instrument reports its state: by separate status blocks, or by the letters of its UV blocks.
enum class InstrumentKind { Status, Letters };

// clang-format off
enum class Action {
    KindStatus, KindLetters, Loop,
    Wait, Silence, Unplug,
    Uv, Cond, NoiseUv, NoiseCond, DriftUv, DriftCond, Peak, Gradient,
    Start, Event, LabelM, Hold, Continue, Pause, Resume, End, PenOn, PenOff, Method,
    Garbage, Half, Bad, Unknown, Raw,
};
// clang-format on

/// One statement of a script; the form of its action determines which fields are used.
struct Step {
    Action action = Action::Wait;
    double seconds = 0;
    double from = 0;
    double value = 0;
    double width = 0;
    double tail = 1;
    int count = 0;
    char letter = 0;
    QByteArray bytes;  ///< a method's text, or raw bytes
    QString statement; ///< as written, with single blanks between the words
};

/// The script of a play, from the first sample to the last.
struct RunScript {
    std::optional<InstrumentKind> kind;
    std::vector<Step> steps;
    bool loops = false;
};

/// A mistake in a script: its place, counted from 1, and the reason.
struct ScriptError {
    int line;
    int column;
    QString message;
};

/// The text of a script's file, without a byte order mark. Throws ScriptError where it is not UTF-8.
QString decodeScript(const QByteArray &utf8);

/// Throws ScriptError at the first mistake.
RunScript parseRunScript(const QString &text);

} // namespace ostrel
