// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"

#include "chart/RunFiles.h"
#include "chart/plot/ChartImage.h"
#include "chart/report/ReportPrinter.h"
#include "files/WhateverFails.h"
#include "fuzz/Corpus.h"
#include "fuzz/DocumentScenario.h"

#include <bit>

namespace {

using enum ChartFileFault;

/// The run in the files of tests/golden, whatever their version.
ChartData goldenRun() {
    ChartData run;
    for (int i = 0; i < 40; ++i)
        run.samples.append({static_cast<float>(i) / 64, 20 - static_cast<float>(i) / 4});
    run.samples.append({std::bit_cast<float>(0x7fc00123), -0.0F});
    run.marks = {{"S", 0xFFFF00, 50, 0.0F}, {"µ 1", 0x0000FF, -10, 0.125F}};
    run.methodTexts = {{"Gradient\r\n0 % B\r\n", 0.03125F}};
    run.notes = "Säule 2\r\n測定";
    run.title = "Run 7";
    return run;
}
constexpr AxisValues goldenAxes{-0.125F, 1.5F, 2, 250, 0, 20};

struct ChartFileTest : testing::Test {
    QByteArray saved(quint32 kind = dataFile) const {
        EXPECT_FALSE(saveChartFile(path, kind, run, axes));
        return content(path);
    }
    /// A file with a fault changes nothing.
    ChartFileReport loaded(const QByteArray &bytes) {
        lay(path, bytes);
        const QByteArray before = print(back, backAxes);
        const ChartFileReport report = loadChartFile(path, back, backAxes);
        EXPECT_TRUE(report.good() || print(back, backAxes) == before);
        const ChartFileReport checked = checkChartFile(path);
        EXPECT_TRUE(checked.fault == report.fault && checked.position == report.position &&
                    checked.trailing == report.trailing && checked.samples == report.samples &&
                    checked.record.has_value() == report.record.has_value());
        return report;
    }
    /// Where the head of the file and each record begin, and the end.
    static std::vector<qsizetype> boundaries(const QByteArray &file) {
        std::vector<qsizetype> places{0};
        for (const char *kind : {"TITL", "AXES", "NOTE", "METH", "MARK", "SAMP", "END "})
            places.push_back(file.indexOf(kind));
        places.push_back(file.size());
        return places;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("Lauf ß 測.chd");
    ChartData run = goldenRun();
    AxisValues axes = goldenAxes;
    ChartData back; // what a reading gives
    AxisValues backAxes;
};

TEST_F(ChartFileTest, everythingComesBackBitForBit) {
    constexpr char16_t units[] = {0xD800, 0, 0xDC00, 0xFFFF}; // no valid text
    const auto halves = QString::fromUtf16(units, std::size(units));
    run.marks.push_back({halves, -1, -32768, NAN});
    run.notes += QStringLiteral("🧪") + halves;
    for (const qint64 pairs : {41, 16384, 16385, 65536, 65537, 9 * 65536}) {
        for (qint64 i = run.samples.size(); i < pairs; ++i)
            run.samples.append({std::bit_cast<float>(static_cast<quint32>(i) * 2654435761U), static_cast<float>(i)});
        for (int i = 0; i < 900; ++i)
            run.marks.push_back({QString::number(i), i, static_cast<qint16>(i), static_cast<float>(i)});
        ASSERT_TRUE(loaded(saved(logFile)).good());
        EXPECT_EQ(print(back, backAxes), print(run, axes)) << pairs;
        EXPECT_EQ(back.samples.extent(5, pairs).lanes[2], run.samples.extent(5, pairs).lanes[2]);
    }
    back.samples.append({1, 2}); // the chart may take more
    EXPECT_EQ(back.samples.at(9 * 65536).cond, 2);
}

TEST_F(ChartFileTest, filesOfEveryVersionStayReadable) {
    for (const auto &[name, kind] : {std::pair("/version1.chd", dataFile), std::pair("/version1.chl", logFile)}) {
        const auto report = loadChartFile(QStringLiteral(GOLDEN_FOLDER) + name, back, backAxes);
        EXPECT_TRUE(report.good() && report.head->kind == kind) << name;
        EXPECT_EQ(print(back, backAxes), print(goldenRun(), goldenAxes)) << name;
    }
}

TEST_F(ChartFileTest, aFileThatIsCutOrDamagedAnywhereIsRefusedAndSalvageKeepsWhatIsWhole) {
    const QByteArray whole = saved();
    const std::vector<qsizetype> places = boundaries(whole);
    for (qsizetype at = 0; at < whole.size(); ++at) {
        SCOPED_TRACE(at);
        const qsizetype place = *std::prev(std::upper_bound(places.begin(), places.end(), at));
        const ChartFileReport harm = loaded(flipped(whole, at));
        EXPECT_TRUE(harm.fault == Damaged && harm.position == static_cast<quint64>(place));
        ChartData mended;
        EXPECT_EQ(salvageChartFile(path, mended, axes).lost, place > 0);
        EXPECT_EQ(print(mended, axes) == print(run, goldenAxes), place == 0 || whole.mid(place, 4) == "END ");
        const ChartFileReport cut = loaded(whole.left(at));
        EXPECT_EQ(cut.fault, at < 5 ? NotAChart : Truncated);
        EXPECT_EQ(cut.position, at < 5 ? 0 : static_cast<quint64>(at));
        ChartData rest;
        salvageChartFile(path, rest, axes);
        EXPECT_TRUE(rest.samples.size() == 0 || rest.marks.size() == 2); // marks come before the samples
        EXPECT_EQ(rest.title.isEmpty(), at < 88);
    }
    EXPECT_EQ(loaded(whole + QByteArray(8, '\0')).fault, Damaged);
}

TEST_F(ChartFileTest, salvageGoesOnBehindADamagedHeadAndMovesNoSamplesUp) {
    run.samples.append(std::vector<SamplePair>(50000, {1, 2}));
    const QByteArray whole = saved();
    const auto third = whole.indexOf("SAMP", whole.indexOf("SAMP", whole.indexOf("SAMP") + 4) + 4);
    QByteArray bytes = flipped(whole, third);
    std::fill(bytes.begin() + 24, bytes.begin() + 48, '?'); // in the head, all but mark, kind, version and identity
    lay(path, bytes);
    const ChartFileReport report = salvageChartFile(path, back, backAxes);
    EXPECT_EQ(report.counts, (ChartCounts{50041, 2, 1}));
    EXPECT_TRUE(report.position == 0 && !report.record && report.lost);
    EXPECT_EQ(back.samples.size(), 2 * 16384);

    run.marks.resize(6000, {"1", 0, 10, 1}); // in two records, the first of which gets lost
    const QByteArray marked = saved();
    lay(path, flipped(marked, marked.indexOf("MARK")));
    ChartData rest;
    salvageChartFile(path, rest, backAxes);
    EXPECT_EQ(rest.marks.size(), 6000U - 4096U);
    const ChartFileReport blank = loaded(whole.left(third) + QByteArray(5000, '\0'));
    EXPECT_TRUE(blank.fault == Truncated && blank.position == static_cast<quint64>(third));
}

TEST_F(ChartFileTest, saysWhatCannotBeRead) {
    EXPECT_EQ(loadChartFile(folder.path(), run, axes).error.value(), EISDIR);
    EXPECT_EQ(loadChartFile(folder.filePath("none"), run, axes).error.value(), ENOENT);
    const FileHead head = FileHead::of(logFile, 1);
    char record[RecordHead::size]; // of a title that would be larger than all disks
    RecordHead{titleRecord, 0, ~quint64{0}, 0}.put(record, head.identity);
    const std::pair<QByteArray, ChartFileFault> files[] = {
        {QByteArray(99, 'x'), NotAChart},
        {FileHead::of(fourLetters("TICK"), 1).bytes(), NotAChart},
        {FileHead::of(dataFile, 2).bytes(), NewerVersion},
        {head.bytes() + QByteArray(record, sizeof record) + QByteArray(24, 'x'), Truncated},
    };
    for (const auto &[bytes, fault] : files)
        EXPECT_EQ(loaded(bytes).fault, fault);
    EXPECT_EQ(print(run, axes), print(goldenRun(), goldenAxes));
}

TEST_F(ChartFileTest, everyRecordMustStandOnceInItsPlaceHoweverRightItsChecksum) {
    const QByteArray whole = saved();
    const std::vector<qsizetype> places = boundaries(whole);
    const auto part = [&](std::size_t i) { return whole.mid(places[i], places[i + 1] - places[i]); };
    const auto isGood = [&](std::size_t from, std::size_t to, const QByteArray &between) {
        QByteArray bytes = whole.left(places[from]) + between + whole.mid(places[to]);
        mendChecksums({reinterpret_cast<std::uint8_t *>(bytes.data()), static_cast<std::size_t>(bytes.size())});
        return loaded(bytes).good();
    };
    EXPECT_TRUE(isGood(1, 1, {}));
    for (std::size_t i = 1; i + 1 < places.size(); ++i)
        EXPECT_FALSE(isGood(i, i, part(i)) || isGood(i, i + 1, {}) ||
                     (i > 1 && isGood(i - 1, i + 1, part(i) + part(i - 1))))
            << i;
}

TEST_F(ChartFileTest, whereverTheDiskCannotBeReadThatIsToldAndTheChartStaysAsItWas) {
    run.samples.append(std::vector<SamplePair>(40000, {1, 2}));
    saved();
    const auto loading = [&](FaultyDisk &disk) {
        ChartData held;
        const ChartFileReport report = loadChartFile(path, held, backAxes, disk);
        EXPECT_EQ(report.error.value(), disk.struck() ? EIO : 0);
        EXPECT_EQ(report.fault, disk.struck() ? Unreadable : None);
        EXPECT_EQ(held.samples.size(), disk.struck() ? 0 : 40041);
    };
    whateverFails<DyingDisk>(loading, 10000);
}

TEST_F(ChartFileTest, aStretchBeginsAtZeroAndTakesItsMarksAlong) {
    ChartData stretch = goldenRun();
    run.samples = {};
    stretch.samples = {};
    for (int i = 0; i <= 30000; ++i) { // 100 minutes
        run.samples.append({static_cast<float>(i), 0});
        if (i >= 3000 && i <= 15000)
            stretch.samples.append(run.samples.at(i));
    }
    run.marks = {{"before", 0, 1, 9.99F}, {"in", 0, 1, 10}, {"out", 0, 1, 50.01F}};
    stretch.marks = {{"in", 0, 1, 0}};
    run.methodTexts = {{"m", 1}, {"n", 12}, {"o", 99}};
    stretch.methodTexts = {{"m", 0}, {"n", 2}, {"o", 40}};
    ASSERT_FALSE(saveChartStretch(path, run, {.timeMin = 10, .timeMax = 50}));
    ASSERT_TRUE(loadChartFile(path, back, backAxes).good());
    EXPECT_EQ(print(back, backAxes), print(stretch, {.timeMin = 0, .timeMax = 40}));
}

TEST_F(ChartFileTest, whateverAFileHoldsCanBeShown) {
    for (const float odd : {NAN, INFINITY, -INFINITY, 3e38F, -3e38F, 1e-45F}) {
        run.samples.append({odd, -odd});
        run.marks.push_back({QString(3000, u'W') + QChar(0xD800) + QChar(0), -1, -32768, odd});
        run.methodTexts.push_back({"late", odd});
    }
    // clang-format off
    const std::pair<AxisValues, AxisValues> axesSavedAndShown[] = {
        {{-1e6F, 1e6F, -1e6F, 1e6F, -1e6F, 1e6F}, {-1e6F, 1e6F, -1e6F, 1e6F, -1e6F, 1e6F}},
        {{0, 1e-45F, 0, 1e-45F, 0, 1e-45F},       {0, 1e-45F, 0, 1e-45F, 0, 1e-45F}},
        {{999999.9F, 1e6F, 3, 4, 999999.9F, 1e6F}, {999999.9F, 1e6F, 3, 4, 999999.9F, 1e6F}},
        {{NAN, 2, 3, 3, 0, 1e30F},                {}}}; // which no chart can show
    // clang-format on
    for (const auto &[before, shown] : axesSavedAndShown) {
        axes = before;
        ASSERT_TRUE(loaded(saved()).good());
        EXPECT_EQ(backAxes, shown);
        ChartImage().draw(back, {{600, 300}, 1, QFont(), PlotTheme::paper(), backAxes, back.title});
        EXPECT_TRUE(reportAsPdf({QPageSize(QPageSize::A4), {}, {}}, {back, backAxes, {}, {}}, {}));
        EXPECT_FALSE(saveChartStretch(path, back, backAxes));
        EXPECT_TRUE(loadChartFile(path, back, backAxes).good());
    }
}

TEST(DocumentCorpus, everyKnownFileHoldsTogether) { playCorpus<DocumentScenario>(QStringLiteral(DOCUMENT_CORPUS)); }

} // namespace
