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
    QString name;    ///< that the queue shows; any text
    QByteArray pdf;
    std::vector<std::pair<QByteArray, QByteArray>> options; ///< of the Internet Printing Protocol: "sides", "one-sided"
};

/// Brings documents to the printers of the computer.
class Spooler {
public:
    virtual ~Spooler() = default;

    /// True once the whole document is in the queue; from then on the job is the spooler's. False when it is
    /// refused, for whatever reason: then nothing of it is printed.
    virtual bool take(const PrintJob &job) = 0;
};

} // namespace ostrel
