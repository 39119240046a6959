// SPDX-License-Identifier: MIT
#include "simulator/PlayFiles.h"

#include "simulator/Player.h"
#include "simulator/Replay.h"

#include <QFile>

namespace ostrel {

namespace {

RunScript readScript(const QByteArray &content, const QString &path) {
    try {
        return parseRunScript(decodeScript(content));
    } catch (const ScriptError &error) {
        throw EarlyEnd{Misused,
                       QString{"%1:%2:%3: %4\n"}.arg(path).arg(error.line).arg(error.column).arg(error.message)};
    }
}

QByteArray demonstration() {
    QFile file{":/simulator/demo.velquin"};
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{};
}

ByteSink sinkOf(std::optional<OutputFile> &file) {
    return [&file](const QByteArray &bytes) { file->write(bytes); };
}

} // namespace

PlayFiles::PlayFiles(const SimulatorOptions &options) : options_(options) {
    if (!inputPath().isEmpty())
        input_.emplace(inputPath());
    if (!isReplay())
        script_ = readScript(input_ ? input_->content() : demonstration(), inputPath());
}

void PlayFiles::openOutputs() {
    if (!options_.truth.isEmpty())
        truth_.emplace(options_.truth);
    if (!options_.record.isEmpty())
        record_.emplace(options_.record);
    if (const QString clash = clashOf(named()); !clash.isEmpty())
        throw EarlyEnd{Misused, "velquin-sim: " + clash + '\n'};
}

std::vector<NamedFile> PlayFiles::named() const {
    std::vector<NamedFile> files;
    if (input_)
        files.push_back({isReplay() ? "--replay" : "the script", inputPath(), input_->identity()});
    if (truth_)
        files.push_back({"--truth", options_.truth, truth_->identity()});
    if (record_)
        files.push_back({"--record", options_.record, record_->identity()});
    if (!options_.link.isEmpty())
        files.push_back({"--link", options_.link, {}, true});
    return files;
}

void PlayFiles::beginOutputs() {
    if (record_)
        record_->begin();
    if (!truth_)
        return;
    truth_->begin();
    truthRecord_.emplace(sinkOf(truth_));
}

std::unique_ptr<LineSource> PlayFiles::source() {
    if (isReplay())
        return std::make_unique<Replay>(input_->content());
    const InstrumentKind kind = options_.kind.value_or(script_.kind.value_or(InstrumentKind::Status));
    TruthRecord *truth = truthRecord_ ? &*truthRecord_ : nullptr;
    return std::make_unique<Player>(script_,
                                    Player::Settings{kind, script_.loops && !options_.once, options_.seed, truth});
}

ByteSink PlayFiles::record() { return record_ ? sinkOf(record_) : ByteSink{}; }

} // namespace ostrel
