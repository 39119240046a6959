// SPDX-License-Identifier: MIT
#include "RunningProgram.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <grp.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <stdexcept>

bool within(std::chrono::milliseconds time, const std::function<bool()> &holds) {
    QElapsedTimer waiting;
    waiting.start();
    while (!holds()) {
        if (waiting.hasExpired(time.count()))
            return false;
        QThread::msleep(20);
    }
    return true;
}

RunningProgram::RunningProgram(const QString &program, const QStringList &arguments,
                               const QProcessEnvironment &environment, const QString &output, unsigned user) {
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setStandardOutputFile(output, QIODevice::Append);
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setChildProcessModifier([user] {
        if (user != 0 && (setgroups(0, nullptr) != 0 || setgid(user) != 0 || setuid(user) != 0))
            _exit(127);
        prctl(PR_SET_PDEATHSIG, SIGKILL); // which a change of the user takes back
    });
    process_.start(program, arguments);
    if (!process_.waitForStarted())
        throw std::runtime_error((program + ": " + process_.errorString()).toStdString());
}

RunningProgram::~RunningProgram() {
    process_.kill();
    process_.waitForFinished();
}

bool RunningProgram::runs() {
    process_.waitForFinished(0);
    return process_.state() == QProcess::Running;
}

bool RunningProgram::isStopped() const { return procFile("stat").section(')', -1).trimmed().startsWith('T'); }

int RunningProgram::exitCode() const {
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

double RunningProgram::processorSeconds() const {
    clockid_t clock;
    timespec time{};
    if (clock_getcpuclockid(static_cast<pid_t>(pid()), &clock) != 0 || clock_gettime(clock, &time) != 0)
        throw std::runtime_error("the program's processor time cannot be read");
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double RunningProgram::residentMebibytes() const {
    const QString rss = procFile("smaps_rollup").section("Rss:", 1).section("kB", 0, 0);
    return rss.toDouble() / 1024;
}

QString RunningProgram::procFile(const char *name) const {
    QFile file{QString{"/proc/%1/%2"}.arg(pid()).arg(QLatin1String(name))};
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("the program has ended");
    return QString::fromLatin1(file.readAll());
}
