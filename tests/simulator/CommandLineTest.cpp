// SPDX-License-Identifier: MIT
#include "fakes/TestFolder.h"
#include "simulator/SimulatorOptions.h"

#include <QProcess>

using namespace ostrel;

namespace {

/// The program itself, started by a shell in a folder with a run and its other names.
class CommandLine : public testing::Test {
protected:
    CommandLine() {
        shell.setWorkingDirectory(folder.path());
        folder.lay("run.velquin", "wait 0.2s\n");
        folder.lay("raw", "\x96");
        folder.lay("old", "an older record");
        folder.lay("bell", "start\nwait\a");
        run("ln run.velquin hard; ln -s run.velquin soft; mkfifo pipe; mkdir sub");
        run("ln -s /dev/null /dev/full /dev/stdout ."); // links, so that no fault can take the devices themselves away
    }

    void run(const QString &line) {
        shell.start("sh", {"-c", line});
        EXPECT_TRUE(shell.waitForFinished()) << line.toStdString();
        output = shell.readAllStandardOutput();
    }
    /// "2: " and the first line of standard error, without the program's name.
    std::string complaintAbout(const QString &arguments, const QString &before = {}) {
        run(before + SIMULATOR_PROGRAM " " + arguments);
        const QString line = QString{shell.readAllStandardError()}.section('\n', 0, 0).remove("velquin-sim: ");
        return QString{"%1: %2"}.arg(shell.exitCode()).arg(line).toStdString();
    }

    TestFolder folder;
    QProcess shell;
    QByteArray output;
};

TEST_F(CommandLine, touchesNoFileUnlessAllStandsReady) {
    // clang-format off
    constexpr const char *refused[][2] = {
        {"--record sub/../run.velquin run.velquin", "2: --record and the script are the same file: sub/../run.velquin"},
        {"--truth hard soft",                       "2: --truth and the script are the same file: hard"},
        {"--record ./raw --replay raw",             "2: --record and --replay are the same file: ./raw"},
        {"--truth new --record ./new",              "2: --record and --truth are the same file: ./new"},
        {"--link soft soft",                        "2: --link and the script are the same file: soft"},
        {"--link new --truth new",                  "2: --link and --truth are the same file: new"},
        {"--truth old --link sub/no/x run.velquin", "1: the link sub/no/x cannot be made: there is no folder sub/no"},
        {"--truth old --link raw run.velquin",      "1: the link raw cannot be made: a file is there"},
        {"--truth old bell",                        "2: bell:2:1: no statement begins with \"wait?\""},
        {"--truth old nothing",                     "1: nothing: No such file or directory"},
        {"--truth old sub",                         "1: sub: is a folder"},
        {"--truth old --record sub run.velquin",    "1: sub: is a folder"},
        {"--truth old run.velquin >/dev/full",      "1: standard output: No space left on device"},
        {"--truth old run.velquin >&-",             "1: standard output: Bad file descriptor"},
        {"--truth pipe run.velquin",                "1: pipe: is a pipe that nobody reads"},
    };
    // clang-format on
    for (const auto &[arguments, complaint] : refused)
        EXPECT_EQ(complaintAbout(arguments), complaint);
    run("ls; cat run.velquin raw old");
    EXPECT_EQ(output, "bell\nfull\nhard\nnull\nold\npipe\nraw\nrun.velquin\nsoft\nstdout\nsub\nwait 0.2s\n\x96"
                      "an older record");
}

TEST_F(CommandLine, writesWhereARecordCanGo) {
    EXPECT_EQ(complaintAbout("--truth pipe run.velquin; code=$?; head -n 2 <&3; exit $code", "exec 3<>pipe; "), "0: ");
    EXPECT_TRUE(output.contains("sample")) << output.toStdString();
    EXPECT_EQ(complaintAbout("--truth full run.velquin"), "1: full: No space left on device");
    EXPECT_EQ(complaintAbout("--truth stdout run.velquin >both; cat both"), "0: ");
    EXPECT_TRUE(output.startsWith("/dev/pts/") && output.contains("sample")) << output.toStdString();
    EXPECT_EQ(complaintAbout("--truth old --record raw run.velquin; cat old raw"), "0: ");
    EXPECT_TRUE(output.contains("sample") && !output.contains("older") && !output.contains('\x96'));
    EXPECT_EQ(complaintAbout("--truth null --record null --speed 20 run.velquin"), "0: ");
    EXPECT_EQ(complaintAbout("--speed 21 run.velquin"),
              "0: --speed above 20 is faster than the recorder decodes; it will miss parts of the run");
    complaintAbout("--once --speed 1000 --truth old; cat old", "timeout 20 ");
    EXPECT_TRUE(output.contains("\tend\n")) << "of the demonstration";
}

TEST_F(CommandLine, refusesOptionsThatItDoesNotUnderstand) {
    for (const char *wrong : {"--bogus", "--speed 0", "--speed nan", "--kind other", "a b", "--replay x a", "--seed -1",
                              "--seed 4294967296", "''", "--link ''"})
        EXPECT_TRUE(complaintAbout(wrong).starts_with("2: ")) << wrong;
    EXPECT_EQ(complaintAbout("--help"), "0: ");
    EXPECT_EQ(readOptions({"velquin-sim", "--kind", "letters"}).kind, InstrumentKind::Letters);
}

} // namespace
