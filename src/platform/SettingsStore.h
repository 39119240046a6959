// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace ostrel {

struct SettingRow {
    QString key;
    QString value;
};

/// The per-user store of settings, shared by all running copies. Keys and values are text. A failure of the store is a
/// RunTimeError; a write either reaches the disk completely or leaves the store as it was.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// `fallback` when the key is missing.
    virtual QString GetSetting(const QString &section, const QString &key, const QString &fallback) const = 0;
    virtual void SaveSetting(const QString &section, const QString &key, const QString &value) = 0;
    /// Deleting a missing key is not an error.
    virtual void DeleteSetting(const QString &section, const QString &key) = 0;
    virtual void DeleteSection(const QString &section) = 0;
    /// All rows of a section, in the order of their keys; empty when there is no such section.
    virtual std::vector<SettingRow> GetAllSettings(const QString &section) const = 0;

    /// Runs `body` with exclusive use of the store; other copies write before or after it. They wait meanwhile, so
    /// `body` must not ask the operator anything. Exceptions of `body` are passed on.
    virtual void exclusively(const std::function<void()> &body) = 0;
};

} // namespace ostrel
