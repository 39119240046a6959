// SPDX-License-Identifier: MIT
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The program itself, started by a shell in a folder with a run and its other names.
class CommandLine : public testing::Test {
protected:
    CommandLine() {
        write("run.velquin", "wait 0.2s\n");
        write("raw", "\x96");
        write("old", "an older record");
        EXPECT_EQ(::link(path("run.velquin"), path("hard")), 0);
        EXPECT_EQ(::symlink("run.velquin", path("soft")), 0);
        EXPECT_EQ(::mkfifo(path("pipe"), 0666), 0);
        EXPECT_EQ(::mkdir(path("sub"), 0777), 0);
    }

    QByteArray path(const char *name) const { return QFile::encodeName(folder_.filePath(QLatin1String(name))); }
    void write(const char *name, const QByteArray &content) const {
        QFile file{folder_.filePath(QLatin1String(name))};
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray content(const char *name) const {
        QFile file{folder_.filePath(QLatin1String(name))};
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "none";
    }
    QStringList entries() const { return QDir{folder_.path()}.entryList(QDir::AllEntries | QDir::System); }

    /// "2: " and the first line of standard error, without the program's name.
    std::string complaintAbout(const QString &arguments, const QString &before = {}) {
        QProcess shell;
        shell.setWorkingDirectory(folder_.path());
        shell.start("sh", {"-c", before + SIMULATOR_PROGRAM " " + arguments});
        EXPECT_TRUE(shell.waitForFinished()) << arguments.toStdString();
        output = shell.readAllStandardOutput();
        const QByteArray line = shell.readAllStandardError().split('\n').front();
        return QByteArray::number(shell.exitCode())
            .append(": ")
            .append(line)
            .replace("velquin-sim: ", "")
            .toStdString();
    }

    QByteArray output;

private:
    QTemporaryDir folder_;
};

TEST_F(CommandLine, refusesFilesThatAreOneAndTouchesNothing) {
    const QStringList before = entries();
    const auto same = [](const char *files) { return std::string{"2: "} + files; };
    EXPECT_EQ(complaintAbout("--record sub/../run.velquin run.velquin"),
              same("--record and the script are the same file: sub/../run.velquin"));
    EXPECT_EQ(complaintAbout("--truth hard soft"), same("--truth and the script are the same file: hard"));
    EXPECT_EQ(complaintAbout("--record ./raw --replay raw"), same("--record and --replay are the same file: ./raw"));
    EXPECT_EQ(complaintAbout("--truth new --record ./new"), same("--record and --truth are the same file: ./new"));
    EXPECT_EQ(complaintAbout("--link soft soft"), same("--link and the script are the same file: soft"));
    EXPECT_EQ(complaintAbout("--link new --truth new"), same("--link and --truth are the same file: new"));
    EXPECT_EQ(entries(), before);
    EXPECT_EQ(content("run.velquin"), "wait 0.2s\n");
    EXPECT_EQ(content("raw"), "\x96");
}

TEST_F(CommandLine, emptiesAnOutputOnlyWhenAllElseStandsReady) {
    EXPECT_EQ(complaintAbout("--truth old --link sub/no/x run.velquin"),
              "1: the link sub/no/x cannot be made: there is no folder sub/no");
    EXPECT_EQ(complaintAbout("--truth old --link raw run.velquin"),
              "1: the link raw cannot be made: a file stands there");
    EXPECT_EQ(complaintAbout("--truth old nothing"), "1: nothing: No such file or directory");
    EXPECT_EQ(complaintAbout("--truth old --record sub run.velquin"), "1: sub: is a folder");
    EXPECT_EQ(complaintAbout("--truth old run.velquin >/dev/full"), "1: standard output: No space left on device");
    EXPECT_EQ(complaintAbout("--truth old run.velquin >&-"), "1: standard output: Bad file descriptor");
    EXPECT_EQ(content("old"), "an older record");
}

TEST_F(CommandLine, writesWhereARecordCanGoAndNeverWaitsForAReaderInSilence) {
    EXPECT_EQ(complaintAbout("--truth pipe run.velquin"), "1: pipe: is a pipe that nobody reads");
    EXPECT_EQ(complaintAbout("--truth pipe run.velquin; code=$?; head -n 2 <&3 >read; exit $code", "exec 3<>pipe; "),
              "0: ");
    EXPECT_TRUE(content("read").contains("sample")) << content("read").toStdString();
    EXPECT_EQ(complaintAbout("--truth /dev/null --record /dev/null run.velquin"), "0: ");
    EXPECT_EQ(complaintAbout("--truth /dev/full run.velquin"), "1: /dev/full: No space left on device");
    EXPECT_EQ(complaintAbout("--truth /dev/stdout run.velquin >both; cat both"), "0: ");
    EXPECT_TRUE(output.startsWith("/dev/pts/") && output.contains("sample")) << output.toStdString();
}

TEST_F(CommandLine, saysWhereAScriptCannotBeRead) {
    write("marked", "\xEF\xBB\xBFwait 1s\n\tuv \U0001F600\n");
    EXPECT_EQ(complaintAbout("marked"), "2: marked:2:5: \"\U0001F600\" stands where a number, nan or inf is expected");
    write("latin", "\xEF\xBB\xBFwait 1s\n # \U0001F600 \xE9t\xE9\n");
    EXPECT_EQ(complaintAbout("latin"), "2: latin:2:6: this is not UTF-8");
    write("cut", "wait 1s # \xC3");
    EXPECT_EQ(complaintAbout("cut"), "2: cut:1:11: this is not UTF-8");
    write("bell", "wait\a");
    EXPECT_EQ(complaintAbout("bell"), "2: bell:1:1: no statement begins with \"wait?\"");
    EXPECT_EQ(complaintAbout("sub"), "1: sub: is a folder");
}

TEST_F(CommandLine, tellsOfASpeedThatTheRecorderDoesNotFollow) {
    EXPECT_EQ(complaintAbout("--speed 20 run.velquin"), "0: ");
    EXPECT_EQ(complaintAbout("--speed 21 run.velquin"),
              "0: --speed above 20 is faster than the recorder decodes; it will miss parts of the run");
}

} // namespace
