// SPDX-License-Identifier: MIT
#include "help/QtHelpViewer.h"
#include "help/frmHelp.h"

#include <QTest>
#include <QtWidgets>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

const QString helpFile = QStringLiteral(HELP_FOLDER "/Ostrel.hlp");

struct HelpTest : testing::Test {
    QListWidgetItem &topic(const QString &title) const { return *topics.findItems(title, Qt::MatchExactly).at(0); }

    frmHelp help{helpFile};
    QTextBrowser &page = *help.findChild<QTextBrowser *>("txtPage");
    QListWidget &topics = *help.findChild<QListWidget *>("lstTopics");
};

TEST(HelpPages, everyContextHasItsPageAndEveryTopicAndLinkLeadsToAFile) {
    const HelpTopics topics(helpFile);
    for (int context = 0; context < 12; ++context) // there is no 7
        EXPECT_EQ(topics.pageOf(context) == topics.pageOf(0), context == 0 || context == 7) << context;
    for (const HelpTopic &row : topics.rows())
        EXPECT_TRUE(row.page.isEmpty() || QFile::exists(row.page)) << qPrintable(row.title);
    const QDir folder(HELP_FOLDER "/help");
    for (const QString &name : folder.entryList({"*.html"})) {
        const QRegularExpression link("(?:href|src)=\"([^\"#]+)");
        for (const auto &match : link.globalMatch(helpText(folder.filePath(name))))
            EXPECT_TRUE(folder.exists(match.captured(1))) << qPrintable(name + " names " + match.captured(1));
    }
}

TEST_F(HelpTest, showsTheTopicOfAContextAlsoOverAModalDialogAndOutlivesThat) {
    help.showTopic(7); // which is the index
    QDialog dialog;
    QTimer::singleShot(0, &dialog, [&] {
        const QRect port = topics.visualItemRect(&topic("Choosing the COM port"));
        QTest::mouseClick(topics.viewport(), Qt::LeftButton, {}, port.center());
        help.showTopic(2);
        dialog.reject();
    });
    dialog.exec();
    Q_EMIT page.anchorClicked(QUrl("http://localhost/")); // nothing outside of the help
    EXPECT_EQ(page.source().fileName(), "export.html");
    QApplication::setActiveWindow(&help);
    QTest::keyClick(&page, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(topics.currentItem()->text(), "Choosing the COM port");
    const int size = page.font().pointSize();
    QTest::keyClick(&page, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_LT(page.font().pointSize(), size);
    QTest::keyClick(&page, Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST_F(HelpTest, findsTopicsByTheirTextsAndMarksThePlaces) {
    auto *search = help.findChild<QLineEdit *>("txtSearch");
    QTest::keyClicks(search, "dialout  anna");
    EXPECT_TRUE(topic("Choosing the COM port").isHidden() && topic("First steps").isHidden()); // one word, a heading
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(topics.currentItem()->text(), "From connected to printed report");
    EXPECT_EQ(page.textCursor().selectedText().toLower(), "dialout");
    help.showTopic(2); // a search does not outlive its topic
    EXPECT_TRUE(!topic("Choosing the COM port").isHidden() && page.extraSelections().isEmpty());
}

TEST(QtHelpViewerTest, tellsWhereAMissingHelpShouldBe) {
    QtHelpViewer help;
    help.showTopic(3); // on the splash window, which knows of no file yet
    help.HelpFile = "/nowhere/Ostrel.hlp";
    help.showTopic(3);
    const QWidgetList all = QApplication::allWidgets();
    const auto page = std::find_if(all.begin(), all.end(), [](auto *each) { return each->objectName() == "txtPage"; });
    ASSERT_NE(page, all.end());
    EXPECT_TRUE(dynamic_cast<QTextBrowser &>(**page).toPlainText().contains("/nowhere/Ostrel.hlp"));
}

} // namespace
