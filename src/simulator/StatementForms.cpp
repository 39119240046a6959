// SPDX-License-Identifier: MIT
#include "simulator/StatementForms.h"

#include "simulator/InstrumentStream.h"

#include <algorithm>
#include <cmath>

namespace {

struct StatementForm {
    const char *form;
    Action action;
};

// clang-format off
constexpr StatementForm forms[] = {
    {"kind status",                                         Action::KindStatus},
    {"kind letters",                                        Action::KindLetters},
    {"wait TIME",                                           Action::Wait},
    {"loop",                                                Action::Loop},
    {"uv LEVEL",                                            Action::Uv},
    {"cond LEVEL",                                          Action::Cond},
    {"noise uv SIZE",                                       Action::NoiseUv},
    {"noise cond SIZE",                                     Action::NoiseCond},
    {"drift uv NUMBER",                                     Action::DriftUv},
    {"drift cond NUMBER",                                   Action::DriftCond},
    {"peak at TIME height NUMBER width WIDTH [tail TAIL]",  Action::Peak},
    {"gradient FROM to NUMBER over TIME",                   Action::Gradient},
    {"start",                                               Action::Start},
    {"event",                                               Action::Event},
    {"label M",                                             Action::LabelM},
    {"hold",                                                Action::Hold},
    {"continue",                                            Action::Continue},
    {"pause",                                               Action::Pause},
    {"resume",                                              Action::Resume},
    {"end",                                                 Action::End},
    {"pen on",                                              Action::PenOn},
    {"pen off",                                             Action::PenOff},
    {"method",                                              Action::Method},
    {"silence TIME",                                        Action::Silence},
    {"unplug TIME",                                         Action::Unplug},
    {"garbage COUNT",                                       Action::Garbage},
    {"half BLOCK",                                          Action::Half},
    {"bad BLOCK PARAMETER",                                 Action::Bad},
    {"unknown LETTER",                                      Action::Unknown},
    {"raw HEX...",                                          Action::Raw},
};
// clang-format on

bool readNumber(const QString &word, double &number) {
    bool good = false;
    number = word.toDouble(&good);
    return good && std::isfinite(number);
}

bool readWhole(const QString &word, int from, int to, int &number) {
    bool good = false;
    number = word.toInt(&good);
    return good && number >= from && number <= to;
}

bool readTime(const QString &word, double &seconds) {
    const double unit = word.endsWith('s') ? 1 : word.endsWith('m') ? 60 : word.endsWith('h') ? 3600 : 0;
    if (unit == 0 || !readNumber(word.chopped(1), seconds))
        return false;
    seconds *= unit;
    return seconds >= 0 && seconds <= 100 * 3600.0;
}

bool readLevel(const QString &word, Step &step) {
    bool good = false;
    step.value = word.toDouble(&good);
    return good;
}

bool readLetter(const QString &word, Step &step) {
    step.letter = word.size() == 1 ? word[0].toLatin1() : '\0';
    return step.letter > ' ';
}

bool readHex(const QString &word, Step &step) {
    bool good = false;
    const int byte = word.toInt(&good, 16);
    step.bytes += char(byte);
    return good && word.size() <= 2;
}

struct Placeholder {
    const char *name;
    const char *expected;
    bool (*read)(const QString &word, Step &step);
};

// clang-format off
constexpr Placeholder placeholders[] = {
    {"TIME",      "a time such as 0.4s, 90s or 2m",            [](const QString &w, Step &s) { return readTime(w, s.seconds); }},
    {"WIDTH",     "a time above 0",                            [](const QString &w, Step &s) { return readTime(w, s.width) && s.width > 0; }},
    {"LEVEL",     "a number, nan or inf",                      readLevel},
    {"SIZE",      "a number not below 0",                      [](const QString &w, Step &s) { return readNumber(w, s.value) && s.value >= 0; }},
    {"NUMBER",    "a number",                                  [](const QString &w, Step &s) { return readNumber(w, s.value); }},
    {"FROM",      "a number",                                  [](const QString &w, Step &s) { return readNumber(w, s.from); }},
    {"TAIL",      "a number above 0",                          [](const QString &w, Step &s) { return readNumber(w, s.tail) && s.tail > 0; }},
    {"COUNT",     "a number of bytes, 1 to 1000000",           [](const QString &w, Step &s) { return readWhole(w, 1, 1000000, s.count); }},
    {"PARAMETER", "a byte, 0 to 255",                          [](const QString &w, Step &s) { return readWhole(w, 0, 255, s.count); }},
    {"BLOCK",     "a letter of a block, one of C D E F H M P R U V", [](const QString &w, Step &s) { return readLetter(w, s) && isBlockLetter(s.letter); }},
    {"LETTER",    "one character",                             readLetter},
    {"HEX...",    "a byte in hexadecimal",                     readHex},
};
// clang-format on

const Placeholder *placeholderNamed(const QString &name) {
    const auto *found =
        std::ranges::find_if(placeholders, [&](const Placeholder &row) { return name == QLatin1String(row.name); });
    return found != std::end(placeholders) ? found : nullptr;
}

/// What came of laying a line's words on one form.
struct Match {
    Step step;
    size_t wordsTaken = 0;
    QString expected; ///< next; empty after a whole statement
};

Match matchForm(const StatementForm &row, const std::vector<ScriptWord> &words) {
    Match match;
    match.step.action = row.action;
    QStringList parts = QString::fromLatin1(row.form).split(' ');
    for (; !parts.isEmpty(); parts.removeFirst()) {
        QString part = parts.first();
        const bool atEnd = match.wordsTaken == words.size();
        if (atEnd && (part.startsWith('[') || (part.endsWith("...") && !match.step.bytes.isEmpty())))
            return match;
        part.remove('[').remove(']');
        const Placeholder *value = placeholderNamed(part);
        if (atEnd ||
            !(value ? value->read(words[match.wordsTaken].text, match.step) : words[match.wordsTaken].text == part)) {
            match.expected = value ? QString::fromLatin1(value->expected) : '"' + part + '"';
            return match;
        }
        ++match.wordsTaken;
        if (part.endsWith("..."))
            parts.prepend(part);
    }
    if (match.wordsTaken < words.size())
        match.expected = "the end of the line";
    return match;
}

} // namespace

QStringList statementForms() {
    QStringList lines;
    for (const StatementForm &row : forms)
        lines += QString::fromLatin1(row.form);
    return lines;
}

Step readStatement(const std::vector<ScriptWord> &words, int line) {
    Match farthest;
    QStringList expected;
    for (const StatementForm &row : forms) {
        Match match = matchForm(row, words);
        if (match.expected.isEmpty())
            return match.step;
        if (match.wordsTaken > farthest.wordsTaken)
            expected.clear();
        if (match.wordsTaken >= farthest.wordsTaken) {
            expected += match.expected;
            farthest = std::move(match);
        }
    }
    const bool atEnd = farthest.wordsTaken == words.size();
    const int column = atEnd ? words.back().column + int(words.back().text.size()) : words[farthest.wordsTaken].column;
    const QString found =
        atEnd ? QString{"the line ends"} : QString{"\"%1\" stands"}.arg(words[farthest.wordsTaken].text);
    if (farthest.wordsTaken == 0)
        throw ScriptError{line, column, QString{"no statement begins with \"%1\""}.arg(words.front().text)};
    throw ScriptError{line, column, QString{"%1 where %2 is expected"}.arg(found, expected.join(" or "))};
}
