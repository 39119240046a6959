// SPDX-License-Identifier: MIT
#pragma once

#include "base/Commands.h"
#include "base/ErrorRoute.h"
#include "base/Values.h"
#include "documents/DocumentPorts.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "platform/SerialControl.h"

namespace ostrel {

/// The one error route: the number gives a message box, a beep with an entry of the error log, or nothing.
///
/// An entry is two lines ended by CR LF: date and time, then the message with the decoder's DebugText directly behind
/// it. The log file is opened and closed for each entry; a failure to write it is passed on to the caller.
class ErrorReporter : public ErrorRoute {
public:
    struct Reads {
        const CurrentError &error;    ///< quoted by the box about the settings
        const SerialControl &ComPort; ///< asked how full its buffer is
        const Clock &clock;
    };

    ErrorReporter(LinkState &link, Prompts &prompts, const Commands &commands, Reads reads, QString logFile);

    void HandelError(qint32 ErrorCode) override;
    void WriteErrorLog(const QString &message);

private:
    LinkState &link_;
    Prompts &prompts_;
    const Commands &commands_;
    Reads reads_;
    QString logFile_;
};

} // namespace ostrel
