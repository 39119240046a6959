// SPDX-License-Identifier: MIT
#include "view/frmMain.h"

#include "chart/Quillchart.h"
#include "forms/FormBuilder.h"
#include "forms/Twips.h"
#include "view/MainLayout.h"
#include "view/MainWindowTables.h"
#include "view/PlainTip.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDeadlineTimer>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMenuBar>
#include <QMimeData>
#include <QProxyStyle>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>

// The pictures are in a static library, and a program links only the parts of it that it calls. Qt forbids a namespace
// here.
static void loadPictures() { Q_INIT_RESOURCE(pictures); }

namespace ostrel {

namespace {

using MainWindowTables::ButtonRow;
using MainWindowTables::ButtonStyle;

constexpr float designToolbarHeight = 630;
constexpr float designScrollHeight = 255;
constexpr int pictureSize = 20;
constexpr int buttonMargin = 5; // on both sides of a button's text; all buttons fit the least width of the window
constexpr int placeholderWidth = 8;
const QColor ledOn(0x00, 0xff, 0x00);
const QColor ledOff(Qt::black);

QSizeF inTwips(const QSize &pixels) { return {Twips::fromPixels(pixels.width()), Twips::fromPixels(pixels.height())}; }

/// Less room beside the captions than most styles leave, so that all five can be read in a small window.
class TightTabs : public QProxyStyle {
public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override {
        constexpr int besideCaption = 12; // pixels, both sides together
        const int usual = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_TabBarTabHSpace ? std::min(usual, besideCaption) : usual;
    }
};

/// A tab bar without selection by the wheel, and with tool tips as plain text, since they are names of files.
class TabStrip : public QTabBar {
public:
    using QTabBar::QTabBar;

protected:
    bool event(QEvent *event) override {
        if (event->type() != QEvent::ToolTip)
            return QTabBar::event(event);
        const auto *help = static_cast<QHelpEvent *>(event);
        QToolTip::showText(help->globalPos(), plainTip(tabToolTip(tabAt(help->pos()))), this);
        return true;
    }
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
    // In a narrow window the names of files are shortened, never the recorder's.
    QSize minimumTabSizeHint(int index) const override {
        return index == recorderChart ? tabSizeHint(index) : QTabBar::minimumTabSizeHint(index);
    }
};

QWidget *placeholder() {
    auto *gap = new QWidget;
    gap->setFixedWidth(placeholderWidth);
    return gap;
}

} // namespace

frmMain::frmMain()
    : inner_(new QWidget), Toolsbar_(new QToolBar(inner_)), page_(new QFrame(inner_)), TabChart_(new TabStrip(inner_)) {
    loadPictures();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/pictures/ostrel.svg"))); // for the windows before it, too
    setObjectName(QStringLiteral("frmMain"));
    setCentralWidget(inner_);
    setAcceptDrops(true);
    buildMenus();
    buildToolbar();
    buildTabs();
    buildPanels();
    bringToFront(recorderChart);
    holdLeastSize();
}

QAction *frmMain::addAction(QAction *action, const QString &name) {
    action->setObjectName(name);
    actions_.insert(name, action);
    connect(action, &QAction::triggered, this, [this, name] { press(name); });
    return action;
}

void frmMain::press(const QString &control) const {
    if (clicked)
        clicked(control);
}

void frmMain::buildMenus() {
    for (const MainWindowTables::Menu &menu : MainWindowTables::menus()) {
        QMenu *list = menuBar()->addMenu(QLatin1String(menu.caption));
        list->menuAction()->setObjectName(QLatin1String(menu.name));
        for (const MainWindowTables::MenuRow &row : menu.items) {
            if (row.caption == std::string_view("-")) {
                list->addSeparator()->setObjectName(QLatin1String(row.name));
                continue;
            }
            QAction *item = addAction(list->addAction(QLatin1String(row.caption)), QLatin1String(row.name));
            item->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
            item->setEnabled(row.enabled);
        }
    }
}

void frmMain::buildToolbar() {
    Toolsbar_->setObjectName(QStringLiteral("Toolsbar"));
    Toolsbar_->setAccessibleName(tr("Commands"));
    Toolsbar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    Toolsbar_->setIconSize({pictureSize, pictureSize});
    Toolsbar_->layout()->setContentsMargins({});
    QActionGroup *group = nullptr;
    for (const ButtonRow &row : MainWindowTables::buttons()) {
        // Adjacent buttons of the style Group release each other.
        if (row.style != ButtonStyle::Group)
            group = nullptr;
        else if (group == nullptr)
            group = new QActionGroup(Toolsbar_);

        if (row.style == ButtonStyle::Separator) {
            Toolsbar_->addSeparator();
        } else if (row.style == ButtonStyle::Placeholder) {
            Toolsbar_->addWidget(placeholder());
        } else {
            const QIcon picture(QStringLiteral(":/pictures/%1.svg").arg(QLatin1String(row.image)));
            QAction *button =
                addAction(Toolsbar_->addAction(picture, QLatin1String(row.caption)), QLatin1String(row.key));
            button->setToolTip(QLatin1String(row.toolTip));
            button->setCheckable(row.style != ButtonStyle::Plain);
            button->setActionGroup(group);
            button->setChecked(row.pressed);
            Toolsbar_->widgetForAction(button)->setFixedWidth(
                Toolsbar_->fontMetrics().horizontalAdvance(button->text()) + 2 * buttonMargin);
        }
    }
}

void frmMain::buildTabs() {
    page_->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto *tight = new TightTabs;
    tight->setParent(TabChart_);
    TabChart_->setStyle(tight);
    TabChart_->setObjectName(QStringLiteral("TabChart"));
    TabChart_->setAccessibleName(tr("Charts"));
    TabChart_->setExpanding(false);
    TabChart_->setDrawBase(false);
    TabChart_->setElideMode(Qt::ElideRight);
    for (int tab = 0; tab < tabCount; ++tab)
        TabChart_->addTab(tab == recorderChart ? tr("Chart Recorder") : tr("(empty)"));
    TabChart_->setTabData(recorderChart, QStringLiteral("tabRecorder"));

    for (int i = 0; i < chartInstances; ++i) {
        quillcharts_[i] = new Quillchart(static_cast<qint16>(i), inner_);
        quillcharts_[i]->setObjectName(arrayName("Chart", i));
        quillcharts_[i]->hide();
        charts_[i] = &quillcharts_[i]->run();
    }
    for (int tab = 0; tab < tabCount; ++tab) {
        ScrollChart_[tab] = new ScrollEntry(inner_);
        ScrollChart_[tab]->setObjectName(arrayName("ScrollChart", tab));
        ScrollChart_[tab]->setAccessibleName(tr("Stretch of the run that is shown"));
        ScrollChart_[tab]->setEnabled(false);
    }
}

void frmMain::buildPanels() {
    FormBuilder builder(*inner_);
    builder.build(MainWindowTables::axisControls());
    builder.build(MainWindowTables::ledControls());
    FrameScaleAxis_ = builder.control<Frame>(QStringLiteral("FrameScaleAxis"));
    frameLeds_ = builder.control<Frame>(QStringLiteral("frameLeds"));
    ShapeReciveLed_ = builder.control<Led>(QStringLiteral("ShapeReciveLed"));

    for (int i = 0; i < 2; ++i) {
        axis_.cmbYAxis[i] = builder.control<ComboEntry>(arrayName("cmbYAxis", i));
        axis_.txtYAxisMin[i] = builder.control<TextEntry>(arrayName("txtYAxisMin", i));
        axis_.txtYAxisMin[i]->numeric = true;
        axis_.cmdSet[i] = builder.control<CommandButton>(arrayName("cmdSet", i));
        axis_.cmdSet[i]->setEnabled(false);
        time_.optTimeAxis[i] = builder.control<OptionButton>(arrayName("optTimeAxis", i));
    }
    time_.optTimeAxis[0]->setValue(true);
    time_.txtChartTime = builder.control<TextEntry>(QStringLiteral("txtChartTime"));
    time_.txtChartTime->numeric = true;
    time_.txtChartTime->setMaxLength(MainWindowTables::longestChartTime);
    time_.cmdSetTime = builder.control<CommandButton>(QStringLiteral("cmdSetTime"));
    time_.cmdSetTime->setEnabled(false);
    builder.control<CommandButton>(QStringLiteral("cmdRegistry"))->Click = [this] {
        press(QStringLiteral("cmdRegistry"));
    };
}

void frmMain::setLed(bool on) {
    ShapeReciveLed_->setFillColor(on ? ledOn : ledOff);
    ShapeReciveLed_->setAccessibleDescription(on ? tr("On") : tr("Off"));
}

void frmMain::bringToFront(int chart) {
    const bool hadFocus = quillcharts_[front_]->hasFocus();
    front_ = chart;
    quillcharts_[chart]->show();
    // First, since hiding the old chart would move the focus to the next control, mostly an axis entry.
    if (hadFocus)
        focusChart();
    for (int i = 0; i < tabCount; ++i) {
        quillcharts_[i]->setVisible(i == chart);
        ScrollChart_[i]->setVisible(i == chart);
    }
}

void frmMain::focusChart() { quillcharts_[front_]->setFocus(); }

float frmMain::TextWidth(const QString &text) const { return Twips::fromPixels(fontMetrics().horizontalAdvance(text)); }

void frmMain::setOuterSize(float Width, float Height) {
    holdLeastSize();
    resize(QSize(Twips::toPixels(Width), Twips::toPixels(Height)) - frameExtent());
}

void frmMain::holdLeastSize() {
    const QSizeF outer = MainLayout::leastOuterSize(inTwips(FrameScaleAxis_->size()));
    const QSize least = Twips::toPixels(QRectF(QPointF(), outer)).size() - frameExtent();
    setMinimumSize(least.expandedTo({Toolsbar_->sizeHint().width(), 0}));
}

void frmMain::ArrangeMainWindow() {
    const int toolbarHeight = std::max(Twips::toPixels(designToolbarHeight), Toolsbar_->sizeHint().height());
    // The tab in front overlaps the page's edge.
    const int tabHeight = TabChart_->sizeHint().height();
    const int overlap = style()->pixelMetric(QStyle::PM_TabBarBaseOverlap, nullptr, TabChart_);
    const MainLayout::Places places = MainLayout::arrange({.inner = inTwips(inner_->size()),
                                                           .toolbarHeight = Twips::fromPixels(toolbarHeight),
                                                           .tabHeadHeight = Twips::fromPixels(tabHeight - overlap),
                                                           .scrollHeight = designScrollHeight,
                                                           .axisPanels = inTwips(FrameScaleAxis_->size()),
                                                           .leds = inTwips(frameLeds_->size())});
    Toolsbar_->setGeometry(0, 0, inner_->width(), toolbarHeight);
    FrameScaleAxis_->move(Twips::toPixels(places.FrameScaleAxis).topLeft());
    page_->setGeometry(Twips::toPixels(places.page));
    TabChart_->setGeometry(Twips::toPixels(places.tabHeads).adjusted(0, 0, 0, overlap));
    for (int i = 0; i < tabCount; ++i) {
        quillcharts_[i]->setGeometry(Twips::toPixels(places.Chart));
        ScrollChart_[i]->setGeometry(Twips::toPixels(places.ScrollChart));
    }
    charts_[front_]->Redraw();
    frameLeds_->move(Twips::toPixels(places.frameLeds).topLeft());
}

bool frmMain::event(QEvent *event) {
    const bool handled = QMainWindow::event(event);
    // The menus may wrap into another number of rows, and a desktop may change its fonts.
    if (event->type() == QEvent::LayoutRequest)
        ArrangeMainWindow();
    return handled;
}

void frmMain::resizeEvent(QResizeEvent *event) {
    QMainWindow::resizeEvent(event);
    holdLeastSize(); // the desktop's frame is known only once it is drawn around the window
    ArrangeMainWindow();
    tellPlaced();
}

void frmMain::moveEvent(QMoveEvent *event) {
    QMainWindow::moveEvent(event);
    tellPlaced();
}

void frmMain::changeEvent(QEvent *event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        tellPlaced();
}

void frmMain::tellPlaced() const {
    if (placed)
        placed();
}

void frmMain::comeUp() {
    constexpr int patience = 500; // milliseconds, in case no screen ever shows it
    constexpr int settling = 100; // milliseconds, for the window manager to place it
    show();
    QDeadlineTimer deadline(patience);
    while (!windowHandle()->isExposed() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, settling);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, settling);
}

namespace {

QStringList filesIn(const QMimeData &data) {
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    return files;
}

bool hasBox() { return QApplication::activeModalWidget() != nullptr; }

} // namespace

void frmMain::dragEnterEvent(QDragEnterEvent *event) {
    if (!hasBox() && !filesIn(*event->mimeData()).isEmpty()) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

void frmMain::dropEvent(QDropEvent *event) {
    if (hasBox())
        return event->ignore(); // it came up under the mouse
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT filesDropped(filesIn(*event->mimeData()));
}

void frmMain::showRecording(bool on) {
    if (std::exchange(recording_, on) == on)
        return;
    setWindowIcon(on ? QIcon(QStringLiteral(":/pictures/ostrelRecording.svg")) : QApplication::windowIcon());
}

void frmMain::comeToFront() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *front = modal != nullptr ? modal : this;
    front->raise();
    front->activateWindow();
}

void frmMain::closeEvent(QCloseEvent *event) { event->setAccepted(!QueryUnload || QueryUnload()); }

// A zoom moves the focus to the window entry, so Escape must leave the zoom from there, too.
void frmMain::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape && quillcharts_[front_]->zoomed())
        quillcharts_[front_]->leaveZoom();
    else
        QMainWindow::keyPressEvent(event);
}

/// A control that is disabled while it has the focus gives it to the chart: in a neighbour the next key would change a
/// value.
bool frmMain::focusNextPrevChild(bool next) {
    if (focusWidget() == nullptr || focusWidget()->isEnabled())
        return QMainWindow::focusNextPrevChild(next);
    focusChart();
    return true;
}

} // namespace ostrel
