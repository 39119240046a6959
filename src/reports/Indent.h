// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QStyle>

namespace ostrel {

/// How far controls that depend on a box are indented below it: under the box's caption.
inline int indentOf(const QCheckBox &box) {
    const QStyle &style = *box.style();
    return style.pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &box) +
           style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, &box);
}

} // namespace ostrel
