// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "simulator/PlayFiles.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/StopSignals.h"
#include "simulator/Transmitter.h"

#include <QCoreApplication>
#include <fcntl.h>

#include <cstdio>
#include <memory>

using namespace ostrel;

namespace {

/// So that no file is opened under the number of a closed stream and gets its output. A folder cannot be written.
void holdStandardStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/", O_RDONLY);
    }
}

void print(const QString &text) { writeAll(STDOUT_FILENO, text.toLocal8Bit(), "standard output"); }

/// File names and words of a script may contain control characters for the terminal.
void complain(QString text) {
    for (QChar &character : text) {
        if (character != '\n' && character.category() == QChar::Other_Control)
            character = '?';
    }
    std::fputs(text.toLocal8Bit().constData(), stderr);
}

void complainOf(const RunTimeError &error) { complain("velquin-sim: " + error.description() + '\n'); }

/// The first path must be printed; for a later one the reader of standard output may be gone.
std::function<void(const QString &)> announcing() {
    return [first = true](const QString &path) mutable {
        if (std::exchange(first, false))
            return print(path + '\n');
        trapped([&] { print(path + '\n'); },
                [&](const RunTimeError &error) {
                    complain("velquin-sim: " + error.description() + "; the port is " + path + '\n');
                });
    };
}

int play(const SimulatorOptions &options) {
    PlayFiles files{options};
    const StopSignals signals_{[] { QCoreApplication::exit(Good); }};
    files.openOutputs();
    const auto fail = [](const RunTimeError &error) {
        complainOf(error);
        QCoreApplication::exit(Failed);
    };
    Plug plug{options.link};
    plug.newPort = announcing();
    plug.failed = fail;
    plug.set(true);
    files.beginOutputs();

    if (options.speed > Transmitter::recorderFollows)
        complain(QString{
            "velquin-sim: --speed above %1 is faster than the recorder decodes; it will miss parts of the run\n"}
                     .arg(Transmitter::recorderFollows));
    const std::unique_ptr<LineSource> source = files.source();
    Transmitter transmitter{*source, plug, {options.speed, files.record()}};
    transmitter.finished = [] { QCoreApplication::exit(Good); };
    transmitter.failed = fail;
    transmitter.start();
    return QCoreApplication::exec();
}

int run(const QStringList &arguments) {
    try {
        return play(readOptions(arguments));
    } catch (const EarlyEnd &end) {
        if (end.exitCode == Good)
            print(end.why);
        else
            complain(end.why);
        return end.exitCode;
    }
}

} // namespace

int main(int argc, char *argv[]) {
    holdStandardStreams();
    const QCoreApplication application{argc, argv};
    int status = Failed;
    trapped([&] { status = run(QCoreApplication::arguments()); }, complainOf);
    return status;
}
