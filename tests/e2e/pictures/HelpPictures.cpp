// SPDX-License-Identifier: MIT
#include "driver/LiveOstrel.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <limits>

using namespace std::chrono_literals;

namespace {

constexpr int pixelRatio = 2;     // sharp on any screen; the help shows them at half the size
constexpr double partOfRun = 8.5; // minutes that the recorder has when it is seen at work

struct Mark {
    const char *news;
    const char *label;
    int colour;
    int height;
};

constexpr int cyan = 0xFFFF00;
constexpr int green = 0x00FF00;
constexpr Mark marks[] = {{"start", "S", cyan, 50},    {"event", "1", green, 10}, {"hold", "H", cyan, 20},
                          {"continue", "C", cyan, 20}, {"pause", "P", cyan, 30},  {"label M", "M", cyan, 60},
                          {"end", "E", cyan, 40}};

/// The pictures of the help, taken of the program at work. The recorder gets most of the demonstration run in advance,
/// since the real one takes a quarter of an hour.
class HelpPictures {
public:
    explicit HelpPictures(QString folder) : folder_(std::move(folder)) {}

    void lostLink();
    void learnRun();
    void recording();
    void evaluation();
    void dialogs();
    void recovery();

    /// Does what leads to pictures. A picture that cannot be had is left out.
    void attempt(const char *picture, const std::function<void()> &steps);
    bool complete() const { return complete_; }

private:
    void take(const QString &window, const QString &picture);
    void openAndTake(const QString &command, const QString &window, const QString &picture, const QString &button);
    void nameSystem(const QString &name);
    void fill(double untilMinute);
    void saveAs(const QString &name);

    QString folder_;
    std::optional<LiveOstrel> live_;
    std::vector<QStringList> run_; ///< what the instrument meant
    std::size_t filled_ = 0;       ///< rows of it that the recorder has
    bool taken_ = false;           ///< as it fills, the run is on and not paused
    int events_ = 0;
    bool complete_ = true;
};

QByteArray demonstration() {
    QFile file{DEMONSTRATION};
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("there is no demonstration run");
    return file.readAll();
}

/// A window's inside with the frame and the title that a desktop gives it.
QImage framed(const QImage &inside, const QString &title) {
    constexpr int bar = 26 * pixelRatio;
    constexpr int line = pixelRatio;
    QImage picture(inside.size() + QSize(2 * line, bar + line), QImage::Format_RGB32);
    picture.fill(QColor(0x8a, 0x8a, 0x8a));
    QPainter painter(&picture);
    const QRect head(line, line, inside.width(), bar - line);
    painter.fillRect(head, QColor(0xdc, 0xdc, 0xdc));
    QFont font = painter.font();
    font.setPixelSize(13 * pixelRatio);
    painter.setFont(font);
    painter.drawText(head, Qt::AlignCenter, title);
    QImage flat = inside;
    flat.setDevicePixelRatio(1);
    painter.drawImage(line, bar, flat);
    return picture;
}

void HelpPictures::take(const QString &window, const QString &picture) {
    const QString file = folder_ + '/' + picture + ".png";
    QThread::msleep(500); // for the window to settle
    (*live_)->grab(window, file);
    constexpr int smallest = 0; // the file, not the time to write it
    if (!framed(QImage(file), (*live_)->get(window, "windowTitle").toString()).save(file, "PNG", smallest))
        throw std::runtime_error("cannot write " + file.toStdString());
    std::printf("%s\n", qPrintable(file));
}

void HelpPictures::attempt(const char *picture, const std::function<void()> &steps) {
    try {
        steps();
    } catch (const std::exception &reason) {
        complete_ = false;
        std::fprintf(stderr, "Left out: %s (%s)\n", picture, reason.what());
    }
}

void HelpPictures::nameSystem(const QString &name) {
    (*live_)->trigger("mnuLogName");
    live_->await("frmLogName");
    (*live_)->type("txtLogFileName", name);
    take("frmLogName", "frmLogName");
    (*live_)->answer("OK");
}

/// The instrument plays its run a thousand times as fast, too fast for the recorder, and tells what it meant.
void HelpPictures::learnRun() {
    const LiveOstrel fast{demonstration(), {"--speed", "1000"}};
    const auto isMethod = [](const QStringList &row) { return row.size() > 2 && row[1] == "method"; };
    const auto isWhole = [&] {
        run_ = fast.truth();
        return std::ranges::any_of(run_, isMethod);
    };
    if (!within(20s, isWhole))
        throw std::runtime_error("the demonstration does not end");
    run_.erase(std::next(std::ranges::find_if(run_, isMethod)), run_.end());
}

/// Gives the recorder the run as the instrument's stream would.
void HelpPictures::fill(double untilMinute) {
    Probe &probe = **live_;
    double minute = probe.call("Chart(0)", "GetLastTime").toDouble();
    for (; filled_ < run_.size() && minute < untilMinute; ++filled_) {
        const QStringList &row = run_[filled_];
        if (row[1] == "sample" && taken_)
            probe.call("Chart(0)", "AddSample", {row[6].toDouble(), row[7].toDouble()});
        else if (row[1] == "method")
            probe.call("Chart(0)", "AddMethodText", {QString{row[2]}.replace("\\r\\n", "\r\n"), minute});
        minute = row[1] == "sample" ? probe.call("Chart(0)", "GetLastTime").toDouble() : minute;
        for (const Mark &mark : marks) {
            if (row[1] != mark.news)
                continue;
            const QString label = row[1] == "event" ? QString::number(++events_) : QString{mark.label};
            probe.call("Chart(0)", "AddEventMark", {label, mark.colour, mark.height, minute});
        }
        if (row[1] == "start" || row[1] == "resume")
            taken_ = true;
        else if (row[1] == "pause" || row[1] == "end")
            taken_ = false;
    }
}

void HelpPictures::recording() {
    live_.emplace("uv 0.03\nnoise uv 0.0006\ncond 180\nnoise cond 0.05\nwait 60m\n");
    nameSystem("Velquin A");
    fill(partOfRun);
    if (!within(20s, [&] { return live_->isLinked(); }))
        throw std::runtime_error("the instrument is not heard");
    (*live_)->trigger("mnuStart");
    const double filled = (*live_)->call("Chart(0)", "GetLastTime").toDouble();
    if (!within(20s, [&] { return (**live_).call("Chart(0)", "GetLastTime").toDouble() > filled + 0.05; }))
        throw std::runtime_error("the recorder does not record");
    take("frmMain", "recording");
    (*live_)->trigger("mnuStop");
    if (!within(10s, [&] { return !live_->isEnabled("mnuStop"); }))
        throw std::runtime_error("the recorder does not stop");
    fill(std::numeric_limits<double>::max());
}

void HelpPictures::saveAs(const QString &name) {
    live_->chooseFile("mnuSaveDataAs", name);
    if (!within(10s, [&] { return live_->fileExists(name); }))
        throw std::runtime_error("the run is not saved");
}

void HelpPictures::evaluation() {
    (*live_)->call("Chart(0)", "SetNotes",
                   {"Lysozyme, lot 7, 5 mg in 1 ml\n5 ml column, new buffer B\n\nMain peak pooled: tubes 12 to 17"});
    (*live_)->drag("Chart(0)", 0.36, 0.12, 0.52, 0.74);
    if (!within(10s, [&] { return (**live_).get("Chart(0)", "TimeAxisMin").toDouble() > 1; }))
        throw std::runtime_error("the chart does not zoom");
    take("frmMain", "zoomed");
    (*live_)->call("Chart(0)", "leaveZoom");
    for (const QString name : {"Lysozyme 12.chd", "Lysozyme 13.chd"}) {
        saveAs(name);
        live_->chooseFile("mnuOpenData", name);
    }
    if (!within(10s, [&] { return live_->isUp("frmMain") && live_->isEnabled("mnuClose"); }))
        throw std::runtime_error("the files are not opened");
    take("frmMain", "tabs");
}

void HelpPictures::openAndTake(const QString &command, const QString &window, const QString &picture,
                               const QString &button) {
    attempt(qPrintable(picture), [&] {
        (*live_)->trigger(command);
        live_->await(window);
        take(window, picture);
        (*live_)->answer(button);
        if (!within(5s, [&] { return !live_->isUp(window); }))
            throw std::runtime_error("the window does not close");
    });
}

void HelpPictures::dialogs() {
    openAndTake("mnuComPort", "frmSetup", "frmSetup", "Cancel");
    openAndTake("mnuMethod", "frmMethod", "frmMethod", "OK");
    openAndTake("mnuNotes", "frmNotes", "frmNotes", "Cancel");
    openAndTake("mnuExport", "frmExport", "frmExport", "Cancel");
    openAndTake("mnuPrint", "frmPrint", "frmPrint", "Cancel");
}

void HelpPictures::recovery() {
    if (!within(30s, [&] { return live_->isEnabled("mnuSaveLog"); }))
        throw std::runtime_error("no log is written");
    live_->recorder().kill();
    live_->startRecorder("frmDataRecovery");
    take("frmDataRecovery", "frmDataRecovery");
}

void HelpPictures::lostLink() {
    live_.emplace("wait 5s\nstart\nwait 3s\n", QStringList{"--once"});
    live_->await("frmNoData");
    take("frmNoData", "frmNoData");
    (*live_)->answer("Ok");
    (*live_)->trigger("mnuExit");
    live_->await("MsgBox");
    take("MsgBox", "exit");
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    qputenv("QT_SCALE_FACTOR", QByteArray::number(pixelRatio)); // of the programs that are started
    if (argc != 2) {
        std::fprintf(stderr, "usage: help_pictures FOLDER\n");
        return 2;
    }
    HelpPictures pictures{QString::fromLocal8Bit(argv[1])};
    pictures.attempt("the recording, and all that follows of it", [&] {
        pictures.learnRun();
        pictures.recording();
        pictures.evaluation();
        pictures.dialogs();
        pictures.recovery();
    });
    pictures.attempt("frmNoData, exit", [&] { pictures.lostLink(); });
    return pictures.complete() ? 0 : 1;
}
