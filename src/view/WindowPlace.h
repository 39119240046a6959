// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SettingsStore.h"
#include "platform/Timer.h"

#include <QRect>
#include <QWidget>

#include <memory>

namespace ostrel {

/// Keeps size and place of the main window from one start to the next, in the section "Window" of the settings store.
/// Each of several copies has a row of its own there. A store that cannot be read or written changes nothing else.
class WindowPlace {
public:
    /// A change is written once the timer has run down, so a window that is being dragged is written once.
    WindowPlace(QWidget &window, SettingsStore &store, std::unique_ptr<Timer> timer);

    /// Brings the window, which has its first size and is not shown yet, to where this copy's was left. At a first
    /// start it comes to the middle of the screen. Copies are counted from 1.
    void restore(int copy);
    /// The window is up: from now on its changes are kept.
    void follow();
    /// The window was moved, resized, maximised.
    void changed();
    /// Writes a change that is not written yet.
    void keep();

private:
    struct Place {
        QRect normal; ///< left and top of the desktop's frame, width and height without it; while it is not maximised
        bool maximised = false;

        bool operator==(const Place &) const = default;
    };

    static bool read(const QString &text, Place &place);
    static QString textOf(const Place &place);
    void look();

    QWidget &window_;
    SettingsStore &store_;
    std::unique_ptr<Timer> timer_;
    int copy_ = 1;
    bool following_ = false;
    Place now_;
    Place kept_;
};

} // namespace ostrel
