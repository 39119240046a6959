// SPDX-License-Identifier: MIT
#include "help/HelpSearch.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

constexpr double weights[] = {9, 3, 1}; // of a word in a title, a heading, the text
constexpr double inside = 0.1;          // of a word, as "log" is in "dialog"
constexpr int enough = 20;              // places in one page: more do not make it fit better

struct Places {
    int words = 0; ///< where a word begins so
    int parts = 0; ///< inside of a word
};

Places count(const QString &text, const QString &word) {
    Places places;
    for (qsizetype at = text.indexOf(word, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(word, at + word.size(), Qt::CaseInsensitive))
        ++(at == 0 || !text[at - 1].isLetterOrNumber() || !word[0].isLetterOrNumber() ? places.words : places.parts);
    return places;
}

} // namespace

HelpSearch::Page HelpSearch::read(const HelpTopic &topic) {
    Page page;
    if (topic.page.isEmpty())
        return page;
    QTextDocument document;
    document.setHtml(helpText(topic.page));
    page[Title] = topic.title;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        page[level == 1 ? Title : level > 1 ? Heading : Text] += u' ' + block.text();
    }
    return page;
}

/// 0 when the page does not have the word. The best place decides; how often the word comes only orders pages that are
/// equal in this.
double HelpSearch::fit(const Page &page, const QString &word) {
    double best = 0;
    int all = 0;
    int parts = 0;
    for (const Place place : {Title, Heading, Text}) {
        const Places found = count(page[place], word);
        if (found.words > 0)
            best = std::max(best, weights[place]);
        all += found.words;
        parts += found.parts;
    }
    if (all == 0 && parts == 0)
        return 0;
    return std::max(best, inside) + double(std::min(all, enough)) / enough;
}

std::vector<std::size_t> HelpSearch::find(const QStringList &words) {
    if (pages_.empty())
        std::transform(rows_.begin(), rows_.end(), std::back_inserter(pages_), read);
    struct Find {
        std::size_t row = 0;
        int words = 0;
        double fits = 0;
    };
    std::vector<Find> finds;
    for (std::size_t row = 0; row < pages_.size(); ++row)
        finds.push_back({.row = row});
    for (const QString &word : words) {
        std::vector<double> fits;
        for (const Page &page : pages_)
            fits.push_back(fit(page, word));
        const auto have = std::count_if(fits.begin(), fits.end(), [](double fit) { return fit > 0; });
        const double rarity = 1 + std::log(double(pages_.size()) / double(std::max<std::ptrdiff_t>(have, 1)));
        for (std::size_t row = 0; row < fits.size(); ++row) {
            finds[row].words += fits[row] > 0 ? 1 : 0;
            finds[row].fits += rarity * fits[row];
        }
    }
    const auto most = std::max_element(finds.begin(), finds.end(),
                                       [](const Find &one, const Find &other) { return one.words < other.words; });
    const int least = most != finds.end() && most->words == words.size() ? most->words : 1;
    std::erase_if(finds, [least](const Find &find) { return find.words < least; });
    std::stable_sort(finds.begin(), finds.end(), [](const Find &one, const Find &other) {
        return one.words != other.words ? one.words > other.words : one.fits > other.fits;
    });
    std::vector<std::size_t> rows;
    std::transform(finds.begin(), finds.end(), std::back_inserter(rows), [](const Find &find) { return find.row; });
    return rows;
}

} // namespace ostrel
