// SPDX-License-Identifier: MIT
#include "chart/AccessibleChart.h"

namespace ostrel {

AccessibleChart::AccessibleChart(Quillchart &chart) : QAccessibleWidget(&chart, QAccessible::Chart), chart_(chart) {}

void AccessibleChart::install() {
    static const bool installed = [] {
        QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
            auto *chart = qobject_cast<Quillchart *>(object);
            return chart != nullptr ? new AccessibleChart(*chart) : nullptr;
        });
        return true;
    }();
    Q_UNUSED(installed);
}

void *AccessibleChart::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QString AccessibleChart::text(QAccessible::Text part) const {
    QString numbers = chart_.spokenNumbers();
    if (part == QAccessible::Value)
        return numbers;
    if (part == QAccessible::Description && !numbers.isEmpty())
        return numbers + QStringLiteral(". ") + QAccessibleWidget::text(part);
    return QAccessibleWidget::text(part);
}

QString AccessibleChart::text(int startOffset, int endOffset) const {
    return chart_.spokenText().mid(startOffset, endOffset < 0 ? -1 : endOffset - startOffset);
}

int AccessibleChart::characterCount() const { return static_cast<int>(chart_.spokenText().size()); }

QString AccessibleChart::attributes(int, int *startOffset, int *endOffset) const {
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

} // namespace ostrel
