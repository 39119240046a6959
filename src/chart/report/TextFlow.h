// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QPainter>
#include <QSizeF>
#include <QTextLayout>
#include <QTextOption>

#include <memory>
#include <vector>

namespace ostrel {

/// Texts under headings, broken into lines and pages of one size. Long lines wrap, between words if possible; a heading
/// is never alone at the foot of a page. Lengths and the fonts' pixels are units of the painter.
class TextFlow {
public:
    TextFlow(const QSizeF &page, const QFont &headingFont) : page_(page), headingFont_(headingFont) {}

    /// Adds a section behind the last one. There is a tab stop at every eighth column, unless others are given. Returns
    /// the page of the heading, from 0.
    int add(const QString &heading, const QStringList &paragraphs, const QFont &font,
            const QList<QTextOption::Tab> &tabs = {});

    /// The height of the texts on their first page.
    double firstHeight() const;
    int pages() const { return lines_.empty() ? 0 : lines_.back().page + 1; }
    void paint(QPainter &painter, const QPointF &corner, int page) const;

private:
    struct Line {
        QTextLine text;
        int page;
        double y;
    };

    void addParagraph(const QString &text, const QFont &font, const QList<QTextOption::Tab> &tabs = {});
    void startPage();

    QSizeF page_;
    QFont headingFont_;
    std::vector<std::unique_ptr<QTextLayout>> layouts_;
    std::vector<Line> lines_;
    int current_ = 0; // page
    double y_ = 0;    // where the next line goes
};

} // namespace ostrel
