// SPDX-License-Identifier: MIT
#include "chart/report/ReportPages.h"

#include "chart/plot/ChartPicture.h"
#include "chart/report/TextFlow.h"
#include "chart/run/IsoDate.h"
#include "chart/run/TextLines.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>

namespace ostrel {

namespace {

// Lengths are points, 72 to an inch, unless a name tells otherwise.
constexpr double leastMargin = 34; // 12 mm from the paper's edge
constexpr double widestText = 510; // 18 cm: longer lines are hard to follow
constexpr double lineGap = 4;
constexpr double ruleWidth = 0.5;
constexpr double highestTitle = 60;  // three lines
constexpr double chartPixel = 0.75;  // a logical pixel of the chart's layout
constexpr double columnsToPixel = 4; // of a trace, 400 to an inch: finer than its pen

enum TraceFlag { EventsFlag = 1, CondFlag = 2, UvFlag = 4 };

/// A font without the rounding for a screen's pixels.
QFont paperFont(QFont font, double points, QFont::Weight weight = QFont::Normal) {
    font.setPixelSize(qRound(points));
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QFont textFont(double points, QFont::Weight weight = QFont::Normal) {
    return paperFont(QGuiApplication::font(), points, weight);
}

QFont methodFont() { return paperFont(QFontDatabase::systemFont(QFontDatabase::FixedFont), 9); }

double heightOf(const QFont &font) { return QFontMetricsF(font).height(); }

/// The area to paint on, in points from the painter's origin: what the device can print on, at least the least margin
/// away from the paper's edge.
QRectF pageOf(const QPagedPaintDevice &device) {
    const QPageLayout layout = device.pageLayout();
    const QRectF printable = layout.paintRect(QPageLayout::Point);
    const QRectF paper = layout.fullRect(QPageLayout::Point);
    return paper.adjusted(leastMargin, leastMargin, -leastMargin, -leastMargin)
        .intersected(printable)
        .translated(-printable.topLeft());
}

TextFlow titleFor(const QString &text, double width) {
    TextFlow title({width, highestTitle}, textFont(14, QFont::DemiBold));
    title.add(linesOf(text).join(QLatin1Char(' ')), {}, {});
    return title;
}

/// An axis without its trace is grey.
PlotTheme themeFor(qint32 traceFlags) {
    PlotTheme theme = PlotTheme::paper();
    if ((traceFlags & UvFlag) == 0)
        theme.uv = theme.axis;
    if ((traceFlags & CondFlag) == 0)
        theme.cond = theme.axis;
    return theme;
}

class Report {
public:
    Report(QPagedPaintDevice &device, const ReportContents &contents, const ReportOptions &options)
        : device_(device), contents_(contents), options_(options), page_(pageOf(device)),
          title_(titleFor(contents.data.title, page_.width())),
          texts_(textArea().size(), textFont(12, QFont::DemiBold)) {
        addTexts();
    }

    bool paint() {
        const int pages = (options_.chromatogram ? 1 : 0) + texts_.pages();
        if (pages == 0)
            return true;
        if (!painter_.begin(&device_))
            return false;
        for (int page = 0; page < pages; ++page) {
            if (page > 0 && !device_.newPage())
                return false;
            painter_.save();
            painter_.scale(device_.logicalDpiX() / 72.0, device_.logicalDpiY() / 72.0);
            paintFrame(page, pages);
            if (options_.chromatogram && page == 0)
                paintChart();
            else
                texts_.paint(painter_, textArea().topLeft(), page - (options_.chromatogram ? 1 : 0));
            painter_.restore();
        }
        return painter_.end();
    }

private:
    void addTexts() {
        const QStringList method = options_.method ? methodLines(contents_.data.methodTexts) : QStringList();
        const QStringList notes = options_.notes ? linesOf(contents_.data.notes) : QStringList();
        if (options_.chromatogram && method.isEmpty() && notes.isEmpty())
            return;
        const auto orNone = [](const QStringList &lines) {
            return lines.isEmpty() ? QStringList{QStringLiteral("None")} : lines;
        };
        if (options_.method)
            texts_.add(QStringLiteral("Method"), orNone(method), methodFont());
        if (options_.notes)
            texts_.add(QStringLiteral("Notes"), orNone(notes), textFont(10));
    }

    double titleHeight() const { return title_.firstHeight(); }
    double headHeight() const { return titleHeight() + heightOf(smallFont_) + 3 * lineGap; }
    double footHeight() const { return heightOf(smallFont_) + 3 * lineGap; }
    QRectF body() const { return page_.adjusted(0, headHeight(), 0, -footHeight()); }
    QRectF textArea() const {
        QRectF area = body().adjusted(0, lineGap, 0, 0);
        area.setWidth(std::min(area.width(), widestText));
        return area;
    }

    /// Paints the frame of each page: title and file above, date and page number below.
    void paintFrame(int page, int pages) {
        painter_.setPen(theme_.text);
        title_.paint(painter_, page_.topLeft(), 0);
        paintText(smallFont_, page_.top() + titleHeight() + lineGap, contents_.sourceFile, Qt::AlignLeft,
                  Qt::ElideMiddle);
        painter_.fillRect(QRectF(page_.left(), body().top() - lineGap, page_.width(), ruleWidth), theme_.axis);
        const double foot = page_.bottom() - heightOf(smallFont_);
        paintText(smallFont_, foot, QStringLiteral("Printed ") + isoDate(contents_.printed), Qt::AlignLeft,
                  Qt::ElideRight);
        paintText(smallFont_, foot, QStringLiteral("Page %1 of %2").arg(page + 1).arg(pages), Qt::AlignRight,
                  Qt::ElideRight);
    }

    void paintText(const QFont &font, double top, const QString &text, Qt::Alignment side, Qt::TextElideMode elide) {
        const QString line = linesOf(text).join(QLatin1Char(' '));
        painter_.setFont(font);
        painter_.setPen(theme_.text);
        painter_.drawText(QRectF(page_.left(), top, page_.width(), heightOf(font)), side | Qt::TextSingleLine,
                          QFontMetricsF(font).elidedText(line, elide, page_.width()));
    }

    void paintChart() {
        const QRectF area = body();
        painter_.save();
        painter_.translate(area.topLeft());
        painter_.scale(chartPixel, chartPixel);
        const double pixelRatio = device_.logicalDpiX() / 72.0 * chartPixel;
        const PlotLayout layout = PlotLayout::of(area.size() / chartPixel, pixelRatio, contents_.axes,
                                                 textFont(9 / chartPixel), std::nullopt);
        const auto has = [&](TraceFlag flag) { return (options_.traceFlags & flag) != 0; };
        ostrel::paintChart(painter_, contents_.data, layout, theme_,
                           {.uv = has(UvFlag), .cond = has(CondFlag), .marks = has(EventsFlag)}, columnsToPixel);
        painter_.restore();
    }

    QPagedPaintDevice &device_;
    const ReportContents &contents_;
    const ReportOptions &options_;
    const PlotTheme theme_ = themeFor(options_.traceFlags);
    const QFont smallFont_ = textFont(9);
    const QRectF page_;
    TextFlow title_;
    TextFlow texts_;
    QPainter painter_;
};

} // namespace

bool paintReport(QPagedPaintDevice &device, const ReportContents &contents, const ReportOptions &options) {
    return Report(device, contents, options).paint();
}

} // namespace ostrel
