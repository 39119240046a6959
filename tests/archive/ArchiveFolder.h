// SPDX-License-Identifier: MIT
#pragma once

#include "archive/OstrelFile.h"
#include "base/EarlyEnd.h"
#include "chart/RunFiles.h"
#include "chart/files/ChartFile.h"

#include <QProcess>
#include <fcntl.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>

/// A folder for runs, in which the program is called.
class ArchiveFolder : public testing::Test {
protected:
    ArchiveFolder() { QDir::setCurrent(folder.path()); }

    void save(const QString &name) const { EXPECT_FALSE(saveChartFile(name, dataFile, run, axes)); }
    int call(const QString &line) { return call(line.split(' ')); }
    int call(const QStringList &arguments) {
        complaint.clear();
        QTextStream complaints(&complaint);
        return call(arguments, complaints);
    }
    /// The program as shipped: its exit code and what it complains of.
    static std::string callByShell(const QString &before, const QString &arguments) {
        QProcess shell;
        shell.start("sh", {"-c", before + OSTREL_FILE " " + arguments});
        EXPECT_TRUE(shell.waitForFinished());
        return std::to_string(shell.exitCode()) + ": " + shell.readAllStandardError().toStdString();
    }
    /// With a terminal for the complaints; what that shows goes into `complaint`.
    int callAtTerminal(const QString &line) {
        const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
        EXPECT_TRUE(terminal >= 0 && ::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
        int code = 0;
        {
            QFile screen;
            EXPECT_TRUE(screen.open(::open(::ptsname(terminal), O_RDWR | O_NOCTTY), QIODevice::WriteOnly,
                                    QFileDevice::AutoCloseHandle));
            QTextStream complaints(&screen);
            code = call(line.split(' '), complaints);
        }
        complaint.clear();
        for (char c = 0; ::read(terminal, &c, 1) == 1;) // up to the end of the terminal
            complaint += QLatin1Char(c);
        ::close(terminal);
        return code;
    }

    /// No text of a run may go through a file of another kind as it is.
    const QString hostile = QString("=1+1\t\"a\",b;\r\nc\n") + QChar(0) + QChar(0x1b) + QChar(0x85) + QChar(0x2028) +
                            QChar(0xd800) + "<&>" + QChar(0xfffe) + "é" + QChar(0xdc00);

    QTemporaryDir folder;
    ChartData run;
    AxisValues axes;
    QString said;
    QString complaint;

private:
    int call(const QStringList &arguments, QTextStream &complaints) {
        said.clear();
        QTextStream out(&said);
        return ostrelFile(QStringList{"ostrel-file"} + arguments, out, complaints);
    }
};

/// With one run of two minutes, with a mark and a method.
class ArchiveOfOne : public ArchiveFolder {
protected:
    ArchiveOfOne() {
        for (int i = 0; i <= 600; ++i)
            run.samples.append({static_cast<float>(i) / 1000, 20});
        run.marks.push_back({"S", 0xff, 10, 0.5F});
        run.methodTexts.push_back({"Load\r\nWash\r\n", 0.1F});
        run.title = "Größe";
        save("run.chd");
        whole = content("run.chd");
    }
    bool holdsTheRun(const QString &name) {
        return call("check " + name) == Good && said.contains(": whole, 2.00 minutes (0:02:00)\n");
    }

    QByteArray whole; ///< the run's file
};
