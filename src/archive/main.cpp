// SPDX-License-Identifier: MIT
#include "archive/OstrelFile.h"

#include <QGuiApplication>

#include <cstdio>

int main(int argc, char *argv[]) {
    // Reports are painted without a display; fonts need a platform all the same.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream complaints(stderr);
    return ostrelFile(QGuiApplication::arguments(), out, complaints);
}
