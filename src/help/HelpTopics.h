// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

namespace ostrel {

/// A row of the contents: a topic, or a heading without a page, which stands above its topics.
struct HelpTopic {
    static constexpr int noNumber = -1;

    int number = noNumber; ///< help context
    QString page;          ///< path of an HTML file
    QString title;
};

/// The table of topics, a UTF-8 text. A line holds a context number or "-", a page in the folder of the table, and the
/// title; or "==" and a heading. Empty lines and lines with # are skipped.
class HelpTopics {
public:
    /// A file that cannot be read gives no topics.
    explicit HelpTopics(const QString &HelpFile);

    const QString &file() const { return file_; }
    const std::vector<HelpTopic> &rows() const { return rows_; }
    /// The page of this context; for an unknown number that of context 0, the index; empty when there is no index.
    QString pageOf(int HelpContextID) const;

private:
    QString file_;
    std::vector<HelpTopic> rows_;
};

/// A file's whole text as UTF-8; null when it cannot be read.
QString helpText(const QString &path);

} // namespace ostrel
