// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "platform/SettingsStore.h"

namespace ostrel {

/// The options in the settings store, section "Options".
class Settings {
public:
    Settings(Options &options, CurrentError &error, SettingsStore &store, ErrorRoute &errors);

    /// A missing key gives the default. A text that cannot be converted, or a failing store, is reported to the
    /// operator, and all options take their defaults. No value is checked for its range.
    void ReadSettings();
    void SetDefaultSettings();
    /// A failure of the store is a RunTimeError.
    void SaveSettings();

private:
    Options &options_;
    CurrentError &error_;
    SettingsStore &store_;
    ErrorRoute &errors_;
};

} // namespace ostrel
