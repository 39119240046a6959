// SPDX-License-Identifier: MIT
#include "shell/frmDataRecovery.h"

#include "RecoveryFixture.h"

#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

class frmDataRecoveryTest : public RecoveryFixture {
protected:
    /// Shows the form with two logs and lets `deed` work on it.
    void show(const std::function<void(frmDataRecovery &, QListWidget &, QPushButton &)> &deed) {
        leave("17", "Alpha");
        leave("18", "Beta");
        dialog = [&](Recovery &loaded) {
            frmDataRecovery form(loaded, nullptr);
            QTimer::singleShot(0, &form, [&] {
                deed(form, *form.findChild<QListWidget *>("lstLogFiles"),
                     *form.findChild<QPushButton *>("cmdRecoverButton"));
                form.close();
            });
            form.exec();
        };
        offer();
    }
    static void click(QListWidget &list, int row, int x) {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {x, list.visualItemRect(list.item(row)).center().y()});
    }
};

TEST_F(frmDataRecoveryTest, aClickOnARowOrItsBoxAndTheSpaceBarCheckIt) {
    show([](frmDataRecovery &, QListWidget &list, QPushButton &recover) {
        for (const int x : {10, 100}) {
            EXPECT_FALSE(recover.isEnabled());
            click(list, 1, x);
            EXPECT_TRUE(recover.isEnabled());
            click(list, 1, x);
        }
        EXPECT_FALSE(recover.isEnabled());
        QTest::keyClick(&list, Qt::Key_Space);
        EXPECT_TRUE(recover.isEnabled());
    });
    EXPECT_EQ(standing(), "17 18");
}

TEST_F(frmDataRecoveryTest, enterRecoversAndTheLastRowEndsTheForm) {
    cancelled = {"Alpha"};
    show([this](frmDataRecovery &form, QListWidget &list, QPushButton &recover) {
        click(list, 0, 100);
        click(list, 1, 100);
        QTest::keyClick(&list, Qt::Key_Return);
        ASSERT_EQ(list.count(), 1);
        EXPECT_FALSE(recover.isEnabled());
        cancelled.clear();
        click(list, 0, 100);
        recover.click();
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(saved, "Beta from 18, Alpha from 17");
}

} // namespace
