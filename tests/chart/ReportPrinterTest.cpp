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
    struct Pdf {
        bool good;
        qsizetype pages;
        QByteArray content;
    };
    Pdf print(const ReportOptions &options) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        const bool good = paintReport(writer, {data, axes, {}, {}}, options);
        return {good, buffer.data().count("/Type /Page\n"), buffer.data()};
    }
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
    EXPECT_EQ(print({}).pages, 1); // neither method nor notes
    data.methodTexts = {{QStringLiteral("Gradient\r\nHold"), 1}};
    data.notes = QStringLiteral("ok");
    EXPECT_EQ(print({}).pages, 2);
    data.notes = QStringLiteral("line\r\n").repeated(200) + QString(20000, QLatin1Char('x'));
    EXPECT_GE(print({}).pages, 7);
    EXPECT_EQ(print({.chromatogram = false, .notes = false}).pages, 1);
    data.notes.clear();
    EXPECT_EQ(print({.chromatogram = false, .method = false}).pages, 1); // says that there are none
    const Pdf nothing = print({.chromatogram = false, .method = false, .notes = false});
    EXPECT_TRUE(nothing.good);
    EXPECT_TRUE(nothing.content.isEmpty());
}

TEST_F(ReportPages, drawsLinesWhoseNumberThePaperDecides) {
    samples(500000);
    const Pdf pdf = print({});
    EXPECT_TRUE(pdf.good);
    EXPECT_FALSE(pdf.content.contains("/Subtype /Image"));
    EXPECT_LT(pdf.content.size(), 300000);
    EXPECT_LT(print({.traceFlags = 1}).content.size(), pdf.content.size() / 3); // traces left out
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
    data.notes = QStringLiteral("on a second page");
    EXPECT_FALSE(paintReport(jammed, {data, axes, {}, {}}, {}));
}

TEST_F(ReportPages, handsOneDocumentForEachCopyToItsPrinterAndTellsARefusal) {
    Quillchart chart(3);
    chart.setChartTitle(QStringLiteral("Lysozyme"));
    qint16 error = 0;
    QObject::connect(&chart, &Quillchart::ChartError, [&](qint16, qint16 ErrorCode) { error = ErrorCode; });
    chart.PrintChart(true, true, true, 7);
    EXPECT_EQ(error, -14); // there is no printer
    bool takes = true;
    QStringList names;
    QByteArray report;
    chart.setPrinter({[] { return QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Landscape, {}); },
                      [&](const QByteArray &document, const QString &name) {
                          names << name;
                          report = document;
                          return takes;
                      }});
    error = 0;
    chart.PrintChart(true, true, true, 7);
    chart.PrintChart(false, false, false, 7); // nothing
    EXPECT_EQ(error, 0);
    EXPECT_EQ(names, QStringList{QStringLiteral("Lysozyme")});
    EXPECT_TRUE(report.startsWith("%PDF-"));
    EXPECT_TRUE(report.contains("/CreationDate"));
    EXPECT_TRUE(report.contains("/MediaBox [0 0 595.")) << "not the paper that was asked for";
    takes = false;
    chart.PrintChart(true, true, true, 7);
    EXPECT_EQ(error, -14);
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
    const double line = QFontMetricsF(font).height() * 1.15;
    TextFlow flow({200, 12 * line}, font);
    flow.add(QStringLiteral("Method"), QStringList(8, QStringLiteral("step")), font); // three lines are left
    EXPECT_EQ(flow.pages(), 1);
    flow.add(QStringLiteral("Notes"), {QStringLiteral("ok")}, font);
    EXPECT_EQ(flow.pages(), 2);
}

} // namespace
