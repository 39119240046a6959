// SPDX-License-Identifier: MIT
#include "desktop/IniText.h"

#include <QList>

namespace ostrel {

namespace {

constexpr char generalSection[] = "General"; ///< for rows without a section; a section of that name gets a "%"

struct Escape {
    char letter;
    char character;
};

constexpr Escape escapes[] = {
    {'a', '\a'}, {'b', '\b'}, {'f', '\f'}, {'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'v', '\v'}, {'"', '"'}, {'\\', '\\'},
};

bool isHexDigit(QChar c) {
    const char16_t u = c.toLower().unicode();
    return (u >= u'0' && u <= u'9') || (u >= u'a' && u <= u'f');
}

bool isPlainInKey(QChar c) {
    const char16_t u = c.unicode();
    return u < 0x80 && (c.isLetterOrNumber() || u == u'_' || u == u'-' || u == u'.');
}

QByteArray escapedKey(const QString &key) {
    QString text;
    for (const QChar c : key) {
        if (isPlainInKey(c))
            text += c;
        else if (c == QLatin1Char('/'))
            text += QLatin1Char('\\');
        else if (c.unicode() > 0xff)
            text +=
                QStringLiteral("%U") + QString::number(c.unicode(), 16).toUpper().rightJustified(4, QLatin1Char('0'));
        else
            text += QLatin1Char('%') + QString::number(c.unicode(), 16).toUpper().rightJustified(2, QLatin1Char('0'));
    }
    return text.toLatin1();
}

QString unescapedKey(const QByteArray &bytes) {
    const QString text = QString::fromUtf8(bytes);
    QString key;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool wide = text.mid(i + 1, 1) == QLatin1String("U");
        const QString digits = wide ? text.mid(i + 2, 4) : text.mid(i + 1, 2);
        bool isNumber = false;
        const ushort code = digits.toUShort(&isNumber, 16);
        if (text[i] == QLatin1Char('\\')) {
            key += QLatin1Char('/');
        } else if (text[i] == QLatin1Char('%') && isNumber) {
            key += QChar(code);
            i += digits.size() + (wide ? 1 : 0);
        } else {
            key += text[i];
        }
    }
    return key;
}

QByteArray escapedSection(const QString &section) {
    if (section.isEmpty())
        return generalSection;
    const QByteArray name = escapedKey(section);
    return name.compare(generalSection, Qt::CaseInsensitive) == 0 ? '%' + name : name;
}

QString unescapedSection(const QByteArray &bytes) {
    if (bytes.compare(generalSection, Qt::CaseInsensitive) == 0)
        return {};
    if (bytes.startsWith('%') && bytes.mid(1).compare(generalSection, Qt::CaseInsensitive) == 0)
        return QString::fromLatin1(bytes.mid(1));
    return unescapedKey(bytes);
}

/// The escape for a character within a value; empty for a character that needs none.
QString escapeFor(QChar c, bool afterNumber) {
    for (const Escape &escape : escapes) {
        if (c == QLatin1Char(escape.character))
            return QLatin1Char('\\') + QString(QLatin1Char(escape.letter));
    }
    // A digit that follows a character written as a number would count as part of the number.
    if (c.unicode() < 0x20 || (afterNumber && isHexDigit(c)))
        return QStringLiteral("\\x") + QString::number(c.unicode(), 16);
    return {};
}

QByteArray escapedValue(const QString &value) {
    // A leading "@" marks a value of another type than text; "@@" stands for a text that begins with "@".
    QString text = value.startsWith(QLatin1Char('@')) ? QStringLiteral("@") : QString();
    bool needsQuotes = value.isEmpty() || value.front() == QLatin1Char(' ') || value.back() == QLatin1Char(' ');
    bool afterNumber = false;
    for (const QChar c : value) {
        const QString escape = escapeFor(c, afterNumber);
        afterNumber = escape.startsWith(QLatin1String("\\x"));
        text += escape.isEmpty() ? QString(c) : escape;
        needsQuotes |= c == QLatin1Char(';') || c == QLatin1Char(',') || c == QLatin1Char('=');
    }
    const QByteArray bytes = text.toUtf8();
    return needsQuotes ? '"' + bytes + '"' : bytes;
}

/// Reads the escape that begins with the backslash at `at`, and leaves `at` on its last character.
QChar unescaped(const QString &text, qsizetype &at) {
    const QChar letter = ++at < text.size() ? text[at] : QLatin1Char('\\');
    if (letter == QLatin1Char('x')) {
        const qsizetype begin = at + 1;
        while (at + 1 < text.size() && isHexDigit(text[at + 1]))
            ++at;
        return QChar(static_cast<char16_t>(text.mid(begin, at + 1 - begin).toULong(nullptr, 16)));
    }
    if (letter == QLatin1Char('0'))
        return QChar(u'\0');
    for (const Escape &escape : escapes) {
        if (letter == QLatin1Char(escape.letter))
            return QLatin1Char(escape.character);
    }
    return letter;
}

QString unescapedValue(const QByteArray &bytes) {
    const QString text = QString::fromUtf8(bytes);
    QString value;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('\\'))
            value += unescaped(text, i);
        else if (text[i] != QLatin1Char('"'))
            value += text[i];
    }
    return value.startsWith(QLatin1String("@@")) ? value.mid(1) : value;
}

} // namespace

IniText::IniText(const QByteArray &content) {
    QString section;
    for (const QByteArray &row : content.split('\n')) {
        const QByteArray line = row.trimmed();
        const qsizetype equals = line.indexOf('=');
        if (line.startsWith('['))
            section = unescapedSection(line.mid(1, line.lastIndexOf(']') - 1).trimmed());
        else if (!line.startsWith(';') && equals > 0)
            sections_[section][unescapedKey(line.left(equals).trimmed())] = line.mid(equals + 1).trimmed();
    }
}

QByteArray IniText::toBytes() const {
    QByteArray text;
    for (const auto &[section, rows] : sections_) {
        text += (text.isEmpty() ? "[" : "\n[") + escapedSection(section) + "]\n";
        for (const auto &[key, value] : rows)
            text += escapedKey(key) + '=' + value + '\n';
    }
    return text;
}

std::optional<QString> IniText::value(const QString &section, const QString &key) const {
    const auto rows = sections_.find(section);
    if (rows == sections_.end())
        return std::nullopt;
    const auto found = rows->second.find(key);
    return found == rows->second.end() ? std::nullopt : std::optional(unescapedValue(found->second));
}

std::map<QString, QString> IniText::values(const QString &section) const {
    std::map<QString, QString> all;
    if (const auto rows = sections_.find(section); rows != sections_.end()) {
        for (const auto &[key, value] : rows->second)
            all[key] = unescapedValue(value);
    }
    return all;
}

void IniText::setValue(const QString &section, const QString &key, const QString &value) {
    sections_[section][key] = escapedValue(value);
}

bool IniText::remove(const QString &section, const QString &key) {
    const auto rows = sections_.find(section);
    if (rows == sections_.end() || rows->second.erase(key) == 0)
        return false;
    if (rows->second.empty())
        sections_.erase(rows);
    return true;
}

bool IniText::removeSection(const QString &section) { return sections_.erase(section) > 0; }

} // namespace ostrel
