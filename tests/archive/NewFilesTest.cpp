// SPDX-License-Identifier: MIT
#include "ArchiveFolder.h"
#include "chart/table/SampleTables.h"

#include <QImage>
#include <QXmlStreamReader>

#include <random>

namespace {

struct NewFiles : ArchiveFolder {
    NewFiles() {
        run.samples.append(std::vector<SamplePair>{{0.0012F, 19.95F}, {NAN, 20}, {-0.00175F, INFINITY}, {1.8F, 21}});
        run.title = "Run 7";
        save("run.chd");
    }
    QString head(const QString &name) const { return QString(content(name)).section("\n", 0, 0); }
};

TEST_F(NewFiles, xyIsMinutesAndValuesAlone) {
    EXPECT_EQ(call("xy run.chd uv.txt"), Good) << complaint.toStdString();
    EXPECT_EQ(content("uv.txt"), "0.000000\t0.001200\n0.003333\tNaN\n0.006667\t-0.001750\n0.010000\t1.800000\n");
    EXPECT_EQ(call("xy --signal conductivity run.chd cond.txt"), Good);
    EXPECT_EQ(content("cond.txt"), "0.000000\t19.9500\n0.003333\t20.0000\n0.006667\tNaN\n0.010000\t21.0000\n");
    EXPECT_EQ(call("xy --signal both run.chd none.txt"), Misused);
}

TEST_F(NewFiles, everySampleIsInTheTables) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> uv(-2, 2);
    run.samples = {};
    QByteArray xy;
    QByteArray csv = "Time (min),UV (AU),Conductivity (mS/cm),Event marks\r\n";
    for (int i = 0; i < 140000; ++i) { // more than two chunks, and more minutes than 100
        const SamplePair sample{uv(random), 200 + 100 * uv(random)};
        run.samples.append(sample);
        char row[100];
        std::snprintf(row, sizeof row, "%.6f\t%.6f\n", i / 300.0, double{sample.uv});
        xy += row;
        std::snprintf(row, sizeof row, "%.6f,%.6f,%.4f,\r\n", i / 300.0, double{sample.uv}, double{sample.cond});
        csv += row;
    }
    EXPECT_FALSE(exportXy("long.txt", run, Signal::Uv) || exportCsv("long.csv", run));
    EXPECT_TRUE(content("long.txt") == xy);
    EXPECT_TRUE(content("long.csv") == csv);
}

TEST_F(NewFiles, csvHoldsTheMarksAndNoTextBreaksIt) {
    run.marks = {{"E", 0, 10, 0.012F}, {hostile, 0, 10, 0}, {"1", 0, 10, 1 / 300.0F}, {"a,b", 0, 10, 1 / 300.0F}};
    save("run.chl");
    EXPECT_EQ(call("csv run.chl run.csv"), Good) << complaint.toStdString();
    EXPECT_EQ(content("run.csv").replace("\r\n", "|"),
              "Time (min),UV (AU),Conductivity (mS/cm),Event marks|"
              "0.000000,0.001200,19.9500,\"'=1+1\t\"\"a\"\",b; c     ?<&>\xef\xbf\xbe\xc3\xa9?\"|"
              "0.003333,,20.0000,\"1 & a,b\"|"
              "0.006667,-0.001750,,|"
              "0.010000,1.800000,21.0000,|"
              "0.012000,,,E|");
    run = {};
    save("run.chl");
    EXPECT_EQ(call("csv --overwrite run.chl run.csv"), Good);
    EXPECT_EQ(content("run.csv"), "Time (min),UV (AU),Conductivity (mS/cm),Event marks\r\n");
}

TEST_F(NewFiles, ofSeveralRunsEachIsMadeInTheFolderUnderItsOwnName) {
    ASSERT_TRUE(QDir().mkpath("out") && QDir().mkpath("b"));
    save("a.b.chl");
    save("named");
    lay("broken.chd", "no run");
    lay("out/named.csv", "stays");
    save("b/run.chl");
    EXPECT_EQ(call("csv broken.chd run.chd b/run.chl a.b.chl named out"), Failed);
    EXPECT_EQ(complaint, "ostrel-file: broken.chd: not a chart file\n"
                         "ostrel-file: b/run.chl: refused, for out/run.csv is the new name of a file before it\n"
                         "ostrel-file: out/named.csv: is there already; --overwrite replaces it\n");
    EXPECT_EQ(names("out"), "a.b.csv named.csv run.csv");
    EXPECT_EQ(content("out/named.csv"), "stays");
    EXPECT_EQ(callAtTerminal("csv --overwrite run.chd named out/"), Good);
    EXPECT_EQ(complaint, "1 of 2  run.chd\r\x1b[K2 of 2  named\r\x1b[K");
    EXPECT_EQ(head("out/named.csv"), head("out/run.csv"));
    for (const char *command : {"text", "pdf", "xy", "picture", "andi"})
        EXPECT_EQ(call(QString("%1 --overwrite run.chd a.b.chl out").arg(command)), Good) << complaint.toStdString();
    EXPECT_EQ(names("out"), "a.b-conductivity.cdf a.b-marks.txt a.b.cdf a.b.csv a.b.pdf a.b.png a.b.txt named.csv "
                            "run-conductivity.cdf run-marks.txt run.cdf run.csv run.pdf run.png run.txt");
    save("run-conductivity.chd");
    EXPECT_EQ(call("andi --overwrite run.chd run-conductivity.chd out"), Failed); // of the first one's files
    EXPECT_TRUE(complaint.contains("out/run-conductivity.cdf is the new name")) << complaint.toStdString();
    for (const char *target : {"none", "run.csv", "none/"}) {
        EXPECT_EQ(call(QString("csv --overwrite run.chd named %1").arg(target)), Misused);
        EXPECT_FALSE(QFile::exists(target));
    }
    EXPECT_EQ(call("picture --format svg run.chd out"), Good);
    EXPECT_TRUE(content("out/run.svg").contains("<svg"));
}

TEST_F(NewFiles, aPictureHasTheAskedSizeAndColours) {
    EXPECT_EQ(call("picture --size 900x400 run.chd run.png"), Good) << complaint.toStdString();
    EXPECT_EQ(call("picture --size 3000x2000 --dark run.chd dark.PNG"), Good);
    const QImage light("run.png");
    const QImage dark("dark.PNG");
    EXPECT_EQ(light.size(), QSize(900, 400));
    EXPECT_EQ(dark.size(), QSize(3000, 2000));
    EXPECT_GT(qGray(light.pixel(2, 2)), 240);
    EXPECT_LT(qGray(dark.pixel(2, 2)), 50);
    const auto uvInk = [](const QImage &image) { // blue
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += qBlue(image.pixel(x, y)) > qRed(image.pixel(x, y)) + 60;
        return count;
    };
    EXPECT_GT(uvInk(light), 200);
    EXPECT_GT(uvInk(dark), uvInk(light));
    EXPECT_EQ(call("picture --size 900x400 --from 0.004 --to 0.02 run.chd part.png"), Good);
    EXPECT_FALSE(QImage("part.png") == light);
    for (const char *line :
         {"run.chd run.jpg", "run.chd run", "--size 99x400 run.chd x.png", "--size 400x10001 run.chd x.png",
          "--size 400 run.chd x.png", "--size 400x300x2 run.chd x.png", "--size axb run.chd x.png",
          "--from 0.02 run.chd x.png", "--from 0.01 --to 0.01 run.chd x.png", "--format gif run.chd x.png"})
        EXPECT_EQ(call(QString("picture ") + line), Misused) << line;
    EXPECT_EQ(names("."), "dark.PNG part.png run.chd run.png");
}

TEST_F(NewFiles, aDrawingIsGoodXmlWhateverTheRunSays) {
    run.title = hostile;
    run.marks = {{hostile, 0, 10, 0.005F}};
    save("run.chl");
    EXPECT_EQ(call("picture --size 1920x1080 run.chl run.svg"), Good) << complaint.toStdString();
    QXmlStreamReader xml(content("run.svg"));
    ASSERT_TRUE(xml.readNextStartElement());
    EXPECT_EQ(xml.attributes().value("viewBox"), u"0 0 1920 1080");
    int texts = 0;
    while (!xml.atEnd())
        texts += xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"text";
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_GT(texts, 20);
}

TEST_F(NewFiles, aFullDiskLeavesTheOldFile) {
    for (const char *command : {"csv", "xy", "picture", "andi"}) {
        const QString target = QString("old") + (*command == 'p' ? ".png" : *command == 'a' ? ".cdf" : ".txt");
        lay(target, "old");
        const FullForWriting disk;
        EXPECT_EQ(call(QString("%1 --overwrite run.chd %2").arg(command, target)), Failed);
        EXPECT_TRUE(complaint.contains("No space left on device")) << complaint.toStdString();
        EXPECT_EQ(content(target), "old");
    }
    EXPECT_EQ(names("."), "old.cdf old.png old.txt run.chd");
}

} // namespace
