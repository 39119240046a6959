// SPDX-License-Identifier: MIT
#include "app/Application.h"
#include "simulation/Simulation.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>
#include <thread>

using namespace ostrel;

namespace {

const std::size_t processors = std::max(std::thread::hardware_concurrency(), 1U);

struct World {
    OutsideEvents events;
    qint64 end = 0; ///< ms
    int otherCopies = 0;
};

struct Outcome {
    QByteArray broken; ///< the rule, empty when all was well
    qint64 at = 0;     ///< ms
    QByteArray report{};
};

/// In a process of its own, since a fault may end or stop it.
class Trial {
public:
    explicit Trial(World world) : world_(std::move(world)) {
        int ends[2] = {};
        if (::pipe(ends) != 0)
            std::abort();
        process_ = ::fork();
        if (process_ == 0) {
            ::close(ends[0]);
            play(ends[1]);
        }
        ::close(ends[1]);
        from_ = ends[0];
    }

    pid_t process() const { return process_; }
    /// It has ended so.
    Outcome outcome(int status) const {
        QByteArray all;
        char buffer[4096];
        for (ssize_t got = 0; (got = ::read(from_, buffer, sizeof buffer)) > 0;)
            all.append(buffer, got);
        ::close(from_);
        const QByteArrayList lines = all.split('\n');
        if (lines.size() > 2)
            return {lines[0], lines[1].toLongLong(), all.mid(lines[0].size() + lines[1].size() + 2)};
        return {QByteArray("ended by a signal: ") + ::strsignal(WTERMSIG(status)), world_.end, "\n"};
    }
    const World &world() const { return world_; }

private:
    [[noreturn]] void play(int to) const {
        int argc = 1;
        char name[] = "simulate";
        char *argv[] = {name, nullptr};
        const Application application(argc, argv);
        QElapsedTimer watch;
        watch.start();
        QByteArray report;
        QByteArray broken;
        {
            Simulation simulation(world_.events, world_.end, world_.otherCopies);
            broken = simulation.play().replace(u'\n', u' ').toUtf8();
            report = broken + '\n' + QByteArray::number(simulation.now()) + '\n' +
                     QStringLiteral("%1 h, %2 starts, %3 times real time\n")
                         .arg(double(simulation.now()) / 3.6e6, 0, 'f', 2)
                         .arg(simulation.starts())
                         .arg(simulation.now() / (watch.elapsed() + 1))
                         .toUtf8();
            if (!broken.isEmpty())
                report += "    " + simulation.lastEvents().join(QLatin1String("\n    ")).toUtf8() + '\n';
        }
        if (::write(to, report.constData(), std::size_t(report.size())) < 0)
            std::abort();
        ::_exit(0);
    }

    World world_;
    pid_t process_ = 0;
    int from_ = -1;
};

/// The rule without its numbers, by which two failures are the same.
QByteArray kindOf(QByteArray broken) {
    broken = broken.split('/').first(); // a path is another one each time
    for (char &letter : broken)
        letter = letter >= '0' && letter <= '9' ? '0' : letter;
    while (broken.contains("00"))
        broken.replace("00", "0");
    return broken;
}

/// The first of these worlds that breaks this kind of rule; they are played at the same time. Their number for none.
std::size_t firstBroken(const std::vector<World> &worlds, const QByteArray &kind) {
    std::vector<Trial> trials;
    for (const World &world : worlds)
        trials.emplace_back(world);
    std::size_t first = worlds.size();
    for (std::size_t i = 0; i < trials.size(); ++i) {
        int status = 0;
        ::waitpid(trials[i].process(), &status, 0);
        const bool broken = kindOf(trials[i].outcome(status).broken) == kind;
        first = std::min(first, broken ? i : worlds.size());
    }
    return first;
}

World without(World world, std::size_t first, std::size_t count) {
    const auto from = world.events.begin() + std::ptrdiff_t(first);
    world.events.erase(from, from + std::ptrdiff_t(std::min(count, world.events.size() - first)));
    return world;
}

/// The last events alone, as if the world had begun right before them.
World lastOf(World world, std::size_t count) {
    constexpr qint64 start = 5000; // ms
    world.events.erase(world.events.begin(), world.events.end() - std::ptrdiff_t(count));
    const qint64 earlier = world.events.front().at - start;
    for (OutsideEvent &event : world.events)
        event.at -= earlier;
    world.end -= earlier;
    return world;
}

/// Leaves away what the failure does not need: all but the last events, then halves, quarters and so on of those.
World shrunk(World world, const Outcome &outcome) {
    const QByteArray kind = kindOf(outcome.broken);
    world.end = std::min(world.end, outcome.at + 60000);
    std::erase_if(world.events, [&](const OutsideEvent &event) { return event.at > world.end; });
    if (firstBroken({world}, kind) != 0) {
        std::printf("it does not come again\n");
        return world;
    }
    for (std::size_t count = 8; count < world.events.size(); count *= 2) {
        if (World shorter = lastOf(world, count); firstBroken({shorter}, kind) == 0)
            world = std::move(shorter);
    }
    for (std::size_t piece = world.events.size() / 2; piece > 0;) {
        bool left = false;
        for (std::size_t at = 0; at < world.events.size();) {
            std::vector<World> shorter;
            for (std::size_t from = at; from < world.events.size() && shorter.size() < processors; from += piece)
                shorter.push_back(without(world, from, piece));
            const std::size_t broken = firstBroken(shorter, kind);
            at += broken * piece;
            if (broken < shorter.size()) {
                world = std::move(shorter[broken]);
                left = true;
            }
        }
        if (!left || piece > world.events.size())
            piece /= 2;
    }
    return world;
}

std::optional<World> kept(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto head = file.readLine().simplified().split(' ');
    if (head.first() != "world")
        return {};
    return World{readEvents(file.readAll()), head.value(1).toLongLong(), head.value(2).toInt()};
}

void keep(const QString &path, const World &world, const QByteArray &broken) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write("world " + QByteArray::number(world.end) + ' ' + QByteArray::number(world.otherCopies) + " # " +
                   broken + "\n# SPDX-License-Identifier: MIT\n" + written(world.events));
}

/// As many at a time as there are processors. Answers how many have failed.
int playAll(const std::vector<std::pair<QString, World>> &worlds, const QString &folder) {
    std::map<pid_t, std::pair<QString, Trial>> running;
    std::size_t next = 0;
    int failed = 0;
    while (next < worlds.size() || !running.empty()) {
        if (next < worlds.size() && running.size() < processors) {
            Trial trial(worlds[next].second);
            running.emplace(trial.process(), std::pair(worlds[next].first, std::move(trial)));
            ++next;
            continue;
        }
        int status = 0;
        const auto ended = running.extract(::wait(&status));
        const auto &[name, trial] = ended.mapped();
        const Outcome outcome = trial.outcome(status);
        std::printf("%s: %s; %s", qPrintable(name), outcome.broken.isEmpty() ? "good" : outcome.broken.constData(),
                    outcome.report.constData());
        if (!outcome.broken.isEmpty()) {
            ++failed;
            if (!folder.isEmpty()) {
                const World small = shrunk(trial.world(), outcome);
                keep(folder + u'/' + name, small, outcome.broken);
                std::printf("%s/%s has it in %zu events\n", qPrintable(folder), qPrintable(name), small.events.size());
            }
        }
        std::fflush(stdout);
    }
    return failed;
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    qputenv("LC_ALL", "C.UTF-8");
    if (QFileInfo(QStringLiteral("/dev/shm")).isWritable()) // in memory: nobody waits for the simulated disk
        qputenv("TMPDIR", "/dev/shm");
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    QCommandLineParser options;
    options.addOptions({{"seed", "The first seed.", "N", "1"},
                        {"seeds", "How many seeds.", "N", "1"},
                        {"hours", "Simulated hours of each.", "H", "1"},
                        {"copies", "Copies of the program at most, the watched one included.", "K", "3"},
                        {"quiet", "Nothing but the instrument."},
                        {"keep", "A failure is shrunk into a file of this folder.", "FOLDER"}});
    if (!options.parse(arguments)) {
        std::fprintf(stderr, "%s\n", qPrintable(options.errorText()));
        return 2;
    }
    std::vector<std::pair<QString, World>> worlds;
    for (const QString &file : options.positionalArguments()) {
        const std::optional<World> world = kept(file);
        if (!world) {
            std::fprintf(stderr, "%s is no world\n", qPrintable(file));
            return 2;
        }
        worlds.emplace_back(QFileInfo(file).fileName(), *world);
    }
    const quint64 first = options.value("seed").toULongLong();
    const double hours = options.value("hours").toDouble();
    const quint64 seeds = worlds.empty() || options.isSet("seed") ? options.value("seeds").toULongLong() : 0;
    for (quint64 seed = first; seed < first + seeds; ++seed)
        worlds.emplace_back(QStringLiteral("seed-%1").arg(seed),
                            World{eventsOf(seed, hours, options.isSet("quiet")), qint64(hours * 3600000),
                                  options.value("copies").toInt() - 1});
    return playAll(worlds, options.value("keep")) == 0 ? 0 : 1;
}
