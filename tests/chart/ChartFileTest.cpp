// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"

#include "chart/RunFiles.h"
#include "chart/plot/ChartImage.h"
#include "chart/report/ReportPrinter.h"
#include "files/WhateverFails.h"
#include "fuzz/Corpus.h"
#include "fuzz/DocumentScenario.h"

#include <bit>
#include <cmath>
#include <map>

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
Provenance goldenProvenance() {
    const auto date = [](const char *iso) { return QDateTime::fromString(iso, Qt::ISODate); };
    Provenance provenance;
    provenance.identity = "0123456789abcdef0123456789abcdef";
    provenance.system = "Größe 2";
    provenance.device = "/dev/ttyUSB0";
    provenance.program = "Ostrel MS 1.0.0";
    provenance.interval = 0.2;
    provenance.stretches = {{0, 0.0625, date("2026-03-29T01:59:58+01:00"), date("2026-03-29T03:00:02+02:00")},
                            {0.06640625, 0.125, date("2026-03-29T03:10:00+02:00"), date("2026-03-29T03:10:04+02:00")}};
    provenance.clockSteps = {{0.03125, -90.5}};
    provenance.parent = {"fedcba9876543210fedcba9876543210", 12.5, 20.25};
    provenance.history = {{date("2026-03-29T04:00:00+02:00"), "Ostrel MS 1.0.0", "title, notes"}};
    return provenance;
}
constexpr AxisValues goldenAxes{-0.125F, 1.5F, 2, 250, 0, 20};

/// In words, each followed by a blank.
std::string lostParts(const ChartFileLosses &losses) {
    std::string parts;
    const auto add = [&](bool lost, const char *what) { parts += lost ? what : ""; };
    add(losses.title, "title ");
    add(losses.axes, "axes ");
    add(losses.notes, "notes ");
    add(losses.provenance, "provenance ");
    add(losses.methodTexts > 0, "method ");
    add(losses.marks > 0, "marks ");
    add(!losses.gaps.empty(), "samples ");
    add(losses.openEnd, "end ");
    return parts;
}

/// What the record at `place` would cost; the zeros that fill it up, with `at` among them, cost nothing.
std::string whatARecordHolds(const QByteArray &file, qsizetype place, qsizetype at) {
    static const std::map<QByteArray, const char *> parts = {
        {"TITL", "title "},  {"AXES", "axes "},  {"NOTE", "notes "},  {"PROV", "provenance "},
        {"METH", "method "}, {"MARK", "marks "}, {"SAMP", "samples "}};
    const auto part = parts.find(file.mid(place, 4));
    const bool filling =
        place > 0 && at >= place + 24 + *reinterpret_cast<const qint64 *>(file.constData() + place + 8);
    return place > 0 && part != parts.end() && !filling ? part->second : "";
}

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
        for (const char *kind : {"TITL", "AXES", "NOTE", "SIZE", "PROV", "METH", "MARK", "SAMP", "END "})
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
    for (const quint32 version : {1U, 2U})
        for (const auto &[ending, kind] : {std::pair("chd", dataFile), std::pair("chl", logFile)}) {
            const QString name = QStringLiteral(GOLDEN_FOLDER "/version%1.%2").arg(version).arg(ending);
            const auto report = loadChartFile(name, back, backAxes);
            EXPECT_TRUE(report.good() && report.head->kind == kind) << qPrintable(name);
            EXPECT_EQ(print(back, backAxes), print(goldenRun(), goldenAxes)) << qPrintable(name);
            EXPECT_EQ(back.provenance, version == 1 ? Provenance() : goldenProvenance());
        }
}

TEST_F(ChartFileTest, aFileThatIsCutOrDamagedAnywhereIsRefusedAndSalvageKeepsWhatIsWhole) {
    run.provenance = goldenProvenance();
    const QByteArray whole = saved();
    const std::vector<qsizetype> places = boundaries(whole);
    for (qsizetype at = 0; at < whole.size(); ++at) {
        SCOPED_TRACE(at);
        const qsizetype place = *std::prev(std::upper_bound(places.begin(), places.end(), at));
        const ChartFileReport harm = loaded(flipped(whole, at));
        EXPECT_TRUE(harm.fault == Damaged && harm.position == static_cast<quint64>(place));
        ChartData mended;
        const ChartFileLosses lost = salvageChartFile(path, mended, axes).losses;
        EXPECT_EQ(lostParts(lost), whatARecordHolds(whole, place, at));
        EXPECT_EQ(print(mended, axes) == print(run, goldenAxes) && mended.provenance == run.provenance, !lost.any());

        const ChartFileReport cut = loaded(whole.left(at));
        EXPECT_EQ(cut.fault, at < 5 ? NotAChart : Truncated);
        EXPECT_EQ(cut.position, at < 5 ? 0 : static_cast<quint64>(at));
        ChartData rest;
        const ChartFileLosses cutOff = salvageChartFile(path, rest, axes).losses;
        EXPECT_TRUE(at < qsizetype(FileHead::size) || cutOff.any() || print(rest, axes) == print(run, goldenAxes));
        EXPECT_TRUE(rest.samples.size() == 0 || rest.marks.size() == 2); // marks come before the samples
        EXPECT_EQ(rest.title.isEmpty(), at < 82);
    }
    EXPECT_EQ(loaded(whole + QByteArray(8, '\0')).fault, Damaged);
}

TEST_F(ChartFileTest, aDamagedSpotOfALongRunCostsOneRecordAndMovesNoSample) {
    for (int i = 41; i < 50041; ++i)
        run.samples.append({static_cast<float>(i), static_cast<float>(-i)});
    const QByteArray whole = saved();
    EXPECT_LE(whole.size(), 8.02 * 50041 + 1000);
    qint64 first = 0;
    for (qsizetype place = whole.indexOf("SAMP"); place >= 0; place = whole.indexOf("SAMP", place + 4), first += 2048) {
        SCOPED_TRACE(first);
        const qint64 lost = std::min<qint64>(2048, run.samples.size() - first);
        lay(path, flipped(whole, place + (first % 4096 == 0 ? 9 : 100))); // in the record's head, or behind it
        const ChartFileReport report = salvageChartFile(path, back, backAxes);
        ASSERT_EQ(report.losses.gaps.size(), 1U);
        EXPECT_EQ(std::pair(report.losses.gaps[0].from, report.losses.gaps[0].count), std::pair(first, lost));
        const bool last = first + lost == run.samples.size();
        ASSERT_EQ(back.samples.size(), last ? first : run.samples.size());
        const QByteArray kept = print(back.samples);
        const QByteArray all = print(run.samples);
        EXPECT_TRUE(kept.left(first * 8) == all.left(first * 8) &&
                    (last || kept.mid((first + lost) * 8) == all.mid((first + lost) * 8)));
        EXPECT_TRUE(last || std::isnan(back.samples.at(first).uv));

        lay(path, whole.left(place + 16000)); // cut: the record is not whole
        salvageChartFile(path, back, backAxes);
        EXPECT_EQ(back.samples.size(), first + (last ? lost : 0));
    }
}

TEST_F(ChartFileTest, salvageGoesOnBehindAHeadOfWhichNothingIsLeft) {
    run.provenance = goldenProvenance();
    run.samples.append(std::vector<SamplePair>(50000, {1, 2}));
    const QByteArray whole = saved();
    QByteArray bytes = whole;
    std::fill(bytes.begin(), bytes.begin() + 200, '?'); // and title, axes
    lay(path, bytes);
    const ChartFileReport report = salvageChartFile(path, back, backAxes);
    EXPECT_TRUE(report.fault == Damaged && report.position == 0 && !report.record);
    EXPECT_EQ(lostParts(report.losses), "title axes notes ");
    EXPECT_EQ(print(back.samples), print(run.samples));
    EXPECT_EQ(back.provenance, run.provenance);
    lay(path, content(QStringLiteral(GOLDEN_FOLDER "/version1.chd")).replace(0, 48, QByteArray(48, '?')));
    EXPECT_FALSE(salvageChartFile(path, back, backAxes).losses.any());
    EXPECT_EQ(print(back, backAxes), print(goldenRun(), goldenAxes));

    lay(path, whole.left(48) + whole.mid(whole.lastIndexOf("END ")) + whole.mid(48)); // the last record twice
    EXPECT_FALSE(salvageChartFile(path, back, backAxes).losses.any());
    EXPECT_EQ(print(back.samples), print(run.samples));

    run.marks.resize(6000, {"1", 0, 10, 1}); // in two records, the first of which gets lost
    const QByteArray marked = saved();
    lay(path, flipped(marked, marked.indexOf("MARK")));
    ChartData rest;
    EXPECT_EQ(salvageChartFile(path, rest, backAxes).losses.marks, 4096U);
    EXPECT_EQ(rest.marks.size(), 6000U - 4096U);
    const auto third = whole.indexOf("SAMP", whole.indexOf("SAMP", whole.indexOf("SAMP") + 4) + 4);
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
        {FileHead::of(dataFile, 3).bytes(), NewerVersion},
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
    const QDateTime noon(QDate(2026, 3, 29), QTime(12, 0), Qt::OffsetFromUTC, 7200);
    run.provenance.identity = "parent";
    run.provenance.stretches = {{0, 19.99, noon, noon.addSecs(1200)},
                                {20, 100, noon.addSecs(7200), noon.addSecs(12000)}};
    run.provenance.clockSteps = {{5, 60}, {12, 60}};
    ASSERT_FALSE(saveChartStretch(path, run, {.timeMin = 10, .timeMax = 50}));
    ASSERT_TRUE(loadChartFile(path, back, backAxes).good());
    EXPECT_EQ(print(back, backAxes), print(stretch, {.timeMin = 0, .timeMax = 40}));
    const Provenance &provenance = back.provenance;
    EXPECT_EQ(provenance.parent, (Provenance::Parent{"parent", 10, 50}));
    EXPECT_EQ(provenance.identity.size(), 32);
    ASSERT_EQ(provenance.stretches.size(), 2U);
    EXPECT_EQ(provenance.begun(), noon.addSecs(660)); // the clock had been put on by a minute
    EXPECT_EQ(provenance.stretches[0].to, 19.99 - 10);
    EXPECT_EQ(provenance.ended(), noon.addSecs(7200 + 1800));
    EXPECT_EQ(provenance.clockSteps, (std::vector<Provenance::ClockStep>{{2, 60}}));
    EXPECT_EQ(provenance.history.back().change, "stretch, minutes 10.000 to 50.000");
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
