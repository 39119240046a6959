// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "files/FileOperations.h"

#include <QDateTime>

#include <system_error>

namespace ostrel {

enum class MethodPosition { BeforeData, AfterData, SeparateColumn };

/// What goes into a text file for a spreadsheet.
struct ExportOptions {
    bool uv = true;
    bool cond = true;
    bool events = true;
    bool notes = true;
    bool method = true;
    MethodPosition position = MethodPosition::BeforeData;
    float from = 0; ///< minutes; both ends are included
    float to = 0;
    float sampleRate = 5;    ///< points a second
    qint32 pointCount = 0;   ///< the rows that the operator was shown; none when it is not above 0
    QString sourceFile = {}; ///< where the run comes from; may be empty
    QDateTime exported = {}; ///< as told in the file
};

/// Writes a run as a table: docs/text-export.md. On an error (errno) the old file is unchanged.
std::error_code exportText(const QString &path, const ChartData &data, const ExportOptions &options,
                           FileOperations &operations = FileOperations::system());

} // namespace ostrel
