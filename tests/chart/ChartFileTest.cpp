// SPDX-License-Identifier: MIT
#include "chart/files/ChartFile.h"

#include "chart/Quillchart.h"
#include "fakes/FaultyDisk.h"
#include "fuzz/ChartRecordsMended.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace {

/// All that a chart holds, bit for bit.
QByteArray print(const ChartData &run, const AxisValues &axes) {
    QByteArray bytes;
    QDataStream to(&bytes, QIODevice::WriteOnly);
    const auto put = [&](auto... values) { ((to << std::bit_cast<quint32>(values)), ...); };
    for (qint64 i = 0; i < run.samples.size(); ++i)
        put(run.samples.at(i).uv, run.samples.at(i).cond);
    const auto putText = [&](const QString &text) { to << text.size() << text + QLatin1Char('.'); };
    for (const EventMark &mark : run.marks) {
        to << mark.color << mark.height;
        put(mark.time);
        putText(mark.label);
    }
    for (const MethodText &text : run.methodTexts) {
        put(text.time);
        putText(text.text);
    }
    putText(run.notes);
    putText(run.title);
    put(axes.uvMin, axes.uvMax, axes.condMin, axes.condMax, axes.timeMin, axes.timeMax);
    return bytes;
}

/// The run in the files of tests/golden, whatever their version.
ChartData goldenRun() {
    ChartData run;
    for (int i = 0; i < 40; ++i)
        run.samples.append({static_cast<float>(i) / 64, 20 - static_cast<float>(i) / 4});
    run.samples.append({std::bit_cast<float>(0x7fc00123), -0.0F});
    run.marks = {{QStringLiteral("S"), 0xFFFF00, 50, 0.0F}, {QStringLiteral("µ 1"), 0x0000FF, -10, 0.125F}};
    run.methodTexts = {{QStringLiteral("Gradient\r\n0 % B\r\n"), 0.03125F}};
    run.notes = QStringLiteral("Säule 2\r\n測定");
    run.title = QStringLiteral("Run 7");
    return run;
}
constexpr AxisValues goldenAxes{-0.125F, 1.5F, 2, 250, 0, 20};

class ChartFileTest : public testing::Test {
protected:
    QByteArray saved(quint32 kind = dataFile) const {
        EXPECT_FALSE(saveChartFile(path, kind, run, axes));
        return content();
    }
    QByteArray content() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }
    ChartFileReport loaded(const QByteArray &bytes) {
        QFile file(path);
        file.remove(); // some file systems flush what is written over an old file
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        return loadChartFile(path, back, backAxes);
    }
    ChartFileFault faultOf(const QByteArray &bytes) { return loaded(bytes).fault; }
    ChartFileReport expectRefused(const QByteArray &bytes) {
        const QByteArray before = print(back, backAxes);
        const ChartFileReport report = loaded(bytes);
        EXPECT_NE(report.fault, ChartFileFault::None);
        EXPECT_EQ(print(back, backAxes), before);
        return report;
    }
    /// Where the head of the file and each record begin, and the end.
    static std::vector<qsizetype> boundaries(const QByteArray &file) {
        std::vector<qsizetype> places{0, FileHead::size};
        while (places.back() < file.size()) {
            quint64 length = 0;
            std::memcpy(&length, file.constData() + places.back() + 8, sizeof length);
            places.push_back(places.back() + RecordHead::size + static_cast<qsizetype>((length + 7) / 8 * 8));
        }
        return places;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("Lauf ß 測.chd"));
    ChartData run = goldenRun();
    AxisValues axes = goldenAxes;
    ChartData back; // what a reading gives
    AxisValues backAxes;
};

TEST_F(ChartFileTest, everythingComesBackBitForBit) {
    constexpr char16_t units[] = {0xD800, 0, 0xDC00, 0xFFFF}; // no valid text
    const auto halves = QString::fromUtf16(units, std::size(units));
    run.marks.push_back({halves, -1, -32768, std::numeric_limits<float>::quiet_NaN()});
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
    for (const char *name : {"version1.chd", "version1.chl"}) {
        const auto report =
            loadChartFile(QStringLiteral(GOLDEN_FOLDER "/") + QString::fromLatin1(name), back, backAxes);
        ASSERT_TRUE(report.good()) << name;
        EXPECT_EQ(report.head->kind, name[11] == 'd' ? dataFile : logFile);
        EXPECT_EQ(print(back, backAxes), print(goldenRun(), goldenAxes)) << name;
    }
}

TEST_F(ChartFileTest, aFileThatIsCutOrDamagedAnywhereIsRefusedAndSalvageKeepsWhatIsWhole) {
    const QByteArray whole = saved();
    const std::vector<qsizetype> places = boundaries(whole);
    const auto endPlace = static_cast<quint64>(whole.indexOf("END "));
    for (qsizetype at = 0; at < whole.size(); ++at) {
        SCOPED_TRACE(at);
        QByteArray damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        const quint64 place = *std::prev(std::upper_bound(places.begin(), places.end(), at));
        const ChartFileReport harm = expectRefused(damaged);
        EXPECT_EQ(harm.position, place);
        EXPECT_EQ(harm.record.has_value(), place > 0 && at >= static_cast<qsizetype>(place + RecordHead::size));
        EXPECT_EQ(harm.fault, ChartFileFault::Damaged);
        ChartData mended;
        AxisValues mendedAxes;
        EXPECT_EQ(salvageChartFile(path, mended, mendedAxes).lost, place > 0);
        EXPECT_EQ(print(mended, mendedAxes) == print(run, goldenAxes), place == 0 || place == endPlace);
        expectRefused(whole.left(at));
        ChartData rest;
        const ChartFileReport report = salvageChartFile(path, rest, axes);
        EXPECT_EQ(report.fault, at < 5 ? ChartFileFault::NotAChart : ChartFileFault::Truncated);
        EXPECT_EQ(report.position, at < 5 ? 0 : static_cast<quint64>(at));
        EXPECT_TRUE(rest.samples.size() == 0 || rest.marks.size() == 2); // marks stand before the samples
        EXPECT_EQ(rest.title.isEmpty(), at < 88);
    }
    for (const QByteArray &more : {QByteArray("more than it wrote"), QByteArray(8, '\0')}) {
        const ChartFileReport report = expectRefused(whole + more);
        EXPECT_TRUE(report.trailing);
        EXPECT_EQ(report.position, static_cast<quint64>(whole.size()));
    }
}

TEST_F(ChartFileTest, aDamagedSpotCostsWhatItHoldsAndTheReportTellsOfIt) {
    for (int i = 0; i < 50000; ++i)
        run.samples.append({1, 2});
    QByteArray bytes = saved();
    const auto marks = bytes.indexOf("MARK");
    bytes[marks + 40] = '?';
    EXPECT_EQ(loaded(bytes).position, static_cast<quint64>(marks));
    EXPECT_EQ(salvageChartFile(path, back, backAxes).fault, ChartFileFault::Damaged);
    EXPECT_EQ(back.samples.size(), 50041);
    EXPECT_TRUE(back.marks.empty());
    EXPECT_EQ(back.methodTexts.size(), 1U);

    const auto third = bytes.indexOf("SAMP", bytes.indexOf("SAMP", bytes.indexOf("SAMP") + 4) + 4);
    bytes[third] = '?'; // its very head
    EXPECT_EQ(faultOf(bytes), ChartFileFault::Damaged);
    const ChartFileReport report = salvageChartFile(path, back, backAxes);
    EXPECT_EQ(back.samples.size(), 2 * 16384);
    EXPECT_EQ(report.counts, (ChartCounts{50041, 2, 1}));
    EXPECT_EQ(faultOf(bytes.left(third + 100)), ChartFileFault::Damaged);
    EXPECT_EQ(faultOf(saved().left(third + 100)), ChartFileFault::Truncated);
    const ChartFileReport blank = loaded(saved().left(third) + QByteArray(5000, '\0'));
    EXPECT_EQ(blank.fault, ChartFileFault::Truncated);
    EXPECT_EQ(blank.position, static_cast<quint64>(third));
}

TEST_F(ChartFileTest, salvageGoesOnBehindADamagedHeadOfAChartFileOfThisVersion) {
    QByteArray bytes = saved();
    std::fill(bytes.begin() + 24, bytes.begin() + 48, '?'); // all but mark, kind, version and identity
    bytes[bytes.indexOf("MARK") + 40] = '?';
    EXPECT_EQ(loaded(bytes).fault, ChartFileFault::Damaged);
    const ChartFileReport report = salvageChartFile(path, back, backAxes);
    EXPECT_TRUE(report.position == 0 && !report.record && report.lost);
    EXPECT_EQ(back.samples.size(), run.samples.size());
    EXPECT_TRUE(back.marks.empty());
    back = {};
    for (const auto &[kind, version] : {std::pair(fourLetters("TICK"), 1U), std::pair(dataFile, 2U)}) {
        bytes = saved();
        quint64 identity = 0; // that of the records
        std::memcpy(&identity, bytes.constData() + 16, sizeof identity);
        const FileHead head{.kind = kind, .version = version, .identity = identity};
        bytes = head.bytes() + bytes.mid(FileHead::size);
        bytes[30] = static_cast<char>(bytes[30] ^ 1);
        loaded(bytes);
        EXPECT_NE(salvageChartFile(path, back, backAxes).fault, ChartFileFault::None);
        EXPECT_EQ(back.samples.size(), 0);
    }
}

TEST_F(ChartFileTest, anEndlessHoleInAFileIsNotReadThrough) {
    saved();
    if (!QFile::resize(path, 128) || !QFile::resize(path, qint64{1} << 42))
        GTEST_SKIP() << "no such file here";
    EXPECT_EQ(loadChartFile(path, back, backAxes).fault, ChartFileFault::Damaged);
}

TEST_F(ChartFileTest, saysWhatCannotBeRead) {
    EXPECT_EQ(loadChartFile(folder.path(), run, axes).error.value(), EISDIR);
    EXPECT_EQ(loadChartFile(folder.filePath("none"), run, axes).error.value(), ENOENT);
    EXPECT_EQ(faultOf(""), ChartFileFault::NotAChart);
    EXPECT_EQ(faultOf("0.000\t0.1\r\n"), ChartFileFault::NotAChart);
    EXPECT_EQ(faultOf(FileHead::of(fourLetters("TICK"), 1).bytes()), ChartFileFault::NotAChart);
    EXPECT_EQ(faultOf(FileHead::of(dataFile, 2).bytes()), ChartFileFault::NewerVersion);
    EXPECT_EQ(faultOf(FileHead::of(dataFile, 1).bytes()), ChartFileFault::Truncated);
    EXPECT_EQ(print(run, axes), print(goldenRun(), goldenAxes));
    faultOf(FileHead::of(fourLetters("TICK"), 2).bytes().left(7));
    EXPECT_TRUE(bearsChartMark(path));
    faultOf("OSTR, says a text");
    EXPECT_FALSE(bearsChartMark(path) || bearsChartMark(folder.path()) || bearsChartMark("/dev/zero"));
}

TEST_F(ChartFileTest, everyRecordMustStandOnceInItsPlaceHoweverRightItsChecksum) {
    const QByteArray whole = saved();
    const std::vector<qsizetype> places = boundaries(whole);
    std::vector<QByteArray> parts; // the head and the records
    for (std::size_t i = 0; i + 1 < places.size(); ++i)
        parts.push_back(whole.mid(places[i], places[i + 1] - places[i]));
    const auto mended = [](const std::vector<QByteArray> &order) {
        QByteArray bytes;
        for (const QByteArray &part : order)
            bytes += part;
        mendChecksums({reinterpret_cast<std::uint8_t *>(bytes.data()), static_cast<std::size_t>(bytes.size())});
        return bytes;
    };
    EXPECT_EQ(faultOf(mended(parts)), ChartFileFault::None);
    for (std::size_t i = 1; i < parts.size(); ++i) {
        SCOPED_TRACE(i);
        auto changed = parts;
        changed.insert(changed.begin() + static_cast<std::ptrdiff_t>(i), parts[i]);
        expectRefused(mended(changed));
        changed = parts;
        changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(i));
        expectRefused(mended(changed));
        if (i > 1) {
            changed = parts;
            std::swap(changed[i], changed[i - 1]);
            expectRefused(mended(changed));
        }
    }
}

TEST_F(ChartFileTest, aRecordThatClaimsToBeLargerThanAllDisksIsCutOff) {
    const FileHead head = FileHead::of(logFile, 1);
    for (const quint64 length : {quint64{25}, quint64{1} << 32, quint64{1} << 63, ~quint64{0}}) {
        char record[RecordHead::size];
        RecordHead{titleRecord, 0, length, 0}.put(record, head.identity);
        EXPECT_EQ(faultOf(head.bytes() + QByteArray(record, sizeof record) + QByteArray(24, 'x')),
                  ChartFileFault::Truncated);
    }
}

TEST_F(ChartFileTest, whereverTheDiskFailsTheOldFileOrTheNewOneStandsAlone) {
    const QByteArray old = saved();
    for (int i = 0; i < 40000; ++i)
        run.samples.append({1, 2});
    for (const int error : {ENOSPC, EIO, EACCES}) {
        int failing = 0;
        for (bool struck = true; struck;) {
            loaded(old);
            FaultyDisk disk(++failing, error, 100000);
            const std::error_code answer = saveChartFile(path, dataFile, run, axes, disk);
            struck = disk.struck();
            const bool isNew = loadChartFile(path, back, backAxes).good() && back.samples.size() == 40041;
            EXPECT_TRUE(isNew || content() == old);
            EXPECT_TRUE(answer || isNew);
            EXPECT_TRUE(struck || !answer);
            EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
        }
        EXPECT_GT(failing, 9);
    }
}

TEST_F(ChartFileTest, whereverTheDiskCannotBeReadThatIsToldAndTheChartStaysAsItWas) {
    for (int i = 0; i < 40000; ++i)
        run.samples.append({1, 2});
    saved();
    const QByteArray before = print(back, backAxes);
    int failing = 0;
    for (ChartFileReport report; failing == 0 || !report.good();) {
        SCOPED_TRACE(++failing);
        EXPECT_EQ(print(back, backAxes), before);
        FaultyDisk disk(failing, EIO, 10000);
        report = loadChartFile(path, back, backAxes, disk);
        FaultyDisk sameDisk(failing, EIO, 10000);
        const ChartFileReport salvaged = salvageChartFile(path, run, axes, sameDisk);
        EXPECT_EQ(salvaged.error, report.error);
        EXPECT_EQ(report.error.value(), report.fault == ChartFileFault::Unreadable ? EIO : 0);
        EXPECT_TRUE(report.error || report.good());
    }
    EXPECT_GT(failing, 32);
    EXPECT_EQ(back.samples.size(), 40041);
}

TEST_F(ChartFileTest, aStretchBeginsAtZeroAndTakesItsMarksAlong) {
    run = {};
    for (int i = 0; i <= 30000; ++i) // 100 minutes
        run.samples.append({static_cast<float>(i), 0});
    run.marks = {{QStringLiteral("before"), 0, 1, 9.99F},
                 {QStringLiteral("in"), 0, 1, 10},
                 {QStringLiteral("out"), 0, 1, 50.01F}};
    run.methodTexts = {{QStringLiteral("m"), 1}, {QStringLiteral("n"), 12}, {QStringLiteral("o"), 99}};
    run.notes = QStringLiteral("kept");
    axes.timeMin = 10;
    axes.timeMax = 50;
    ASSERT_FALSE(saveChartStretch(path, run, axes));
    ASSERT_TRUE(loadChartFile(path, back, backAxes).good());
    EXPECT_EQ(back.samples.size(), 40 * 300 + 1);
    EXPECT_EQ(back.samples.at(0).uv, 3000);
    EXPECT_EQ(back.samples.at(12000).uv, 15000);
    ASSERT_EQ(back.marks.size(), 1U);
    EXPECT_EQ(back.marks[0].time, 0);
    ASSERT_EQ(back.methodTexts.size(), 3U);
    EXPECT_EQ(back.methodTexts[0].time, 0);
    EXPECT_EQ(back.methodTexts[1].time, 2);
    EXPECT_EQ(back.methodTexts[2].time, 40);
    EXPECT_EQ(back.notes, run.notes);
    EXPECT_EQ(backAxes, (AxisValues{axes.uvMin, axes.uvMax, axes.condMin, axes.condMax, 0, 40}));

    axes.timeMin = 200; // where there is nothing yet
    axes.timeMax = 300;
    ASSERT_FALSE(saveChartStretch(path, run, axes));
    EXPECT_TRUE(loadChartFile(path, back, backAxes).good());
    EXPECT_EQ(back.samples.size(), 0);
}

TEST_F(ChartFileTest, whateverAFileHoldsCanBeShown) {
    constexpr float odd[] = {NAN, INFINITY, -INFINITY, 3e38F, -3e38F, 1e-45F};
    for (const float value : odd) {
        run.samples.append({value, -value});
        run.marks.push_back({QString(3000, u'W') + QChar(0xD800) + QChar(0), -1, -32768, value});
        run.methodTexts.push_back({QStringLiteral("late"), value});
    }
    for (const AxisValues &shown :
         {AxisValues{-1e6F, 1e6F, -1e6F, 1e6F, -1e6F, 1e6F}, AxisValues{0, 1e-45F, 0, 1e-45F, 0, 1e-45F},
          AxisValues{999999.9F, 1e6F, 3, 4, 999999.9F, 1e6F}}) {
        ASSERT_FALSE(saveChartFile(path, dataFile, run, shown));
        Quillchart chart(1);
        chart.resize(600, 300);
        ASSERT_TRUE(chart.LoadDataFile(path));
        EXPECT_EQ(chart.UvAxisMax(), shown.uvMax);
        EXPECT_EQ(chart.grab().width(), 600);
        EXPECT_TRUE(chart.SaveSelectedData(path) && chart.LoadDataFile(path));
    }
}

TEST_F(ChartFileTest, axesThatNoChartCanShowGiveWayToThoseOfANewOne) {
    axes = {NAN, 2, 3, 3, 0, 1e30F};
    ASSERT_TRUE(loaded(saved()).good());
    EXPECT_EQ(backAxes, AxisValues());
    axes = {-2, -1.999F, 499.5F, 500, 32757, 43200};
    ASSERT_TRUE(loaded(saved()).good());
    EXPECT_EQ(backAxes, axes);
}

} // namespace
