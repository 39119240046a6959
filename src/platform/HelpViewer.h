// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace ostrel {

/// The program's help: topics with numbers, and their index.
class HelpViewer {
public:
    virtual ~HelpViewer() = default;

    /// Brings up the topic of this number, over whatever window is in front, modal or not; the index for 0 and for a
    /// number that no topic has. Returns at once.
    virtual void showTopic(int HelpContextID) = 0;

    /// Path of the table of topics; the pages are in the same folder. While it is empty nothing is shown.
    QString HelpFile;
};

} // namespace ostrel
