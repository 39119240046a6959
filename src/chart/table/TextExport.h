// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "files/FileOperations.h"

#include <QDateTime>

#include <system_error>

namespace ostrel {

enum class MethodPosition { BeforeData, AfterData, SeparateColumn };

/// The contents of a text file for a spreadsheet.
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
    qint32 pointCount = 0;   ///< the number of rows shown to the operator; no rows unless above 0
    QString sourceFile = {}; ///< the run's file; may be empty
    QDateTime exported = {}; ///< the time that is written to the file
};

/// Writes a run as a table: docs/text-export.md. On an error (errno) the path has the old file or the whole new one.
std::error_code exportText(const QString &path, const ChartData &data, const ExportOptions &options,
                           FileOperations &operations = FileOperations::system());

} // namespace ostrel
