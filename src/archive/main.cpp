// SPDX-License-Identifier: MIT
#include "archive/Interruptions.h"
#include "archive/OstrelFile.h"

#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

using namespace ostrel;

namespace {

/// Only painting needs fonts, and so a platform plugin; the one used here needs no display.
std::unique_ptr<QCoreApplication> application(int &argc, char *argv[]) {
    if (argc < 2 || !paints(QString::fromLocal8Bit(argv[1])))
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules("default.warning=false"); // warnings about a missing desktop
    return std::make_unique<QGuiApplication>(argc, argv);
}

/// So that no file is opened under the number of a closed stream and gets its output. Writing there still fails.
void occupyClosedStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", O_RDONLY); // takes the lowest free number, this one
    }
}

} // namespace

int main(int argc, char *argv[]) {
    occupyClosedStreams();
    tidyWhenInterrupted();
    const std::unique_ptr<QCoreApplication> running = application(argc, argv);
    QFile answers;
    answers.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered);
    QTextStream out(&answers);
    QTextStream complaints(stderr);
    return ostrelFile(QCoreApplication::arguments(), out, complaints);
}
