// SPDX-License-Identifier: MIT
#include "platform/QtProcess.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

QString QtProcess::commandLine() const { return QCoreApplication::arguments().mid(1).join(QLatin1Char(' ')); }

void QtProcess::end() {
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}
