// SPDX-License-Identifier: MIT
#include "view/View.h"

#include "chart/Quillchart.h"
#include "documents/ChartViewOf.h"
#include "view/frmNoData.h"

namespace ostrel {

View::View(const Uses &on)
    : place(window, on.store, on.makePlaceTimer(window)), bars(window.ScrollChart()),
      keys(on.values.DecimalPoint, on.prompts),
      axes(on.values.tabs, window.charts(), window.axis(), *window.time().txtChartTime, keys, on.prompts),
      time(on.values.tabs, on.values.run, window.charts(), window.time(), bars, axes, keys, on.prompts,
           [this] { window.focusChart(); }),
      live(on.values.tabs, *window.charts()[recorderChart], window.time(), bars),
      states(on.values.run, on.values.tabs, window.time(), bars,
             [this](const QString &name) { return window.action(name); }),
      tabs(on.values.tabs, window.charts(), window.TabChart(), window.time(), time, states,
           [this](int chart) { window.bringToFront(chart); }),
      acquisitionWindow(
          states, live, on.commands,
          {.setReceiveLed = [this](bool lit) { window.setLed(lit); },
           .showNow = [this](auto minutes, const auto &pair) { window.chart(recorderChart).showNow(minutes, pair); },
           .focusChart = [this] { window.focusChart(); },
           .askNoData = [this] { return frmNoData(&window).ask(); }}),
      documentWindow(tabs, bars, *window.time().txtChartTime,
                     [this](const QString &text) { return window.TextWidth(text); }),
      setupDialog(window), helpMenu(on.help, window, [this](const QString &name) { return window.action(name); }),
      clicks(on.commands, on.values.tabs), values_(on.values) {}

void View::bind(Commands &commands, const Guard &guard, ErrorRoute &errors) {
    commands.bind(QStringLiteral("mnuIntro"), [this] { helpMenu.mnuIntro_Click(); });
    commands.bind(QStringLiteral("mnuIndex"), [this] { helpMenu.mnuIndex_Click(); });

    window.placed = [this] { place.changed(); };
    axes.attach();
    time.attach();
    tabs.attach();
    window.clicked = [this, guard](const QString &control) {
        guard(control.toLatin1().constData(), [&] { clicks.click(control); })();
    };
    for (int i = 0; i < chartInstances; ++i) {
        Quillchart &chart = window.chart(i);
        QObject::connect(&chart, &Quillchart::Zoomed, &window,
                         [this](qint16, float from, float to, float uvMin, float uvMax, float condMin, float condMax) {
                             time.Chart_Zoomed(from, to, uvMin, uvMax, condMin, condMax);
                         });
        QObject::connect(&chart, &Quillchart::Unzoomed, &window, [this] { time.Chart_Unzoomed(); });
        QObject::connect(&chart, &Quillchart::ChartError, &window,
                         [&errors](qint16, qint16 ErrorCode) { errors.HandelError(ErrorCode); });
    }
}

void View::setUp(int copy) {
    constexpr float startWidth = 8650.0F;
    constexpr float startHeight = 6300.0F;
    constexpr double startWindow = 10.0;
    TabStates &state = values_.tabs;
    state.CurrentChart = recorderChart;
    window.setOuterSize(startWidth, startHeight);
    place.restore(copy);
    for (int tab = 0; tab < tabCount; ++tab) {
        state.WindowMinutes[tab] = startWindow;
        bars.setUp(tab);
        state.FullView[tab] = true;
        state.Zoomed[tab] = false;
        state.ChartViews[tab] = chartViewOf(*window.charts()[tab], startWindow);
    }
    state.ChartSaved[recorderChart] = true;
    window.bringToFront(recorderChart);
    window.time().txtChartTime->setEnabled(false);
    window.time().cmdSetTime->setEnabled(false); // its entry was set before there was a time span to compare it with
}

void View::comeUp() {
    window.comeUp();
    place.follow();
}

void View::addTo(QMenu &menu, int tab) {
    Quillchart &chart = window.chart(tab);
    QAction *back = menu.addAction(QStringLiteral("One Zoom &Back"), &chart, [&chart] { chart.goBack(); });
    back->setObjectName(QStringLiteral("mnuZoomBack"));
    back->setEnabled(chart.zoomed());
    menu.addAction(QStringLiteral("&Full View"), window.time().optTimeAxis[0], &QAbstractButton::click)
        ->setObjectName(QStringLiteral("mnuFullView"));
}

DocumentCharts View::documentCharts() const {
    DocumentCharts charts{};
    for (int tab = 0; tab < tabCount; ++tab)
        charts[tab] = &window.chart(tab).run();
    return charts;
}

} // namespace ostrel
