// SPDX-License-Identifier: MIT
#pragma once

#include "archive/ArchiveCommand.h"
#include "archive/OstrelFile.h"
#include "chart/RunFiles.h"
#include "chart/files/ChartFile.h"

#include <QProcess>

/// An archive of one run of two minutes, with a mark and a method. The program is called in its folder.
class ArchiveFixture : public testing::Test {
protected:
    ArchiveFixture() {
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
        return call("check " + name) == Good && said.contains(": whole, 2.00 minutes (0:02:00)\n");
    }

    QTemporaryDir archive;
    ChartData run;
    QByteArray whole; ///< the run's file
    QString said;
    QString complaint;
};
