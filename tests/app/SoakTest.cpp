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

/// What one of the charts has to hold of the stream.
struct Expected {
    std::vector<SamplePair> samples;
    QStringList marks; ///< each with the number of its sample
    bool takes = false;

    void mark(const QString &label, qint64 sample) { marks << label + ' ' + QString::number(sample); }
    void compareWith(const ChartData &held) const {
        ASSERT_EQ(held.samples.size(), static_cast<qint64>(samples.size()));
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const auto bits = [](SamplePair pair) { return std::bit_cast<quint64>(pair); };
            ASSERT_EQ(bits(held.samples.at(static_cast<qint64>(i))), bits(samples[i])) << i;
        }
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

    /// Sample pairs differ, and every seventh is no number.
    void points(int count) {
        for (; count > 0; --count, ++sent) {
            const float uv = sent % 7 == 0 ? std::bit_cast<float>(0x7fc00000U + static_cast<quint32>(sent)) : 0.5F;
            const SamplePair pair{uv, static_cast<float>(sent)};
            waiting += sampleBlock('U', pair.uv) + sampleBlock('C', pair.cond);
            for (Expected *side : {&recorder, &log}) {
                if (side->takes)
                    side->samples.push_back(pair);
            }
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
    /// The instrument's news comes as a mark with the next point.
    void news(const QString &block, const QString &label) {
        waiting += stream(block);
        recorder.takes |= label == "S";
        points(1);
        if (recorder.takes)
            recorder.mark(label, std::ssize(recorder.samples) - 1);
        log.mark(label, std::max(std::ssize(log.samples) - 2, {})); // the log's stands with the point before
        recorder.takes &= label != "P" && label != "E";
        log.takes = label != "P";
    }
    /// An hour of the instrument: a run with a pause in it; every sixth time the line goes dead in the middle.
    void hour(int number) {
        struct Row {
            int points;
            const char *block, *label;
        };
        const int before = sent;
        for (const Row &next : {Row{600, "R1", "S"}, Row{2000, "E2", "1"}, Row{2000, "E2", "2"}, Row{2000, "E2", "3"},
                                Row{1000, "H1", "H"}, Row{100, "H2", "C"}, Row{500, "R2", "P"}}) {
            points(next.points);
            news(next.block, next.label);
        }
        points(900);
        waiting += stream("R1");
        recorder.takes = log.takes = true;
        points(3000);
        if (number % 6 == 5)
            loseLink();
        news("R0", "E");
        points(before + pointsPerHour - sent);
    }
    void loseLink() {
        send();
        meanwhile([this] { click("cmdOk"); });
        clock.advance(1min);
        EXPECT_FALSE(led());
        recorder.takes = false;
        points(40);
        EXPECT_TRUE(led());
    }
    static double bytesInUse() {
        const auto info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
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
