// SPDX-License-Identifier: MIT
#include "documents/ErrorReporter.h"

#include "base/Numbers.h"
#include "base/Steps.h"
#include "documents/ErrorTable.h"
#include "files/TextFile.h"

#include <utility>

namespace ostrel {

ErrorReporter::ErrorReporter(LinkState &link, Prompts &prompts, const Commands &commands, Reads reads, QString logFile)
    : link_(link), prompts_(prompts), commands_(commands), reads_(reads), logFile_(std::move(logFile)) {}

void ErrorReporter::HandelError(qint32 ErrorCode) {
    if (const ErrorTable::BoxRow *box = ErrorTable::boxFor(ErrorCode)) {
        QString text = QString::fromLatin1(box->text);
        text.replace(QLatin1String(ErrorTable::descriptionPlace), reads_.error.description);
        prompts_.show({text, box->icon, QString::fromLatin1(box->caption)});
        // Recording and logging end only after the operator has answered the box.
        if (ErrorCode == ErrorNumber::ChartFull) {
            EveryStep both;
            both.run([this] { commands_.run(QStringLiteral("mnuStop")); });
            both.run([this] { commands_.run(QStringLiteral("mnuLogOff")); });
            both.raise();
        }
    } else if (const ErrorTable::LogRow *entry = ErrorTable::logFor(ErrorCode)) {
        if (entry->endsSync)
            link_.FirstSyncFound = false;
        WriteErrorLog(QString::fromLatin1(entry->text));
    } else if (ErrorCode == ErrorNumber::ClearToSendChanged) {
        if (reads_.ComPort.InBufferCount() > ErrorTable::fullBuffer)
            WriteErrorLog(QString::fromLatin1(ErrorTable::bufferFullText));
    } else if (!ErrorTable::isSilent(ErrorCode)) {
        WriteErrorLog(RunTimeError::describe(ErrorCode));
    }
}

void ErrorReporter::WriteErrorLog(const QString &message) {
    prompts_.beep();
    const QString lineEnd = QStringLiteral("\r\n");
    TextFile::append(logFile_, generalDate(reads_.clock.now()) + lineEnd + message + link_.DebugText + lineEnd);
}

} // namespace ostrel
