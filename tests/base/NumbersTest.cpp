// SPDX-License-Identifier: MIT
#include "base/Numbers.h"

#include "base/Int16.h"
#include "base/Steps.h"

#include <QLocale>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace ostrel;

namespace {

/// The user's locale for the length of a test.
class Locale {
public:
    explicit Locale(const QLocale &locale) { QLocale::setDefault(locale); }
    ~Locale() { QLocale::setDefault(QLocale::c()); }
};

TEST(Numbers, halvesGoToTheEvenNeighbourAndWhatDoesNotFitOverflows) {
    EXPECT_EQ(rounded16(2.5), 2);
    EXPECT_EQ(rounded16(3.5), 4);
    EXPECT_EQ(rounded16(-6.5), -6);
    EXPECT_EQ(rounded32(100000.5), 100000);
    EXPECT_EQ(rounded16(32767.4), 32767);
    EXPECT_EQ(rounded16(-32768.5), -32768);
    EXPECT_EQ(errorNumberOf([] { rounded16(32767.5); }), ErrorNumber::Overflow);
    EXPECT_EQ(errorNumberOf([] { rounded16(std::nan("")); }), ErrorNumber::Overflow);
    EXPECT_EQ(errorNumberOf([] { rounded32(std::numeric_limits<double>::infinity()); }), ErrorNumber::Overflow);
}

TEST(Numbers, aCommaLocaleIsReadAndWritten) {
    const Locale german(QLocale::German);
    EXPECT_EQ(decimalSeparator(), u',');
    EXPECT_EQ(fixedNumber(1234.5, 3), "1234,500");
    EXPECT_DOUBLE_EQ(numberFrom(" -0,2 "), -0.2);
    for (const QLocale::Language language : {QLocale::Swedish, QLocale::Arabic}) { // with minus signs of their own
        const Locale other(language);
        EXPECT_TRUE(fixedNumber(-0.2, 3).startsWith('-'));
        EXPECT_DOUBLE_EQ(numberFrom(fixedNumber(-0.2, 3)), -0.2);
    }
}

TEST(Numbers, theNumberThatATextBeginsWithCounts) {
    EXPECT_EQ(leadingNumber(" 1 2x"), 12);
    EXPECT_EQ(leadingNumber("-1.5|3"), -1.5);
    EXPECT_EQ(leadingNumber("x1"), 0);
    EXPECT_EQ(leadingNumber(""), 0);
}

TEST(Numbers, areAsShortAsTheyCanBeAndNothingElseIsRead) {
    EXPECT_EQ(generalNumber(10.0), "10");
    EXPECT_EQ(generalNumber(0.1F), "0.1");
    EXPECT_EQ(leadingBlankNumber(150), " 150");
    EXPECT_EQ(leadingBlankNumber(-3), "-3");
    for (const char *text : {"", "-", ".", "ten", "1e", "nan", "inf", "1,000", "1.2.3"})
        EXPECT_EQ(errorNumberOf([&] { numberFrom(text); }), ErrorNumber::TypeMismatch) << text;
}

TEST(Numbers, datesAndTimesOfEveryLocaleAreBareAndFitTheirColumns) {
    static const QRegularExpression untidy(QStringLiteral("^\\s|\\s$|\\s\\s|[()\\[\\]',]|\\bt\\b|\\bB\\d|UTC|\\bGMT"));
    const QDateTime evening(QDate(2026, 11, 21), QTime(19, 31, 49));
    const auto locales = QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    ASSERT_GT(locales.size(), 300);
    for (const QLocale &locale : locales) {
        const Locale ours(locale);
        const QString all = generalDate(evening);
        EXPECT_FALSE(all.contains(untidy)) << qPrintable(locale.name() + ": " + all);
        EXPECT_LE(dateText(evening.date()).size(), longestDate) << qPrintable(locale.name());
        QLocale plain = locale;
        plain.setNumberOptions(QLocale::OmitGroupSeparator);
        for (const int part : {31, 49})
            EXPECT_TRUE(timeText(evening.time()).contains(plain.toString(part))) << qPrintable(locale.name());
    }
}

TEST(Numbers, datesAndTimesKeepWhatTheirLocaleWritesInThem) {
    constexpr const char *texts[][2] = {
        {"C", "14 Mar 2026 09:06:53"},
        {"en_US", "3/14/26 9:06:53 AM"},
        {"ca_ES", "14/3/26 9:06:53"},             // the zone is in brackets
        {"sq_AL", "14.3.26 9:06:53 E PARADITES"}, // behind a comma
        {"zh_CN", "2026/3/14 09:06:53"},          // in front
        {"fr_CA", "2026-03-14 09 h 06 min 53 s"}, // behind quoted letters
        {"eo", "26-03-14 9-a horo kaj 6:53"},
    };
    for (const auto &[name, text] : texts) {
        const Locale ours{QLocale(QLatin1String(name))};
        EXPECT_EQ(generalDate(QDateTime(QDate(2026, 3, 14), QTime(9, 6, 53))), text) << name;
    }
}

TEST(Int16, aStepPastTheRangeOverflowsAndChangesNothing) {
    Int16 count = 32767;
    EXPECT_EQ(errorNumberOf([&] { ++count; }), ErrorNumber::Overflow);
    EXPECT_EQ(count, 32767);
    count = -32768;
    EXPECT_EQ(errorNumberOf([&] { --count; }), ErrorNumber::Overflow);
    EXPECT_EQ(count, -32768);
}

} // namespace
