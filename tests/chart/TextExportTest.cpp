// SPDX-License-Identifier: MIT
#include "chart/table/TextExport.h"

#include "chart/RunFiles.h"
#include "chart/run/IsoDate.h"
#include "chart/table/Digits.h"
#include "chart/table/ExportRows.h"
#include "chart/table/ExportedPoints.h"
#include "chart/table/SheetWriter.h"

#include <QRegularExpression>

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

TEST_F(TextExport, tellsInItsHeadWhereTheRunComesFrom) {
    const auto at = [](int minute) {
        return QDateTime(QDate(2026, 11, 22), QTime(9, minute), Qt::OffsetFromUTC, 3600);
    };
    data.provenance.identity = "5f3a";
    data.provenance.system = "Cold room";
    data.provenance.program = "Ostrel MS 2.0";
    data.provenance.stretches = {{0, 4, at(0), at(4)}, {4, 9, at(7), QDateTime()}};
    const QString known = "System\tCold room\r\nRun\t5f3a\r\nRecorded from\t2026-11-22T09:00:00+01:00\r\n";
    EXPECT_TRUE(QString(text()).contains(known + "Recorded with\tOstrel MS 2.0\r\n")) << text().toStdString();
    data.provenance.stretches.back().ended = at(12);
    EXPECT_TRUE(QString(text()).contains(known + "Recorded to\t2026-11-22T09:12:00+01:00\r\nRecorded with"));
}

TEST_F(TextExport, noTextLeavesItsCellOrIsComputed) {
    const QString half = QString("a") + QChar(0xd800);
    for (const auto &[text, cell] : {std::pair(QString("=2+3"), "'=2+3"),
                                     {"\t=2+3", "\"'\t=2+3\""},
                                     {" \t@a", "\"' \t@a\""},
                                     {"\x01-1", "' -1"},
                                     {"5 =2+3", "5 =2+3"},
                                     {half + "\t=2+3", "\"a?\t=2+3\""},
                                     {half + "\r\n=2+3\x7f\v \f", "a? =2+3 "},
                                     {half + "\"", "\"a?\"\"\""}})
        EXPECT_EQ(cellOf(text).toStdString(), cell);
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
    EXPECT_EQ(outline({.uv = false, .cond = false, .notes = false, .position = MethodPosition::AfterData}),
              "|Time (min)\tEvent marks|0.0000\tS||Method|first|line||second|");
    const auto column = MethodPosition::SeparateColumn; // without a table no column either
    EXPECT_EQ(outline({.uv = false, .cond = false, .events = false, .notes = false, .position = column}),
              "|Method|first|line||second|");
}

TEST_F(TextExport, hasExactlyThePointsThatWereShown) {
    options = {.cond = false, .notes = false, .method = false};
    samples(1);
    EXPECT_EQ(rows(2), (QStringList{"0.0000,0.000000,", "0.0033,,"})); // there is no neighbour
    data.samples = {};
    samples(30001); // a hundred minutes
    data.marks = {{"E", 0, 10, 100}};
    EXPECT_EQ(rowsAt(1).last(), "99.9833,29.996500,E"); // takes the rest of the run: samples 29993 to 30000
    EXPECT_EQ(rowsAt(5).size(), 30000);
    EXPECT_EQ(rowsAt(5).last(), "99.9967,29.999001,E"); // the mark of the sample that is left out
    options.from = 99.9985F;                            // one more than is left of the run
    EXPECT_EQ(rows(2), (QStringList{"99.9967,29.999001,", "100.0000,30.000000,E"}));
    EXPECT_EQ(rows(0), QStringList{"100.0000,,E"});
}

TEST_F(TextExport, hasThePointsThatWereShownAtEveryRateAndRange) {
    std::mt19937 random(4);
    SampleStore run;                                       // with their numbers as UV
    for (const int size : {2, 3, 301, 450007, 12960000}) { // up to 30 days
        for (auto i = static_cast<int>(run.size()); i < size; ++i)
            run.append({static_cast<float>(i), 0});
        const double off = size > 900000 ? 3.001 : 1.001; // in samples: how times of long runs are rounded
        const float last = static_cast<float>(ChartData::timeOf(size - 1));
        std::uniform_real_distribution<float> anywhere(0, last);
        for (int i = 0; i < 600; ++i) {
            const float rate = std::array{0.01F, 0.0333F, 0.1F, 0.333F, 0.5F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F}[i % 10];
            const float from = i < 10 ? 0 : anywhere(random);
            const float to =
                i < 10 ? last : std::min(last, from + anywhere(random) / static_cast<float>(i % 2 != 0 ? size : 1));
            const auto shown = static_cast<qint32>(exportedPoints(from, to, rate));
            const ExportRows rows(run, from, to, rate, shown);
            for (qint64 row = 0; row<shown; row += row> 3 && row < shown - 4 ? 1 + shown / 97 : 1) {
                const double place = rows.tenThousandthsOf(row) * 300 / 1e4;
                const double perRow = 5 / static_cast<double>(rate);
                EXPECT_NEAR(place, static_cast<double>(from) * 300 + static_cast<double>(row) * perRow, off) << rate;
                EXPECT_LE(place, static_cast<double>(to) * 300 + off) << rate;
                const float uv = rows.values(row).uv;
                EXPECT_TRUE(std::isnan(uv) ? row >= shown - off + 1 : std::abs(uv - place) <= perRow / 2 + 1) << rate;
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
    std::uniform_real_distribution<float> measured(-2, 500);
    std::vector values{0.0F, -0.0F, 0.00005F, 0.03125F, 99.99995F, 9999.9995F, 99999992.0F, 1e8F, FLT_MAX, 1e-45F};
    for (int i = 0; i < 100000; ++i) {
        values.push_back(measured(random));
        if (const auto any = std::bit_cast<float>(static_cast<quint32>(random())); std::isfinite(any))
            values.push_back(any);
    }
    for (const float value : values) {
        char fast[2 * longestNumber];
        char slow[sizeof fast];
        *writeFixed<6>(writeFixed<4>(fast, value), value) = '\0';
        std::snprintf(slow, sizeof slow, "%.4f%.6f", double{value}, double{value});
        EXPECT_STREQ(fast, slow);
    }
}

} // namespace
