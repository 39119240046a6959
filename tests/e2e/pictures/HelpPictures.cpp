// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <QFile>
#include <QLabel>
#include <QPainter>
#include <QTest>

#include <csignal>
#include <cstdio>
#include <stdexcept>

using namespace std::chrono_literals;

namespace {

constexpr int pixelRatio = 2; // sharp on any screen; the help shows them at half the size

/// A window with the frame and the title that a desktop gives it.
QImage framed(QWidget &window) {
    constexpr int bar = 26 * pixelRatio;
    constexpr int line = pixelRatio;
    QImage inside = window.grab().toImage();
    inside.setDevicePixelRatio(1);
    QImage picture(inside.size() + QSize(2 * line, bar + line), QImage::Format_RGB32);
    picture.fill(0xff8a8a8a);
    QPainter painter(&picture);
    const QRect head(line, line, inside.width(), bar - line);
    painter.fillRect(head, QColor(0xdc, 0xdc, 0xdc));
    QFont font = painter.font();
    font.setPixelSize(13 * pixelRatio);
    painter.setFont(font);
    painter.drawText(head, Qt::AlignCenter, window.windowTitle());
    painter.drawImage(line, bar, inside);
    return picture;
}

QString folder;

/// Of the window in front.
void take(LiveOstrel &live, const QString &picture) {
    within(500ms, [] { return false; }); // for the window to settle
    const auto saved = [](const QStringList &given) {
        QWidget *modal = QApplication::activeModalWidget();
        QWidget *front = modal != nullptr ? modal : find<QWidget>("frmMain");
        constexpr int smallest = 0; // the file, not the time to write it
        return framed(*front).save(given[0], "PNG", smallest);
    };
    const QString file = folder + '/' + picture + ".png";
    if (!live.ask(saved, {file}))
        throw std::runtime_error("cannot write " + file.toStdString());
    std::printf("%s\n", qPrintable(file));
}

/// Of the form that a command brings up, with this text in one of its entries.
void takeForm(LiveOstrel &live, const QString &command, const QString &form, const QString &button,
              const QString &entry = {}, const QString &text = {}) {
    live.press(command);
    live.await(form);
    if (!entry.isEmpty())
        live.type(entry, text);
    take(live, form);
    live.press(button);
}

/// With a USB adapter in the place of the pseudo-terminal.
void takePorts(LiveOstrel &live) {
    live.press("mnuComPort");
    live.await("frmSetup");
    const auto rename = [](const QStringList &given) {
        find<QLabel>("lblPort(0)")->setText(given[0]);
        find<QLabel>("lblPicked")->setText(given[1]);
        return true;
    };
    live.ask(rename, {"ttyUSB0", "COM 1: /dev/ttyUSB0, FTDI FT232R USB UART.\nThe recorder listens to it now."});
    take(live, "frmSetup");
    live.press("Cancel");
}

void takeEvaluation(LiveOstrel &live) {
    const bool zoomed = live.ask(0, [](auto &chart) {
        QTest::mousePress(&chart, Qt::LeftButton, {}, {chart.width() * 29 / 100, chart.height() * 16 / 100});
        QTest::mouseMove(&chart, {chart.width() * 42 / 100, chart.height() / 2}); // where the readout will be
        QTest::mouseRelease(&chart, Qt::LeftButton, {}, {chart.width() * 43 / 100, chart.height() * 74 / 100});
        return chart.zoomed();
    });
    if (!zoomed)
        throw std::runtime_error("the chart does not zoom");
    take(live, "zoomed");
    takeForm(live, "mnuNotes", "frmNotes", "OK", "txtNotes",
             "Lysozyme, lot 7, 5 mg in 1 ml\r5 ml column, new buffer B\r\rMain peak pooled: tubes 12 to 17");
    live.ask(0, [](auto &chart) {
        chart.leaveZoom();
        return true;
    });
    for (const QString name : {"Lysozyme 12.chd", "Lysozyme 13.chd"}) {
        live.press("mnuSaveDataAs");
        live.nameFile(name);
        live.press("mnuOpenData");
        live.nameFile(name);
    }
    within(10s, [&] { return live.held(2) > 0; });
    take(live, "tabs");
    takePorts(live);
    takeForm(live, "mnuMethod", "frmMethod", "OK");
    takeForm(live, "mnuExport", "frmExport", "Cancel");
    takeForm(live, "mnuPrint", "frmPrint", "Cancel");
}

} // namespace

/// The pictures of the help, taken of the program at work. What does not come up ends it.
int main(int argc, char **argv) {
    QFile demonstration{DEMONSTRATION};
    if (argc != 2 || !demonstration.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "usage: help_pictures FOLDER\n");
        return 2;
    }
    folder = QString::fromLocal8Bit(argv[1]);
    qputenv("QT_SCALE_FACTOR", QByteArray::number(pixelRatio));
    // The demonstration takes a quarter of an hour: it is played at twenty times its speed.
    LiveOstrel live("wait 60s\n" + demonstration.readAll().replace("\nloop", "\nwait 100m"),
                    QStringList{"--speed", "20"});
    takeForm(live, "mnuLogName", "frmLogName", "OK", "txtLogFileName", "Velquin A");
    within(60s, [&] { return live.held(0) > 8.4 * samplesPerMinute; });
    take(live, "recording");
    within(60s, [&] { return live.marks(0).endsWith('E') && live.methodText(0).contains("End"); });
    takeEvaluation(live);
    within(30s, [&] { return live.isEnabled("mnuSaveLog"); });
    live.recorder().signal(SIGKILL);
    live.startRecorder("frmDataRecovery");
    take(live, "frmDataRecovery");

    LiveOstrel lost("wait 5s\nstart\nwait 3s\n", QStringList{"--once"});
    lost.await("frmNoData");
    take(lost, "frmNoData");
    lost.press("Ok");
    lost.press("mnuExit");
    lost.await("Exit without save?");
    take(lost, "exit");
}
