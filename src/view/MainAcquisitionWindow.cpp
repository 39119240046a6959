// SPDX-License-Identifier: MIT
#include "view/MainAcquisitionWindow.h"

#include <QScopedValueRollback>

#include <utility>

namespace ostrel {

MainAcquisitionWindow::MainAcquisitionWindow(CommandStates &states, LiveView &live, const Commands &commands,
                                             WindowActs window)
    : states_(states), live_(live), commands_(commands), window_(std::move(window)) {}

void MainAcquisitionWindow::showNoData() {
    // The link can come back and be lost again while the dialog is open. When the operator has opened something from
    // the dialog, it is shown anew over that, since nothing else would report the second loss.
    if (noDataUp_)
        return;
    switch (askNoData()) {
    case NoDataAnswer::Ok:
        break;
    case NoDataAnswer::Setup:
        commands_.run(QStringLiteral("mnuComPort"));
        break;
    case NoDataAnswer::Exit:
        commands_.run(QStringLiteral("mnuExit"));
        break;
    }
}

NoDataAnswer MainAcquisitionWindow::askNoData() {
    const QScopedValueRollback<bool> up(noDataUp_, true);
    return window_.askNoData();
}

} // namespace ostrel
