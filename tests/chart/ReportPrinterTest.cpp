// SPDX-License-Identifier: MIT
#include "chart/ReportPrinter.h"

#include "chart/TextFlow.h"

#include <QBuffer>
#include <QPdfWriter>
#include <gtest/gtest.h>

namespace {

struct ReportPrinter : testing::Test {
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

TEST_F(ReportPrinter, takesAPageForTheChromatogramAndAsManyAsTheTextsNeed) {
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

TEST_F(ReportPrinter, drawsLinesWhoseNumberThePaperDecides) {
    samples(500000);
    const Pdf pdf = print({});
    EXPECT_TRUE(pdf.good);
    EXPECT_FALSE(pdf.content.contains("/Subtype /Image"));
    EXPECT_LT(pdf.content.size(), 300000);
    EXPECT_LT(print({.traceFlags = 1}).content.size(), pdf.content.size() / 3); // traces left out
}

TEST_F(ReportPrinter, tellsWhenTheDeviceFails) {
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
