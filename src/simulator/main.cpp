// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"
#include "simulator/Player.h"
#include "simulator/Replay.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/StopSignals.h"
#include "simulator/Transmitter.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <memory>

namespace {

enum ExitCode : int { Good = 0, Failed = 1, Misused = 2 };

void print(std::FILE *stream, const QString &text) {
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fflush(stream);
}

[[noreturn]] void failOn(const QFile &file) {
    throw RunTimeError(RunTimeError::PathFileAccess, file.fileName() + ": " + file.errorString());
}

QByteArray contentOf(const QString &path) {
    QFile file{path};
    if (!file.open(QIODevice::ReadOnly))
        failOn(file);
    return file.readAll();
}

/// Into a file, if one was asked for. Unbuffered, so that the file is whole however the program ends.
ByteSink recordIn(const QString &path) {
    if (path.isEmpty())
        return {};
    auto file = std::make_shared<QFile>(path);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        failOn(*file);
    return [file](const QByteArray &bytes) {
        if (file->write(bytes) != bytes.size())
            failOn(*file);
    };
}

RunScript readScript(const QString &path) {
    try {
        return parseRunScript(QString::fromUtf8(contentOf(path)));
    } catch (const ScriptError &error) {
        throw EarlyEnd{Misused,
                       QString{"%1:%2:%3: %4\n"}.arg(path).arg(error.line).arg(error.column).arg(error.message)};
    }
}

std::unique_ptr<LineSource> makeSource(const SimulatorOptions &options, TruthRecord *truth) {
    if (!options.replay.isEmpty())
        return std::make_unique<Replay>(contentOf(options.replay));
    const RunScript script = readScript(options.script.isEmpty() ? ":/simulator/demo.velquin" : options.script);
    const InstrumentKind kind = options.kind.value_or(script.kind.value_or(InstrumentKind::Status));
    return std::make_unique<Player>(script, Player::Settings{kind, script.loops && !options.once, options.seed, truth});
}

int play(const SimulatorOptions &options) {
    std::optional<TruthRecord> truth;
    if (const ByteSink sink = recordIn(options.truth))
        truth.emplace(sink);
    const std::unique_ptr<LineSource> source = makeSource(options, truth ? &*truth : nullptr);

    const auto fail = [](const RunTimeError &error) {
        print(stderr, "velquin-sim: " + error.description() + '\n');
        QCoreApplication::exit(Failed);
    };
    Plug plug{options.link};
    plug.newPort = [](const QString &path) { print(stdout, path + '\n'); };
    plug.failed = fail;
    Transmitter transmitter{*source, plug, {options.speed, recordIn(options.record)}};
    transmitter.finished = [] { QCoreApplication::exit(Good); };
    transmitter.failed = fail;
    const StopSignals signals_{[] { QCoreApplication::exit(Good); }};
    if (options.speed > Transmitter::recorderFollows)
        print(stderr, QString{"velquin-sim: --speed above %1 is faster than the recorder decodes; it will miss parts "
                              "of the run\n"}
                          .arg(Transmitter::recorderFollows));
    plug.set(true);
    transmitter.start();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[]) {
    const QCoreApplication application{argc, argv};
    try {
        return play(readOptions(QCoreApplication::arguments()));
    } catch (const EarlyEnd &end) {
        print(end.exitCode == Good ? stdout : stderr, end.text);
        return end.exitCode;
    } catch (const RunTimeError &error) {
        print(stderr, "velquin-sim: " + error.description() + '\n');
        return Failed;
    }
}
