// SPDX-License-Identifier: MIT
#include "documents/Settings.h"

#include "base/Steps.h"
#include "fakes/FakeErrorRoute.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

struct SettingsTest : testing::Test {
    void put(const QString &key, const QString &value) { store.rows[{"Options", key}] = value; }
    /// Port, logging and hours.
    std::tuple<int, bool, double> read() {
        settings.ReadSettings();
        return {options.ComPortNumber, options.DataLogging, options.DataFileSizeHours};
    }

    Options options{5, false, 7};
    CurrentError error;
    FakeSettingsStore store;
    FakeErrorRoute errors;
    Settings settings{options, error, store, errors};
};

TEST_F(SettingsTest, whatIsSavedIsReadBackAndAStoreThatFailsIsNoticed) {
    put("DataLogging", "0");
    put("ComPortNumber", "3");
    EXPECT_EQ(read(), std::tuple(3, false, 24.0));
    EXPECT_TRUE(options.Notifications);
    put("Notifications", "False");
    options.DataFileSizeHours = 0.5;
    settings.SaveSettings();
    EXPECT_EQ(store.written, (QStringList{"ComPortNumber", "DataLogging", "DataFileSizeHours"}));
    options = {};
    EXPECT_EQ(read(), std::tuple(3, false, 0.5));
    EXPECT_FALSE(options.Notifications);
    store.broken = ErrorNumber::DiskFull;
    EXPECT_EQ(errorNumberOf([this] { settings.SaveSettings(); }), ErrorNumber::DiskFull);
}

TEST_F(SettingsTest, oneBadTextGivesAllOptionsTheirDefaults) {
    const std::pair<const char *, const char *> bad[] = {
        {"ComPortNumber", "COM3"}, {"ComPortNumber", "40000"}, {"DataLogging", "Yes"}, {"DataFileSizeHours", "a day"}};
    for (const auto &[key, value] : bad) {
        store.rows.clear();
        errors.codes.clear();
        put("ComPortNumber", "7");
        put(key, value);
        EXPECT_EQ(read(), std::tuple(1, true, 24.0));
        EXPECT_EQ(errors.codes, std::vector<qint32>{-20}) << key << '=' << value;
        EXPECT_EQ(store.rows.at({"Options", key}), value);
    }
    EXPECT_EQ(error.number, ErrorNumber::TypeMismatch);
}

} // namespace
