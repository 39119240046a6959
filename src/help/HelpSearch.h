// SPDX-License-Identifier: MIT
#pragma once

#include "help/HelpTopics.h"

#include <QStringList>

#include <array>
#include <cstddef>
#include <vector>

namespace ostrel {

/// Finds topics by words, the most fitting one first. The pages are read at the first search.
class HelpSearch {
public:
    /// The rows must outlive the search.
    explicit HelpSearch(const std::vector<HelpTopic> &rows) : rows_(rows) {}

    /// Indices of the rows that hold all the words; if none does, of those that hold some. A word in a title counts
    /// more than one in a heading, that more than one in the text, and a word that few pages have more than one that
    /// many have. Inside of another word it counts little.
    std::vector<std::size_t> find(const QStringList &words);

private:
    enum Place { Title, Heading, Text };
    using Page = std::array<QString, 3>; ///< its texts by their places

    static Page read(const HelpTopic &topic);
    static double fit(const Page &page, const QString &word);

    const std::vector<HelpTopic> &rows_;
    std::vector<Page> pages_;
};

} // namespace ostrel
