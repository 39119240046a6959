// SPDX-License-Identifier: MIT
#include "base/HelpContexts.h"
#include "fakes/Spoken.h"
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
    QStringList found(const QString &words) {
        help.findChild<QLineEdit *>("txtSearch")->setText(words);
        QStringList titles;
        for (int row = 0; row < topics.count(); ++row)
            titles << topics.item(row)->text();
        return titles;
    }

    frmHelp help{helpFile};
    QTextBrowser &page = *help.findChild<QTextBrowser *>("txtPage");
    QListWidget &topics = *help.findChild<QListWidget *>("lstTopics");
};

TEST(HelpPages, everyContextHasItsPageAndEveryTopicAndLinkLeadsToAFile) {
    const HelpTopics topics(helpFile);
    for (int context = 0; context <= HelpContext::Axes; ++context) // there is no 7
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
    EXPECT_TRUE(topics.findItems("Choosing the COM port", Qt::MatchExactly).isEmpty()); // has only one of them
    EXPECT_TRUE(topics.findItems("First steps", Qt::MatchExactly).isEmpty());           // a heading
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(topics.currentItem()->text(), "From connected to printed report");
    EXPECT_EQ(page.textCursor().selectedText().toLower(), "dialout");
    help.showTopic(2); // a search does not outlive its topic
    EXPECT_TRUE(topics.count() > 20 && page.extraSelections().isEmpty());
}

TEST_F(HelpTest, findsWhatFitsBestFirst) {
    EXPECT_EQ(found("wastebasket").first(), "Getting a run back"); // which has it in a heading, or most often
    const QStringList log = found("log");
    EXPECT_TRUE(log.at(0) == "The log" || log.at(1) == "The log" || log.at(2) == "The log")
        << log.join(';').toStdString();
    EXPECT_GT(log.indexOf("Glossary"), log.indexOf("Saving the log")); // it is only a part of that word
    EXPECT_EQ(found("power failure recover").first(), "After a power failure");
    EXPECT_EQ(found("glossary qqq"), QStringList({"Glossary", "Index"})); // none has both
    EXPECT_EQ(found("qqq"), QStringList{"No topic has these words."});
    EXPECT_EQ(found("").first(), "Index"); // the whole contents again
}

TEST_F(HelpTest, everyControlHasASpokenName) {
    help.showTopic(1);
    EXPECT_EQ(unspoken(help), "");
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
