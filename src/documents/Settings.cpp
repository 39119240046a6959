// SPDX-License-Identifier: MIT
#include "documents/Settings.h"

#include "base/ErrorNumbers.h"
#include "base/Numbers.h"
#include "base/Steps.h"

namespace ostrel {

namespace {

constexpr char section[] = "Options";
constexpr char comPortNumber[] = "ComPortNumber";
constexpr char dataLogging[] = "DataLogging";
constexpr char dataFileSizeHours[] = "DataFileSizeHours";
constexpr char notifications[] = "Notifications";

QString textOf(bool value) { return value ? QStringLiteral("True") : QStringLiteral("False"); }

/// The words True and False in any case; a number is true unless it is 0.
bool booleanFrom(const QString &text) {
    const QString word = text.trimmed();
    if (word.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (word.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    return numberFrom(text) != 0;
}

} // namespace

Settings::Settings(Options &options, CurrentError &error, SettingsStore &store, ErrorRoute &errors)
    : options_(options), error_(error), store_(store), errors_(errors) {}

void Settings::ReadSettings() {
    const auto read = [this] {
        const auto text = [this](const char *key, const QString &fallback) {
            return store_.GetSetting(section, key, fallback);
        };
        const Options defaults;
        options_.ComPortNumber = rounded16(numberFrom(text(comPortNumber, QString::number(defaults.ComPortNumber))));
        options_.DataLogging = booleanFrom(text(dataLogging, textOf(defaults.DataLogging)));
        options_.DataFileSizeHours = numberFrom(text(dataFileSizeHours, generalNumber(defaults.DataFileSizeHours)));
        options_.Notifications = booleanFrom(text(notifications, textOf(defaults.Notifications)));
    };
    trapped(read, [this](const RunTimeError &error) {
        error_ = {error.number(), error.description()};
        errors_.HandelError(ErrorNumber::SettingsNotRead);
        SetDefaultSettings();
    });
}

void Settings::SetDefaultSettings() { options_ = Options(); }

void Settings::SaveSettings() {
    store_.SaveSetting(section, comPortNumber, QString::number(options_.ComPortNumber));
    store_.SaveSetting(section, dataLogging, textOf(options_.DataLogging));
    store_.SaveSetting(section, dataFileSizeHours, generalNumber(options_.DataFileSizeHours));
}

} // namespace ostrel
