// SPDX-License-Identifier: MIT
#include "archive/Lines.h"

#include <QFileDevice>
#include <unistd.h>

#include <algorithm>

namespace ostrel {

namespace {

struct Range {
    char16_t first;
    char16_t last;
};

constexpr Range controls[] = {
    {0x00, 0x1f},     // C0
    {0x7f, 0x9f},     // DEL, C1
    {0x061c, 0x061c}, // Arabic letter mark
    {0x200e, 0x200f}, // left-to-right and right-to-left mark
    {0x2028, 0x202e}, // line and paragraph separator; embeddings and overrides of the direction
    {0x2066, 0x2069}, // isolates
};

bool isControl(QChar c) {
    return std::any_of(std::begin(controls), std::end(controls),
                       [&](const Range &range) { return range.first <= c && c <= range.last; });
}

QString number(QChar c, int digits) {
    return QString::number(c.unicode(), 16).rightJustified(digits, QLatin1Char('0'));
}

QString plainEscape(QChar c) { return c.unicode() > 0xff ? "\\u" + number(c, 4) : "\\x" + number(c, 2); }

QString jsonEscape(QChar c) { return c == '\n' ? QString(c) : "\\u" + number(c, 4); } // in texts it is already escaped

QString escaped(const QString &text, QString (*escape)(QChar c)) {
    QString shown;
    for (const QChar c : text)
        shown += isControl(c) ? escape(c) : QString(c);
    return shown;
}

} // namespace

void Lines::tell(const QString &line) {
    show({});
    stream_ << escaped(line, plainEscape) << '\n';
}

void Lines::tell(const QJsonDocument &document) {
    stream_ << escaped(QString::fromUtf8(document.toJson()), jsonEscape);
}

bool Lines::deliver() {
    stream_.flush();
    return stream_.status() == QTextStream::Ok;
}

bool Lines::isTerminal() const {
    const auto *file = qobject_cast<QFileDevice *>(stream_.device());
    return file != nullptr && ::isatty(file->handle()) != 0;
}

void Lines::show(const QString &status) {
    constexpr QLatin1String clearLine("\r\x1b[K");
    constexpr int width = 72; // a longer one would not go away as a whole
    if (!isTerminal() || (status.isEmpty() && !shows_))
        return;
    if (shows_)
        stream_ << clearLine;
    stream_ << escaped(status, plainEscape).left(width);
    stream_.flush();
    shows_ = !status.isEmpty();
}

QString Lines::error() const { return stream_.device() != nullptr ? stream_.device()->errorString() : QString(); }

} // namespace ostrel
