// SPDX-License-Identifier: MIT
#include "simulator/SimulatorOptions.h"

#include "simulator/StatementForms.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace ostrel {

namespace {

[[noreturn]] void refuse(const QString &why) {
    throw EarlyEnd{Misused, "velquin-sim: " + why + "\nTry velquin-sim --help.\n"};
}

void describe(QCommandLineParser &parser) {
    parser.setApplicationDescription(
        "Plays a Velquin chromatography instrument on a pseudo-terminal, whose path is the first line printed.\n"
        "Without a script it plays a demonstration run of some 13 minutes, over and over.");
    parser.addPositionalArgument("script", "File of the run to play.", "[script]");
    parser.addOptions({
        {"link", "Keep a symbolic link to the pseudo-terminal at <path>.", "path"},
        {"kind", "Instrument that reports its state by blocks (status) or by its UV letters (letters).", "kind"},
        {"once", "End after one pass instead of looping."},
        {"seed", "Number that decides the noise (1).", "number"},
        {"speed", "Play <times> as fast, 0.01 to 1000; the recorder follows up to 20.", "times"},
        {"replay", "Send a captured stream, 60 bytes a second, in place of a run.", "file"},
        {"record", "Write every byte sent to <file>.", "file"},
        {"truth", "Write what the instrument meant, sample by sample, to <file>.", "file"},
        {{"h", "help"}, "Show this help."},
        {{"v", "version"}, "Show the version."},
    });
}

QString help(const QCommandLineParser &parser) {
    QString text = parser.helpText() + "\nStatements of a script, one a line, # for a comment:\n";
    for (const QString &form : statementForms())
        text += "  " + form + '\n';
    return text + "\"method\" is followed by lines of text, each behind a | of its own. See velquin-sim(1).\n";
}

double readSpeed(const QString &text) {
    bool good = false;
    const double speed = text.toDouble(&good);
    if (!good || !(speed >= 0.01 && speed <= 1000))
        refuse("--speed must be a number from 0.01 to 1000");
    return speed;
}

unsigned readSeed(const QString &text) {
    bool good = false;
    const unsigned seed = text.toUInt(&good);
    if (!good)
        refuse("--seed must be a whole number from 0 to 4294967295");
    return seed;
}

InstrumentKind readKind(const QString &text) {
    if (text != "status" && text != "letters")
        refuse("--kind must be status or letters");
    return text == "status" ? InstrumentKind::Status : InstrumentKind::Letters;
}

void refuseContradictions(const QCommandLineParser &parser) {
    for (const char *path : {"link", "replay", "record", "truth"}) {
        if (parser.isSet(path) && parser.value(path).isEmpty())
            refuse(QString{"--%1 needs a path"}.arg(QLatin1String(path)));
    }
    if (parser.positionalArguments().size() > 1)
        refuse("only one script can be played");
    if (parser.positionalArguments().value(0, "script").isEmpty())
        refuse("the script needs a path");
    const bool ofRun = parser.isSet("truth") || parser.isSet("kind") || !parser.positionalArguments().isEmpty();
    if (parser.isSet("replay") && ofRun)
        refuse("--replay goes with neither a script nor --truth nor --kind");
}

} // namespace

SimulatorOptions readOptions(const QStringList &arguments) {
    QCommandLineParser parser;
    describe(parser);
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    if (parser.isSet("help"))
        throw EarlyEnd{Good, help(parser)};
    if (parser.isSet("version"))
        throw EarlyEnd{Good, "velquin-sim " OSTREL_VERSION "\n"};
    refuseContradictions(parser);

    SimulatorOptions options;
    options.script = parser.positionalArguments().value(0);
    options.replay = parser.value("replay");
    options.record = parser.value("record");
    options.truth = parser.value("truth");
    options.link = parser.value("link");
    options.once = parser.isSet("once");
    if (parser.isSet("kind"))
        options.kind = readKind(parser.value("kind"));
    if (parser.isSet("speed"))
        options.speed = readSpeed(parser.value("speed"));
    if (parser.isSet("seed"))
        options.seed = readSeed(parser.value("seed"));
    return options;
}

} // namespace ostrel
