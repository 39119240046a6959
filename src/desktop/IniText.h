// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>

namespace ostrel {

/// Texts in sections, written as QSettings writes and reads its INI format: escaped keys, quotes around values that
/// need them, UTF-8. Lines edited by hand are read as far as possible: a comma without quotes belongs to the text, a
/// line without "=" is dropped. Values of other types than text are kept unchanged.
class IniText {
public:
    IniText() = default;
    explicit IniText(const QByteArray &content);

    QByteArray toBytes() const;

    std::optional<QString> value(const QString &section, const QString &key) const;
    std::map<QString, QString> values(const QString &section) const;
    void setValue(const QString &section, const QString &key, const QString &value);
    /// These return false when there was nothing to remove.
    bool remove(const QString &section, const QString &key);
    bool removeSection(const QString &section);

private:
    std::map<QString, std::map<QString, QByteArray>> sections_; ///< the values still escaped as in the file
};

} // namespace ostrel
