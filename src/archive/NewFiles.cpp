// SPDX-License-Identifier: MIT
#include "archive/NewFiles.h"

#include "archive/RunFile.h"
#include "chart/files/RunningLogFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace ostrel {

namespace {

/// The name in the folder: without .chd or .chl, and with the new ending.
QString nameIn(const QString &folder, const QString &run, const char *ending) {
    const QFileInfo file(run);
    const bool named = isNamedAsDocument(run) && !file.completeBaseName().isEmpty();
    return QDir(folder).filePath((named ? file.completeBaseName() : file.fileName()) + QLatin1String(ending));
}

} // namespace

bool intoFolder(const ArchiveCall &call) { return QFileInfo(call.operands.last()).isDir(); }

ExitCode convertEach(const ArchiveCall &call, const NewFiles &made,
                     const std::function<void(const QString &from, const QString &to)> &convert) {
    const QStringList runs = call.operands.mid(0, call.operands.size() - 1);
    const QString &target = call.operands.last();
    const bool folder = intoFolder(call);
    if (runs.size() > 1 && !folder)
        throw EarlyEnd{Misused, target + ": is no folder, and several files need one"};
    QSet<QString> taken;
    const auto convertOne = [&](const QString &run) {
        const QString to = folder ? nameIn(target, run, made.ending) : target;
        const QStringList names = made.all != nullptr ? made.all(to) : QStringList{to};
        for (const QString &name : names) {
            if (taken.contains(name))
                throw EarlyEnd{Failed, run + ": refused, for " + name + " is the new name of a file before it"};
        }
        for (const QString &name : names)
            taken << name;
        for (const QString &name : names)
            mayConvertInto(call, run, name);
        convert(run, to);
    };
    if (runs.size() == 1) {
        convertOne(runs.first());
        return Good;
    }
    ExitCode result = Good;
    for (qsizetype i = 0; i < runs.size(); ++i) {
        call.complaints.show(QString("%1 of %2  %3").arg(i + 1).arg(runs.size()).arg(QFileInfo(runs[i]).fileName()));
        try {
            convertOne(runs[i]);
        } catch (const EarlyEnd &end) {
            call.complaints.tell("ostrel-file: " + end.why);
            result = Failed;
        }
    }
    return result;
}

} // namespace ostrel
