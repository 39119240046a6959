// SPDX-License-Identifier: MIT
#include "simulator/RunScript.h"

#include <gtest/gtest.h>

using namespace ostrel;

namespace {

std::string mistakeIn(const QByteArray &text) {
    try {
        parseRunScript(decodeScript(text));
    } catch (const ScriptError &error) {
        return QString{"%1:%2: %3"}.arg(error.line).arg(error.column).arg(error.message).toStdString();
    }
    return "none";
}

Step onlyStep(const QString &text) { return parseRunScript(text).steps.at(0); }

TEST(RunScript, readsStatementsAndTheTextOfAMethod) {
    EXPECT_EQ(onlyStep("  wait 1.5m  # a comment").seconds, 90);
    EXPECT_EQ(onlyStep("wait 1h").seconds, 3600);
    EXPECT_EQ(onlyStep("peak at 90s height 0.8 width 20s").tail, 1);
    EXPECT_EQ(onlyStep("method\n| Line 1 # no comment\n|\n  |   indented\r\n").bytes,
              "Line 1 # no comment\r\n\r\n  indented");
    EXPECT_EQ(onlyStep("method").bytes, "");
    EXPECT_EQ(parseRunScript("method\n| a\nmethod\n| b").steps.at(1).bytes, "b");
}

TEST(RunScript, kindAndLoopAreOfTheWholeRun) {
    const RunScript script = parseRunScript("# a run\nkind letters\nwait 1s\nloop\n\n# its end");
    EXPECT_EQ(script.kind, InstrumentKind::Letters);
    EXPECT_TRUE(script.loops);
    EXPECT_EQ(script.steps.size(), 1);
}

TEST(RunScript, saysWhereAMistakeStandsAndWhatIsExpected) {
    // clang-format off
    constexpr const char *mistakes[][2] = {
        {"start\n\n  stop",                  "3:3: no statement begins with \"stop\""},
        {"wait 3",                           "1:6: \"3\" stands where a time such as 0.4s, 90s or 2m, at most 100h is expected"},
        {"wait",                             "1:5: the line ends where a time such as 0.4s, 90s or 2m, at most 100h is expected"},
        {"noise vu 1",                       "1:7: \"vu\" stands where \"uv\" or \"cond\" is expected"},
        {"uv 1 2",                           "1:6: \"2\" stands where the end of the line is expected"},
        {"peak at 1s height 1 width 1s tail", "1:34: the line ends where a number above 0 is expected"},
        {"peak at 1s height nan width 1s",   "1:19: \"nan\" stands where a number is expected"},
        {"half X",                           "1:6: \"X\" stands where the letter of a block is expected"},
        {"raw 0F +f",                        "1:8: \"+f\" stands where a byte of two hexadecimal digits is expected"},
        {"unknown \u00E9",                   "1:9: \"\u00E9\" stands where one ASCII character is expected"},
        {"| text",                           "1:1: a line of text can only follow \"method\""},
        {"start\nkind letters",              "2:1: \"kind\" must be the first statement"},
        {"start\nwait 0.05s\n\tloop",        "3:2: a loop needs a \"wait\" of 0.2s or more"},
        {"wait 1s\nloop\nend",               "3:1: nothing can follow \"loop\""},
        {"method\n| a\u0096",                "2:4: a method cannot hold U+0096"},
        {"method\n| \u00E9 \U0001F600",      "2:5: a method cannot hold U+1F600"},
        {"\xEF\xBB\xBFwait 1s\n\tuv \U0001F600\n",         "2:5: \"\U0001F600\" stands where a number, nan or inf is expected"},
        {"\xEF\xBB\xBFwait 1s\n # \U0001F600 \xE9t\xE9\n", "2:6: this is not UTF-8"},
        {"wait 1s # \xC3",                                 "1:11: this is not UTF-8"},
    };
    // clang-format on
    for (const auto &[script, mistake] : mistakes)
        EXPECT_EQ(mistakeIn(script), mistake);
}

} // namespace
