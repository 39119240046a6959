// SPDX-License-Identifier: MIT
#include "LiveOstrel.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <stdexcept>

using namespace std::chrono_literals;

LiveOstrel::LiveOstrel(const QByteArray &script, const QStringList &simulatorOptions)
    : profile_(std::make_shared<Profile>()), port_(1) {
    startInstrument(script, simulatorOptions);
    startRecorder();
    takeName();
}

LiveOstrel::LiveOstrel(const QByteArray &script, const LiveOstrel &first) : profile_(first.profile_), port_(2) {
    startInstrument(script);
    startRecorder("frmSetup");
    probe_->click("optCom(1)");
    probe_->answer("OK");
    takeName();
}

void LiveOstrel::startInstrument(const QByteArray &script, const QStringList &options) {
    const QString name = QFileInfo{own("script")}.fileName();
    profile_->write(name, script);
    const QStringList arguments =
        options + QStringList{own("script"), "--link", own("instrument"), "--truth", own("truth")};
    instrument_.emplace(SIMULATOR_PROGRAM, arguments, QProcessEnvironment::systemEnvironment(), own("instrument.log"));
    if (!within(10s, [&] { return QFile::exists(own("instrument")); }))
        throw std::runtime_error("the simulated instrument does not start");
}

void LiveOstrel::stopInstrument() {
    instrument_.reset();
    QFile::remove(own("instrument"));
}

void LiveOstrel::startRecorder(const QString &firstWindow, unsigned user) {
    QFile::remove(own("probe"));
    QProcessEnvironment environment = profile_->environment("ostrelprobe");
    environment.insert("OSTREL_PROBE_SOCKET", own("probe"));
    if (user != 0)
        profile_->giveTo(user);
    recorder_.emplace(OSTREL_PROGRAM, QStringList{}, environment, own("recorder.log"), user);
    probe_.emplace(own("probe"));
    await(firstWindow);
}

void LiveOstrel::takeName() {
    await("frmLogName");
    probe_->answer("OK");
    if (!within(10s, [&] { return !isUp("frmLogName"); }))
        throw std::runtime_error("the recorder does not take its name");
}

void LiveOstrel::await(const QString &window) {
    if (within(20s, [&] { return isUp(window); }))
        return;
    QString message = "the recorder does not show " + window + " but";
    for (const QJsonValue other : probe_->windows())
        message += ' ' + other["name"].toString() + ' ' + other["text"].toString();
    throw std::runtime_error(message.toStdString());
}

bool LiveOstrel::isUp(const QString &window) {
    return std::ranges::any_of(probe_->windows(), [&](const QJsonValue &shown) { return shown["name"] == window; });
}

QString LiveOstrel::boxText() {
    QString text;
    for (const QJsonValue window : probe_->windows())
        text = window["name"] == "MsgBox" ? window["text"].toString() : text;
    return text;
}

void LiveOstrel::chooseFile(const QString &command, const QString &name) {
    probe_->trigger(command);
    nameFile(name);
}

void LiveOstrel::nameFile(const QString &name) {
    await("ComDlg");
    probe_->type("fileNameEdit", profile_->file(name));
    probe_->key("Return");
    if (!within(10s, [&] { return !isUp("ComDlg"); }))
        throw std::runtime_error("the file dialog does not take " + name.toStdString());
}

bool LiveOstrel::fileExists(const QString &name) const { return QFile::exists(profile_->file(name)); }

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
    QFile file{own("truth")};
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the instrument keeps no record");
    std::vector<QStringList> rows;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.isEmpty())
            rows.push_back(QString::fromUtf8(line).split('\t'));
    }
    return rows;
}
