// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"
#include "chart/files/RunningLogReader.h"

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

/// Sample pairs differ by their numbers, and every seventh is no number.
SamplePair pairOf(int number) {
    const auto bits = 0x7fc00000U + static_cast<quint32>(number);
    return {number % 7 == 0 ? std::bit_cast<float>(bits) : 0.5F, static_cast<float>(number)};
}

/// What one of the charts has to hold of the stream.
struct Expected {
    std::vector<int> samples;
    QStringList marks; ///< each with the place of its sample
    bool takes = false;

    void mark(const QString &label, qint64 place) { marks << label + ' ' + QString::number(place); }
    void compareWith(const ChartData &held) const {
        ASSERT_EQ(held.samples.size(), std::ssize(samples));
        for (qint64 i = 0; i < held.samples.size(); ++i)
            ASSERT_EQ(std::bit_cast<quint64>(held.samples.at(i)), std::bit_cast<quint64>(pairOf(samples[i]))) << i;
        Expected of;
        for (const EventMark &mark : held.marks)
            of.mark(mark.label, qRound64(double(mark.time) * samplesPerMinute));
        EXPECT_EQ(of.marks, marks);
    }
};

/// An instrument that is at work for days, and what the recorder and the log have to make of it.
class SoakTest : public testing::Test, protected ProgramFixture {
protected:
    ~SoakTest() override { program.reset(); } // before its disk

    void points(int count) {
        for (; count > 0; --count) {
            waiting += sampleBlock('U', pairOf(sent).uv) + sampleBlock('C', pairOf(sent).cond);
            for (Expected *side : {&recorder, &log}) {
                if (side->takes)
                    side->samples.push_back(sent);
            }
            if (++sent % 20 == 0) // four seconds' worth
                send();
        }
    }
    void send() {
        ComPort.arrive(std::exchange(waiting, {}));
        clock.advance(4s);
    }
    /// The instrument's news comes as a mark with the next point.
    void news(const QString &block, const QString &label) {
        waiting += stream(block);
        recorder.takes |= label == "S";
        points(1);
        if (recorder.takes)
            recorder.mark(label, std::ssize(recorder.samples) - 1);
        log.mark(label, std::max(std::ssize(log.samples) - 2, {})); // the log's mark is at the point before
        recorder.takes &= label != "P" && label != "E";
        log.takes = label != "P";
    }
    /// An hour of the instrument: a run with a pause in it; every sixth time the line goes dead in the middle.
    void hour(int number) {
        using News = std::tuple<int, const char *, const char *>; // behind so many points
        const int end = sent + pointsPerHour;
        for (const auto &[before, block, label] :
             {News{600, "R1", "S"}, News{2000, "E2", "1"}, News{2000, "E2", "2"}, News{2000, "E2", "3"},
              News{1000, "H1", "H"}, News{100, "H2", "C"}, News{500, "R2", "P"}}) {
            points(before);
            news(block, label);
        }
        points(900);
        waiting += stream("R1");
        recorder.takes = log.takes = true;
        points(3000);
        if (number % 6 == 5) {
            send();
            meanwhile([this] { click("cmdOk"); });
            clock.advance(1min);
            EXPECT_FALSE(led());
            recorder.takes = false;
            points(40);
            EXPECT_TRUE(led());
        }
        news("R0", "E");
        points(end - sent);
    }
    static double bytesInUse() {
        const auto info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    }

    PatientDisk disk;
    QByteArray waiting; ///< on its way to the line
    int sent = 0;       ///< points
    Expected recorder;
    Expected log;
};

TEST_F(SoakTest, threeDaysOfTheInstrumentAreAllThere) {
    recorder.samples.reserve(std::size_t{hours} * pointsPerHour);
    log.samples.reserve(std::size_t{hours} * pointsPerHour);
    log.takes = true;
    start();
    hour(0);
    const double atFirst = bytesInUse();
    for (int number = 1; number < hours; ++number)
        hour(number);
    send();
    const double grown = bytesInUse() - atFirst;

    constexpr std::size_t begun = 2 * SampleStore::chunkSize;                     // of either chart, and not full
    constexpr double bytesPerSample = sizeof(SamplePair) + sizeof(Extent) / 15.0; // 1/16, 1/256 and so on of a pyramid
    EXPECT_LT(grown, (recorder.samples.size() + log.samples.size() + begun) * bytesPerSample + 1e6);

    timers["TimerSaveLog"]->tick();
    const QString directory = "Log/" + logDirectories().value(0);
    EXPECT_EQ(entries(directory).join(' '), "Log00001.dat Log00002.dat Log00003.dat");
    const RecoveredLog left = readRunningLog(path(directory));
    EXPECT_TRUE(left.whole());
    log.compareWith(left.data);
    log.compareWith(chart(5).run().data());
    EXPECT_TRUE(chart(0).SaveDataFile(path("held.chd")) && chart(6).LoadDataFile(path("held.chd")));
    recorder.compareWith(chart(6).run().data());
    EXPECT_EQ(told(), "");
    EXPECT_FALSE(exists("ChartErr.log"));
}

} // namespace
