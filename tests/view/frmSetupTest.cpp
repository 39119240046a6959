// SPDX-License-Identifier: MIT
#include "acquisition/frmSetup.h"

#include "fakes/FakePlatform.h"

#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

/// The computer has the ports 1, 2 and 4; the link is on 2.
class frmSetupTest : public testing::Test {
protected:
    frmSetupTest() {
        options.ComPortNumber = 2;
        ComPort.setCommPort(2);
        for (const int missing : {3, 5, 6, 7, 8, 9, 10})
            CommTmp.failing[missing] = 8002;
        setup.load();
    }
    /// Shows the form, lets `deed` work on it and answers how it ended.
    int show(bool mayCancel, const std::function<void(frmSetup &)> &deed) {
        frmSetup form(setup, mayCancel, nullptr);
        QTimer::singleShot(0, &form, [&] { deed(form); });
        return form.exec();
    }
    static void click(frmSetup &form, const char *name) { form.findChild<QAbstractButton *>(name)->click(); }

    FakeSerialControl ComPort;
    FakeSerialControl CommTmp;
    FakeClock clock;
    FakeTimer watchdog{clock, 5000};
    Options options;
    LinkState link;
    FakePrompts prompts;
    PortSetup setup{ComPort, CommTmp, watchdog, options, link, prompts};
};

TEST_F(frmSetupTest, ShowsWhatCanBeChosenAndThePresentPort) {
    show(true, [](frmSetup &form) {
        EXPECT_TRUE(form.findChild<OptionButton *>("optCom(1)")->Value());
        EXPECT_TRUE(form.findChild<OptionButton *>("optCom(3)")->isEnabled());
        EXPECT_FALSE(form.findChild<OptionButton *>("optCom(2)")->isEnabled());
        form.close();
    });
}

TEST_F(frmSetupTest, EnterTakesThePickedPortAndEscapeForgetsIt) {
    EXPECT_EQ(show(true,
                   [](frmSetup &form) {
                       click(form, "optCom(3)");
                       QTest::keyClick(&form, Qt::Key_Escape);
                   }),
              QDialog::Rejected);
    EXPECT_EQ(options.ComPortNumber, 2);
    EXPECT_EQ(show(true,
                   [](frmSetup &form) {
                       click(form, "optCom(3)");
                       QTest::keyClick(&form, Qt::Key_Return);
                   }),
              QDialog::Accepted);
    EXPECT_EQ(options.ComPortNumber, 4);
}

TEST_F(frmSetupTest, StaysUntilAPortOpensWhenItMayNotBeCancelled) {
    ComPort.failing[4] = 8005;
    show(false, [&](frmSetup &form) {
        EXPECT_FALSE(form.findChild<QAbstractButton *>("cmdCancel")->isEnabled());
        form.close();
        click(form, "optCom(3)");
        click(form, "cmdOk");
        EXPECT_TRUE(form.isVisible());
        click(form, "optCom(0)");
        click(form, "cmdOk");
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(options.ComPortNumber, 1);
}

} // namespace
