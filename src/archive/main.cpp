// SPDX-License-Identifier: MIT
#include "archive/Interruptions.h"
#include "archive/OstrelFile.h"

#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>

using namespace ostrel;

namespace {

/// Painting a report needs fonts, and they a platform, but no display; all else needs neither.
std::unique_ptr<QCoreApplication> application(int &argc, char *argv[]) {
    if (argc < 2 || std::strcmp(argv[1], "pdf") != 0)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules("default.warning=false"); // what a desktop would have and a script has not
    return std::make_unique<QGuiApplication>(argc, argv);
}

/// So that no file is opened in the place of a closed stream, and takes in what is said. Writing there still fails.
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
