// SPDX-License-Identifier: MIT
#pragma once

#include "chart/run/ChartData.h"
#include "chart/table/ExportRows.h"

#include <vector>

namespace ostrel {

/// The labels of marks by the rows of a table, taken one row after the other. `rows` must live as long.
class RowLabels {
public:
    explicit RowLabels(const ExportRows &rows) : rows_(rows) {}

    /// Adds the marks from `from` to `to`, in minutes, before any is taken.
    void add(const std::vector<EventMark> &marks, float from, float to);

    /// The next row with labels; the number of rows when none is left.
    qint64 row() const { return next_ < marks_.size() ? row_ : rows_.count(); }
    /// The labels of that row in the order of their times, " & " between them.
    QString take();
    /// When all rows are written: the next mark behind the last row; null for none.
    const EventMark *takeLate() { return next_ < marks_.size() ? marks_[next_++] : nullptr; }

private:
    void findRow() { row_ = next_ < marks_.size() ? rows_.rowOf(marks_[next_]->time) : rows_.count(); }

    const ExportRows &rows_;
    std::vector<const EventMark *> marks_; // in the order of their times
    std::size_t next_ = 0;
    qint64 row_ = 0; // of the next one
};

} // namespace ostrel
