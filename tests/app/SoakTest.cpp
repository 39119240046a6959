// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"
#include "chart/files/ChartFile.h"
#include "chart/files/RunningLogReader.h"

#include <QDir>
#include <malloc.h>

#include <bit>

namespace {

constexpr int hours = 72;
constexpr int pointsPerHour = 18000;

/// The computer's disk, without the wait for it: nobody cuts the power.
class PatientDisk : public FileOperations {
public:
    PatientDisk() { standIn(this); }
    ~PatientDisk() override { standIn(nullptr); }
    int sync(int) override { return 0; }
    int syncData(int) override { return 0; }
};

/// Sample pairs differ, and every seventh is no number.
SamplePair sampleOf(int number) {
    const float uv = number % 7 == 0 ? std::bit_cast<float>(0x7fc00000U + static_cast<quint32>(number)) : 0.5F;
    return {uv, static_cast<float>(number)};
}

/// What one of the charts has to hold of the stream.
struct Expected {
    std::vector<int> samples; ///< numbers in the stream
    std::vector<EventMark> marks;
    bool takes = false;

    void compareWith(const ChartData &held) const {
        ASSERT_EQ(held.samples.size(), static_cast<qint64>(samples.size()));
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const auto bits = [](SamplePair pair) { return std::bit_cast<quint64>(pair); };
            ASSERT_EQ(bits(held.samples.at(static_cast<qint64>(i))), bits(sampleOf(samples[i]))) << i;
        }
        ASSERT_EQ(held.marks.size(), marks.size());
        for (std::size_t i = 0; i < marks.size(); ++i) {
            EXPECT_EQ(held.marks[i].label, marks[i].label) << i;
            EXPECT_EQ(held.marks[i].time, marks[i].time) << i;
        }
    }
};

/// An instrument that is at work for days, and what the recorder and the log have to make of it.
class SoakTest : public testing::Test, protected ProgramFixture {
protected:
    ~SoakTest() override { program.reset(); } // before its disk

    void points(int count) {
        for (; count > 0; --count) {
            const SamplePair pair = sampleOf(sent);
            waiting += sampleBlock('U', pair.uv) + sampleBlock('C', pair.cond);
            for (Expected *side : {&recorder, &log}) {
                if (side->takes)
                    side->samples.push_back(sent);
            }
            ++sent;
            if (++unsent == 20) // four seconds' worth
                send();
        }
    }
    void send() {
        ComPort.arrive(waiting);
        waiting.clear();
        unsent = 0;
        clock.advance(4s);
    }
    /// The instrument's news comes as marks with the next point; none for a side that does not show it.
    void news(const QString &block, const QString &recorderMark, const QString &logMark) {
        waiting += stream(block);
        recorder.takes = recorder.takes || recorderMark == "S";
        points(1);
        if (!recorderMark.isEmpty())
            recorder.marks.push_back({.label = recorderMark, .time = timeOf(recorder.samples.size() - 1)});
        if (!logMark.isEmpty()) // the log's stands with the point before
            log.marks.push_back({.label = logMark, .time = timeOf(std::max<std::size_t>(log.samples.size(), 2) - 2)});
        if (recorderMark == "P" || recorderMark == "E")
            recorder.takes = false;
        if (logMark == "P")
            log.takes = false;
    }
    static float timeOf(std::size_t sample) { return static_cast<float>(ChartData::timeOf(qint64(sample))); }

    /// An hour of the instrument: a run with a pause in it; every sixth time the line goes dead in the middle.
    void hour(int number) {
        const int before = sent;
        points(600);
        news("R1", "S", "S");
        for (const char *event : {"1", "2", "3"}) {
            points(2000);
            news("E2", event, event);
        }
        points(1000);
        news("H1", "H", "H");
        points(100);
        news("H2", "C", "C");
        points(500);
        news("R2", "P", "P");
        points(900);
        waiting += stream("R1");
        recorder.takes = log.takes = true;
        points(3000);
        if (number % 6 == 5)
            loseLink();
        else
            news("R0", "E", "E");
        points(before + pointsPerHour - sent);
    }
    void loseLink() {
        send();
        meanwhile([this] { QTest::mouseClick(find<QWidget>("cmdOk"), Qt::LeftButton); });
        clock.advance(1min);
        EXPECT_FALSE(led());
        recorder.takes = false;
        points(40);
        EXPECT_TRUE(led());
        news("R0", "", "E");
    }
    static std::size_t bytesInUse() {
        const auto info = mallinfo2();
        return info.uordblks + info.hblkhd;
    }
    ChartData held(int number) {
        ChartData run;
        AxisValues axes;
        const QString path = folder.filePath("held.chd");
        EXPECT_TRUE(chart(number).SaveDataFile(path) && loadChartFile(path, run, axes).good());
        return run;
    }

    PatientDisk disk;
    QByteArray waiting; ///< on its way to the line
    int unsent = 0;     ///< points in it
    int sent = 0;
    Expected recorder;
    Expected log;
};

TEST_F(SoakTest, threeDaysOfTheInstrumentAreAllThere) {
    recorder.samples.reserve(std::size_t{hours} * pointsPerHour);
    log.samples.reserve(std::size_t{hours} * pointsPerHour);
    log.takes = true;
    start();
    hour(0);
    const std::size_t atFirst = bytesInUse();
    for (int number = 1; number < hours; ++number)
        hour(number);
    send();
    const auto grown = static_cast<double>(bytesInUse()) - static_cast<double>(atFirst);

    constexpr std::size_t begun = 2 * SampleStore::chunkSize;                     // of either chart, and not full
    constexpr double bytesPerSample = sizeof(SamplePair) + sizeof(Extent) / 15.0; // 1/16, 1/256 and so on of a pyramid
    EXPECT_LT(grown, (recorder.samples.size() + log.samples.size() + begun) * bytesPerSample + 1e6);

    timers["TimerSaveLog"]->tick();
    const QDir folders(folder.filePath("Log"));
    const QDir directory(folders.filePath(folders.entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0)));
    EXPECT_EQ(directory.entryList(QDir::Files), (QStringList{"Log00001.dat", "Log00002.dat", "Log00003.dat"}));
    const RecoveredLog left = readRunningLog(directory.path());
    EXPECT_TRUE(left.whole());
    log.compareWith(left.data);
    log.compareWith(held(5));
    recorder.compareWith(held(0));
    EXPECT_TRUE(prompts.shown.empty());
    EXPECT_FALSE(QFile::exists(folder.filePath("ChartErr.log")));
}

} // namespace
