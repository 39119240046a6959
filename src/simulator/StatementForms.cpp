// SPDX-License-Identifier: MIT
#include "simulator/StatementForms.h"

#include "simulator/InstrumentStream.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace ostrel {

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

bool readPositive(const QString &word, double &number) { return readNumber(word, number) && number > 0; }

bool readSize(const QString &word, double &number) { return readNumber(word, number) && number >= 0; }

/// A level may also be nan or inf, as a faulty detector sends it.
bool readLevel(const QString &word, double &level) {
    bool good = false;
    level = word.toDouble(&good);
    return good;
}

bool readTime(const QString &word, double &seconds) {
    const double unit = word.endsWith('s') ? 1 : word.endsWith('m') ? 60 : word.endsWith('h') ? 3600 : 0;
    const bool good = unit > 0 && readSize(word.chopped(1), seconds);
    seconds *= unit;
    return good && seconds <= 100 * 3600.0;
}

bool readLasting(const QString &word, double &seconds) { return readTime(word, seconds) && seconds > 0; }

template <int from, int to>
bool readWhole(const QString &word, int &number) {
    bool good = false;
    number = word.toInt(&good);
    return good && number >= from && number <= to;
}

bool readCharacter(const QString &word, char &letter) {
    letter = word.size() == 1 ? word[0].toLatin1() : '\0';
    return letter > ' ';
}

bool readBlockLetter(const QString &word, char &letter) { return readCharacter(word, letter) && isBlockLetter(letter); }

bool readHex(const QString &word, QByteArray &bytes) {
    static const QRegularExpression byte{"^[0-9A-Fa-f]{2}$"};
    bytes += QByteArray::fromHex(word.toLatin1());
    return byte.match(word).hasMatch();
}

template <auto field, auto read>
bool into(const QString &word, Step &step) {
    return read(word, step.*field);
}

struct Placeholder {
    const char *name;
    const char *expected;
    bool (*read)(const QString &word, Step &step);
};

// clang-format off
constexpr Placeholder placeholders[] = {
    {"TIME",      "a time such as 0.4s, 90s or 2m, at most 100h", into<&Step::seconds, readTime>},
    {"WIDTH",     "a time above 0s such as 20s, at most 100h",    into<&Step::width, readLasting>},
    {"LEVEL",     "a number, nan or inf",                         into<&Step::value, readLevel>},
    {"SIZE",      "a number not below 0",                         into<&Step::value, readSize>},
    {"NUMBER",    "a number",                                     into<&Step::value, readNumber>},
    {"FROM",      "a number",                                     into<&Step::from, readNumber>},
    {"TAIL",      "a number above 0",                             into<&Step::tail, readPositive>},
    {"COUNT",     "a number of bytes, 1 to 1000000",              into<&Step::count, readWhole<1, 1000000>>},
    {"PARAMETER", "a byte, 0 to 255",                             into<&Step::count, readWhole<0, 255>>},
    {"BLOCK",     "the letter of a block",                        into<&Step::letter, readBlockLetter>},
    {"LETTER",    "one ASCII character",                          into<&Step::letter, readCharacter>},
    {"HEX...",    "a byte of two hexadecimal digits",             into<&Step::bytes, readHex>},
};
// clang-format on

const Placeholder *placeholderNamed(const QString &name) {
    const auto *found =
        std::ranges::find_if(placeholders, [&](const Placeholder &row) { return name == QLatin1String(row.name); });
    return found != std::end(placeholders) ? found : nullptr;
}

/// The result of matching a line's words with one form.
struct Match {
    Step step;
    size_t wordsTaken = 0;
    QString expected; ///< next; empty after a complete statement
};

bool accepts(const QString &part, const QString &word, Step &step) {
    const Placeholder *value = placeholderNamed(part);
    return value ? value->read(word, step) : word == part;
}

QString expectationOf(const QString &part) {
    const Placeholder *value = placeholderNamed(part);
    return value ? QString::fromLatin1(value->expected) : '"' + part + '"';
}

Match matchForm(const StatementForm &row, const std::vector<ScriptWord> &words) {
    const QString form = QString::fromLatin1(row.form);
    const qsizetype optionalPart = form.contains('[') ? form.section('[', 0, 0).count(' ') : -1;
    const QStringList parts = QString{form}.remove('[').remove(']').split(' ');
    Match match;
    match.step.action = row.action;
    qsizetype at = 0;
    while (at < parts.size() && match.wordsTaken < words.size()) {
        if (!accepts(parts[at], words[match.wordsTaken].text, match.step))
            break;
        ++match.wordsTaken;
        const bool repeats = parts[at].endsWith("...") && match.wordsTaken < words.size();
        at += repeats ? 0 : 1;
    }
    if (at < parts.size() && !(at == optionalPart && match.wordsTaken == words.size()))
        match.expected = expectationOf(parts[at]);
    else if (match.wordsTaken < words.size())
        match.expected = "the end of the line";
    return match;
}

/// The message for the word of this index, or for the end of the line.
ScriptError mistake(const std::vector<ScriptWord> &words, size_t index, const QStringList &expected, int line) {
    if (index == words.size()) {
        const int end = words.back().column + columnAt(words.back().text, words.back().text.size()) - 1;
        return {line, end, QString{"the line ends where %1 is expected"}.arg(expected.join(" or "))};
    }
    const auto &[text, column] = words[index];
    if (index == 0)
        return {line, column, QString{"no statement begins with \"%1\""}.arg(text)};
    return {line, column, QString{"\"%1\" stands where %2 is expected"}.arg(text, expected.join(" or "))};
}

} // namespace

int columnAt(const QString &line, qsizetype index) { return int(line.first(index).toUcs4().size()) + 1; }

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
    throw mistake(words, farthest.wordsTaken, expected, line);
}

} // namespace ostrel
