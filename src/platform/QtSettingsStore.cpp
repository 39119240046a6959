// SPDX-License-Identifier: MIT
#include "platform/QtSettingsStore.h"

#include "base/RunTimeError.h"
#include "files/DurableFile.h"
#include "platform/FileLock.h"
#include "platform/Folders.h"
#include "platform/NaturalOrder.h"

#include <QFile>
#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>
#include <cerrno>

QtSettingsStore::QtSettingsStore(QString file, FileOperations &operations)
    : file_(std::move(file)), operations_(operations) {}

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
    // Not the name with ".lock" behind it: QSettings itself takes that for its own kind of lock.
    FileLock lock(file.path() + QLatin1Char('/') + file.completeBaseName() + QStringLiteral(".lock"));
    lock.exclusive();
    const QScopedValueRollback locked(locked_, true);
    body();
}

void QtSettingsStore::change(const std::function<bool(IniText &)> &edit) {
    exclusively([&] {
        IniText text = read();
        if (!edit(text))
            return;
        if (const std::error_code error = replaceFile(file_, text.toBytes(), operations_))
            throw RunTimeError::fromErrno(error.value(), file_);
    });
}

IniText QtSettingsStore::read() const {
    QFile file(file_);
    errno = 0;
    if (!file.open(QIODevice::ReadOnly)) {
        if (errno == ENOENT || errno == ENOTDIR)
            return IniText();
        throw RunTimeError::fromErrno(errno, file_);
    }
    const QByteArray content = file.readAll();
    if (file.error() != QFile::NoError)
        throw RunTimeError(RunTimeError::PathFileAccess, file_ + QStringLiteral(": ") + file.errorString());
    return IniText(content);
}
