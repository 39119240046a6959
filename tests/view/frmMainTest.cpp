// SPDX-License-Identifier: MIT
#include "view/frmMain.h"

#include "chart/Quillchart.h"
#include "forms/FormBuilder.h"
#include "view/MainWindowTables.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

#include <set>

using namespace ostrel;

namespace {

class frmMainTest : public testing::Test {
protected:
    void SetUp() override {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    frmMain window;
};

TEST_F(frmMainTest, ShortcutsAndAccessKeysAreUnique) {
    std::set<QString> shortcuts;
    for (const QAction *top : window.menuBar()->actions()) {
        std::set<QString> accessKeys;
        for (const QAction *item : top->menu()->actions()) {
            if (item->isSeparator())
                continue;
            EXPECT_TRUE(accessKeys.insert(QKeySequence::mnemonic(item->text()).toString()).second);
            EXPECT_TRUE(item->shortcut().isEmpty() || shortcuts.insert(item->shortcut().toString()).second);
        }
    }
}

TEST_F(frmMainTest, EveryButtonHasAPictureOfItsOwnInAllLooks) {
    std::set<qint64> pictures;
    for (const auto &row : MainWindowTables::buttons()) {
        if (row.key[0] == '\0')
            continue;
        const QIcon icon = window.action(row.key)->icon();
        const QImage normal = icon.pixmap(32).toImage();
        ASSERT_EQ(normal.size(), QSize(32, 32)) << row.key;
        EXPECT_NE(normal, icon.pixmap(32, QIcon::Disabled).toImage()) << row.key;
        pictures.insert(qint64(qHashBits(normal.constBits(), size_t(normal.sizeInBytes()))));
    }
    EXPECT_EQ(pictures.size(), 10U);
}

TEST_F(frmMainTest, ButtonsReportTheirKeyAndTheGroupAlsoWhenAlreadyDown) {
    QStringList told;
    window.clicked = [&](const QString &key) { told << key + (window.action(key)->isChecked() ? "+" : ""); };
    auto *toolbar = window.findChild<QToolBar *>("Toolsbar");
    for (const char *key : {"cmdStop", "cmdRecord", "cmdMethod", "cmdMethod", "cmdOpen"})
        QTest::mouseClick(toolbar->widgetForAction(window.action(key)), Qt::LeftButton);
    EXPECT_EQ(told, QStringList({"cmdStop+", "cmdRecord+", "cmdMethod+", "cmdMethod", "cmdOpen"}));
    EXPECT_FALSE(window.action("cmdStop")->isChecked());
}

TEST_F(frmMainTest, TheWindowSnapsBackToTheRoomThatThePanelsNeed) {
    window.setOuterSize(3000, 2000);
    const auto *panels = window.findChild<QWidget *>("FrameScaleAxis");
    EXPECT_NEAR(window.frameGeometry().width() * 15, std::max(7850, panels->width() * 15 + 100), 15);
    EXPECT_NEAR(window.frameGeometry().height() * 15, 5000, 15);
    EXPECT_EQ(panels->geometry().bottom(), panels->parentWidget()->rect().bottom());

    const QSize asDrawn = panels->size();
    for (float width = 9000; width < 9100; width += 15)
        window.setOuterSize(width, 6000);
    EXPECT_EQ(panels->size(), asDrawn);
}

TEST_F(frmMainTest, NoTextIsCut) {
    for (const QLabel *label : window.findChildren<QLabel *>(QRegularExpression("^lbl")))
        EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(label->text())) << qPrintable(label->text());
    for (const OptionButton *option : window.time().optTimeAxis)
        EXPECT_GE(option->width(), option->sizeHint().width());
    EXPECT_LE(window.time().optTimeAxis[1]->geometry().right(), window.time().txtChartTime->geometry().left());
}

TEST_F(frmMainTest, ATabsTipIsTheNameOfItsFileAsItStands) {
    const auto tipFor = [this](const QString &name) {
        window.TabChart().setTabToolTip(1, name);
        const QPoint head = window.TabChart().tabRect(1).center();
        QHelpEvent hovers(QEvent::ToolTip, head, window.TabChart().mapToGlobal(head));
        QApplication::sendEvent(&window.TabChart(), &hovers);
        return QToolTip::text();
    };
    EXPECT_EQ(tipFor("run&1.chd"), "run&1.chd");
    EXPECT_TRUE(tipFor("<b>run.chd").contains("&lt;b&gt;run.chd"));
}

} // namespace
