// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/IniText.h"
#include "platform/SettingsStore.h"

#include <functional>

namespace ostrel {

/// The store in an INI file in the format of QSettings. Every read opens the file again, since other copies write it
/// too. A write reads, changes and replaces it under a lock of all copies; it is complete at every moment.
class QtSettingsStore : public SettingsStore {
public:
    /// The first write makes the file and its folder, for the user alone. Anything but a plain file is refused, a
    /// symbolic link too.
    explicit QtSettingsStore(QString file);

    QString GetSetting(const QString &section, const QString &key, const QString &fallback) const override;
    void SaveSetting(const QString &section, const QString &key, const QString &value) override;
    void DeleteSetting(const QString &section, const QString &key) override;
    void DeleteSection(const QString &section) override;
    std::vector<SettingRow> GetAllSettings(const QString &section) const override;
    void exclusively(const std::function<void()> &body) override;

private:
    /// `edit` returns whether there is something to write.
    void change(const std::function<bool(IniText &)> &edit);
    IniText read() const;

    QString file_;
    bool locked_ = false; ///< by this object
};

} // namespace ostrel
