// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"

#include <QComboBox>
#include <QLabel>
#include <QLocale>

namespace {

class frmExportTest : public StartedProgram {
protected:
    frmExportTest() { give(10); }

    void pick(const char *rate) {
        auto &list = *find<QComboBox>("cmbSamlingRate");
        list.setCurrentText(QLatin1String(rate));
        Q_EMIT list.activated(list.currentIndex());
    }
    void clickAll(const QStringList &controls) {
        for (const QString &control : controls)
            click(control);
    }
    /// The number of points that the form shows, in both of its places.
    QString points(float minutes, const char *rate, const char *region = "optDataRegion(1)") {
        give(minutes);
        QString shown;
        inForm("mnuExport", [&](QDialog &) {
            pick(rate);
            click(region);
            shown = find<QLabel>("lblNumPoints")->text();
            EXPECT_EQ(find<QLabel>("lblTotal")->text(), QString(shown).replace("data points", "Data Points)"));
        });
        return shown.remove("  data points");
    }
    /// The recorder shows a window of two minutes from here on.
    void zoom(float from, float to) { Q_EMIT chart(0).Zoomed(0, from, to, 0, 1, 0, 100); }
};

TEST_F(frmExportTest, CountsPoints) {
    EXPECT_EQ(points(10, "1"), "600");
    EXPECT_EQ(points(100, "0.0333"), "200");
    EXPECT_EQ(points(10, "0.025"), "16"); // of the odd 15
    EXPECT_EQ(points(0, "5"), "0");
    zoom(2.5F, 4.5F);
    EXPECT_EQ(points(10, "5", "optDataRegion(0)"), "600");
    zoom(10, 12); // behind the end of the data
    EXPECT_EQ(points(10, "5", "optDataRegion(0)"), "0");
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(points(10, "0.5"), "300"); // the list's point stays one
    QLocale::setDefault(QLocale::c());
}

TEST_F(frmExportTest, ComesUpWithTheWholeRun) {
    give(12.345F);
    zoom(3, 20);
    inForm("mnuExport", [this](QDialog &form) {
        EXPECT_EQ(find<QAbstractButton>("optDataRegion(1)")->text(),
                  "All Data               (Time:  0.00  to  12.35  minutes) "); // 12.3467
        EXPECT_EQ(find<QAbstractButton>("optDataRegion(0)")->text(),
                  "Selected Data     (Time:  3.00  to  12.35  minutes) ");
        QTest::keyClick(&form, Qt::Key_Return);
    });
    EXPECT_EQ(exportDialog.shown.size(), 1U); // Enter exports, and the operator has cancelled
    EXPECT_TRUE(prompts.shown.empty());
}

TEST_F(frmExportTest, ExportsWhatIsChosen) {
    chart(0).AddMethodText("Gradient\r\n", 0);
    chart(0).SetNotes("pH 7");
    zoom(2.5F, 4.5F);
    exportDialog.answers = {path("run.txt")};
    prompts.pointerChanges = 0;
    inForm("mnuExport", [this](QDialog &form) {
        clickAll({"optMethodPos(2)", "chkMethod", "chkEvents", "optDataRegion(0)"});
        EXPECT_FALSE(usable("optMethodPos(2)"));
        EXPECT_TRUE(usable("lblPosition"));
        pick("0.25");
        give(99); // the instrument goes on
        click("cmdExport");
        EXPECT_FALSE(form.isVisible());
    });
    const QString text = QString::fromUtf8(content("run.txt"));
    EXPECT_TRUE(text.contains("\n2.5") && !text.contains("\n4.56") && !text.contains("Gradient")) << qPrintable(text);
    EXPECT_EQ(text.count(QRegularExpression("^[0-9.]+\t", QRegularExpression::MultilineOption)), 30);
    EXPECT_TRUE(prompts.pointerChanges == 2 && prompts.pointer == MousePointer::Default);
    const auto &dialog = exportDialog.shown.at(0);
    EXPECT_EQ(dialog.title + dialog.extension + QString::number(dialog.flags), "Export Data Text File As...txt2054");
}

TEST_F(frmExportTest, TellsAFailureAndLeavesNoHourglass) {
    lay("run.chd", 1); // which a text never replaces
    exportDialog.answers = {path("none/run.txt"), path("run.chd")};
    for (int i = 0; i < 2; ++i)
        inForm("mnuExport", [this](const QDialog &) { click("cmdExport"); });
    EXPECT_EQ(told(), "Cannot Export.;Cannot Export.");
    EXPECT_EQ(prompts.pointer, MousePointer::Default);
}

TEST_F(frmExportTest, ExportsOnlySomething) {
    inForm("mnuExport", [this](QDialog &form) {
        clickAll({"chkUV", "chkCond", "chkEvents", "chkNotes"});
        EXPECT_TRUE(usable("cmdExport"));
        click("chkMethod");
        EXPECT_FALSE(usable("cmdExport"));
        EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdCancel");
        click("chkMethod");
        EXPECT_TRUE(usable("cmdExport"));
        EXPECT_TRUE(find<QAbstractButton>("optMethodPos(0)")->isChecked());
        QTest::keyClick(&form, Qt::Key_Escape);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_TRUE(exportDialog.shown.empty());
}

} // namespace
