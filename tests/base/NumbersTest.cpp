// SPDX-License-Identifier: MIT
#include "base/Numbers.h"

#include "base/Int16.h"

#include <QLocale>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

/// The user's locale for the length of a test.
class Locale {
public:
    explicit Locale(QLocale::Language language) { QLocale::setDefault(QLocale(language)); }
    ~Locale() { QLocale::setDefault(QLocale::c()); }
};

int errorOf(const std::function<void()> &body) {
    try {
        body();
        return 0;
    } catch (const RunTimeError &error) {
        return error.number();
    }
}

TEST(Numbers, halvesGoToTheEvenNeighbour) {
    EXPECT_EQ(rounded16(2.5), 2);
    EXPECT_EQ(rounded16(3.5), 4);
    EXPECT_EQ(rounded16(-6.5), -6);
    EXPECT_EQ(rounded32(100000.5), 100000);
}

TEST(Numbers, whatDoesNotFitOverflows) {
    EXPECT_EQ(rounded16(32767.4), 32767);
    EXPECT_EQ(rounded16(-32768.5), -32768);
    EXPECT_EQ(errorOf([] { rounded16(32767.5); }), RunTimeError::Overflow);
    EXPECT_EQ(errorOf([] { rounded16(std::nan("")); }), RunTimeError::Overflow);
    EXPECT_EQ(errorOf([] { rounded32(std::numeric_limits<double>::infinity()); }), RunTimeError::Overflow);
}

TEST(Numbers, aCommaLocaleIsReadAndWritten) {
    const Locale german(QLocale::German);
    EXPECT_EQ(decimalSeparator(), u',');
    EXPECT_EQ(fixedNumber(1234.5, 3), "1234,500");
    EXPECT_EQ(generalNumber(0.25), "0,25");
    EXPECT_DOUBLE_EQ(numberFrom(" -0,2 "), -0.2);
    EXPECT_EQ(errorOf([] { numberFrom("1.2.3"); }), RunTimeError::TypeMismatch);
}

TEST(Numbers, theNumberThatATextBeginsWithCounts) {
    EXPECT_EQ(leadingNumber(" 1 2x"), 12);
    EXPECT_EQ(leadingNumber("-1.5|3"), -1.5);
    EXPECT_EQ(leadingNumber("x1"), 0);
    EXPECT_EQ(leadingNumber(""), 0);
}

TEST(Numbers, theMinusSignIsThePlainOneInEveryLocale) {
    for (const QLocale::Language language : {QLocale::Swedish, QLocale::Finnish, QLocale::Arabic}) {
        const Locale locale(language);
        EXPECT_TRUE(fixedNumber(-0.2, 3).startsWith('-'));
        EXPECT_DOUBLE_EQ(numberFrom(fixedNumber(-0.2, 3)), -0.2);
    }
}

TEST(Numbers, generalNumbersAreAsShortAsTheyCanBe) {
    EXPECT_EQ(generalNumber(10.0), "10");
    EXPECT_EQ(generalNumber(0.1F), "0.1");
    EXPECT_EQ(leadingBlankNumber(150), " 150");
    EXPECT_EQ(leadingBlankNumber(-3), "-3");
}

TEST(Numbers, textThatIsNoNumberIsATypeMismatch) {
    for (const char *text : {"", "-", ".", "ten", "1e", "nan", "inf", "1,000"})
        EXPECT_EQ(errorOf([&] { numberFrom(text); }), RunTimeError::TypeMismatch) << text;
}

TEST(Numbers, datesShowTheSecondAndNoZone) {
    const QString text = generalDate(QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53)));
    EXPECT_TRUE(text.contains("2026")) << text.toStdString();
    EXPECT_TRUE(text.endsWith("09:26:53")) << text.toStdString();
}

TEST(Int16, aStepPastTheRangeOverflowsAndChangesNothing) {
    Int16 count = 32767;
    EXPECT_EQ(errorOf([&] { ++count; }), RunTimeError::Overflow);
    EXPECT_EQ(count, 32767);
    count = -32768;
    EXPECT_EQ(errorOf([&] { --count; }), RunTimeError::Overflow);
    EXPECT_EQ(count, -32768);
}

} // namespace
