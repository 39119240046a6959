// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>

namespace ostrel {

/// The user's locale for the numbers of a chart: its decimal sign, but nothing between thousands.
inline QLocale plainLocale() {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

} // namespace ostrel
