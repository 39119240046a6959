// SPDX-License-Identifier: MIT
#include "platform/QtCommonDialog.h"

#include "base/RunTimeError.h"
#include "base/Steps.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

class QtCommonDialogTest : public testing::Test {
protected:
    QtCommonDialogTest() {
        ComDlg.Filter = "Quillchart Log(*.chl)|*.chl|All Files(*.*)|*.*";
        ComDlg.DefaultExt = "chl";
        ComDlg.FileName = folder.filePath("Default");
    }
    /// Does something to the dialog once it is up.
    void whenUp(const std::function<void(QFileDialog &)> &act) {
        QTimer::singleShot(0, &owner, [act] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(dialog->objectName(), "ComDlg");
            act(*dialog);
        });
    }
    /// Sees the print setup come up with a file and a number of copies, sets others, and presses a key.
    void setUp(const QString &offered, const QString &file, int copies, Qt::Key key) {
        QTimer::singleShot(0, &owner, [=] {
            auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(dialog->objectName(), "ComDlg");
            EXPECT_EQ(dialog->windowTitle(), "Print Setup");
            auto *printers = dialog->findChild<QComboBox *>("printers");
            printers->setCurrentIndex(printers->count() - 1); // the file stands behind the computer's printers
            auto *name = dialog->findChild<QLineEdit *>("filename");
            EXPECT_EQ(QFileInfo(name->text()).fileName(), offered);
            name->setText(file);
            dialog->findChild<QSpinBox *>("copies")->setValue(copies);
            EXPECT_EQ(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->text(), "OK");
            QTest::keyClick(name, key);
            EXPECT_FALSE(dialog->isVisible());
            if (dialog->isVisible())
                dialog->reject();
        });
        ComDlg.ShowPrinter();
    }
    /// Where the next report goes, which is written.
    QString report() {
        const QString name = ComDlg.printer().outputFileName();
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        return QFileInfo(name).fileName();
    }
    static void enter(QFileDialog &dialog, const QString &name) {
        auto *edit = dialog.findChild<QLineEdit *>("fileNameEdit");
        if (!name.isEmpty())
            edit->setText(name);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    /// Enters a name, which is met by a box; presses one of its buttons, then leaves the dialog.
    void enterAndAnswer(QFileDialog &dialog, const QString &name, QMessageBox::StandardButton button) {
        QTimer::singleShot(0, &owner, [this, button] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            ++boxes;
            box->button(button)->click();
        });
        enter(dialog, name);
        if (dialog.isVisible())
            dialog.reject();
    }

    QTemporaryDir folder;
    QObject owner;
    QtCommonDialog ComDlg;
    int boxes = 0;
};

TEST_F(QtCommonDialogTest, aCancelLeavesNoNameAndRaisesWhenAsked) {
    whenUp([](QFileDialog &dialog) { dialog.reject(); });
    ComDlg.ShowOpen();
    EXPECT_EQ(ComDlg.FileName, "");
    ComDlg.CancelError = true;
    whenUp([](QFileDialog &dialog) { dialog.reject(); });
    EXPECT_EQ(errorNumberOf([this] { ComDlg.ShowSave(); }), RunTimeError::DialogCancelled);
}

TEST_F(QtCommonDialogTest, overwritingAsksAndAMissingFolderIsRefused) {
    const QString existing = folder.filePath("Default.chl");
    QFile file(existing);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ComDlg.Flags = 2054;
    whenUp([this](QFileDialog &dialog) { enterAndAnswer(dialog, "Default", QMessageBox::No); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, "");
    ComDlg.FileName = existing;
    whenUp([this](QFileDialog &dialog) { enterAndAnswer(dialog, "", QMessageBox::Yes); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, existing);
    ComDlg.FileName = "";
    whenUp([this](QFileDialog &dialog) { enterAndAnswer(dialog, folder.filePath("none/x"), QMessageBox::Ok); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, "");
    EXPECT_EQ(boxes, 3);

    ComDlg.Flags = 0;
    ComDlg.FileName = existing;
    whenUp([](QFileDialog &dialog) { enter(dialog, ""); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, existing);
}

TEST_F(QtCommonDialogTest, whatCannotBeMeantIsNotTaken) {
    QFile file(folder.filePath("plain"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ComDlg.FileName = folder.filePath("x");
    whenUp([](QFileDialog &dialog) { enter(dialog, "plain"); });
    ComDlg.ShowOpen(); // a file without extension stays what it is
    EXPECT_EQ(ComDlg.FileTitle, "plain");
    whenUp([this](QFileDialog &dialog) { enterAndAnswer(dialog, "5\" column", QMessageBox::Ok); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, "");
    EXPECT_EQ(boxes, 1);

    ComDlg.FileName = "/gone with its drive/run.chl"; // its name alone is offered where the last file was
    whenUp([](QFileDialog &dialog) { enter(dialog, ""); });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, folder.filePath("run.chl"));
}

TEST_F(QtCommonDialogTest, aNameToSaveUnderEndsInTheExtension) {
    ComDlg.Flags = 2054;
    const auto saved = [this](const QString &typed, const QString &filter = {}) {
        ComDlg.FileName = "";
        whenUp([=](QFileDialog &dialog) {
            if (!filter.isEmpty())
                dialog.selectNameFilter(filter);
            enter(dialog, typed);
            if (dialog.isVisible())
                dialog.reject();
        });
        ComDlg.ShowSave();
        EXPECT_TRUE(QFileInfo(ComDlg.FileName).fileName() == ComDlg.FileTitle);
        return QDir(folder.path()).relativeFilePath(ComDlg.FileName);
    };
    ASSERT_TRUE(QDir(folder.path()).mkdir("sub.d"));
    saved(folder.filePath("x")); // where the next ones begin
    EXPECT_EQ(saved("SEC 3.1"), "SEC 3.1.chl");
    EXPECT_EQ(saved("SEC 3.1", "All Files(*.*)"), "SEC 3.1.chl");
    EXPECT_EQ(saved("notes.txt", "All Files(*.*)"), "notes.txt.chl");
    EXPECT_EQ(saved("run.CHL"), "run.CHL");
    EXPECT_EQ(saved("runchl"), "runchl.chl");
    EXPECT_EQ(saved("run."), "run.chl");
    EXPECT_EQ(saved("run.chl  "), "run.chl");
    EXPECT_EQ(saved("SEC 3. "), "SEC 3.chl");
    EXPECT_EQ(saved("sub.d/a.b"), "sub.d/a.b.chl");
    saved(folder.filePath("x"));

    whenUp([](QFileDialog &dialog) { // into a folder, and a name there
        enter(dialog, "sub.d");
        EXPECT_TRUE(dialog.isVisible());
        enter(dialog, "c.d");
    });
    ComDlg.FileName = "";
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileName, folder.filePath("sub.d/c.d.chl"));
}

TEST_F(QtCommonDialogTest, whatIsReplacedOrRefusedIsTheCompletedName) {
    ComDlg.Flags = 2054;
    QFile file(folder.filePath("SEC 3.1.chl"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QDir(folder.path()).mkdir("box.chl"));
    const auto saved = [this](const QString &typed, QMessageBox::StandardButton button) {
        ComDlg.FileName = folder.filePath("x");
        const int before = boxes;
        whenUp([=, this](QFileDialog &dialog) { enterAndAnswer(dialog, typed, button); });
        ComDlg.ShowSave();
        EXPECT_EQ(boxes, before + 1) << qPrintable(typed);
        return ComDlg.FileTitle;
    };
    EXPECT_EQ(saved("SEC 3.1", QMessageBox::No), "");
    EXPECT_EQ(saved("SEC 3.1", QMessageBox::Yes), "SEC 3.1.chl");
    EXPECT_EQ(saved("box", QMessageBox::Ok), "");
    EXPECT_EQ(saved("none/", QMessageBox::Ok), "");
    EXPECT_EQ(saved("   ", QMessageBox::Ok), "");
    EXPECT_EQ(saved(QString(252, 'x'), QMessageBox::Ok), "");

    QFile picked(folder.filePath("picked"));
    ASSERT_TRUE(picked.open(QIODevice::WriteOnly));
    ComDlg.FileName = picked.fileName();
    ComDlg.Filter = "All Files(*.*)|*.*";
    whenUp([](QFileDialog &dialog) { // the file stands marked in the list
        auto *list = dialog.findChild<QListView *>("listView");
        QTRY_VERIFY(list->model()->rowCount(list->rootIndex()) > 2);
        for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
            if (const auto index = list->model()->index(row, 0, list->rootIndex()); index.data() == "picked")
                list->setCurrentIndex(index);
        }
        EXPECT_EQ(list->selectionModel()->selectedRows().size(), 1);
        dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save)->click();
    });
    ComDlg.ShowSave();
    EXPECT_EQ(ComDlg.FileTitle, "picked.chl");
}

TEST_F(QtCommonDialogTest, theSetupDecidesOnTheCopiesAndEachReportGetsAFileOfItsOwn) {
    EXPECT_EQ(ComDlg.printer().outputFileName(), ""); // nothing to print on yet
    ComDlg.Copies = 2;
    setUp("report.pdf", folder.filePath("gone.pdf"), 9, Qt::Key_Escape);
    EXPECT_EQ(ComDlg.Copies, 2);
    EXPECT_EQ(ComDlg.printer().outputFileName(), "");

    setUp("report.pdf", folder.filePath("2026-11"), 3, Qt::Key_Return);
    EXPECT_EQ(ComDlg.Copies, 3);
    EXPECT_EQ(ComDlg.printer().copyCount(), 1); // the program prints them one by one
    EXPECT_EQ(ComDlg.printer().outputFormat(), QPrinter::PdfFormat);

    setUp("2026-11.pdf", folder.filePath("run.pdf"), 1, Qt::Key_Return);
    EXPECT_EQ(report(), "run.pdf");
    EXPECT_EQ(report(), "run-2.pdf");
    setUp("run-3.pdf", "", 1, Qt::Key_Return); // without a name, what was offered goes on
    EXPECT_EQ(report(), "run-3.pdf");
    EXPECT_EQ(report(), "run-4.pdf");

    ComDlg.CancelError = true;
    EXPECT_EQ(errorNumberOf([this] { setUp("run-5.pdf", "x", 1, Qt::Key_Escape); }), RunTimeError::DialogCancelled);
}

} // namespace
