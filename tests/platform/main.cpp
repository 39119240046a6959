// SPDX-License-Identifier: MIT
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) // while the cases are collected there may be no display
        return RUN_ALL_TESTS();
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
