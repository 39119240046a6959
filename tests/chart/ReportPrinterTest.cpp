// SPDX-License-Identifier: MIT
#include "chart/report/ReportPrinter.h"

#include "chart/Quillchart.h"
#include "chart/plot/TracePath.h"
#include "chart/report/TextFlow.h"

#include <QBuffer>
#include <QPdfWriter>
#include <gtest/gtest.h>

namespace {

struct ReportPages : testing::Test {
    QByteArray printed(const ReportOptions &options = {}) {
        return reportAsPdf({QPageSize(QPageSize::A4), {}, {}}, {data, axes, {}, {}}, options).value_or("nothing");
    }
    qsizetype pages(const ReportOptions &options = {}) { return printed(options).count("/Type /Page\n"); }
    void samples(int count) {
        for (int i = 0; i < count; ++i)
            data.samples.append({static_cast<float>(i % 100) / 100, static_cast<float>(i % 77)});
        axes.timeMax = data.lastTime();
    }

    ChartData data;
    AxisValues axes;
};

TEST_F(ReportPages, takesAPageForTheChromatogramAndAsManyAsTheTextsNeed) {
    samples(3000);
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

TEST_F(ReportPages, drawsLinesWhoseNumberThePaperDecides) {
    samples(500000);
    const QByteArray report = printed();
    EXPECT_FALSE(report.contains("/Subtype /Image"));
    EXPECT_LT(report.size(), 300000);
    EXPECT_LT(printed({.traceFlags = 1}).size(), report.size() / 3); // traces left out
}

TEST_F(ReportPages, tellsWhenTheDeviceFails) {
    QPdfWriter nowhere(QStringLiteral("/nonexistent/report.pdf"));
    EXPECT_FALSE(paintReport(nowhere, {data, axes, {}, {}}, {}));

    struct JammedPrinter : QPdfWriter {
        using QPdfWriter::QPdfWriter;
        bool newPage() override { return false; }
    };
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    JammedPrinter jammed(&buffer);
    data.notes = "on a second page";
    EXPECT_FALSE(paintReport(jammed, {data, axes, {}, {}}, {}));
}

TEST_F(ReportPages, handsOneDocumentForEachCopyToItsPrinterAndTellsARefusal) {
    Quillchart chart(3);
    chart.setChartTitle("Lysozyme");
    qint16 error = 0;
    QObject::connect(&chart, &Quillchart::ChartError, [&](qint16, qint16 ErrorCode) { error = ErrorCode; });
    const auto errorOf = [&](bool anything) {
        error = 0;
        chart.PrintChart(anything, anything, anything, 7);
        return error;
    };
    EXPECT_EQ(errorOf(true), -14); // there is no printer
    bool takes = true;
    QString names;
    QByteArray report;
    chart.setPrinter({[] { return QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Landscape, {}); },
                      [&](const QByteArray &document, const QString &name) {
                          names += name;
                          report = document;
                          return takes;
                      }});
    EXPECT_EQ(errorOf(true), 0);
    EXPECT_EQ(errorOf(false), 0); // nothing is printed
    EXPECT_EQ(names, "Lysozyme");
    EXPECT_TRUE(report.startsWith("%PDF-") && report.contains("/CreationDate"));
    EXPECT_TRUE(report.contains("/MediaBox [0 0 595.")) << "not the paper that was asked for";
    takes = false;
    EXPECT_EQ(errorOf(true), -14);
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
    EXPECT_EQ(dashes[11].first(), QPointF(500, 20));
}

TEST(TextFlow, keepsAHeadingWithItsText) {
    QFont font;
    font.setPixelSize(10);
    TextFlow flow({200, 12 * 1.15 * QFontMetricsF(font).height()}, font);
    flow.add("Method", QStringList(8, "step"), font); // three lines are left
    EXPECT_EQ(flow.pages(), 1);
    flow.add("Notes", {"ok"}, font);
    EXPECT_EQ(flow.pages(), 2);
}

} // namespace
