// SPDX-License-Identifier: MIT
#include "desktop/QtSettingsStore.h"

#include "base/RunTimeError.h"
#include "desktop/Folders.h"
#include "desktop/NaturalOrder.h"
#include "files/DurableFile.h"
#include "files/FileLock.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>

namespace ostrel {

QtSettingsStore::QtSettingsStore(QString file) : file_(std::move(file)) {}

QString QtSettingsStore::GetSetting(const QString &section, const QString &key, const QString &fallback) const {
    return read().value(section, key).value_or(fallback);
}

void QtSettingsStore::SaveSetting(const QString &section, const QString &key, const QString &value) {
    change([&](IniText &text) {
        text.setValue(section, key, value);
        return true;
    });
}

void QtSettingsStore::DeleteSetting(const QString &section, const QString &key) {
    change([&](IniText &text) { return text.remove(section, key); });
}

void QtSettingsStore::DeleteSection(const QString &section) {
    change([&](IniText &text) { return text.removeSection(section); });
}

std::vector<SettingRow> QtSettingsStore::GetAllSettings(const QString &section) const {
    std::vector<SettingRow> rows;
    for (const auto &[key, value] : read().values(section))
        rows.push_back({key, value});
    std::sort(rows.begin(), rows.end(),
              [](const SettingRow &left, const SettingRow &right) { return naturallyLess(left.key, right.key); });
    return rows;
}

void QtSettingsStore::exclusively(const std::function<void()> &body) {
    if (locked_)
        return body();
    const QFileInfo file(file_);
    makePath(file.path());
    // Not the whole file name plus ".lock": QSettings uses that name for a lock of its own kind.
    const QString name = file.path() + QLatin1Char('/') + file.completeBaseName() + QStringLiteral(".lock");
    FileLock lock(name);
    // Another copy holds the lock only briefly. If that copy hangs, waiting for it must not stop the acquisition.
    if (!lock.exclusiveWithin(std::chrono::seconds(2)))
        throw RunTimeError(ErrorNumber::PermissionDenied, name + QStringLiteral(": held by another program"));
    const QScopedValueRollback locked(locked_, true);
    body();
}

void QtSettingsStore::change(const std::function<bool(IniText &)> &edit) {
    exclusively([&] {
        IniText text = read();
        if (!edit(text))
            return;
        if (const std::error_code error = replaceFile(file_, text.toBytes(), FileOperations::system(), Links::Refuse))
            throw RunTimeError::from(error, file_);
    });
}

IniText QtSettingsStore::read() const {
    QByteArray content;
    const std::error_code error = readPlainFile(file_, content);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
        return IniText();
    if (error)
        throw RunTimeError::from(error, file_);
    return IniText(content);
}

} // namespace ostrel
