// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

#include <chrono>
#include <functional>

/// Whether `holds` comes true within the time; it is asked fifty times a second.
bool within(std::chrono::milliseconds time, const std::function<bool()> &holds);

/// A program that runs beside the test. It ends with this object at the latest, and with the test however that ends.
class RunningProgram {
public:
    /// What the program prints goes to the file `output`. With a `user` other than 0 it runs as that one, who needs no
    /// name. Throws std::runtime_error when it cannot be started.
    RunningProgram(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment,
                   const QString &output, unsigned user = 0);
    ~RunningProgram();
    RunningProgram(const RunningProgram &) = delete;
    RunningProgram &operator=(const RunningProgram &) = delete;

    qint64 pid() const { return process_.processId(); }
    bool runs();
    bool isStopped() const;          ///< by a signal, until another lets it go on
    void kill() { process_.kill(); } ///< at once, as a power failure would
    void terminate() { process_.terminate(); }
    bool endsWithin(int milliseconds) { return process_.waitForFinished(milliseconds); }
    /// Of a program that ended; -1 when it did not end by itself.
    int exitCode() const;
    /// Processor time so far, all threads and the kernel's share included.
    double processorSeconds() const;
    /// Memory in use now, shared libraries included: what it shares depends on who else runs.
    double residentMebibytes() const;

private:
    QString procFile(const char *name) const;

    QProcess process_;
};
