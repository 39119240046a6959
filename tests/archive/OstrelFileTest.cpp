// SPDX-License-Identifier: MIT
#include "archive/ArchiveFolder.h"
#include "archive/Interruptions.h"
#include "chart/files/LogWastebasket.h"
#include "chart/files/RunningLogWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QThread>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

using OstrelFileTest = ArchiveOfOne;

TEST_F(OstrelFileTest, infoTellsWhatIsInAFile) {
    EXPECT_EQ(call("info run.chd"), Good);
    for (const char *fact : {"Größe", "data", "2.00 minutes (0:02:00)", "601", "0 to 0.6 AU", "0.500 min  S"})
        EXPECT_TRUE(said.contains(fact)) << fact << " in\n" << said.toStdString();
    call("info --json run.chd");
    EXPECT_EQ(QJsonDocument::fromJson(said.toUtf8())["marks"][0]["label"], "S");
    EXPECT_TRUE(QJsonDocument::fromJson(said.toUtf8())["provenance"].isNull());

    const QDateTime dawn = QDateTime::fromString("2026-11-22T06:30:00+01:00", Qt::ISODate);
    run.provenance.device = "/dev/ttyUSB0";
    run.provenance.stretches = {{0, 1, dawn, dawn.addSecs(60)}, {1.1, 2, dawn.addSecs(100), {}}};
    run.provenance.clockSteps = {{0.5, -3600}};
    save("known.chd");
    call("info --json known.chd");
    const QJsonValue known = QJsonDocument::fromJson(said.toUtf8())["provenance"];
    EXPECT_EQ(known["begun"], "2026-11-22T06:30:00+01:00");
    EXPECT_TRUE(known["ended"].isNull() && known["parent"].isNull() && known["history"].toArray().isEmpty());
    EXPECT_EQ(known["stretches"][1]["from"], 1.1);
    call("info known.chd");
    for (const char *fact :
         {"/dev/ttyUSB0", "06:31:00+01:00, minutes 0.000 to 1.000", "by -3600.0 seconds at minute 0.5"})
        EXPECT_TRUE(said.contains(fact)) << fact << " in\n" << said.toStdString();
}

TEST_F(OstrelFileTest, checkNamesEachFileThatIsNotWhole) {
    const qsizetype samples = whole.indexOf("SAMP");
    lay("a", "not a chart");
    lay("b", whole.left(3000));
    lay("c", flipped(whole, 20));
    lay("d", flipped(whole, 2000));
    lay("e", flipped(whole, samples + 4));
    lay("f", whole + "more");
    EXPECT_EQ(call("check a b c d e f none run.chd"), Failed);
    EXPECT_EQ(said, QString("a: not a chart file\n"
                            "b: cut off at byte 3000\n"
                            "c: damaged at byte 0, in its head\n"
                            "d: damaged at byte %1, in record 7 (SAMP) that ends at byte %2\n"
                            "e: damaged at byte %1\n"
                            "f: goes on behind its end at byte %3\n"
                            "none: cannot be read: No such file or directory\n"
                            "run.chd: whole, 2.00 minutes (0:02:00)\n"
                            "8 files: 1 whole, 7 damaged\n")
                        .arg(samples)
                        .arg(whole.indexOf("END "))
                        .arg(whole.size()));
}

TEST_F(OstrelFileTest, textAndReportAreWrittenAndNothingThatStandsIsLost) {
    EXPECT_EQ(call("text --rate 5 --without notes,method run.chd run.txt"), Good) << complaint.toStdString();
    const QByteArray table = content("run.txt");
    EXPECT_TRUE(table.contains("0.6000") && !table.contains("Wash")) << table.toStdString();
    EXPECT_EQ(call("text run.chd run.txt"), Failed);
    EXPECT_EQ(content("run.txt"), table);
    EXPECT_EQ(call("text --overwrite --from 1 run.chd run.txt"), Good);
    EXPECT_LT(content("run.txt").size(), table.size());
    EXPECT_EQ(call("text --from 2 --to 9 run.chd end.txt"), Good) << complaint.toStdString();
    EXPECT_EQ(call("pdf run.chd run.pdf"), Good) << complaint.toStdString();
    EXPECT_TRUE(content("run.pdf").startsWith("%PDF"));
    EXPECT_EQ(call("pdf run.chd none/run.pdf"), Failed);
}

TEST_F(OstrelFileTest, aConversionNeverTakesThePlaceOfAChartFile) {
    lay("other.txt", whole);
    lay("named.chd", "a text");
    ASSERT_TRUE(QFile::link("other.txt", "link.txt"));
    for (const char *target : {"other.txt", "link.txt", "named.chd", "new.chl", "new.CHD"})
        for (const char *command : {"text", "pdf"}) {
            EXPECT_EQ(call(QString("%1 --overwrite run.chd %2").arg(command, target)), Failed) << target;
            EXPECT_TRUE(complaint.contains("chart file; only salvage")) << complaint.toStdString();
        }
    EXPECT_TRUE(content("other.txt") == whole && content("named.chd") == "a text" && !QFile::exists("new.CHD"));
}

TEST_F(OstrelFileTest, salvageKeepsThePrefixOfAFileAndSaysWhatIsMissing) {
    lay("cut.chd", whole.left(3000));
    EXPECT_EQ(call("salvage cut.chd saved.chd"), Partial);
    EXPECT_TRUE(said.endsWith("\nMissing: minutes 0.00 to 2.00 (601 samples)\n")) << said.toStdString();
    EXPECT_EQ(call("check saved.chd"), Good);
    lay("longer.chd", whole + "more");
    EXPECT_EQ(call("salvage longer.chd whole.chl"), Good);
    EXPECT_TRUE(holdsTheRun("whole.chl"));
    lay("head.chd", flipped(whole, 20));
    EXPECT_EQ(call("salvage --overwrite head.chd whole.chl"), Good) << complaint.toStdString();
    EXPECT_TRUE(said.contains("head.chd: damaged at byte 0, in its head")) << said.toStdString();
    EXPECT_TRUE(holdsTheRun("whole.chl"));
}

TEST_F(OstrelFileTest, whereNothingIsLeftNothingIsSaved) {
    for (const qsizetype size : {qsizetype{20}, qsizetype{48}, whole.indexOf("NOTE") + 24}) {
        lay("cut.chd", whole.left(size));
        EXPECT_EQ(call("salvage cut.chd saved.chd"), Failed) << size;
        EXPECT_TRUE(complaint.contains("nothing is left to save"));
        EXPECT_FALSE(QFile::exists("saved.chd"));
    }
    EXPECT_TRUE(complaint.contains("but the title \"Größe\"")) << complaint.toStdString();
    run.samples = {};
    run.marks.clear();
    save("method.chd");
    EXPECT_EQ(call("salvage method.chd saved.chd"), Good);
}

TEST_F(OstrelFileTest, salvagePutsTheLogOfADirectoryTogether) {
    RunningLogWriter log;
    ASSERT_TRUE(QDir().mkpath("copy/sub") && QFile::link("copy", "link"));
    EXPECT_FALSE(log.write(run, "copy", 1, 24));
    EXPECT_EQ(call("salvage copy copy/../log.chl"), Good) << complaint.toStdString();
    EXPECT_TRUE(holdsTheRun("log.chl"));
    EXPECT_EQ(call("salvage none log2.chl"), Failed);
    for (const char *target : {"copy/sub/new.chl", "copy/none/new.chl", "link/new.chl", "link/none/../new.chl"}) {
        EXPECT_EQ(call(QString("salvage --overwrite copy %1").arg(target)), Misused) << target;
        EXPECT_TRUE(complaint.contains("lies in the directory to be read")) << complaint.toStdString();
    }
    EXPECT_EQ(names("copy"), "Log00001.dat sub");
}

TEST_F(OstrelFileTest, logsListsTheRunningLogsAndThoseThatWereThrownAway) {
    const auto log = [&](const QString &directory, const char *system) {
        run.title = system;
        RunningLogWriter writer;
        EXPECT_TRUE(QDir().mkpath(directory));
        EXPECT_FALSE(writer.write(run, directory, 1, 24));
        QThread::msleep(2); // the logs are sorted by their beginnings
    };
    EXPECT_EQ(call("logs none"), Failed);
    EXPECT_TRUE(call("logs .") == Good && said.contains("no logs"));
    log("Log/1", "first");
    EXPECT_FALSE(moveToWastebasket("Log/1", "Discarded", QDate(2026, 11, 22)));
    log("Log/2", "second");
    lay("Log/2/Log00001.dat", content("Log/2/Log00001.dat").replace(300, 3000, QByteArray(3000, '?')));
    log("Log", "third");
    ASSERT_TRUE(QDir().mkpath("Log/empty") && QFile::link(folder.path(), "Log/link"));
    EXPECT_EQ(call("logs ."), Good) << complaint.toStdString();
    qsizetype place = 0;
    for (const char *next : {"/Discarded/1-2026-11-22\n", "yes", "first", "2.00 minutes", "601", "nothing\n\n",
                             "/Log/2\n", "no\n", "minutes 0.00 to ", "/Log\n", "third"}) {
        place = said.indexOf(next, place);
        ASSERT_GE(place, 0) << next << " in\n" << said.toStdString();
    }
    EXPECT_EQ(call("logs --json ."), Good);
    const QJsonValue first = QJsonDocument::fromJson(said.toUtf8())[0];
    EXPECT_TRUE(first["begun"].toString().startsWith(QDate::currentDate().toString("yyyy-")));
    EXPECT_EQ(call({"salvage", first["folder"].toString(), "back.chl"}), Good);
    EXPECT_TRUE(holdsTheRun("back.chl"));
}

TEST_F(OstrelFileTest, noTextReachesTheTerminalAsAnOrder) {
    const QString orders = QString("a\x1b[2J\r\n\t\x7f") + QChar(0x9b) + QChar(0x2028) + QChar(0x202e) + QChar(0x2066);
    const QString shown = "a\\x1b[2J\\x0d\\x0a\\x09\\x7f\\x9b\\u2028\\u202e\\u2066";
    const QRegularExpression order("[^ -~\n]");
    run.title = run.notes = run.marks[0].label = orders;
    save(orders);
    for (const QStringList &arguments : {QStringList{"check", orders, orders + "x"}, {orders}, {"info", orders}}) {
        call(arguments);
        const QString all = said + complaint;
        EXPECT_TRUE(all.contains(shown) && !all.contains(order)) << all.toStdString();
    }
    EXPECT_EQ(said.count(shown), 3); // file, title, label
    call({"info", "--json", orders});
    EXPECT_FALSE(said.contains(order)) << said.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(said.toUtf8())["title"], orders);
}

TEST_F(OstrelFileTest, aCommandLineThatIsNotUnderstoodDoesNothing) {
    for (const char *line :
         {"", "burn run.chd", "info", "info run.chd run.chd", "check", "info --fast run.chd", "salvage run.chd run.chd",
          "salvage run.chd run.txt", "text run.chd run.chd --overwrite", "text run.chd x.txt --rate 6",
          "text run.chd x.txt --without colour", "text run.chd x.txt --method up",
          "text --from 1.5 --to 1 run.chd x.txt", "text --from nan run.chd x.txt", "text --to inf run.chd x.txt",
          "text --from 2.1 --to 9 run.chd x.txt"}) {
        EXPECT_EQ(call(QString(line)), Misused) << line;
        EXPECT_EQ(names("."), "run.chd") << line;
    }
    EXPECT_TRUE(complaint.contains("2.00 minutes (0:02:00)")) << complaint.toStdString();
    for (const auto &[line, help] : {std::pair("--help", "salvage"), std::pair("text --help", "--rate")})
        EXPECT_TRUE(call(QString(line)) == Good && said.contains(help)) << line;
}

TEST_F(OstrelFileTest, anOutputThatDoesNotTakeItIsAFailureAndNobodyWhoReadsAQuietEnd) {
    const std::string failure = "1: ostrel-file: standard output: cannot be written: ";
    EXPECT_EQ(callByShell("", "info run.chd >&-"), failure + "Bad file descriptor\n");
    EXPECT_EQ(callByShell("", "check run.chd >/dev/full"), failure + "No space left on device\n");
    EXPECT_EQ(callByShell("trap '' PIPE; mkfifo pipe; exec 3<>pipe 4>pipe 3<&-; ", "info run.chd >&4; exit $?"),
              std::to_string(128 + SIGPIPE) + ": ");
}

/// The signal comes with the first bytes.
struct InterruptedDisk : FileOperations {
    explicit InterruptedDisk(int number) : number_(number) { standIn(this); }
    ssize_t write(int fd, const void *data, std::size_t size) override {
        FileOperations::write(fd, data, size);
        std::raise(number_);
        ::_exit(99);
    }
    int number_;
};

TEST_F(OstrelFileTest, aSignalEndsTheCommandAndTakesTheUnfinishedFileAway) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        const pid_t child = ::fork();
        if (child == 0) {
            std::signal(number, SIG_DFL);
            std::signal(SIGQUIT, SIG_IGN);
            tidyWhenInterrupted();
            std::raise(SIGQUIT); // as SIGHUP under nohup: it goes on
            const InterruptedDisk disk(number);
            ::_exit(call("salvage run.chd saved.chd"));
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << status;
        EXPECT_EQ(names("."), "run.chd");
    }
}

} // namespace
