// SPDX-License-Identifier: MIT
#include "archive/Interchange.h"

#include "archive/AndiFile.h"
#include "archive/NewFiles.h"
#include "archive/RunFile.h"

#include <QFileInfo>

namespace ostrel {

ExitCode andi(const ArchiveCall &call) {
    const QString &target = call.operands.last();
    if (!intoFolder(call) && !target.endsWith(QStringLiteral(".cdf"), Qt::CaseInsensitive))
        throw EarlyEnd{Misused, target + ": a name ends in .cdf"};
    return convertEach(call, {".cdf", andiNames}, [](const QString &from, const QString &to) {
        const RunFile file = wholeFile(from);
        if (file.run.samples.size() < fewestAndiPoints)
            throw EarlyEnd{Failed, from + ": has fewer than two samples, and no program would read such a file"};
        written(to, exportAndi(to, file.run, {QFileInfo(from).fileName(), QDateTime::currentDateTime()}));
    });
}

} // namespace ostrel
