// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTextDocument>

namespace ostrel {

/// A tool tip that shows `text` literally. By itself Qt takes "<b>run.chd" for markup.
inline QString plainTip(const QString &text) {
    return Qt::mightBeRichText(text) ? QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text.toHtmlEscaped())
                                     : text;
}

} // namespace ostrel
