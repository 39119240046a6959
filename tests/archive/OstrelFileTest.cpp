// SPDX-License-Identifier: MIT
#include "archive/OstrelFile.h"

#include "archive/ArchiveCommand.h"
#include "chart/ChartFile.h"
#include "chart/RunningLogWriter.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
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
    /// Words with a point in them are names in the archive.
    int call(const char *line) {
        said.clear();
        complaint.clear();
        QTextStream out(&said);
        QTextStream complaints(&complaint);
        QStringList arguments{"ostrel-file"};
        for (const QString &word : QString(line).split(' '))
            arguments << (word.contains('.') && !word.startsWith("--") ? archive.filePath(word) : word);
        return ostrelFile(arguments, out, complaints);
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
    EXPECT_TRUE(lines[0].contains("cut off at byte"));
    EXPECT_TRUE(lines[1].contains("damaged at byte"));
    EXPECT_TRUE(lines[2].contains("not a chart file"));
    EXPECT_TRUE(lines[3].contains("cannot be read"));
    EXPECT_TRUE(lines[4].contains("whole"));
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
}

TEST_F(OstrelFileTest, salvagePutsTheLogOfADirectoryTogether) {
    RunningLogWriter log;
    EXPECT_FALSE(log.write(run, archive.path(), 1, 24));
    log.close();
    EXPECT_EQ(call("salvage . log.chl"), Good) << complaint.toStdString();
    EXPECT_EQ(lastTimeOf("log.chl"), 2.0F);
    EXPECT_EQ(call("salvage none. log2.chl"), Failed);
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
