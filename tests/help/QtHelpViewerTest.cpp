// SPDX-License-Identifier: MIT
#include "help/QtHelpViewer.h"

#include "help/HelpTopics.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <gmock/gmock.h>

namespace {

const QString helpFile = QStringLiteral(HELP_FOLDER "/Ostrel.hlp");

class QtHelpViewerTest : public testing::Test {
protected:
    QtHelpViewerTest() { help.HelpFile = helpFile; }

    static QWidget *window() {
        for (QWidget *shown : QApplication::topLevelWidgets()) {
            if (shown->objectName() == "frmHelp" && shown->isVisible())
                return shown;
        }
        return nullptr;
    }
    static QTextBrowser &page() { return *window()->findChild<QTextBrowser *>("txtPage"); }
    static QString shownPage() { return QFileInfo(page().source().path()).fileName(); }
    static QListWidget &topics() { return *window()->findChild<QListWidget *>("lstTopics"); }
    static int listed() {
        int rows = 0;
        for (int row = 0; row < topics().count(); ++row)
            rows += !topics().item(row)->isHidden();
        return rows;
    }

    QtHelpViewer help;
};

TEST(HelpPages, everyContextHasItsPageAndEveryTopicAFile) {
    const HelpTopics topics(helpFile);
    for (const int context : {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 11})
        EXPECT_EQ(topics.pageOf(context) == topics.pageOf(0), context == 0) << context;
    EXPECT_EQ(topics.pageOf(7), topics.pageOf(0));
    for (const HelpTopic &topic : topics.rows())
        EXPECT_TRUE(topic.page.isEmpty() || QFile::exists(topic.page)) << topic.title.toStdString();
}

TEST(HelpPages, everyLinkAndPictureLeadsSomewhere) {
    const QDir folder(HELP_FOLDER "/help");
    const QRegularExpression reference("(?:href|src)=\"([^\"#]+)");
    for (const QString &name : folder.entryList({"*.html"})) {
        const QString text = helpText(folder.filePath(name));
        EXPECT_TRUE(text.contains("help.css")) << name.toStdString();
        for (auto match = reference.globalMatch(text); match.hasNext();) {
            const QString target = match.next().captured(1);
            EXPECT_TRUE(folder.exists(target)) << name.toStdString() << " names " << target.toStdString();
        }
    }
}

TEST_F(QtHelpViewerTest, showsTheTopicOfAContextAndTheIndexForOthers) {
    help.showTopic(6);
    EXPECT_EQ(shownPage(), "port.html");
    EXPECT_EQ(topics().currentItem()->text(), "Choosing the COM port");
    help.showTopic(7);
    EXPECT_EQ(shownPage(), "index.html");
    QApplication::setActiveWindow(window());
    QTest::keyClick(&page(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shownPage(), "port.html");
    QTest::keyClick(&page(), Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(QtHelpViewerTest, findsTopicsByTheirTextsAndMarksThePlaces) {
    help.showTopic(0);
    const int all = listed();
    auto *search = window()->findChild<QLineEdit *>("txtSearch");
    QTest::keyClicks(search, "dialout  anna");
    EXPECT_GT(listed(), 0);
    EXPECT_LT(listed(), all / 2);
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_FALSE(topics().currentItem()->isHidden());
    EXPECT_EQ(page().textCursor().selectedText().toLower(), "dialout");
    help.showTopic(2);
    EXPECT_EQ(listed(), all); // a search does not outlive its topic
    EXPECT_TRUE(page().extraSelections().isEmpty());
}

TEST_F(QtHelpViewerTest, isUsableUnderAModalDialogAndOutlivesIt) {
    help.showTopic(0);
    QDialog dialog;
    QTimer::singleShot(0, &dialog, [&] {
        const QRect port = topics().visualItemRect(topics().findItems("Choosing the COM port", Qt::MatchExactly)[0]);
        QTest::mouseClick(topics().viewport(), Qt::LeftButton, {}, port.center());
        EXPECT_EQ(shownPage(), "port.html");
        help.showTopic(2);
        dialog.reject();
    });
    dialog.exec();
    EXPECT_EQ(shownPage(), "export.html");
}

TEST_F(QtHelpViewerTest, opensNothingOutsideOfTheHelp) {
    help.showTopic(0);
    Q_EMIT page().anchorClicked(QUrl("http://localhost/"));
    EXPECT_EQ(shownPage(), "index.html");
}

TEST_F(QtHelpViewerTest, tellsWhereAMissingHelpShouldBe) {
    help.HelpFile.clear();
    help.showTopic(3); // on the splash window
    EXPECT_EQ(window(), nullptr);
    help.HelpFile = "/nowhere/Ostrel.hlp";
    help.showTopic(3);
    EXPECT_THAT(page().toPlainText().toStdString(), testing::HasSubstr("/nowhere/Ostrel.hlp"));
}

} // namespace
