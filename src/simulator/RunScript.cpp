// SPDX-License-Identifier: MIT
#include "simulator/RunScript.h"

#include "acquisition/StreamFormat.h"
#include "simulator/StatementForms.h"

#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>

namespace ostrel {

namespace {

std::vector<ScriptWord> wordsOf(const QString &line) {
    static const QRegularExpression word{"\\S+"};
    std::vector<ScriptWord> words;
    for (auto found = word.globalMatch(line.section('#', 0, 0)); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        words.push_back({match.captured(), columnAt(line, match.capturedStart())});
    }
    return words;
}

/// Reads a script line by line.
class ScriptReader {
public:
    RunScript read(const QString &text);

private:
    void readLine(const QString &line);
    void readMethodLine(const QString &line, int bar);
    void readStep(const std::vector<ScriptWord> &words);
    void setKind(InstrumentKind kind, int column);
    void closeLoop(int column);
    [[noreturn]] void fail(int column, const QString &message) const { throw ScriptError{line_, column, message}; }

    RunScript script_;
    int line_ = 0;
    bool methodHasText_ = false;
};

RunScript ScriptReader::read(const QString &text) {
    for (const QString &line : text.split('\n')) {
        ++line_;
        readLine(line);
    }
    return script_;
}

void ScriptReader::readLine(const QString &line) {
    const QString trimmed = line.trimmed();
    if (trimmed.startsWith('|'))
        readMethodLine(line, int(line.indexOf('|')));
    else if (const std::vector<ScriptWord> words = wordsOf(line); !words.empty())
        readStep(words);
}

void ScriptReader::readMethodLine(const QString &line, int bar) {
    if (script_.steps.empty() || script_.steps.back().action != Action::Method)
        fail(columnAt(line, bar), "a line of text can only follow \"method\"");
    const int start = bar + (line.mid(bar + 1, 1) == " " ? 2 : 1);
    const QString text = line.mid(start, line.size() - start - (line.endsWith('\r') ? 1 : 0));
    int column = columnAt(line, start);
    for (const uint code : text.toUcs4()) {
        if (code > 0xFF || code == StreamFormat::SyncByte)
            fail(column, "a method cannot hold U+" + QString::number(code, 16).toUpper().rightJustified(4, '0'));
        ++column;
    }
    QByteArray &method = script_.steps.back().bytes;
    method += (methodHasText_ ? "\r\n" : "") + text.toLatin1();
    methodHasText_ = true;
}

void ScriptReader::readStep(const std::vector<ScriptWord> &words) {
    if (script_.loops)
        fail(words.front().column, "nothing can follow \"loop\"");
    Step step = readStatement(words, line_);
    QStringList statement;
    for (const ScriptWord &word : words)
        statement += word.text;
    step.statement = statement.join(' ');
    methodHasText_ = false;
    switch (step.action) {
    case Action::KindStatus:
        return setKind(InstrumentKind::Status, words.front().column);
    case Action::KindLetters:
        return setKind(InstrumentKind::Letters, words.front().column);
    case Action::Loop:
        return closeLoop(words.front().column);
    default:
        script_.steps.push_back(std::move(step));
    }
}

void ScriptReader::setKind(InstrumentKind kind, int column) {
    if (script_.kind || !script_.steps.empty())
        fail(column, "\"kind\" must be the first statement");
    script_.kind = kind;
}

void ScriptReader::closeLoop(int column) {
    const auto takesTime = [](const Step &step) {
        const bool timed =
            step.action == Action::Wait || step.action == Action::Silence || step.action == Action::Unplug;
        return timed && step.seconds >= 1.0 / StreamFormat::samplesPerSecond;
    };
    if (std::ranges::none_of(script_.steps, takesTime))
        fail(column, "a loop needs a \"wait\" of 0.2s or more");
    script_.loops = true;
}

} // namespace

QString decodeScript(const QByteArray &utf8) {
    using Converter = QStringConverter;
    QStringDecoder atOnce{Converter::Utf8, Converter::Flag::Stateless};
    QString text = atOnce(utf8);
    if (!atOnce.hasError())
        return text;
    QStringDecoder bytewise{Converter::Utf8};
    QString good;
    for (qsizetype at = 0; at < utf8.size(); ++at) {
        const QString next = bytewise(utf8.sliced(at, 1));
        if (bytewise.hasError())
            break;
        good += next;
    }
    const QString line = good.section('\n', -1);
    throw ScriptError{int(good.count('\n')) + 1, columnAt(line, line.size()), "this is not UTF-8"};
}

RunScript parseRunScript(const QString &text) { return ScriptReader{}.read(text); }

} // namespace ostrel
