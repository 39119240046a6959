// SPDX-License-Identifier: MIT
#include "chart/table/RowLabels.h"

#include <QStringList>

#include <algorithm>

namespace ostrel {

void RowLabels::add(const std::vector<EventMark> &marks, float from, float to) {
    for (const EventMark &mark : marks) {
        if (mark.time >= from && mark.time <= to)
            marks_.push_back(&mark);
    }
    std::stable_sort(marks_.begin(), marks_.end(),
                     [](const EventMark *a, const EventMark *b) { return a->time < b->time; });
    findRow();
}

QString RowLabels::take() {
    QStringList labels;
    for (const qint64 row = row_; next_ < marks_.size() && row == row_; findRow())
        labels << marks_[next_++]->label;
    return labels.join(QStringLiteral(" & "));
}

} // namespace ostrel
