// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

namespace ostrel {

/// A row of the contents: a topic, or a heading over those that follow, which has no page.
struct HelpTopic {
    static constexpr int noNumber = -1;

    int number = noNumber; ///< help context
    QString page;          ///< path of an HTML file
    QString title;
};

/// The table of topics, a UTF-8 text. A line holds a context number or "-", a page beside the table, and the title;
/// or "==" and a heading. Empty lines and those that begin with # say nothing.
class HelpTopics {
public:
    /// What cannot be read has no topics.
    explicit HelpTopics(const QString &HelpFile);

    const QString &file() const { return file_; }
    const std::vector<HelpTopic> &rows() const { return rows_; }
    /// The page of this context; that of context 0, the index, for a number that no topic has; else empty.
    QString pageOf(int HelpContextID) const;

private:
    QString file_;
    std::vector<HelpTopic> rows_;
};

/// A file's whole text as UTF-8; null when it cannot be read.
QString helpText(const QString &path);

} // namespace ostrel
