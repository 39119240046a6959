// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/IniText.h"
#include "platform/SettingsStore.h"

#include <functional>

namespace ostrel {

/// The store in an INI file as QSettings has it. Each reading looks at the file anew, since other copies write it too.
/// Each writing reads, changes and replaces it under a lock of all copies; the file is whole at every moment.
class QtSettingsStore : public SettingsStore {
public:
    /// The file and its folder, for the user alone, are made at the first writing. Anything but a plain file is
    /// refused, a symbolic link too.
    explicit QtSettingsStore(QString file);

    QString GetSetting(const QString &section, const QString &key, const QString &fallback) const override;
    void SaveSetting(const QString &section, const QString &key, const QString &value) override;
    void DeleteSetting(const QString &section, const QString &key) override;
    void DeleteSection(const QString &section) override;
    std::vector<SettingRow> GetAllSettings(const QString &section) const override;
    void exclusively(const std::function<void()> &body) override;

private:
    /// `edit` answers whether there is something to write.
    void change(const std::function<bool(IniText &)> &edit);
    IniText read() const;

    QString file_;
    bool locked_ = false; ///< by us
};

} // namespace ostrel
