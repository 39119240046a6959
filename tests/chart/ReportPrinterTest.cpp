// SPDX-License-Identifier: MIT
#include "chart/report/ReportPrinter.h"

#include "chart/plot/TracePath.h"

#include <QLineF>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

using namespace ostrel;

namespace {

struct ReportPages : testing::Test {
    QByteArray printed(const ReportOptions &options = {}) {
        return *reportAsPdf({QPageSize(QPageSize::A4), {}, {}}, {data, axes, {}, {}}, options);
    }
    qsizetype pages(const ReportOptions &options = {}) { return printed(options).count("/Type /Page\n"); }

    ChartData data;
    AxisValues axes;
};

TEST_F(ReportPages, takesAPageForTheChromatogramAndAsManyAsTheTextsNeed) {
    EXPECT_EQ(pages(), 1); // neither method nor notes
    data.methodTexts = {{"Gradient\r\nHold", 1}};
    data.notes = "ok";
    EXPECT_EQ(pages(), 2);
    data.notes = QString("line\r\n").repeated(200) + QString(20000, u'x');
    EXPECT_GE(pages(), 7);
    EXPECT_EQ(pages({.chromatogram = false, .notes = false}), 1);
    data.notes.clear();
    EXPECT_EQ(pages({.chromatogram = false, .method = false}), 1); // says that there are none
    EXPECT_EQ(printed({.chromatogram = false, .method = false, .notes = false}), "");
}

TEST_F(ReportPages, knowsItsTitleItsSystemAndItsParts) {
    data.title = QString("office ") + QChar(0xd800) + QChar(0) + ")>> <x>&";
    data.provenance.system = "Velquin (2)";
    data.marks = {{"S\t1", 0, 1, 0}, {"E", 0, 1, 5}};
    data.notes = "ok";
    const QByteArray report = printed();
    const QByteArray appended = report.mid(report.indexOf("%%EOF"));
    const auto text = [](const char *latin) {
        QByteArray hex("<feff");
        for (const char *c = latin; *c != 0; ++c)
            hex += "00" + QByteArray(c, 1).toHex();
        return hex + '>';
    };
    EXPECT_TRUE(appended.contains("/Author " + text("Velquin (2)")));
    for (const char *part : {"Chromatogram", "Event marks", "Method", "Notes"})
        EXPECT_EQ(appended.count("/Title " + text(part)), 1) << part;
    const qsizetype table = appended.mid(appended.lastIndexOf("startxref") + 10).split('\n')[0].toLongLong();
    EXPECT_TRUE(report.mid(table).startsWith("xref\n")); // a wrong place would leave a reader with the old details
    const qsizetype xmp = report.indexOf("<x:xmpmeta");
    QXmlStreamReader xml(report.mid(xmp, report.indexOf("<?xpacket end") - xmp));
    while (!xml.atEnd())
        xml.readNext();
    EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
}

TEST_F(ReportPages, theChromatogramLiesAsThePaperAndTextsStand) {
    data.notes = "ok";
    const auto boxes = [&](QPageLayout::Orientation orientation) {
        const QPageLayout paper(QPageSize(QPageSize::A4), orientation, {});
        const QByteArray report = *reportAsPdf(paper, {data, axes, {}, {}}, {});
        return std::pair(report.count("[0 0 842."), report.count("[0 0 595."));
    };
    EXPECT_EQ(boxes(QPageLayout::Landscape), std::pair(qsizetype{1}, qsizetype{1}));
    EXPECT_EQ(boxes(QPageLayout::Portrait), std::pair(qsizetype{0}, qsizetype{2}));
}

TEST_F(ReportPages, drawsLinesWhoseNumberThePaperDecides) {
    for (int i = 0; i < 500000; ++i)
        data.samples.append({static_cast<float>(i % 100) / 100, static_cast<float>(i % 77)});
    axes.timeMax = data.lastTime();
    const QByteArray report = printed();
    EXPECT_FALSE(report.contains("/Subtype /Image"));
    EXPECT_LT(report.size(), 300000);
}

TEST_F(ReportPages, goesToThePrinterOnThePaperThatIsSet) {
    const QPageLayout paper(QPageSize(QPageSize::A5), QPageLayout::Landscape, {});
    const auto print = [](const QByteArray &document, const QString &) { return document.contains("[0 0 595."); };
    EXPECT_TRUE(printReport({[&] { return paper; }, print}, {data, axes, {}, {}}, {}));
}

TEST(Dashes, keepTheirLengthOnANoisyLine) {
    QPolygonF noisy;
    for (int x = 0; x <= 200; ++x)
        noisy << QPointF(x, x % 2 == 0 ? 0 : 3);
    const std::vector<QPolygonF> dashes = dashed({noisy, {{500, 0}, {500, 200}}}, 12, 8);
    ASSERT_EQ(dashes.size(), 20U);
    for (const QPolygonF &dash : dashes)
        EXPECT_NEAR(QLineF(dash.first(), dash.last()).length(), 12, 0.1);
    EXPECT_EQ(dashes[10].first(), QPointF(500, 0)); // each line begins with one
}

} // namespace
