// SPDX-License-Identifier: MIT
#pragma once

#include "base/Guard.h"
#include "chart/Quillchart.h"
#include "platform/CommonDialog.h"
#include "platform/Prompts.h"

#include <QMenu>

namespace ostrel {

/// The ways out of a chart in its context menu: its picture and its values, into the clipboard or into a file.
class ChartMenu {
public:
    /// `guard` wraps what the items do.
    ChartMenu(CommonDialog &ComDlg, Prompts &prompts, Guard guard);

    void addTo(QMenu &menu, Quillchart &chart);

private:
    void add(QMenu &menu, const char *name, const char *caption, std::function<void()> act);
    void copyPicture(const Quillchart &chart) const;
    void copyValues(const Quillchart &chart) const;
    void savePicture(const Quillchart &chart, const QString &extension, const QString &filter,
                     QByteArray (*encoded)(const Quillchart &chart));

    CommonDialog &ComDlg_;
    Prompts &prompts_;
    Guard guard_;
};

} // namespace ostrel
