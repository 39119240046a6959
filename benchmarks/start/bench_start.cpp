// SPDX-License-Identifier: MIT
#include "../ProcessFigures.h"
#include "driver/Child.h"
#include "driver/Profile.h"

#include <QFile>
#include <benchmark/benchmark.h>
#include <fcntl.h>

#include <cstdlib>
#include <stdexcept>

using namespace ostrel;

using namespace std::chrono_literals;

/// Processor time and memory of a program when it first paints a window. Both programs run without a display; the
/// recorder's serial port is a pseudo-terminal that sends nothing.
namespace {

class SilentLine {
public:
    explicit SilentLine(const QString &link) : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
        const bool made = master_ >= 0 && grantpt(master_) == 0 && unlockpt(master_) == 0;
        if (!made || !QFile::link(QString::fromLocal8Bit(ptsname(master_)), link))
            throw std::runtime_error("no pseudo-terminal");
    }
    ~SilentLine() { ::close(master_); }

private:
    int master_;
};

void firstPaint(benchmark::State &state, const char *program, const char *window) {
    double mebibytes = 0;
    for (auto _ : state) {
        const Profile profile;
        const SilentLine line{profile.file("instrument1")};
        const Child running{[&] {
            profile.enter();
            qputenv("QT_PLUGIN_PATH", PLUGIN_FOLDER);
            qputenv("QT_QPA_GENERIC_PLUGINS", "firstpaint");
            qputenv("FIRST_PAINT_OF", window);
            return become({program});
        }};
        if (!within(30s, [&] { return isStopped(running.pid()); }))
            throw std::runtime_error("the program paints nothing");
        state.SetIterationTime(processorSeconds(running.pid()));
        mebibytes = residentMebibytes(running.pid());
    }
    state.counters["MiB"] = mebibytes;
}

// clang-format off
BENCHMARK_CAPTURE(firstPaint, start, OSTREL_PROGRAM, "")               ->Name("FirstPaint/ours/start") ->UseManualTime()->Iterations(5);
BENCHMARK_CAPTURE(firstPaint, window, OSTREL_PROGRAM, "frmMain")       ->Name("FirstPaint/ours/window")->UseManualTime()->Iterations(5);
BENCHMARK_CAPTURE(firstPaint, empty_window, EMPTY_WINDOW_PROGRAM, "")  ->Name("FirstPaint/empty_window")->UseManualTime()->Iterations(5);
// clang-format on

} // namespace

BENCHMARK_MAIN();
