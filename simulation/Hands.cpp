// SPDX-License-Identifier: MIT
#include "simulation/Hands.h"

#include "chart/Quillchart.h"
#include "forms/Controls.h"

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <vector>

namespace ostrel {

namespace {

bool isControl(const QWidget *widget) {
    return qobject_cast<const QAbstractButton *>(widget) || dynamic_cast<const EntryText *>(widget) ||
           qobject_cast<const QTabBar *>(widget) || qobject_cast<const QScrollBar *>(widget) ||
           qobject_cast<const Quillchart *>(widget) || qobject_cast<const QListWidget *>(widget) ||
           qobject_cast<const QPlainTextEdit *>(widget);
}

} // namespace

QObject *Hands::reachFor(QWidget &window) {
    std::vector<std::pair<QString, QObject *>> reach;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        const QString name = widget->objectName();
        if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_")) && isControl(widget) && widget->isVisible() &&
            widget->isEnabled())
            reach.emplace_back(name, widget);
    }
    static const QRegularExpression commands(QStringLiteral("^(mnu|cmd)"));
    for (QAction *action : window.findChildren<QAction *>(commands)) {
        const bool ends = action->objectName() == QLatin1String("mnuExit") || action->text() == QLatin1String("E&xit");
        if (action->isEnabled() && action->menu() == nullptr && !action->isSeparator() && (!ends || chance_.oneIn(8)))
            reach.emplace_back(action->objectName(), action);
    }
    if (reach.empty())
        return nullptr;
    std::stable_sort(reach.begin(), reach.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    return reach[std::size_t(chance_(int(reach.size())))].second;
}

void Hands::use(QWidget &window, QObject &object) {
    if (chance_.oneIn(6) && reflex(window))
        return;
    if (auto *action = qobject_cast<QAction *>(&object))
        action->trigger();
    else if (auto *widget = qobject_cast<QWidget *>(&object))
        useWidget(*widget);
}

bool Hands::reflex(QWidget &window) {
    constexpr Qt::Key keys[] = {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Space, Qt::Key_Down, Qt::Key_Up};
    if (window.isModal() && chance_.oneIn(3))
        return window.close();
    QWidget *focus = QApplication::focusWidget();
    if (focus == nullptr || focus->window() != &window)
        return false;
    const Qt::Key key = keys[chance_(std::size(keys))];
    for (int times = chance_.oneIn(4) ? 5 : 1; times > 0 && QApplication::focusWidget() == focus; --times)
        QTest::keyClick(focus, key); // held down
    return true;
}

void Hands::useChart(Quillchart &chart) {
    constexpr Qt::KeyboardModifier modifiers[] = {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
    constexpr Qt::Key keys[] = {Qt::Key_Left,  Qt::Key_Right,    Qt::Key_Up,     Qt::Key_Down,     Qt::Key_PageUp,
                                Qt::Key_Home,  Qt::Key_PageDown, Qt::Key_End,    Qt::Key_Plus,     Qt::Key_Minus,
                                Qt::Key_Space, Qt::Key_Return,   Qt::Key_Escape, Qt::Key_Backspace};
    const QPoint from(chance_(chart.width()), chance_(chart.height()));
    const int times = 1 + chance_(5);
    const int way = chance_(3);
    for (int i = 0; way == 0 && i < times; ++i)
        QTest::keyClick(&chart, keys[chance_(std::size(keys))], modifiers[chance_(2)]);
    for (int i = 0; way == 1 && i < times; ++i) {
        QWheelEvent wheel(from, chart.mapToGlobal(from), {}, {0, chance_.oneIn(2) ? 120 : -120}, {},
                          modifiers[chance_(std::size(modifiers))], Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&chart, &wheel);
    }
    if (way != 2)
        return;
    const QPoint to = from + QPoint(chance_(200), chance_(100));
    QTest::mousePress(&chart, Qt::LeftButton, {}, from);
    QTest::mouseMove(&chart, to);
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, to);
    if (chance_.oneIn(3))
        QTest::mouseDClick(&chart, Qt::LeftButton, {}, from);
}

void Hands::useWidget(QWidget &widget) {
    if (auto *entry = dynamic_cast<EntryText *>(&widget)) {
        constexpr const char *texts[] = {"0", "0.5", "12", "2.000", "-0.2", "9999", "", "Sys A"};
        entry->selectWhole();
        QTest::keyClicks(&widget, QString::fromLatin1(texts[chance_(std::size(texts))]));
        if (!chance_.oneIn(4))
            QTest::keyClick(&widget, Qt::Key_Return);
    } else if (auto *text = qobject_cast<QPlainTextEdit *>(&widget)) {
        text->insertPlainText(QStringLiteral("note %1\n").arg(chance_(1000)));
    } else if (auto *bar = qobject_cast<QTabBar *>(&widget)) {
        bar->setCurrentIndex(chance_(bar->count()));
    } else if (auto *list = qobject_cast<QListWidget *>(&widget)) {
        if (list->count() > 0)
            list->item(chance_(list->count()))->setCheckState(Qt::Checked);
    } else if (auto *chart = qobject_cast<Quillchart *>(&widget)) {
        useChart(*chart);
    } else {
        const QPoint spot(8, widget.height() / 2);
        QTest::mouseClick(&widget, Qt::LeftButton, {}, spot);
    }
}

} // namespace ostrel
