// SPDX-License-Identifier: MIT
#include "chart/report/ReportPages.h"

#include "chart/plot/ChartPicture.h"
#include "chart/report/TextFlow.h"
#include "chart/run/IsoDate.h"
#include "chart/run/PlainLocale.h"
#include "chart/run/TextLines.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>

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
constexpr double factWidth = 84;     // of a fact's name
constexpr int identityShown = 8;     // digits

enum TraceFlag { EventsFlag = 1, CondFlag = 2, UvFlag = 4 };

/// A font without the rounding for a screen's pixels. What is copied from a document must not have ligatures; letters
/// that are set apart have none.
QFont paperFont(QFont font, double points, QFont::Weight weight = QFont::Normal) {
    constexpr double apart = 0.02; // the least that counts
    font.setLetterSpacing(QFont::AbsoluteSpacing, apart);
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
QRectF pageOf(const QPageLayout &layout) {
    const QRectF printable = layout.paintRect(QPageLayout::Point);
    const QRectF paper = layout.fullRect(QPageLayout::Point);
    return paper.adjusted(leastMargin, leastMargin, -leastMargin, -leastMargin)
        .intersected(printable)
        .translated(-printable.topLeft());
}

QPageLayout upright(QPageLayout layout) {
    layout.setOrientation(QPageLayout::Portrait);
    return layout;
}

TextFlow titleOf(const QString &text, double width) {
    TextFlow title({width, highestTitle}, textFont(14, QFont::DemiBold));
    title.add(text, {}, {});
    return title;
}

/// In three lines at most; a longer one ends in dots.
TextFlow titleFor(const QString &text, double width) {
    const QString whole = oneLine(text);
    if (TextFlow title = titleOf(whole, width); title.pages() <= 1)
        return title;
    const auto cut = [&](qsizetype letters) { return titleOf(whole.left(letters) + QChar(0x2026), width); };
    qsizetype fits = 0;
    for (qsizetype tooLong = whole.size(); tooLong - fits > 1;) {
        const qsizetype middle = (fits + tooLong) / 2;
        (cut(middle).pages() > 1 ? tooLong : fits) = middle;
    }
    return cut(fits);
}

QString number(double value, int decimals) {
    return std::isfinite(value) ? plainLocale().toString(value, 'f', decimals) : QString(QChar(0x2013));
}

struct Fact {
    QString name;
    QString value;
};

QString stretchesOf(const Provenance &provenance) {
    const auto stretches = provenance.stretches.size();
    return stretches > 1 ? QStringLiteral(", in %1 stretches").arg(stretches) : QString();
}

/// Where the run comes from, as far as it is known, and what is printed of it.
std::vector<Fact> factsOf(const ReportContents &contents) {
    const ChartData &run = contents.data;
    const Provenance &provenance = run.provenance;
    std::vector<Fact> facts;
    const auto add = [&](const char *name, const QString &value) {
        if (!value.isEmpty())
            facts.push_back({QLatin1String(name), oneLine(value)});
    };
    add("System", provenance.system);
    if (provenance.begun().isValid())
        add("Recorded from", isoDate(provenance.begun()));
    if (provenance.ended().isValid())
        add("Recorded to", isoDate(provenance.ended()) + stretchesOf(provenance));
    for (const Provenance::ClockStep &step : provenance.clockSteps)
        add("Clock set", QStringLiteral("by %1 s at minute %2").arg(number(step.seconds, 1), number(step.minutes, 2)));
    add("Recorded by", provenance.program);
    if (provenance.parent)
        add("Stretch", QStringLiteral("minutes %1 to %2 of run %3")
                           .arg(number(provenance.parent->from, 2), number(provenance.parent->to, 2),
                                provenance.parent->identity.left(identityShown)));
    const QString size = QStringLiteral("%1 samples, %2 min").arg(run.samples.size()).arg(number(run.lastTime(), 2));
    add("Data", size + QStringLiteral(", CRC-32 %1").arg(contents.dataSum, 8, 16, QLatin1Char('0')));
    const AxisValues &axes = contents.axes;
    if (axes.timeMin > 0 || axes.timeMax < run.lastTime())
        add("Shown", QStringLiteral("minutes %1 to %2").arg(number(axes.timeMin, 2), number(axes.timeMax, 2)));
    add("File", contents.sourceFile.isEmpty() ? QStringLiteral("none") : contents.sourceFile);
    add("Not saved", contents.unsaved);
    return facts;
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

} // namespace

class Report::Pages {
public:
    Pages(const QPageLayout &paper, const ReportContents &contents, const ReportOptions &options)
        : sheet_(options.chromatogram ? paper : upright(paper)), contents_(contents), options_(options),
          facts_(factsOf(contents)), title_(titleFor(contents.data.title, pageOf(sheet_).width())),
          texts_(textArea().size(), textFont(12, QFont::DemiBold)) {
        if (options_.chromatogram)
            parts_.push_back({QStringLiteral("Chromatogram"), 0});
        addTexts();
    }

    const std::vector<Part> &parts() const { return parts_; }
    int count() const { return chartPages() + texts_.pages(); }

    bool paint(QPagedPaintDevice &device) {
        if (count() == 0)
            return true;
        device.setPageLayout(sheet_);
        if (!painter_.begin(&device))
            return false;
        for (int page = 0; page < count(); ++page) {
            if (page > 0) {
                device.setPageLayout(upright(sheet_));
                if (!device.newPage())
                    return false;
            }
            painter_.save();
            painter_.scale(device.logicalDpiX() / 72.0, device.logicalDpiY() / 72.0);
            page_ = pageOf(device.pageLayout());
            paintFrame(page);
            if (page < chartPages())
                paintChart(device.logicalDpiX() / 72.0);
            else
                texts_.paint(painter_, textArea().topLeft(), page - chartPages());
            painter_.restore();
        }
        return painter_.end();
    }

private:
    int chartPages() const { return options_.chromatogram ? 1 : 0; }

    void addTexts() {
        const bool events = options_.chromatogram && (options_.traceFlags & EventsFlag) != 0;
        const QStringList method = options_.method ? methodLines(contents_.data.methodTexts) : QStringList();
        const QStringList notes = options_.notes ? linesOf(contents_.data.notes) : QStringList();
        const bool texts = !options_.chromatogram || !method.isEmpty() || !notes.isEmpty();
        const auto orNone = [](const QStringList &lines) {
            return lines.isEmpty() ? QStringList{QStringLiteral("None")} : lines;
        };
        if (!options_.chromatogram && (options_.method || options_.notes))
            addFacts();
        if (events && !contents_.data.marks.empty())
            addMarks();
        if (texts && options_.method)
            addText(QStringLiteral("Method"), orNone(method), methodFont());
        if (texts && options_.notes)
            addText(QStringLiteral("Notes"), orNone(notes), textFont(10));
    }

    void addText(const QString &heading, const QStringList &lines, const QFont &font,
                 const QList<QTextOption::Tab> &tabs = {}) {
        parts_.push_back({heading, chartPages() + texts_.add(heading, lines, font, tabs)});
    }

    void addFacts() {
        QStringList lines;
        for (const Fact &fact : facts_)
            lines << fact.name + QLatin1Char('\t') + fact.value;
        addText(QStringLiteral("Run"), lines, smallFont_, {{factWidth, QTextOption::LeftTab}});
    }

    /// The marks with the values of their samples.
    void addMarks() {
        QStringList lines{QStringLiteral("\tTime (min)\tUV (AU)\tConductivity (mS/cm)\tMark")};
        const SampleStore &samples = contents_.data.samples;
        for (const EventMark &mark : contents_.data.marks) {
            const double place = std::round(double(mark.time) * samplesPerMinute);
            const bool known = place >= 0 && place < static_cast<double>(samples.size());
            const SamplePair pair = known ? samples.at(static_cast<qint64>(place)) : SamplePair{NAN, NAN};
            const QString label = oneLine(mark.label);
            lines << QStringLiteral("\t%1\t%2\t%3\t")
                             .arg(number(mark.time, 3), number(pair.uv, 4), number(pair.cond, 2)) +
                         label;
        }
        using Tab = QTextOption::Tab;
        addText(QStringLiteral("Event marks"), lines, smallFont_,
                {Tab(60, QTextOption::RightTab), Tab(130, QTextOption::RightTab), Tab(250, QTextOption::RightTab),
                 Tab(270, QTextOption::LeftTab)});
    }

    double lineHeight() const { return heightOf(smallFont_); }
    /// Above the chromatogram stand the title and the facts in two columns, above the texts a line.
    std::size_t factLines() const { return std::max<std::size_t>(1, (facts_.size() + 1) / 2); }
    double headHeight(int page) const {
        const bool first = page == 0;
        const double title = first ? title_.firstHeight() : lineHeight();
        return title +
               (first && options_.chromatogram ? static_cast<double>(factLines()) * lineHeight() + lineGap : 0) +
               2 * lineGap;
    }
    double footHeight() const { return lineHeight() + 3 * lineGap; }
    QRectF body(int page) const { return page_.adjusted(0, headHeight(page), 0, -footHeight()); }
    QRectF textArea() const {
        const QRectF page = pageOf(upright(sheet_));
        const double head = options_.chromatogram ? lineHeight() : std::max(lineHeight(), title_.firstHeight());
        QRectF area = page.adjusted(0, head + 3 * lineGap, 0, -footHeight());
        area.setWidth(std::min(area.width(), widestText));
        return area;
    }

    /// Paints the frame of each page: title and facts above, date and page number below.
    void paintFrame(int page) {
        painter_.setPen(theme_.text);
        if (page == 0) {
            title_.paint(painter_, page_.topLeft(), 0);
            if (options_.chromatogram)
                paintFacts(page_.top() + title_.firstHeight() + lineGap);
        } else {
            paintText(smallFont_, page_.left(), page_.top(), page_.width(), contents_.data.title, Qt::AlignLeft);
        }
        painter_.fillRect(QRectF(page_.left(), body(page).top() - lineGap, page_.width(), ruleWidth), theme_.axis);
        const double foot = page_.bottom() - lineHeight();
        paintText(smallFont_, page_.left(), foot, page_.width(),
                  QStringLiteral("Printed ") + isoDate(contents_.printed), Qt::AlignLeft);
        paintText(smallFont_, page_.left(), foot, page_.width(),
                  QStringLiteral("Page %1 of %2").arg(page + 1).arg(count()), Qt::AlignRight);
    }

    void paintFacts(double top) {
        const double column = page_.width() / 2;
        const std::size_t rows = factLines();
        for (std::size_t i = 0; i < facts_.size(); ++i) {
            const double left = page_.left() + (i < rows ? 0 : column);
            const double y = top + static_cast<double>(i % rows) * lineHeight();
            paintText(factFont_, left, y, factWidth, facts_[i].name, Qt::AlignLeft);
            paintText(smallFont_, left + factWidth, y, column - factWidth - lineGap, facts_[i].value, Qt::AlignLeft,
                      Qt::ElideMiddle);
        }
    }

    void paintText(const QFont &font, double left, double top, double width, const QString &text, Qt::Alignment side,
                   Qt::TextElideMode elide = Qt::ElideRight) {
        const QString line = oneLine(text);
        painter_.setFont(font);
        painter_.setPen(theme_.text);
        painter_.drawText(QRectF(left, top, width, heightOf(font)), side | Qt::TextSingleLine,
                          QFontMetricsF(font).elidedText(line, elide, width));
    }

    void paintChart(double scale) {
        const QRectF area = body(0);
        painter_.save();
        painter_.translate(area.topLeft());
        painter_.scale(chartPixel, chartPixel);
        const PlotLayout layout = PlotLayout::of(area.size() / chartPixel, scale * chartPixel, contents_.axes,
                                                 textFont(9 / chartPixel), std::nullopt);
        const auto has = [&](TraceFlag flag) { return (options_.traceFlags & flag) != 0; };
        ostrel::paintChart(painter_, contents_.data, layout, theme_,
                           {.uv = has(UvFlag), .cond = has(CondFlag), .marks = has(EventsFlag)}, columnsToPixel);
        painter_.restore();
    }

    const QPageLayout sheet_;
    const ReportContents &contents_;
    const ReportOptions options_;
    const PlotTheme theme_ = themeFor(options_.traceFlags);
    const QFont smallFont_ = textFont(9);
    const QFont factFont_ = textFont(9, QFont::DemiBold);
    const std::vector<Fact> facts_;
    QRectF page_; ///< the present one
    TextFlow title_;
    TextFlow texts_;
    std::vector<Part> parts_;
    QPainter painter_;
};

Report::Report(const QPageLayout &paper, const ReportContents &contents, const ReportOptions &options)
    : pages_(std::make_unique<Pages>(paper, contents, options)) {}

Report::~Report() = default;

const std::vector<Report::Part> &Report::parts() const { return pages_->parts(); }
int Report::pages() const { return pages_->count(); }
bool Report::paint(QPagedPaintDevice &device) { return pages_->paint(device); }

} // namespace ostrel
