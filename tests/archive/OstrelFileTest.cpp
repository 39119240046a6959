// SPDX-License-Identifier: MIT
#include "archive/OstrelFile.h"

#include "archive/ArchiveCommand.h"
#include "chart/files/ChartFile.h"
#include "chart/files/LogWastebasket.h"
#include "chart/files/RunningLogWriter.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <gmock/gmock.h>

#include <cmath>

namespace {

/// An archive of one run of two minutes, with a mark and a method.
class OstrelFileTest : public testing::Test {
protected:
    OstrelFileTest() {
        for (int i = 0; i <= 600; ++i)
            run.samples.append({static_cast<float>(i) / 1000, 20});
        run.marks.push_back({"S", 0xff, 10, 0.5F});
        run.methodTexts.push_back({"Load\r\nWash\r\n", 0.1F});
        run.title = "Größe";
        EXPECT_FALSE(saveChartFile(path("run.chd"), dataFile, run, {}));
    }

    QString path(const char *name) const { return archive.filePath(name); }
    QByteArray content(const char *name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void lay(const char *name, const QByteArray &bytes) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    /// Words with a point in them that are no numbers are names in the archive.
    int call(const char *line) {
        static const QRegularExpression name("^[^-0-9]*\\.");
        QStringList arguments;
        for (const QString &word : QString(line).split(' '))
            arguments << (word.contains(name) ? archive.filePath(word) : word);
        return call(arguments);
    }
    int call(const QStringList &arguments) {
        said.clear();
        complaint.clear();
        QTextStream out(&said);
        QTextStream complaints(&complaint);
        return ostrelFile(QStringList{"ostrel-file"} + arguments, out, complaints);
    }
    float lastTimeOf(const char *name) const {
        ChartData loaded;
        AxisValues axes;
        EXPECT_TRUE(loadChartFile(path(name), loaded, axes).good());
        return loaded.lastTime();
    }

    QTemporaryDir archive;
    ChartData run;
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
    const QByteArray whole = content("run.chd");
    QByteArray damaged = whole;
    damaged[2000] = char(damaged[2000] ^ 1);
    lay("cut.chd", whole.left(3000));
    lay("damaged.chd", damaged);
    lay("text.chd", "not a chart");
    EXPECT_EQ(call("check run.chd"), Good);
    EXPECT_EQ(call("check cut.chd damaged.chd text.chd none.chd run.chd"), Failed);
    const QStringList lines = said.split('\n');
    EXPECT_TRUE(lines[0].endsWith("cut off at byte 3000"));
    EXPECT_TRUE(lines[1].endsWith(QString("damaged at byte %1, in record 5 (SAMP) that ends at byte %2")
                                      .arg(whole.indexOf("SAMP"))
                                      .arg(whole.indexOf("END "))));
    EXPECT_TRUE(lines[2].contains("not a chart file"));
    EXPECT_TRUE(lines[3].contains("cannot be read"));
    EXPECT_TRUE(lines[4].contains("whole"));

    lay("head.chd", QByteArray(whole).replace(20, 1, "?"));
    lay("longer.chd", whole + "more");
    damaged = QByteArray(whole).replace(whole.indexOf("SAMP") + 4, 1, "?");
    lay("damaged.chd", damaged);
    EXPECT_EQ(call("check head.chd longer.chd damaged.chd"), Failed);
    const QStringList faults = said.split('\n');
    EXPECT_TRUE(faults[0].endsWith("damaged at byte 0, in its head"));
    EXPECT_TRUE(faults[1].endsWith(QString("goes on behind its end at byte %1").arg(whole.size())));
    EXPECT_TRUE(faults[2].endsWith(QString("damaged at byte %1").arg(whole.indexOf("SAMP"))));
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
    EXPECT_EQ(call("text --rate 6 run.chd x.txt"), Misused);
    EXPECT_EQ(call("text --without colour run.chd x.txt"), Misused);
    EXPECT_EQ(call("text --method beside run.chd x.txt"), Misused);

    EXPECT_EQ(call("pdf run.chd run.pdf"), Good) << complaint.toStdString();
    EXPECT_TRUE(content("run.pdf").startsWith("%PDF"));
    EXPECT_EQ(call("pdf run.chd none/run.pdf"), Failed);
}

TEST_F(OstrelFileTest, aConversionNeverTakesThePlaceOfAChartFile) {
    const QByteArray whole = content("run.chd");
    lay("other.txt", whole);
    lay("damaged.txt", QByteArray(whole).replace(20, 1, "?"));
    lay("newer.txt", FileHead::of(dataFile, 99).bytes());
    lay("log.txt", FileHead::of(fourLetters("TICK"), 1).bytes());
    ASSERT_TRUE(QFile::link(path("other.txt"), path("link.txt")));
    for (const char *target : {"other.txt", "damaged.txt", "newer.txt", "log.txt", "link.txt"}) {
        const QByteArray before = content(target);
        for (const char *command : {"text", "pdf"}) {
            for (const char *option : {"", " --overwrite"}) {
                EXPECT_EQ(call(qPrintable(QString("%1%2 run.chd %3").arg(command, option, target))), Failed);
                EXPECT_TRUE(complaint.endsWith("is a chart file; only salvage replaces one\n"))
                    << complaint.toStdString();
            }
        }
        EXPECT_EQ(content(target), before);
    }
    lay("named.chd", "a text");
    for (const char *target : {"named.chd", "new.chl", "new.CHD"}) {
        for (const char *command : {"text", "pdf"}) {
            EXPECT_EQ(call(qPrintable(QString("%1 --overwrite run.chd %2").arg(command, target))), Failed);
            EXPECT_TRUE(complaint.endsWith("is the name of a chart file; only salvage makes one\n"))
                << complaint.toStdString();
        }
    }
    EXPECT_EQ(content("named.chd"), "a text");
    EXPECT_FALSE(QFile::exists(path("new.chl")) || QFile::exists(path("new.CHD")));
}

TEST_F(OstrelFileTest, theStretchOfATextLiesWithinTheRun) {
    for (const char *stretch : {"--from 1.5 --to 1", "--from nan", "--to inf", "--from 2.1", "--from 2.1 --to 9"}) {
        EXPECT_EQ(call(qPrintable(QString("text %1 run.chd x.txt").arg(stretch))), Misused) << stretch;
        EXPECT_FALSE(QFile::exists(path("x.txt")));
    }
    EXPECT_TRUE(complaint.contains("2.00 minutes (0:02:00)")) << complaint.toStdString();
    EXPECT_EQ(call("text --from 2 --to 2 run.chd x.txt"), Good) << complaint.toStdString();
    EXPECT_EQ(call("text --overwrite --from 1 --to 9 run.chd x.txt"), Good) << complaint.toStdString();
}

TEST_F(OstrelFileTest, salvageKeepsThePrefixOfAFileAndSaysWhatIsMissing) {
    lay("cut.chd", content("run.chd").left(3000));
    EXPECT_EQ(call("salvage cut.chd saved.chd"), Partial);
    EXPECT_TRUE(said.contains("Missing: ")) << said.toStdString();
    EXPECT_TRUE(call("check saved.chd") == Good);
    EXPECT_LT(lastTimeOf("saved.chd"), 2.0F);
    EXPECT_EQ(call("salvage run.chd whole.chl"), Good);
    EXPECT_EQ(lastTimeOf("whole.chl"), 2.0F);
    EXPECT_EQ(call("salvage run.chd run.chd"), Misused);
    EXPECT_EQ(call("salvage run.chd run.txt"), Misused);
    lay("longer.chd", content("run.chd") + "more");
    EXPECT_EQ(call("salvage --overwrite longer.chd whole.chl"), Good);
    lay("head.chd", content("run.chd").replace(20, 1, "?"));
    EXPECT_EQ(call("salvage head.chd mended.chd"), Good) << complaint.toStdString();
    EXPECT_TRUE(said.contains("head.chd: damaged at byte 0, in its head")) << said.toStdString();
    EXPECT_EQ(lastTimeOf("mended.chd"), 2.0F);
}

TEST_F(OstrelFileTest, whereNothingIsLeftNothingIsSaved) {
    const QByteArray whole = content("run.chd");
    const auto notes = whole.indexOf("NOTE");
    for (const qsizetype size : {qsizetype{20}, qsizetype{48}, notes, notes + 24}) {
        lay("cut.chd", whole.left(size));
        EXPECT_EQ(call("salvage cut.chd saved.chd"), Failed) << size;
        EXPECT_TRUE(complaint.contains("nothing is left to save"));
        EXPECT_FALSE(QFile::exists(path("saved.chd")));
    }
    EXPECT_TRUE(complaint.contains("but the title \"Größe\"")) << complaint.toStdString();
    EXPECT_FALSE(saveChartFile(path("empty.chd"), dataFile, {}, {}));
    EXPECT_EQ(call("salvage empty.chd saved.chd"), Failed);
    run = {};
    run.methodTexts.push_back({"Load\r\n", 0});
    EXPECT_FALSE(saveChartFile(path("method.chd"), dataFile, run, {}));
    EXPECT_EQ(call("salvage method.chd saved.chd"), Good);
}

TEST_F(OstrelFileTest, salvagePutsTheLogOfADirectoryTogether) {
    RunningLogWriter log;
    ASSERT_TRUE(QDir(archive.path()).mkpath("copy.d/below"));
    EXPECT_FALSE(log.write(run, path("copy.d"), 1, 24));
    log.close();
    EXPECT_EQ(call("salvage copy.d copy.d/../log.chl"), Good) << complaint.toStdString();
    EXPECT_EQ(lastTimeOf("log.chl"), 2.0F);
    EXPECT_EQ(call("salvage none. log2.chl"), Failed);
    EXPECT_EQ(call("salvage --overwrite copy.d log.chl"), Good) << complaint.toStdString();

    ASSERT_TRUE(QFile::copy(path("log.chl"), path("copy.d/part.chl")) &&
                QFile::link(path("copy.d/part.chl"), path("link.chl")) && QFile::link(path("copy.d"), path("link.d")));
    for (const char *target : {"copy.d/part.chl", "link.chl", "copy.d/new.chl", "copy.d/below/new.chl",
                               "copy.d/none/new.chl", "link.d/new.chl", "link.d/none/../new.chl"}) {
        EXPECT_EQ(call(qPrintable(QString("salvage --overwrite copy.d %1").arg(target))), Misused) << target;
        EXPECT_TRUE(complaint.contains("lies in the directory to be read")) << complaint.toStdString();
    }
    EXPECT_EQ(QDir(path("copy.d")).entryList(QDir::Files), (QStringList{"Log00001.dat", "part.chl"}));
}

TEST_F(OstrelFileTest, logsListsTheRunningLogsAndThoseThatWereThrownAway) {
    const auto log = [&](const QString &folder, const char *system) {
        run.title = system;
        RunningLogWriter writer;
        EXPECT_TRUE(QDir(archive.path()).mkpath(folder));
        EXPECT_FALSE(writer.write(run, archive.filePath(folder), 1, 24));
        QThread::msleep(2); // the logs are sorted by their beginnings
        return archive.filePath(folder + "/Log00001.dat");
    };
    EXPECT_EQ(call("logs .none"), Failed);
    EXPECT_EQ(call({"logs", archive.path()}), Good);
    EXPECT_TRUE(said.contains("no logs"));

    const QString thrownAway = log("Log/1", "first");
    EXPECT_FALSE(moveToWastebasket(archive.filePath("Log/1"), archive.filePath("Discarded"), QDate(2026, 11, 22)));
    EXPECT_FALSE(QFile::exists(thrownAway));
    QFile cut(log("Log/2", "second"));
    EXPECT_TRUE(cut.open(QIODevice::ReadWrite) && cut.seek(300) && cut.write(QByteArray(3000, '?')) == 3000);
    cut.close();
    log("Log", "third");
    ASSERT_TRUE(QDir(archive.path()).mkpath("Log/empty") && QFile::link(archive.path(), path("Log/link")));

    EXPECT_EQ(call({"logs", archive.path()}), Good) << complaint.toStdString();
    const QStringList logs = said.split("\n\n", Qt::SkipEmptyParts);
    ASSERT_EQ(logs.size(), 3) << said.toStdString();
    for (const char *fact :
         {"/Discarded/1-2026-11-22\n", "Discarded:      yes", "first", "2.00 minutes", "601", "nothing"})
        EXPECT_TRUE(logs[0].contains(fact)) << fact << " in\n" << said.toStdString();
    EXPECT_TRUE(logs[1].contains("/Log/2\n") && logs[1].contains("minutes of samples from minute 0.00"));
    EXPECT_TRUE(logs[2].contains("/Log\n") && logs[2].contains("third"));

    EXPECT_EQ(call(QStringList{"logs", "--json", archive.path()}), Good);
    const QJsonObject first = QJsonDocument::fromJson(said.toUtf8()).array()[0].toObject();
    EXPECT_EQ(first["discarded"], true);
    EXPECT_LT(qAbs(QDateTime::fromString(first["begun"].toString(), Qt::ISODate).secsTo(QDateTime::currentDateTime())),
              60);
    EXPECT_EQ(call({"salvage", first["folder"].toString(), archive.filePath("back.chl")}), Good);
    EXPECT_EQ(lastTimeOf("back.chl"), 2.0F);
}

TEST_F(OstrelFileTest, noTextReachesTheTerminalAsAnOrder) {
    const QString orders = QString("a\x1b[2J\r\n\t\x7f") + QChar(0x9b) + QChar(0x2028) + QChar(0x202e) + QChar(0x2066);
    const QString shown = "a\\x1b[2J\\x0d\\x0a\\x09\\x7f\\x9b\\u2028\\u202e\\u2066";
    run.title = run.notes = run.marks[0].label = orders;
    const QString name = orders + ".chd";
    EXPECT_FALSE(saveChartFile(archive.filePath(name), dataFile, run, {}));
    lay("cut.chd", content("run.chd").left(60));
    const auto expectTame = [&](const QStringList &arguments) {
        call(arguments);
        const QString all = said + complaint;
        EXPECT_TRUE(all.contains(shown)) << all.toStdString();
        for (const QChar c : all)
            EXPECT_TRUE(c == '\n' || !orders.mid(1).remove("[2J").contains(c)) << int(c.unicode());
        EXPECT_EQ(all.count('\n'), std::max(all.count("ostrel-file: ") + said.count('\n'), qsizetype{1}));
    };
    const QString path_ = archive.filePath(name);
    expectTame({"info", path_});
    EXPECT_EQ(said.count(shown), 3); // file, title, label
    expectTame({"check", path_, path_ + "x"});
    expectTame({"salvage", path_, path_ + ".chl"});
    expectTame({"salvage", path_, path_ + ".chl"});
    expectTame({"salvage", path_ + "/", path_ + ".txt"});
    expectTame({"text", path_, path_});
    expectTame({orders});
    expectTame({"info", "--" + orders});
    EXPECT_EQ(call(QStringList{"info", "--json", path_}), Good);
    for (const QChar c : said)
        EXPECT_TRUE(c == '\n' || (c.unicode() > 0x1f && !orders.mid(7).contains(c))) << int(c.unicode());
    EXPECT_EQ(QJsonDocument::fromJson(said.toUtf8()).object()["title"], orders);
}

TEST_F(OstrelFileTest, anOutputThatDoesNotTakeItIsAFailure) {
    QFile full("/dev/full");
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    for (const char *command : {"info", "check"}) {
        QTextStream out(&full);
        QTextStream complaints(&complaint);
        EXPECT_EQ(ostrelFile({"ostrel-file", command, path("run.chd")}, out, complaints), Failed);
        EXPECT_TRUE(complaint.contains("standard output: cannot be written: No space left on device"));
        complaint.clear();
    }
}

TEST_F(OstrelFileTest, aCommandLineThatIsNotUnderstoodDoesNothing) {
    for (const char *line : {"", "burn run.chd", "info", "info run.chd run.chd", "check", "info --fast run.chd"})
        EXPECT_EQ(call(line), Misused) << line;
    EXPECT_EQ(call("--help"), Good);
    EXPECT_TRUE(said.contains("salvage"));
    EXPECT_EQ(call("text --help"), Good);
    EXPECT_TRUE(said.contains("--rate"));
}

} // namespace
