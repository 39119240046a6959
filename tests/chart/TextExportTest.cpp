// SPDX-License-Identifier: MIT
#include "chart/table/TextExport.h"

#include "chart/Quillchart.h"
#include "chart/RunFiles.h"
#include "chart/run/IsoDate.h"
#include "chart/table/Digits.h"
#include "chart/table/ExportRows.h"
#include "chart/table/ExportedPoints.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <cfloat>
#include <random>

namespace {

struct TextExport : testing::Test {
    /// Samples whose UV is their number over a thousand.
    void samples(int count) {
        for (int i = 0; i < count; ++i)
            data.samples.append({static_cast<float>(i) / 1000, 20});
    }
    QByteArray text() const {
        EXPECT_FALSE(exportText(path, data, options));
        return content(path);
    }
    /// The table without its heading, a text a row, with commas between the cells.
    QStringList rows(int points) {
        options.pointCount = points;
        const QStringList lines = QString(text()).replace(u'\t', u',').split("\r\n");
        const auto heading = lines.indexOf(QRegularExpression("^Time \\(min\\).*"));
        return lines.mid(heading + 1, lines.size() - heading - 2);
    }
    /// All of it, at that rate, with the number of points that the operator is shown.
    QStringList rowsAt(float rate) {
        options.to = data.lastTime();
        options.sampleRate = rate;
        return rows(static_cast<int>(exportedPoints(options.from, options.to, rate)));
    }

    QTemporaryDir folder;
    QString path = folder.filePath("run.txt");
    ChartData data;
    ExportOptions options;
};

TEST_F(TextExport, writesTheLayoutOfTheGoldenFile) {
    data.samples.append(std::vector<SamplePair>{{0.0012F, 19.95F}, {NAN, 20}, {-0.00175F, 20.0499F}, {1.8F, NAN}});
    data.marks = {{"S", 0, 10, 0}, {"1", 0, 10, 1 / 300.0F}, {"H", 0, 10, 1 / 300.0F}, {"E", 0, 10, 0.012F}};
    data.methodTexts = {{"=2+3\r\nGradient\t0 to 60 %\r\n", 0.01F}};
    data.notes = "Column \"B\", 25 °C\n- new buffer\r\n\r\n";
    data.title = "Run 7";
    options.sourceFile = "/data/run 7.chd";
    options.exported = QDateTime(QDate(2024, 5, 2), QTime(14, 3, 11), Qt::OffsetFromUTC, 7200);
    options.position = MethodPosition::SeparateColumn;
    options.to = 0.012F;
    options.pointCount = 4;
    EXPECT_EQ(text(), content(GOLDEN_FOLDER "/export.txt"));
    EXPECT_EQ(isoDate(QDateTime(QDate(2024, 5, 2), QTime(14, 3, 11), Qt::UTC)), "2024-05-02T14:03:11+00:00");
}

TEST_F(TextExport, holdsWhatWasChosenWhereItWasChosen) {
    samples(2);
    data.marks = {{"S", 0, 10, 0}};
    data.notes = "note";
    data.methodTexts = {{"second", 2}, {"first\r\nline", 1}};
    const auto outline = [&](const ExportOptions &chosen) {
        options = chosen;
        return QString(text()).split("\r\n").filter(QRegularExpression("^(N|n|M|f|l|s|Time|0|$)")).join(u'|');
    };
    EXPECT_EQ(outline({.cond = false, .events = false, .pointCount = 1}),
              "|Notes|note||Method|first|line||second||Time (min)\tUV (AU)|0.0000\t0.000000|");
    EXPECT_EQ(outline({.cond = false, .events = false, .position = MethodPosition::AfterData}),
              "|Notes|note||Time (min)\tUV (AU)||Method|first|line||second|");
    const auto column = MethodPosition::SeparateColumn; // without a table no column either
    EXPECT_EQ(outline({.uv = false, .cond = false, .events = false, .notes = false, .position = column}),
              "|Method|first|line||second|");
    EXPECT_EQ(outline({.uv = false, .cond = false, .notes = false, .method = false}),
              "|Time (min)\tEvent marks|0.0000\tS|");
}

TEST_F(TextExport, hasExactlyThePointsThatWereShown) {
    options = {.cond = false, .notes = false, .method = false};
    samples(1);
    EXPECT_EQ(rows(2), (QStringList{"0.0000,0.000000,", "0.0033,,"})); // there is no neighbour
    data.samples = {};
    samples(3001); // ten minutes
    data.marks = {{"E", 0, 10, 10}};
    EXPECT_EQ(rowsAt(5).size(), 3000);
    EXPECT_EQ(rowsAt(5).last(), "9.9967,2.999000,E"); // the mark of the sample that is left out
    EXPECT_EQ(rowsAt(1).size(), 600);
    EXPECT_EQ(rowsAt(1).last(), "9.9833,2.996500,E"); // takes the rest of the run: samples 2993 to 3000
    EXPECT_EQ(rowsAt(0.333F).size(), 200);
    EXPECT_EQ(rowsAt(0.01F).size(), 6);
    const QStringList lastTwo{"9.9967,2.999000,", "10.0000,3.000000,E"};
    options.from = 9.9965F; // a sample, and the next one with it
    EXPECT_EQ(rowsAt(5), lastTwo);
    options.from = 9.9985F; // one more than is left of the run
    EXPECT_EQ(rows(2), lastTwo);
    EXPECT_EQ(rows(0), QStringList{"10.0000,,E"});
    options.from = 4.001F; // between two samples
    options.to = 4.003F;
    EXPECT_EQ(rows(1), QStringList{"4.0033,1.201000,"});
}

/// What the dialog shows, and so what the file holds, at any rate and range; `samples` have their number as UV.
void expectPointsAsShown(const SampleStore &samples, float from, float to, float rate) {
    SCOPED_TRACE(testing::Message() << samples.size() << " samples, " << from << " to " << to << " at " << rate);
    const float last = static_cast<float>(ChartData::timeOf(samples.size() - 1));
    to = std::min(to, last);
    from = std::min(from, last);
    const auto shown = static_cast<qint32>(last > from ? exportedPoints(from, to, rate) : 0);
    const ExportRows rows(samples, from, to, rate, shown);
    ASSERT_EQ(rows.count(), shown);
    const double perRow = 5 / static_cast<double>(rate);
    const double told = last > 3000 ? 2 : 0; // in samples, what times of long runs are rounded by
    const auto place = [&](qint64 row) { return rows.tenThousandthsOf(row) * 300 / 1e4; };
    int empty = 0;
    for (qint64 row = 0; row<shown; row += row> 3 && row < shown - 4 ? 1 + shown / 97 : 1) {
        EXPECT_NEAR(place(row), place(0) + static_cast<double>(row) * perRow, 1e-3);
        const auto uv = static_cast<double>(rows.values(row).uv);
        empty += std::isnan(uv);
        EXPECT_FALSE(std::abs(uv - place(row)) > (rate == 5 ? 1e-3 : perRow / 2 + 1)) << uv << " at " << place(row);
    }
    EXPECT_LE(empty, told);
    if (shown > 0) {
        EXPECT_NEAR(place(0), static_cast<double>(from) * 300, 1.001 + told);
        EXPECT_LE(place(shown - 1), static_cast<double>(to) * 300 + 1.001 + told);
    }
}

TEST_F(TextExport, hasThePointsThatWereShownAtEveryRateAndRange) {
    std::mt19937 random(4);
    SampleStore run;
    for (const int size : {1, 2, 3, 4, 301, 1502, 450007, 12960000}) { // up to 30 days
        for (auto i = static_cast<int>(run.size()); i < size; ++i)
            run.append({static_cast<float>(i), 0});
        const float last = static_cast<float>(ChartData::timeOf(size - 1));
        std::uniform_real_distribution<float> anywhere(0, last * 1.1F);
        for (const float rate :
             {0.01F, 0.02F, 0.025F, 0.0333F, 0.05F, 0.1F, 0.2F, 0.25F, 0.333F, 0.5F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F}) {
            expectPointsAsShown(run, 0, last, rate);
            expectPointsAsShown(run, last / 3, last / 3, rate);
            for (int i = 0; i < 40; ++i) {
                const float from = anywhere(random);
                const float length = i % 2 == 0 ? anywhere(random) : anywhere(random) / static_cast<float>(size);
                expectPointsAsShown(run, from, from + length, rate);
            }
        }
    }
}

TEST_F(TextExport, thinsToMeansAroundTheRowsTimesAndKeepsEveryMark) {
    samples(12);
    data.samples.append({NAN, INFINITY});
    options = {.notes = false, .method = false};
    data.marks = {{"E", 0, 10, 11 / 300.0F}, {"S", 0, 10, 0}, {"1", 0, 10, 3 / 300.0F}, {"2", 0, 10, 4 / 300.0F}};
    EXPECT_EQ(rowsAt(1), (QStringList{"0.0000,0.001000,20.0000,S",     // samples 0 to 2
                                      "0.0167,0.005000,20.0000,1 & 2", // 3 to 7
                                      "0.0333,0.009500,20.0000,E"}));  // 8 to 11, 12 has no value
}

TEST_F(TextExport, writesTheDigitsOfPrintf) {
    std::mt19937 random(1);
    const auto same = [](float value) {
        char fast[2 * longestNumber];
        char slow[sizeof fast];
        *writeFixed<6>(writeFixed<4>(fast, value), value) = '\0';
        std::snprintf(slow, sizeof slow, "%.4f%.6f", static_cast<double>(value), static_cast<double>(value));
        EXPECT_STREQ(fast, slow);
    };
    for (const float value :
         {0.0F, -0.0F, 0.00005F, 0.03125F, -0.09375F, 99.99995F, 9999.9995F, 99999992.0F, 1e8F, FLT_MAX, 1e-45F})
        same(value);
    std::uniform_real_distribution<float> measured(-2, 500);
    for (int i = 0; i < 100000; ++i) {
        same(measured(random));
        if (const auto any = std::bit_cast<float>(static_cast<quint32>(random())); std::isfinite(any))
            same(any);
    }
}

TEST_F(TextExport, leavesTheOldFileWhenTheDiskFails) {
    lay(path, "old");
    samples(100000); // several pieces
    options.to = data.lastTime();
    options.pointCount = 100000;
    whateverFails([this](FaultyDisk &disk) {
        const bool good = !exportText(path, data, options, disk);
        EXPECT_TRUE(good || disk.struck());
        EXPECT_TRUE((content(path) == "old" && !good) || content(path).count('\n') > 100000);
    });
}

TEST_F(TextExport, takesTheOldTextsPlaceButNoRuns) {
    Quillchart chart(0);
    chart.AddSample(1, 20);
    const auto status = [&] { return chart.ExportData(path, 1, 1, 1, 1, 1, 0, 0, 0, 1, 1); };
    EXPECT_EQ(status(), 0);
    EXPECT_EQ(status(), 0);
    ASSERT_TRUE(chart.SaveDataFile(path));
    EXPECT_NE(status(), 0);
    EXPECT_TRUE(chart.LoadDataFile(path));
}

} // namespace
