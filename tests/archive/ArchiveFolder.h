// SPDX-License-Identifier: MIT
#pragma once

#include "archive/OstrelFile.h"
#include "base/EarlyEnd.h"
#include "chart/RunFiles.h"
#include "chart/files/ChartFile.h"

#include <cmath>

/// A folder with runs, in which the program is called.
class ArchiveFolder : public testing::Test {
protected:
    ArchiveFolder() { QDir::setCurrent(folder.path()); }

    void save(const QString &name) const { EXPECT_FALSE(saveChartFile(name, dataFile, run, axes)); }
    int call(const QString &line, bool watched = false) {
        said.clear();
        complaint.clear();
        QTextStream out(&said);
        QTextStream complaints(&complaint);
        return ostrelFile(QStringList{"ostrel-file"} + line.split(' '), out, complaints, watched);
    }

    /// No text of a run may go through a file of another kind as it is.
    const QString hostile = QString("=1+1\t\"a\",b;\r\nc\n") + QChar(0) + QChar(0x1b) + QChar(0x85) + QChar(0x2028) +
                            QChar(0xd800) + "<&>" + QChar(0xfffe) + "é" + QChar(0xdc00);

    QTemporaryDir folder;
    ChartData run;
    AxisValues axes;
    QString said;
    QString complaint;
};
