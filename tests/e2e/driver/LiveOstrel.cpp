// SPDX-License-Identifier: MIT
#include "LiveOstrel.h"

#include <QFile>

#include <algorithm>
#include <stdexcept>

using namespace std::chrono_literals;

LiveOstrel::LiveOstrel(const QByteArray &script) {
    startInstrument(script);
    startRecorder();
    if (!within(20s, [&] { return isUp("frmMain"); }))
        throw std::runtime_error("the recorder does not show its window");
}

void LiveOstrel::startInstrument(const QByteArray &script) {
    profile_.write("script", script);
    const QStringList arguments{profile_.file("script"), "--link", profile_.file("instrument"), "--truth",
                                profile_.file("truth")};
    instrument_.emplace(SIMULATOR_PROGRAM, arguments, QProcessEnvironment::systemEnvironment(),
                        profile_.file("instrument.log"));
    if (!within(10s, [&] { return QFile::exists(profile_.file("instrument")); }))
        throw std::runtime_error("the simulated instrument does not start");
}

void LiveOstrel::startRecorder() {
    QProcessEnvironment environment = profile_.environment("ostrelprobe");
    environment.insert("OSTREL_PROBE_SOCKET", profile_.file("probe"));
    recorder_.emplace(OSTREL_PROGRAM, QStringList{}, environment, profile_.file("recorder.log"));
    probe_.emplace(profile_.file("probe"));
}

bool LiveOstrel::isUp(const QString &window) {
    return std::ranges::any_of(probe_->windows(), [&](const QJsonValue &shown) { return shown["name"] == window; });
}

void LiveOstrel::chooseFile(const QString &command, const QString &name) {
    probe_->trigger(command);
    if (!within(10s, [&] { return isUp("ComDlg"); }))
        throw std::runtime_error(command.toStdString() + " asks for no file");
    probe_->type("fileNameEdit", profile_.file(name));
    probe_->key("Return");
    if (!within(10s, [&] { return !isUp("ComDlg"); }))
        throw std::runtime_error(command.toStdString() + " does not take " + name.toStdString());
}

bool LiveOstrel::fileExists(const QString &name) const { return QFile::exists(profile_.file(name)); }

QString LiveOstrel::marks(int chart) {
    QStringList labels;
    for (const QJsonValue mark : probe_->call(QString{"Chart(%1)"}.arg(chart), "marks").toArray())
        labels += mark["Label"].toString();
    return labels.join(' ');
}

std::vector<LiveOstrel::Sample> LiveOstrel::samples(int chart) {
    const QString name = QString{"Chart(%1)"}.arg(chart);
    std::vector<Sample> samples;
    for (const QJsonValue pair : probe_->call(name, "samples", {0, probe_->get(name, "SampleCount")}).toArray())
        samples.push_back({static_cast<float>(pair[0].toDouble()), static_cast<float>(pair[1].toDouble())});
    return samples;
}

QString LiveOstrel::methodText(int chart) {
    return probe_->call(QString{"Chart(%1)"}.arg(chart), "GetMethodText").toString();
}

std::vector<QStringList> LiveOstrel::truth() const {
    QFile file{profile_.file("truth")};
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the instrument keeps no record");
    std::vector<QStringList> rows;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.isEmpty())
            rows.push_back(QString::fromUtf8(line).split('\t'));
    }
    return rows;
}
