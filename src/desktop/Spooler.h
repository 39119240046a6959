// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace ostrel {

/// A document for a printer.
struct PrintJob {
    QString printer; ///< the name of its queue
    QString name;    ///< shown in the queue; any text
    QByteArray pdf;
    std::vector<std::pair<QByteArray, QByteArray>> options; ///< of the Internet Printing Protocol: "sides", "one-sided"
};

/// Sends documents to the printers of the computer.
class Spooler {
public:
    virtual ~Spooler() = default;

    /// True when the whole document is in the queue; then the spooler owns the job. False when it was refused for any
    /// reason: then nothing of it is printed.
    virtual bool take(const PrintJob &job) = 0;
};

} // namespace ostrel
