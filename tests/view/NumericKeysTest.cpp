// SPDX-License-Identifier: MIT
#include "base/Numbers.h"
#include "view/ViewFixture.h"

#include <QLocale>

namespace {

struct Entry : EntryText {
    QString text, selected;
    int start = 0;

    QString Text() const override { return text; }
    QString SelText() const override { return selected; }
    int SelStart() const override { return start; }
    void selectWhole() override {}
};

class NumericKeysTest : public ViewTest {
protected:
    bool passes(char key, const Entry &into) {
        const int before = prompts.beeps;
        const int answer = keys.FilterNumericKey(key, into, true, true);
        EXPECT_EQ(prompts.beeps - before, answer == keyRefused ? 1 : 0);
        return answer == key;
    }
    static Entry entry(const QString &text, const QString &selected = {}, int start = 0) {
        Entry made;
        made.text = text;
        made.selected = selected;
        made.start = start;
        return made;
    }
};

TEST_F(NumericKeysTest, DigitsAndBackspacePassAndLettersDoNot) {
    EXPECT_TRUE(passes('0', entry("1")) && passes('9', entry("1")) && passes(8, entry("1")));
    EXPECT_FALSE(passes('e', entry("1")) || passes('+', entry("")) || passes(' ', entry("")));
}

TEST_F(NumericKeysTest, OnePointAndOneMinusInFront) {
    EXPECT_TRUE(passes('.', entry("12")));
    EXPECT_FALSE(passes('.', entry("1.2")));
    EXPECT_TRUE(passes('.', entry("1.2", ".2", 1)));
    EXPECT_TRUE(passes('-', entry("12")));
    EXPECT_FALSE(passes('-', entry("12", "", 1)) || passes('-', entry("-12")));
    EXPECT_TRUE(passes('-', entry("-12", "-1")));
    EXPECT_EQ(keys.FilterNumericKey('.', entry("1"), false, true), keyRefused);
    EXPECT_EQ(keys.FilterNumericKey('-', entry("1"), true, false), keyRefused);
}

TEST_F(NumericKeysTest, CommaLocale) {
    QLocale::setDefault(QLocale(QLocale::German));
    values.DecimalPoint = decimalSeparator();
    EXPECT_TRUE(passes(',', entry("1")));
    EXPECT_FALSE(passes('.', entry("1")));
    scale(0).type("1,5").enter();
    EXPECT_EQ(chart[0].uvMax, 1.5F);
    QLocale::setDefault(QLocale::c());
}

} // namespace
