// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// The program's help: topics with numbers, and their index.
class HelpViewer {
public:
    virtual ~HelpViewer() = default;

    /// Shows the topic of this number above the window in front, modal or not. For 0 and for an unknown number it shows
    /// the index. Returns at once.
    virtual void showTopic(int HelpContextID) = 0;

    /// Path of the table of topics; the pages are in the same folder. While it is empty nothing is shown.
    QString HelpFile;
};

} // namespace ostrel
