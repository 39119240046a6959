// SPDX-License-Identifier: MIT
#include "shell/frmDataRecovery.h"

#include "RecoveryFixture.h"

#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

using frmDataRecoveryTest = RecoveryFixture;

TEST_F(frmDataRecoveryTest, aRowOrItsBoxOrTheSpaceBarChecksItAndEnterRecoversIt) {
    leave("17", "Alpha");
    leave("18", "Beta");
    dialog = [](Recovery &loaded) {
        frmDataRecovery form(loaded, nullptr);
        auto &list = *form.findChild<QListWidget *>("lstLogFiles");
        const auto &recover = *form.findChild<QPushButton *>("cmdRecoverButton");
        QTimer::singleShot(0, &form, [&] {
            const int y = list.visualItemRect(list.item(1)).center().y();
            for (const int x : {10, 10, 100, 100}) {
                const bool wasChecked = recover.isEnabled();
                QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {x, y});
                EXPECT_NE(recover.isEnabled(), wasChecked);
            }
            QTest::keyClick(&list, Qt::Key_Space);
            QTest::keyClick(&list, Qt::Key_Return);
            EXPECT_EQ(list.count(), 1);
            form.close();
        });
        form.exec();
    };
    offer();
    EXPECT_EQ(saved, "Beta from 18");
    EXPECT_TRUE(exists("Log/17/Log00001.dat"));
}

} // namespace
