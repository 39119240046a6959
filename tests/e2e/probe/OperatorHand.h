// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QString>

/// What an operator does with mouse and keyboard. Each throws ProbeError at once where an operator could not do it, and
/// is otherwise carried out from the event loop, soon after it returns.
namespace OperatorHand {

/// A menu item or a toolbar button.
void trigger(const QString &action);
void click(const QString &widget);
/// Draws a rectangle with the left button; corners are shares of the widget's size.
void drag(const QString &widget, const QRectF &rectangle);
/// The button of the modal window in front, by its text without the access key's mark.
void answer(const QString &button);
/// A key ("Ctrl+R", "Return") for the widget that has the focus.
void key(const QString &sequence);
/// Text for a widget, in place of what it holds.
void type(const QString &widget, const QString &text);

} // namespace OperatorHand
