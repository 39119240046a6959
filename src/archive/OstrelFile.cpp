// SPDX-License-Identifier: MIT
#include "archive/OstrelFile.h"

#include "archive/ArchiveCheck.h"
#include "archive/ArchiveCommand.h"
#include "archive/Conversions.h"
#include "archive/FileFacts.h"
#include "archive/Interchange.h"
#include "archive/Pictures.h"
#include "archive/RunFile.h"
#include "archive/RunningLogs.h"
#include "archive/Salvage.h"

#include <QTextStream>

#include <algorithm>
#include <limits>

namespace ostrel {

namespace {

constexpr int any = std::numeric_limits<int>::max();

// clang-format off
constexpr ArchiveCommand commands[] = {
    // name     operands                           summary                                          operands  options           routine
    {"info",    "FILE",                            "Say what is in a file.",                         1, 1,    declareInfo,      info},
    {"check",   "FILE|FOLDER...",                  "Say which files are whole, and unchanged.",      1, any,  declareCheck,     check},
    {"text",    "FILE... OUT.txt|FOLDER",          "Write a run as a table for a spreadsheet.",      2, any,  declareText,      text},
    {"csv",     "FILE... OUT.csv|FOLDER",          "Write every sample of a run, with commas.",      2, any,  declareOverwrite, csv},
    {"xy",      "FILE... OUT.txt|FOLDER",          "Write minutes and values of one signal, without a head.",
                                                                                                     2, any,  declareXy,        xy},
    {"andi",    "FILE... OUT.cdf|FOLDER",          "Write a run for other programs, as ASTM E1947 (ANDI, AIA) netCDF.",
                                                                                                     2, any,  declareOverwrite, andi},
    {"picture", "FILE... OUT.png|OUT.svg|FOLDER",  "Write the chart of a run as a picture.",         2, any,  declarePicture,   picture},
    {"pdf",     "FILE... OUT.pdf|FOLDER",          "Write the report of a run.",                     2, any,  declareReport,    pdf},
    {"salvage", "FILE|DIRECTORY OUT.chd|OUT.chl",  "Save what is left of a damaged file, or the running log of a dead "
                                                   "computer.",                                      2, 2,    declareOverwrite, salvage},
    {"logs",    "[FOLDER]",                        "List the running logs, those that were thrown away too.",
                                                                                                     0, 1,    declareLogs,      logs},
};
// clang-format on

QString overview() {
    QString text = "Usage: ostrel-file COMMAND ...\n"
                   "Looks into the chart recorder's data files (.chd) and log files (.chl).\n\n";
    for (const ArchiveCommand &command : commands)
        text += QString("  %1 %2\n        %3\n").arg(command.name, command.operands, command.summary);
    return text +
           "\nOf several files, or into a folder, each is written there under its own name.\n"
           "\n\"ostrel-file COMMAND --help\" tells a command's options.\n"
           "Exit codes: 0 good, 1 a file is not whole, not as in the manifest, or cannot be read or written, or\n"
           "nothing is left to save, 2 the command line is not understood, 3 something was saved and something is\n"
           "missing.";
}

const ArchiveCommand &commandOf(const QString &name) {
    const auto *const found = std::find_if(std::begin(commands), std::end(commands),
                                           [&](const ArchiveCommand &command) { return name == command.name; });
    if (found == std::end(commands))
        throw EarlyEnd{Misused, QString("there is no command \"%1\"; try ostrel-file --help").arg(name)};
    return *found;
}

void tellText(Lines &out, const QString &text) {
    for (const QString &line : text.split('\n'))
        out.tell(line);
}

ExitCode run(const ArchiveCommand &command, const QStringList &arguments, Lines &out, Lines &complaints) {
    QCommandLineParser line;
    line.setApplicationDescription(command.summary);
    line.addPositionalArgument(command.name, {}, QString("%1 %2").arg(command.name, command.operands));
    line.addOption({{"h", "help"}, "Show this help."});
    if (command.declare != nullptr)
        command.declare(line);
    const bool understood = line.parse(arguments);
    if (line.isSet("help")) {
        const QString help = line.helpText();
        tellText(out, help.left(help.indexOf("\n\nArguments:"))); // the usage line has shown them
        return Good;
    }
    const QStringList operands = line.positionalArguments().mid(1);
    if (!understood)
        throw EarlyEnd{Misused, line.errorText()};
    if (operands.size() < command.least || operands.size() > command.most)
        throw EarlyEnd{Misused, QString("usage: ostrel-file %1 [options] %2").arg(command.name, command.operands)};
    return command.run({line, operands, out, complaints});
}

ExitCode answer(const QStringList &arguments, Lines &out, Lines &complaints) {
    const QString first = arguments.value(1);
    if (first.isEmpty())
        throw EarlyEnd{Misused, "no command; try ostrel-file --help"};
    if (first == "--help" || first == "-h")
        tellText(out, overview());
    else if (first == "--version" || first == "-v")
        out.tell("ostrel-file " OSTREL_VERSION);
    else
        return run(commandOf(first), arguments, out, complaints);
    return Good;
}

} // namespace

bool paints(const QString &command) { return command == "pdf" || command == "picture"; }

int ostrelFile(const QStringList &arguments, QTextStream &out, QTextStream &complaints) {
    Lines answers(out);
    Lines errors(complaints);
    ExitCode result = Good;
    try {
        result = answer(arguments, answers, errors);
    } catch (const EarlyEnd &end) {
        errors.tell("ostrel-file: " + end.why);
        result = end.exitCode;
    }
    if (answers.deliver())
        return result;
    errors.tell("ostrel-file: standard output: cannot be written: " + answers.error());
    return Failed;
}

} // namespace ostrel
