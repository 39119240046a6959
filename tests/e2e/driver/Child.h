// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <sys/types.h>

#include <chrono>
#include <functional>

/// Whether `holds` comes true within the time; it is asked a hundred times a second.
bool within(std::chrono::milliseconds time, const std::function<bool()> &holds);

/// A fork of this process, which must have no threads. It ends with this object at the latest, and with the test
/// however that ends.
class Child {
public:
    /// Does the work and exits with what it answers.
    explicit Child(const std::function<int()> &work);
    ~Child();
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    pid_t pid() const { return pid_; }
    void signal(int number);
    bool runs();
    bool endsWithin(std::chrono::milliseconds time);
    /// Of a child that ended; -1 when it did not end by itself.
    int exitCode() const;

private:
    pid_t pid_;
    int status_ = 0;
    bool ended_ = false;
};

/// The work of a child that is another program.
int become(const QStringList &command);
