// SPDX-License-Identifier: MIT
#include "chart/report/TextFlow.h"

#include <QFontMetricsF>

namespace ostrel {

namespace {

constexpr double lineSpacing = 1.15;
constexpr int linesWithHeading = 3; // at least so many follow the heading on its page
constexpr int columnsToTab = 8;

} // namespace

int TextFlow::add(const QString &heading, const QStringList &paragraphs, const QFont &font,
                  const QList<QTextOption::Tab> &tabs) {
    const double headingHeight = QFontMetricsF(headingFont_).height() * lineSpacing;
    const double together = headingHeight + linesWithHeading * QFontMetricsF(font).height() * lineSpacing;
    if (y_ > 0)
        y_ += headingHeight;
    if (y_ + together > page_.height())
        startPage();
    addParagraph(heading, headingFont_);
    const int page = current_;
    y_ += headingHeight / 4;
    for (const QString &paragraph : paragraphs)
        addParagraph(paragraph, font, tabs);
    return page;
}

void TextFlow::addParagraph(const QString &text, const QFont &font, const QList<QTextOption::Tab> &tabs) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTabStopDistance(columnsToTab * QFontMetricsF(font).horizontalAdvance(QLatin1Char(' ')));
    option.setTabs(tabs);
    QTextLayout &layout = *layouts_.emplace_back(std::make_unique<QTextLayout>(text, font));
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(page_.width());
        if (y_ > 0 && y_ + line.height() > page_.height())
            startPage();
        lines_.push_back({line, current_, y_});
        y_ += line.height() * lineSpacing;
    }
    layout.endLayout();
}

void TextFlow::startPage() {
    if (y_ > 0)
        ++current_;
    y_ = 0;
}

double TextFlow::firstHeight() const {
    double height = 0;
    for (const Line &line : lines_) {
        if (line.page == 0)
            height = line.y + line.text.height();
    }
    return height;
}

void TextFlow::paint(QPainter &painter, const QPointF &corner, int page) const {
    for (const Line &line : lines_) {
        if (line.page == page)
            line.text.draw(&painter, corner + QPointF(0, line.y));
    }
}

} // namespace ostrel
