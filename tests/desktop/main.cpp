// SPDX-License-Identifier: MIT
#include <QApplication>
#include <gtest/gtest.h>

namespace {

/// What reaches the event loop ends there, as in the program, and is counted in the property "caught".
class CatchingApplication : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (...) {
            setProperty("caught", property("caught").toInt() + 1);
            return true;
        }
    }
};

} // namespace

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) // while the cases are collected there may be no display
        return RUN_ALL_TESTS();
    const CatchingApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
