// SPDX-License-Identifier: MIT
#include "archive/OstrelFile.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <cstring>
#include <memory>

namespace {

/// Painting a report needs fonts, and they a platform, but no display; all else needs neither.
std::unique_ptr<QCoreApplication> application(int &argc, char *argv[]) {
    if (argc < 2 || std::strcmp(argv[1], "pdf") != 0)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules("default.warning=false"); // what a desktop would have and a script has not
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char *argv[]) {
    const std::unique_ptr<QCoreApplication> running = application(argc, argv);
    QTextStream out(stdout);
    QTextStream complaints(stderr);
    return ostrelFile(QCoreApplication::arguments(), out, complaints);
}
