// SPDX-License-Identifier: MIT
#include "archive/ArchiveFolder.h"
#include "chart/files/RunningLogWriter.h"
#include "fuzz/Corpus.h"
#include "fuzz/ManifestScenario.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

namespace {

/// Beside run.chd the archive has "sub" with two whole runs, one under a name of its own, and a damaged one.
class ArchiveCheckTest : public ArchiveOfOne {
protected:
    ArchiveCheckTest() {
        QDir().mkpath("sub/deep");
        save("sub/deep/other.CHL");
        save("sub/renamed");
        lay("sub/bad.chd", flipped(whole, 20));
        lay("sub/notes.txt", "no chart");
    }
    /// What was said, without how long the runs are.
    QString words() const { return QString(said).remove(", 2.00 minutes (0:02:00)"); }
    /// A first manifest over the whole files.
    void listAll() {
        QFile::remove("sub/bad.chd");
        EXPECT_EQ(call("check --manifest list ."), Good) << complaint.toStdString();
        EXPECT_TRUE(said.endsWith("\n3 files: 3 whole, 0 damaged; the manifest is written\n")) << said.toStdString();
    }
    void saveAnother(const QString &name) {
        run.samples.append({9, 9});
        save(name);
    }
};

TEST_F(ArchiveCheckTest, aFolderIsGoneThroughAndWhatIsNoChartFileOfTheArchivePassedOver) {
    RunningLogWriter log;
    ASSERT_TRUE(QDir().mkpath("log") && !log.write(run, "log", 1, 24));
    lay("log/renamed", content("log/Log00001.dat"));
    lay("log/Log00002.dat", flipped(whole, 20));
    lay("sub/.ostrel-17-0.tmp", whole.left(3000));
    ASSERT_TRUE(QFile::link(folder.path(), "sub/deep/loop.chd") && QFile::link("../run.chd", "sub/link.chd") &&
                QFile::link("none", "sub/dangling.chd") && QFile::link("none", "sub/dangling"));
    const QString expected = "./run.chd: whole\n"
                             "./sub/bad.chd: damaged at byte 0, in its head\n"
                             "./sub/dangling.chd: cannot be read: No such file or directory\n"
                             "./sub/deep/other.CHL: whole\n"
                             "./sub/link.chd: whole\n"
                             "./sub/renamed: whole\n"
                             "6 files: 4 whole, 2 damaged\n";
    for (const char *operands : {".", ". sub run.chd sub/deep/..//bad.chd"}) {
        EXPECT_EQ(call(QString("check ") + operands), Failed);
        EXPECT_EQ(words(), expected);
        EXPECT_EQ(complaint, "");
    }
    EXPECT_EQ(call("check log"), Good);
    EXPECT_EQ(said, "0 files: 0 whole, 0 damaged\n");
}

struct UnreadableFolder : FileOperations {
    UnreadableFolder() { standIn(this); }
    ~UnreadableFolder() override { standIn(nullptr); }
    int open(const char *path, int flags, mode_t mode) override {
        errno = EACCES;
        return QByteArray(path).endsWith("deep/") ? -1 : FileOperations::open(path, flags, mode);
    }
};

TEST_F(ArchiveCheckTest, whatCannotBeLookedAtIsToldAndIsAFailure) {
    QFile::remove("sub/bad.chd");
    {
        const UnreadableFolder disk;
        EXPECT_EQ(call("check --manifest list sub"), Failed);
    }
    EXPECT_EQ(complaint, "ostrel-file: sub/deep: cannot be read: Permission denied\n"
                         "ostrel-file: list: was not written, since not all files are whole and readable\n");
    EXPECT_EQ(words(), "sub/renamed: whole\n1 file: 1 whole, 0 damaged\n");
    ::close(::open("sub/Gr\xf6\xdf.chd", O_CREAT | O_WRONLY, 0600));
    EXPECT_EQ(call("check sub"), Failed);
    ::unlink("sub/Gr\xf6\xdf.chd");
    EXPECT_TRUE(complaint.contains("since its name is not UTF-8")) << complaint.toStdString();
}

TEST_F(ArchiveCheckTest, theAnswerForScriptsHasEveryFileAndItsFault) {
    EXPECT_EQ(call("check --json sub/bad.chd run.chd"), Failed);
    const QJsonObject answer = QJsonDocument::fromJson(said.toUtf8()).object();
    const QJsonArray files{
        QJsonObject{{"file", "run.chd"}, {"whole", true}, {"fault", QJsonValue()}},
        QJsonObject{{"file", "sub/bad.chd"}, {"whole", false}, {"fault", "damaged at byte 0, in its head"}}};
    EXPECT_EQ(answer, (QJsonObject{{"files", files}, {"whole", 1}, {"damaged", 1}})) << said.toStdString();
    listAll();
    saveAnother("run.chd");
    QFile::remove("sub/renamed");
    EXPECT_EQ(call("check --json --manifest list ."), Failed);
    const QJsonValue compared = QJsonDocument::fromJson(said.toUtf8()).object();
    EXPECT_TRUE(compared["changed"] == 1 && compared["missing"] == 1 && compared["new"] == 0 && compared["whole"] == 2);
    EXPECT_EQ(compared["files"][0]["manifest"], "changed since the manifest");
    EXPECT_EQ(compared["files"][1]["manifest"], QJsonValue());
    EXPECT_EQ(compared["files"][2]["fault"], "missing");
}

TEST_F(ArchiveCheckTest, whatHasChangedSinceTheManifestIsFoundAndTheManifestStays) {
    listAll();
    const QByteArray list = content("list");
    EXPECT_EQ(call("check --manifest list run.chd sub"), Good);
    EXPECT_TRUE(said.endsWith("3 files: 3 whole, 0 damaged; against the manifest: 0 changed, 0 missing, 0 new\n"));

    saveAnother("sub/new.chd");
    EXPECT_EQ(call("check --manifest list ."), Good);
    EXPECT_TRUE(said.contains("./sub/new.chd: not in the manifest; whole")) << said.toStdString();

    saveAnother("run.chd");
    lay("sub/renamed", "the mark is gone");
    ASSERT_TRUE(QDir("sub/deep").removeRecursively());
    EXPECT_EQ(call("check --manifest list ."), Failed);
    EXPECT_EQ(said, "./run.chd: changed since the manifest; whole, 2.01 minutes (0:02:00)\n"
                    "./sub/deep/other.CHL: missing\n"
                    "./sub/new.chd: not in the manifest; whole, 2.00 minutes (0:02:00)\n"
                    "./sub/renamed: not a chart file\n"
                    "3 files: 2 whole, 1 damaged; against the manifest: 1 changed, 1 missing, 1 new\n");
    EXPECT_EQ(call("check --manifest list sub/new.chd"), Good); // the others were not asked for
    EXPECT_EQ(content("list"), list);
}

TEST_F(ArchiveCheckTest, anotherProgramReadsTheManifestWhateverTheNames) {
    const QStringList odd{"a b", " c", "# d", "-e", "f\\g", "h\ni", "j\rk", "l\r", ":m", "n  o", "µß測", "\\p", "\"q'"};
    ASSERT_TRUE(QDir().mkpath("odd/lists") && QDir().mkpath("odd/runs\n1"));
    for (qint64 size = run.samples.size(); const QString &name : odd) {
        run.samples.append(std::vector<SamplePair>(static_cast<std::size_t>(size *= 2) / 32, {1, 2})); // up to 2.5 MB
        save("odd/runs\n1/" + name);
    }
    EXPECT_EQ(call("check --manifest odd/lists/list odd run.chd"), Good) << complaint.toStdString();
    const QByteArray list = content("odd/lists/list");
    QProcess other;
    other.setWorkingDirectory("odd/lists");
    other.start("sha256sum", {"--check", "--strict", "--quiet", "list"});
    EXPECT_TRUE(other.waitForFinished() && other.exitCode() == 0) << other.readAllStandardError().toStdString();

    ASSERT_TRUE(QDir().mkdir("moved") && QDir().rename("odd", "moved/odd") &&
                QFile::rename("run.chd", "moved/run.chd") && QFile::link("moved", "link"));
    EXPECT_EQ(call("check --manifest link/odd/lists/list moved"), Good) << said.toStdString();
    EXPECT_TRUE(said.contains("14 whole, 0 damaged; against the manifest: 0 changed, 0 missing, 0 new"));
    EXPECT_EQ(content("moved/odd/lists/list"), list);
}

TEST_F(ArchiveCheckTest, aManifestThatIsCutOrChangedAnywhereIsRefusedAndNothingElseIsEverOverwritten) {
    listAll();
    const QByteArray list = content("list");
    const auto refused = [&](const QByteArray &bytes, const char *why) {
        lay("list", bytes);
        EXPECT_EQ(call("check --manifest list ."), Failed) << bytes.toStdString();
        EXPECT_TRUE(said.isEmpty() && complaint.contains(why) && complaint.endsWith("; nothing was compared\n"))
            << complaint.toStdString();
        EXPECT_EQ(content("list"), bytes);
    };
    for (qsizetype size = 0; size < list.size(); ++size) {
        refused(list.left(size), size < 18 ? "something else" : "cut off or was changed");
        refused(flipped(list, size), size < 18 ? "something else" : "");
    }
    refused(list + '\n', "cut off or was changed");
    refused(QByteArray(list).replace("manifest 1:", "manifest 2:"), "newer version");
    refused("my own notes", "something else");
    refused(whole, "is a chart file");
    EXPECT_EQ(call("check --manifest run.chd ."), Misused);
    EXPECT_EQ(call("check --manifest sub ."), Failed);
    EXPECT_EQ(call("check --manifest none/list ."), Failed);
    EXPECT_EQ(content("run.chd"), whole);
    playCorpus<ManifestScenario>(MANIFEST_CORPUS);
}

TEST_F(ArchiveCheckTest, noFirstManifestIsMadeOfAnArchiveThatIsNotWholeNorHalfAManifest) {
    EXPECT_EQ(call("check --manifest list ."), Failed);
    EXPECT_TRUE(complaint.contains("list: was not written, since not all files are whole")) << complaint.toStdString();
    EXPECT_TRUE(said.endsWith("\n4 files: 3 whole, 1 damaged\n")) << said.toStdString();
    {
        const FullForWriting disk;
        EXPECT_EQ(call("check --manifest list run.chd"), Failed);
        EXPECT_TRUE(complaint.contains("list: cannot be written: No space left")) << complaint.toStdString();
    }
    ASSERT_TRUE(QDir().mkdir("empty"));
    EXPECT_EQ(call("check --manifest list empty"), Failed);
    EXPECT_EQ(names("."), "empty run.chd sub");
}

struct SlowFile : FileOperations {
    SlowFile() { standIn(this); }
    ~SlowFile() override { standIn(nullptr); }
    int open(const char *path, int flags, mode_t mode) override {
        if (QByteArray(path).endsWith("run00.chd"))
            QThread::msleep(700);
        return FileOperations::open(path, flags, mode);
    }
};

TEST_F(ArchiveCheckTest, resultsComeInOrderAndATerminalShowsHowFarTheCheckIs) {
    ASSERT_TRUE(QDir().mkdir("many"));
    QString expected;
    for (int i = 0; i < 40; ++i) {
        const QString name = QString("many/run%1.chd").arg(i, 2, 10, QLatin1Char('0'));
        lay(name, i % 2 == 0 ? whole : whole.left(3000));
        expected += name + (i % 2 == 0 ? ": whole\n" : ": cut off at byte 3000\n");
    }
    {
        const SlowFile disk;
        EXPECT_EQ(callAtTerminal("check many"), Failed);
    }
    EXPECT_EQ(words(), expected + "40 files: 20 whole, 20 damaged\n");
    EXPECT_TRUE(complaint.startsWith("0 of 40 files, 0 damaged\r")) << complaint.toStdString();
    EXPECT_TRUE(complaint.endsWith("\r\x1b[K")) << complaint.toStdString(); // and is taken away at the end
}

} // namespace
