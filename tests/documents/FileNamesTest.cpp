// SPDX-License-Identifier: MIT
#include "documents/FileNames.h"

#include <gtest/gtest.h>

using namespace ostrel;

TEST(FileNamesTest, aCaptionIsCutOnlyWhenItDoesNotFit) {
    const auto cut = [](const char *text, float MaxWidth) {
        return ShortenCaption(text, MaxWidth, [](const QString &shown) { return static_cast<float>(shown.size()); });
    };
    EXPECT_EQ(cut("lysozyme", 8), "lysozyme");
    EXPECT_EQ(cut("lysozyme", 7), "lyso...");
    EXPECT_EQ(cut("lysozyme", 1), "l...");
    EXPECT_EQ(cut("a\xF0\x9F\xA7\xAA\xF0\x9F\xA7\xAA\xF0\x9F\xA7\xAA", 5), "a..."); // no half of a character
}
