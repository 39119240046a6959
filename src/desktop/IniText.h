// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>

namespace ostrel {

/// Texts in sections, written as QSettings writes and reads its INI format: escaped keys, quotes around values that
/// need them, UTF-8. Lines that a person has edited are understood as far as they make sense: a comma without quotes
/// belongs to the text, a line without "=" is dropped. Values of other types than text come through unread.
class IniText {
public:
    IniText() = default;
    explicit IniText(const QByteArray &content);

    QByteArray toBytes() const;

    std::optional<QString> value(const QString &section, const QString &key) const;
    std::map<QString, QString> values(const QString &section) const;
    void setValue(const QString &section, const QString &key, const QString &value);
    /// False when there was nothing of the kind.
    bool remove(const QString &section, const QString &key);
    bool removeSection(const QString &section);

private:
    std::map<QString, std::map<QString, QByteArray>> sections_; ///< the values still escaped as in the file
};

} // namespace ostrel
