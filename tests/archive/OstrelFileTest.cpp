// SPDX-License-Identifier: MIT
#include "archive/OstrelFile.h"

#include "archive/ArchiveCommand.h"
#include "archive/Interruptions.h"
#include "chart/files/ChartFile.h"
#include "chart/files/LogWastebasket.h"
#include "chart/files/RunningLogWriter.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

/// An archive of one run of two minutes, with a mark and a method. The program is called in its folder.
class OstrelFileTest : public testing::Test {
protected:
    OstrelFileTest() {
        QDir::setCurrent(archive.path());
        for (int i = 0; i <= 600; ++i)
            run.samples.append({static_cast<float>(i) / 1000, 20});
        run.marks.push_back({"S", 0xff, 10, 0.5F});
        run.methodTexts.push_back({"Load\r\nWash\r\n", 0.1F});
        run.title = "Größe";
        save("run.chd");
        whole = content("run.chd");
    }

    void save(const QString &name) const { EXPECT_FALSE(saveChartFile(name, dataFile, run, {})); }
    static QByteArray content(const QString &name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void lay(const QString &name, const QByteArray &bytes) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    QByteArray damagedAt(qsizetype position) const { return QByteArray(whole).replace(position, 1, "?"); }

    int call(const QString &line) { return call(line.split(' ')); }
    int call(const QStringList &arguments) {
        said.clear();
        complaint.clear();
        QTextStream out(&said);
        QTextStream complaints(&complaint);
        return ostrelFile(QStringList{"ostrel-file"} + arguments, out, complaints);
    }
    /// The program as shipped: its exit code and what it complains of.
    static std::string callByShell(const QString &before, const QString &arguments) {
        QProcess shell;
        shell.start("sh", {"-c", before + OSTREL_FILE " " + arguments});
        EXPECT_TRUE(shell.waitForFinished());
        return std::to_string(shell.exitCode()) + ": " + shell.readAllStandardError().toStdString();
    }
    bool holdsTheRun(const QString &name) {
        return call("check " + name) == Good && said.endsWith(": whole, 2.00 minutes (0:02:00)\n");
    }

    QTemporaryDir archive;
    ChartData run;
    QByteArray whole; ///< the run's file
    QString said;
    QString complaint;
};

TEST_F(OstrelFileTest, infoTellsWhatIsInAFile) {
    EXPECT_EQ(call("info run.chd"), Good);
    for (const char *fact : {"Größe", "data", "2.00 minutes (0:02:00)", "601", "0 to 0.6 AU", "0.500 min  S"})
        EXPECT_TRUE(said.contains(fact)) << fact << " in\n" << said.toStdString();
    EXPECT_EQ(call("info --json run.chd"), Good);
    const QJsonObject facts = QJsonDocument::fromJson(said.toUtf8()).object();
    EXPECT_EQ(facts["samples"], 601);
    EXPECT_EQ(facts["marks"].toArray()[0].toObject()["label"], "S");
}

TEST_F(OstrelFileTest, checkNamesEachFileThatIsNotWhole) {
    const qsizetype samples = whole.indexOf("SAMP");
    lay("a", "not a chart");
    lay("b", whole.left(3000));
    lay("c", damagedAt(20));
    lay("d", damagedAt(2000));
    lay("e", damagedAt(samples + 4));
    lay("f", whole + "more");
    EXPECT_EQ(call("check a b c d e f run.chd"), Failed);
    EXPECT_EQ(said, QString("a: not a chart file\n"
                            "b: cut off at byte 3000\n"
                            "c: damaged at byte 0, in its head\n"
                            "d: damaged at byte %1, in record 5 (SAMP) that ends at byte %2\n"
                            "e: damaged at byte %1\n"
                            "f: goes on behind its end at byte %3\n"
                            "run.chd: whole, 2.00 minutes (0:02:00)\n")
                        .arg(samples)
                        .arg(whole.indexOf("END "))
                        .arg(whole.size()));
    EXPECT_EQ(call("check none"), Failed);
    EXPECT_TRUE(said.startsWith("none: cannot be read"));
    EXPECT_EQ(call("check run.chd"), Good);
}

TEST_F(OstrelFileTest, textAndReportAreWrittenAndNothingThatStandsIsLost) {
    EXPECT_EQ(call("text --rate 5 --without notes,method run.chd run.txt"), Good) << complaint.toStdString();
    const QByteArray table = content("run.txt");
    EXPECT_TRUE(table.contains("0.6000")) << table.toStdString();
    EXPECT_FALSE(table.contains("Wash"));
    EXPECT_EQ(call("text run.chd run.txt"), Failed);
    EXPECT_EQ(content("run.txt"), table);
    EXPECT_EQ(call("text --overwrite --from 1 run.chd run.txt"), Good);
    EXPECT_LT(content("run.txt").size(), table.size());
    EXPECT_EQ(call("text --overwrite run.chd run.chd"), Misused);
    for (const char *option : {"--rate 6", "--without colour", "--method beside"})
        EXPECT_EQ(call(QString("text %1 run.chd x.txt").arg(option)), Misused) << option;

    EXPECT_EQ(call("pdf run.chd run.pdf"), Good) << complaint.toStdString();
    EXPECT_TRUE(content("run.pdf").startsWith("%PDF"));
    EXPECT_EQ(call("pdf run.chd none/run.pdf"), Failed);
}

TEST_F(OstrelFileTest, aConversionNeverTakesThePlaceOfAChartFile) {
    lay("other.txt", whole);
    lay("named.chd", "a text");
    ASSERT_TRUE(QFile::link("other.txt", "link.txt"));
    const auto expectRefusal = [&](const QStringList &targets, const char *reason) {
        for (const QString &target : targets) {
            const QByteArray before = content(target);
            for (const char *command : {"text run.chd ", "pdf --overwrite run.chd "}) {
                EXPECT_EQ(call(command + target), Failed);
                EXPECT_EQ(complaint, "ostrel-file: " + target + reason + '\n');
                EXPECT_EQ(content(target), before);
            }
        }
    };
    expectRefusal({"other.txt", "link.txt"}, ": is a chart file; only salvage replaces one");
    expectRefusal({"named.chd", "new.chl", "new.CHD"}, ": is the name of a chart file; only salvage makes one");
}

TEST_F(OstrelFileTest, theStretchOfATextLiesWithinTheRun) {
    for (const char *stretch : {"--from 1.5 --to 1", "--from nan", "--to inf", "--from 2.1", "--from 2.1 --to 9"}) {
        EXPECT_EQ(call(QString("text %1 run.chd x.txt").arg(stretch)), Misused) << stretch;
        EXPECT_FALSE(QFile::exists("x.txt"));
    }
    EXPECT_TRUE(complaint.contains("2.00 minutes (0:02:00)")) << complaint.toStdString();
    EXPECT_EQ(call("text --from 2 --to 2 run.chd x.txt"), Good) << complaint.toStdString();
    EXPECT_EQ(call("text --overwrite --from 1 --to 9 run.chd x.txt"), Good) << complaint.toStdString();
}

TEST_F(OstrelFileTest, salvageKeepsThePrefixOfAFileAndSaysWhatIsMissing) {
    lay("cut.chd", whole.left(3000));
    EXPECT_EQ(call("salvage cut.chd saved.chd"), Partial);
    EXPECT_TRUE(said.endsWith("\nMissing: whatever the run held from minute 0.00 on\n")) << said.toStdString();
    EXPECT_EQ(call("check saved.chd"), Good);
    EXPECT_FALSE(holdsTheRun("saved.chd"));
    EXPECT_EQ(call("salvage run.chd whole.chl"), Good);
    EXPECT_TRUE(holdsTheRun("whole.chl"));
    EXPECT_EQ(call("salvage run.chd run.chd"), Misused);
    EXPECT_EQ(call("salvage run.chd run.txt"), Misused);
    lay("longer.chd", whole + "more");
    EXPECT_EQ(call("salvage --overwrite longer.chd whole.chl"), Good);
    lay("head.chd", damagedAt(20));
    EXPECT_EQ(call("salvage head.chd mended.chd"), Good) << complaint.toStdString();
    EXPECT_TRUE(said.contains("head.chd: damaged at byte 0, in its head")) << said.toStdString();
    EXPECT_TRUE(holdsTheRun("mended.chd"));
}

TEST_F(OstrelFileTest, whereNothingIsLeftNothingIsSaved) {
    const qsizetype notes = whole.indexOf("NOTE");
    for (const qsizetype size : {qsizetype{20}, qsizetype{48}, notes, notes + 24}) {
        lay("cut.chd", whole.left(size));
        EXPECT_EQ(call("salvage cut.chd saved.chd"), Failed) << size;
        EXPECT_TRUE(complaint.contains("nothing is left to save"));
        EXPECT_FALSE(QFile::exists("saved.chd"));
    }
    EXPECT_TRUE(complaint.contains("but the title \"Größe\"")) << complaint.toStdString();
    run = {};
    save("empty.chd");
    EXPECT_EQ(call("salvage empty.chd saved.chd"), Failed);
    run.methodTexts.push_back({"Load\r\n", 0});
    save("method.chd");
    EXPECT_EQ(call("salvage method.chd saved.chd"), Good);
    run = {};
    run.samples.append({1, 2});
    save("sample.chd");
    EXPECT_EQ(call("salvage --overwrite sample.chd saved.chd"), Good);
}

TEST_F(OstrelFileTest, salvagePutsTheLogOfADirectoryTogether) {
    RunningLogWriter log;
    ASSERT_TRUE(QDir().mkpath("copy/below"));
    EXPECT_FALSE(log.write(run, "copy", 1, 24));
    log.close();
    EXPECT_EQ(call("salvage copy copy/../log.chl"), Good) << complaint.toStdString();
    EXPECT_TRUE(holdsTheRun("log.chl"));
    EXPECT_EQ(call("salvage none log2.chl"), Failed);

    ASSERT_TRUE(QFile::copy("log.chl", "copy/part.chl") && QFile::link("copy/part.chl", "link.chl") &&
                QFile::link("copy", "link"));
    for (const char *target : {"copy/part.chl", "link.chl", "copy/new.chl", "copy/below/new.chl", "copy/none/new.chl",
                               "link/new.chl", "link/none/../new.chl"}) {
        EXPECT_EQ(call(QString("salvage --overwrite copy %1").arg(target)), Misused) << target;
        EXPECT_TRUE(complaint.contains("lies in the directory to be read")) << complaint.toStdString();
    }
    EXPECT_EQ(QDir("copy").entryList(QDir::Files), (QStringList{"Log00001.dat", "part.chl"}));
}

TEST_F(OstrelFileTest, logsListsTheRunningLogsAndThoseThatWereThrownAway) {
    const auto log = [&](const QString &folder, const char *system) {
        run.title = system;
        RunningLogWriter writer;
        EXPECT_TRUE(QDir().mkpath(folder));
        EXPECT_FALSE(writer.write(run, folder, 1, 24));
        QThread::msleep(2); // the logs are sorted by their beginnings
    };
    EXPECT_EQ(call("logs none"), Failed);
    EXPECT_EQ(call("logs ."), Good);
    EXPECT_TRUE(said.contains("no logs"));

    log("Log/1", "first");
    EXPECT_FALSE(moveToWastebasket("Log/1", "Discarded", QDate(2026, 11, 22)));
    log("Log/2", "second");
    lay("Log/2/Log00001.dat", content("Log/2/Log00001.dat").replace(300, 3000, QByteArray(3000, '?')));
    log("Log", "third");
    ASSERT_TRUE(QDir().mkpath("Log/empty") && QFile::link(archive.path(), "Log/link"));

    EXPECT_EQ(call("logs ."), Good) << complaint.toStdString();
    const QStringList logs = said.split("\n\n", Qt::SkipEmptyParts);
    ASSERT_EQ(logs.size(), 3) << said.toStdString();
    for (const char *fact :
         {"/Discarded/1-2026-11-22\n", "Discarded:      yes", "first", "2.00 minutes", "601", "nothing"})
        EXPECT_TRUE(logs[0].contains(fact)) << fact << " in\n" << said.toStdString();
    EXPECT_TRUE(logs[1].contains("/Log/2\n") && logs[1].contains("minutes of samples from minute 0.00"));
    EXPECT_TRUE(logs[2].contains("/Log\n") && logs[2].contains("third"));

    EXPECT_EQ(call("logs --json ."), Good);
    const QJsonObject first = QJsonDocument::fromJson(said.toUtf8()).array()[0].toObject();
    EXPECT_EQ(first["discarded"], true);
    EXPECT_LT(qAbs(QDateTime::fromString(first["begun"].toString(), Qt::ISODate).secsTo(QDateTime::currentDateTime())),
              60);
    EXPECT_EQ(call({"salvage", first["folder"].toString(), "back.chl"}), Good);
    EXPECT_TRUE(holdsTheRun("back.chl"));
}

TEST_F(OstrelFileTest, noTextReachesTheTerminalAsAnOrder) {
    const QString orders = QString("a\x1b[2J\r\n\t\x7f") + QChar(0x9b) + QChar(0x2028) + QChar(0x202e) + QChar(0x2066);
    const QString shown = "a\\x1b[2J\\x0d\\x0a\\x09\\x7f\\x9b\\u2028\\u202e\\u2066";
    run.title = run.notes = run.marks[0].label = orders;
    save(orders);
    for (const QStringList &arguments : {QStringList{"check", orders, orders + "x"}, {orders}, {"info", orders}}) {
        call(arguments);
        const QString all = said + complaint;
        EXPECT_TRUE(all.contains(shown)) << all.toStdString();
        for (const QChar c : all)
            EXPECT_TRUE(c == '\n' || !orders.mid(1).remove("[2J").contains(c)) << int(c.unicode());
    }
    EXPECT_EQ(said.count(shown), 3); // file, title, label
    call({"info", "--json", orders});
    for (const QChar c : said)
        EXPECT_TRUE(c == '\n' || (c.unicode() > 0x1f && !orders.mid(7).contains(c))) << int(c.unicode());
    EXPECT_EQ(QJsonDocument::fromJson(said.toUtf8()).object()["title"], orders);
}

TEST_F(OstrelFileTest, aCommandLineThatIsNotUnderstoodDoesNothing) {
    for (const char *line : {"", "burn run.chd", "info", "info run.chd run.chd", "check", "info --fast run.chd"})
        EXPECT_EQ(call(QString(line)), Misused) << line;
    EXPECT_EQ(call("--help"), Good);
    EXPECT_TRUE(said.contains("salvage"));
    EXPECT_EQ(call("text --help"), Good);
    EXPECT_TRUE(said.contains("--rate"));
}

TEST_F(OstrelFileTest, anOutputThatDoesNotTakeItIsAFailureAndNobodyWhoReadsAQuietEnd) {
    const std::string failure = "1: ostrel-file: standard output: cannot be written: ";
    EXPECT_EQ(callByShell("", "info run.chd >&-"), failure + "Bad file descriptor\n");
    for (const char *command : {"info", "check"})
        EXPECT_EQ(callByShell("", QString("%1 run.chd >/dev/full").arg(command)),
                  failure + "No space left on device\n");
    EXPECT_EQ(callByShell("trap '' PIPE; mkfifo pipe; exec 3<>pipe 4>pipe 3<&-; ", "info run.chd >&4; exit $?"),
              std::to_string(128 + SIGPIPE) + ": ");
}

/// Stops the process when the first bytes are written.
struct StoppingDisk : FileOperations {
    StoppingDisk() { standIn(this); }
    ssize_t write(int fd, const void *data, std::size_t size) override {
        FileOperations::write(fd, data, size);
        std::raise(SIGSTOP);
        ::_exit(99);
    }
};

TEST_F(OstrelFileTest, aSignalEndsTheCommandAndTakesTheUnfinishedFileAway) {
    const auto files = [] { return QDir().entryList(QDir::Files | QDir::Hidden); };
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::alarm(60);
            std::signal(number == SIGTERM ? SIGHUP : number, number == SIGTERM ? SIG_IGN : SIG_DFL);
            tidyWhenInterrupted();
            if (number == SIGTERM)
                std::raise(SIGHUP); // as under nohup: it goes on
            const StoppingDisk disk;
            ::_exit(call("salvage run.chd saved.chd"));
        }
        int status = 0;
        EXPECT_TRUE(::waitpid(child, &status, WUNTRACED) == child && WIFSTOPPED(status));
        EXPECT_EQ(files().size(), 2);
        ::kill(child, number);
        ::kill(child, SIGCONT);
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << status;
        EXPECT_EQ(files(), QStringList{"run.chd"});
    }
}

} // namespace
