// SPDX-License-Identifier: MIT
#include "chart/table/TextExport.h"

#include "chart/Quillchart.h"
#include "chart/run/IsoDate.h"
#include "chart/table/Digits.h"
#include "chart/table/ExportRows.h"
#include "chart/table/ExportedPoints.h"
#include "fakes/FaultyDisk.h"
#include "files/DurableFile.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

namespace {

constexpr float none = std::numeric_limits<float>::quiet_NaN();

struct TextExport : testing::Test {
    /// Samples whose UV is their number over a thousand.
    void samples(int count) {
        for (int i = 0; i < count; ++i)
            data.samples.append({static_cast<float>(i) / 1000, 20});
    }
    void mark(const char *label, double minutes) {
        data.marks.push_back({QString::fromUtf8(label), 0, 10, static_cast<float>(minutes)});
    }
    QByteArray text() {
        EXPECT_FALSE(exportText(path, data, options));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    /// The table without its heading, a text a row.
    QStringList rows() {
        const QStringList lines = QString::fromUtf8(text()).split(QStringLiteral("\r\n"));
        const auto heading = static_cast<int>(lines.indexOf(QRegularExpression(QStringLiteral("^Time \\(min\\).*"))));
        return heading < 0 ? QStringList() : lines.mid(heading + 1, lines.size() - heading - 2);
    }
    /// All of it, at that rate, with the number of points that the operator is shown.
    QStringList rowsAt(float rate) {
        options.to = data.lastTime();
        options.sampleRate = rate;
        options.pointCount = static_cast<qint32>(exportedPoints(options.from, options.to, rate));
        return rows();
    }
    void only(bool uv, bool cond, bool events, bool notes, bool method) {
        options.uv = uv;
        options.cond = cond;
        options.events = events;
        options.notes = notes;
        options.method = method;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("run.txt"));
    ChartData data;
    ExportOptions options;
};

TEST_F(TextExport, writesTheLayoutOfTheGoldenFile) {
    data.samples.append(std::vector<SamplePair>{{0.0012F, 19.95F}, {none, 20}, {-0.00175F, 20.0499F}, {1.8F, none}});
    mark("S", 0);
    mark("1", 1 / 300.0);
    mark("H", 1 / 300.0);
    mark("E", 0.012);
    data.methodTexts = {{QStringLiteral("=2+3\r\nGradient\t0 to 60 %\r\n"), 0.01F}};
    data.notes = QStringLiteral("Column \"B\", 25 °C\n- new buffer\r\n\r\n");
    data.title = QStringLiteral("Run 7");
    options.sourceFile = QStringLiteral("/data/run 7.chd");
    options.exported = QDateTime(QDate(2024, 5, 2), QTime(14, 3, 11), Qt::OffsetFromUTC, 7200);
    options.position = MethodPosition::SeparateColumn;
    options.to = 0.012F;
    options.pointCount = 4;
    QFile golden(QStringLiteral(GOLDEN_FOLDER "/export.txt"));
    ASSERT_TRUE(golden.open(QIODevice::ReadOnly));
    EXPECT_EQ(text(), golden.readAll());
    EXPECT_EQ(isoDate(QDateTime(QDate(2024, 5, 2), QTime(14, 3, 11), Qt::UTC)),
              QStringLiteral("2024-05-02T14:03:11+00:00"));
}

TEST_F(TextExport, holdsWhatWasChosenWhereItWasChosen) {
    samples(2);
    data.notes = QStringLiteral("note");
    data.methodTexts = {{QStringLiteral("second"), 2}, {QStringLiteral("first\r\nline"), 1}};
    const auto outline = [&](MethodPosition position) {
        options.position = position;
        QStringList lines = QString::fromUtf8(text().mid(3)).split(QStringLiteral("\r\n"));
        return lines.filter(QRegularExpression(QStringLiteral("^(N|n|M|f|l|s|Time|$)"))).join(QLatin1Char('|'));
    };
    only(true, false, false, true, true);
    options.pointCount = 1;
    EXPECT_EQ(outline(MethodPosition::BeforeData),
              QStringLiteral("|Notes|note||Method|first|line||second||Time (min)\tUV (AU)|"));
    EXPECT_EQ(outline(MethodPosition::AfterData),
              QStringLiteral("|Notes|note||Time (min)\tUV (AU)||Method|first|line||second|"));
    only(false, false, false, false, true); // without a table no column either
    EXPECT_EQ(outline(MethodPosition::SeparateColumn), QStringLiteral("|Method|first|line||second|"));
    only(false, false, true, false, false);
    mark("S", 0);
    EXPECT_EQ(rows(), QStringList{QStringLiteral("0.0000\tS")});
}

TEST_F(TextExport, hasExactlyThePointsThatWereShown) {
    only(true, false, true, false, false);
    samples(1);
    options.pointCount = 2; // there is no neighbour
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("0.0000\t0.000000\t"), QStringLiteral("0.0033\t\t")}));
    data.samples = {};
    samples(3001); // ten minutes
    mark("E", 10);
    EXPECT_EQ(rowsAt(5).size(), 3000);
    EXPECT_EQ(rows().last(), QStringLiteral("9.9967\t2.999000\tE")); // the mark of the sample that is left out
    EXPECT_EQ(rowsAt(1).size(), 600);
    EXPECT_EQ(rows().last(), QStringLiteral("9.9833\t2.996500\tE")); // takes the rest of the run: samples 2993 to 3000
    EXPECT_EQ(rowsAt(0.333F).size(), 200);
    EXPECT_EQ(rowsAt(0.01F).size(), 6);
    options.from = 9.9965F; // a sample, and the next one with it
    EXPECT_EQ(rowsAt(5), (QStringList{QStringLiteral("9.9967\t2.999000\t"), QStringLiteral("10.0000\t3.000000\tE")}));
    options.from = 4.001F; // between two samples
    options.to = 4.003F;
    options.pointCount = 1;
    EXPECT_EQ(rows(), QStringList{QStringLiteral("4.0033\t1.201000\t")});
    options.from = 9.9985F; // one more than is left of the run
    options.to = 10;
    options.pointCount = 2;
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("9.9967\t2.999000\t"), QStringLiteral("10.0000\t3.000000\tE")}));
    options.pointCount = 0;
    EXPECT_EQ(rows(), QStringList{QStringLiteral("10.0000\t\tE")});
}

/// What the dialog shows, and so what the file holds, at any rate and range; `samples` have their number as UV.
void expectPointsAsShown(const SampleStore &samples, float from, float to, float rate) {
    const float last = static_cast<float>(ChartData::timeOf(samples.size() - 1));
    to = std::min(to, last);
    from = std::min(from, last);
    const auto shown = static_cast<qint32>(last > from ? exportedPoints(from, to, rate) : 0);
    const ExportRows rows(samples, from, to, rate, shown);
    const std::string what = QStringLiteral("%1 samples, %2 to %3 at %4: %5 points")
                                 .arg(QString::number(samples.size()))
                                 .arg(from)
                                 .arg(to)
                                 .arg(rate)
                                 .arg(shown)
                                 .toStdString();
    ASSERT_EQ(rows.count(), shown) << what;
    const double perRow = 5 / static_cast<double>(rate);
    const double told = last > 3000 ? 2 : 0; // in samples, what times of long runs are rounded by
    const auto place = [&](qint64 row) { return rows.tenThousandthsOf(row) * 300 / 1e4; };
    int empty = 0;
    for (qint64 row = 0; row<shown; row += row> 3 && row < shown - 4 ? 1 + shown / 97 : 1) {
        EXPECT_NEAR(place(row), place(0) + static_cast<double>(row) * perRow, 1e-3) << what;
        const float uv = rows.values(row).uv;
        if (std::isnan(uv))
            ++empty;
        else if (rate == 5)
            EXPECT_NEAR(static_cast<double>(uv), place(row), 1e-3) << what;
        else
            EXPECT_NEAR(static_cast<double>(uv), place(row), perRow / 2 + 1) << what;
    }
    EXPECT_LE(empty, told) << what;
    if (shown > 0) {
        EXPECT_NEAR(place(0), static_cast<double>(from) * 300, 1.001 + told) << what;
        EXPECT_LE(place(shown - 1), static_cast<double>(to) * 300 + 1.001 + told) << what;
    }
}

TEST_F(TextExport, hasThePointsThatWereShownAtEveryRateAndRange) {
    constexpr float rates[] = {0.01F, 0.02F, 0.025F, 0.0333F, 0.05F, 0.1F, 0.2F, 0.25F, 0.333F, 0.5F, 1, 2, 3, 4, 5};
    std::mt19937 random(4);
    SampleStore run;
    for (const int size : {1, 2, 3, 4, 301, 1502, 450007, 12960000}) { // up to 30 days
        for (auto i = static_cast<int>(run.size()); i < size; ++i)
            run.append({static_cast<float>(i), 0});
        const float last = static_cast<float>(ChartData::timeOf(size - 1));
        std::uniform_real_distribution<float> anywhere(0, last * 1.1F);
        for (const float rate : rates) {
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

TEST_F(TextExport, thinsToMeansAroundTheRowsTimes) {
    samples(12);
    data.samples.append({none, std::numeric_limits<float>::infinity()});
    only(true, true, false, false, false);
    EXPECT_EQ(rowsAt(1), (QStringList{QStringLiteral("0.0000\t0.001000\t20.0000"),    // samples 0 to 2
                                      QStringLiteral("0.0167\t0.005000\t20.0000"),    // 3 to 7
                                      QStringLiteral("0.0333\t0.009500\t20.0000")})); // 8 to 11, 12 has no value
}

TEST_F(TextExport, keepsEveryMark) {
    samples(12);
    only(false, true, true, false, false);
    mark("E", 11 / 300.0);
    mark("S", 0);
    mark("1", 3 / 300.0);
    mark("2", 4 / 300.0);
    EXPECT_EQ(rowsAt(1), (QStringList{QStringLiteral("0.0000\t20.0000\tS"), QStringLiteral("0.0167\t20.0000\t1 & 2"),
                                      QStringLiteral("0.0333\t20.0000\tE")}));
    options.to = 1; // beyond the last sample
    mark("M", 0.5);
    EXPECT_EQ(rows().last(), QStringLiteral("0.5000\t\tM"));
}

TEST_F(TextExport, writesTheDigitsOfPrintf) {
    std::mt19937 random(1);
    const auto same = [](float value) {
        char fast[longestNumber + 1];
        char slow[64];
        *writeFixed<4>(fast, value) = '\0';
        std::snprintf(slow, sizeof slow, "%.4f", static_cast<double>(value));
        EXPECT_STREQ(fast, slow);
        *writeFixed<6>(fast, value) = '\0';
        std::snprintf(slow, sizeof slow, "%.6f", static_cast<double>(value));
        EXPECT_STREQ(fast, slow);
    };
    for (const float value : {0.0F, -0.0F, 0.00005F, 0.03125F, -0.09375F, 99.99995F, 9999.9995F, 99999992.0F, 1e8F,
                              std::numeric_limits<float>::max(), std::numeric_limits<float>::denorm_min()})
        same(value);
    std::uniform_real_distribution<float> measured(-2, 500);
    for (int i = 0; i < 100000; ++i) {
        same(measured(random));
        if (const auto any = std::bit_cast<float>(static_cast<quint32>(random())); std::isfinite(any))
            same(any);
    }
}

TEST_F(TextExport, leavesTheOldFileWhenTheDiskFails) {
    ASSERT_FALSE(replaceFile(path, "old"));
    samples(100000); // several pieces
    options.to = data.lastTime();
    options.pointCount = 100000;
    for (int failing = 1;; ++failing) {
        FaultyDisk disk(failing);
        const bool good = !exportText(path, data, options, disk);
        if (!disk.struck()) {
            EXPECT_TRUE(good);
            break;
        }
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray kept = file.readAll();
        ASSERT_TRUE((kept == "old" && !good) || kept.count('\n') > 100000) << failing;
    }
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
