// SPDX-License-Identifier: MIT
#include "simulation/Simulation.h"

#include "app/Application.h"

#include <QDialog>
#include <QListWidget>
#include <QScopedValueRollback>
#include <unistd.h>

namespace ostrel {

namespace {

constexpr auto restart = 20s;
constexpr unsigned longestTurn = 120; // real seconds: whoever takes longer hangs
constexpr qint64 hour = 3600000;

} // namespace

Simulation::Simulation(OutsideEvents events, qint64 end, int otherCopies)
    : events_(std::move(events)), end_(end), others_(on_, disk_, settings_, otherCopies) {
    on_.settings = &settings_;
    on_.CommTmp.failing = on_.ComPort.failing = {{4, 8005}, {5, 8002}, {6, 8002}, {7, 8002}, {8, 8002}, {9, 8002}};
    on_.prompts.whileShown = [this](const MessageBox &box) { answerBox(box); };
    for (FakeCommonDialog *dialog : {&on_.ComDlg, &on_.exportDialog})
        dialog->whileShown = [this, dialog] { answerFileDialog(*dialog); };
    dynamic_cast<Application &>(*qApp).lastNet = [this](const RunTimeError &error, const QString &place) {
        if (!stopped())
            on_.program->meet(error, place);
    };
    disk_.makeFolder(on_.folder.native("files").constData(), 0700);
    disk_.dies = [this] { dead_ = true; };
    disk_.flushes = [this] {
        on_.clock.elapsed += Milliseconds(slow_);
        judge_.diskWasWaitedFor(slow_);
    };
}

Simulation::~Simulation() { on_.program.reset(); }

void Simulation::tell(const QString &what) {
    static const bool aloud = qEnvironmentVariableIsSet("SIMULATION_TRACE");
    const QString text = QString(what).replace(on_.folder.path(), QLatin1String("~")).simplified().left(90);
    const QString line = QStringLiteral("%1 ms: %2").arg(now()).arg(text);
    if (aloud)
        std::fprintf(stderr, "%s\n", qPrintable(line));
    told_ << line;
    if (told_.size() > 30)
        told_.removeFirst();
}

QString Simulation::play() {
    while (judge_.broken().isEmpty() && now() < end_) {
        startProgram();
        while (!stopped() || depth_ > 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        on_.printer.reset();
        on_.prompts.shown.clear();
        on_.ComDlg.report.clear();
        judge_.ends();
        on_.program.reset();
        if (cut_ && dead_) {
            for (const QByteArray &log : others_.lose())
                judge_.acknowledge(log);
            disk_.cutPower([this](int below) { return chance_(below); });
        }
        dead_ = disk_.dead = cut_ = on_.process.ended = false;
        judge_.hasEnded();
        on_.clock.elapsed += restart;
        if (!started_ && chance_.oneIn(3))
            disk_.refuses = 0; // somebody makes room
    }
    return judge_.broken();
}

void Simulation::startProgram() {
    ++starts_;
    started_ = false;
    plugged_ = true;
    on_.prevInstance = !others_.none();
    on_.ComPort.setPortOpen(false);
    on_.ComPort.Input();
    tell(QStringLiteral("the program starts"));
    if (chance_.oneIn(6))
        disk_.failAt(chance_(60), EIO);
    else
        makeUnreadable();
    on_.make();
    judge_.starts();
    QTimer::singleShot(0, &here_, [this] {
        const QScopedValueRollback deeper(depth_, depth_ + 1);
        judge_.command(QStringLiteral("start"), [this] {
            on_.program->start();
            on_.clock.advance(1s);
        });
        started_ = !stopped();
        judge_.require(others_.areIntact(), QStringLiteral("the log of another copy has been touched"));
        if (started_)
            judge_.hasStarted();
    });
    afterTurn(0);
}

/// The next step of the world comes by a timer of its own, since no timer fires within its own tick.
void Simulation::afterTurn(int ms) {
    coming_ = std::make_unique<QTimer>();
    coming_->setSingleShot(true);
    QObject::connect(coming_.get(), &QTimer::timeout, &here_, [this] {
        coming_.release()->deleteLater();
        turn();
    });
    coming_->start(ms);
}

/// One step of the world, in whatever event loop is running: that of the program or of one of its dialogs.
void Simulation::turn() {
    ::alarm(longestTurn);
    if (stopped() && depth_ == 0)
        return;
    const QWidget *modal = QApplication::activeModalWidget();
    const bool comesUp = !started_ && modal == nullptr;
    afterTurn(comesUp ? 1 : 0); // while the window comes up the program waits for a quiet moment
    if (stopped())
        return leaveModal();
    if (comesUp)
        return;
    // Windows are shown, active and drawn as far as they will be, whatever that takes.
    QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
    if (stopped())
        return;
    modal = QApplication::activeModalWidget();
    if (now() >= end_) {
        dead_ = disk_.dead = true;
        return;
    }
    judge_.require(depth_ > 0 || modal == nullptr, QStringLiteral("a dialog stays when nothing goes on"));
    if (const QString dialog = modal != nullptr ? modal->objectName() : QString(); dialog != dialog_) {
        dialog_ = dialog;
        operatorIsBack_ = now() + (chance_.oneIn(12) ? chance_(120000) : 0); // mostly somebody is there
    }
    const QScopedValueRollback deeper(depth_, depth_ + 1);
    if (modal != nullptr && now() >= operatorIsBack_ && chance_.oneIn(3)) {
        operate();
    } else if (next_ < events_.size() && events_[next_].at <= nextDelivery_) {
        const OutsideEvent event = events_[next_++];
        letPass(event.at);
        if (!stopped())
            happen(event);
    } else {
        deliver();
    }
    if (!stopped())
        judge_.look();
}

void Simulation::letPass(qint64 upTo) {
    judge_.timePasses([&] { on_.clock.advance(Milliseconds(std::max<qint64>(upTo - now(), 0))); });
}

/// The line brings what the instrument has sent, in pieces of any length.
void Simulation::deliver() {
    letPass(nextDelivery_);
    if (stopped())
        return;
    const bool chatters = now() < chattersUntil_;
    nextDelivery_ = now() + (chatters ? 100 + pieces_(300) : 200 + pieces_(2000));
    onTheLine_ += instrument_.send(now());
    if (chatters)
        onTheLine_ += QByteArray("\x96"
                                 "F1234")
                          .repeated(10);
    if (!plugged_ || !on_.ComPort.PortOpen())
        return onTheLine_.clear();
    const qsizetype piece = pieces_.oneIn(3) ? pieces_(int(onTheLine_.size()) + 1) : onTheLine_.size();
    const QByteArray arrives = onTheLine_.first(piece);
    onTheLine_.remove(0, piece);
    on_.ComPort.arrive(arrives);
}

void Simulation::happen(const OutsideEvent &event) {
    chance_ = Chance(event.number);
    judge_.somethingHappens();
    switch (event.kind) {
    case OutsideEvent::Instrument:
        return tell(QStringLiteral("instrument: %1").arg(instrument_.haveNews(chance_, now())));
    case OutsideEvent::Line:
        return line();
    case OutsideEvent::Disk:
        return disk();
    case OutsideEvent::Clock:
        return setClock();
    case OutsideEvent::Copies: {
        QByteArray lost;
        judge_.require(others_.areIntact(), QStringLiteral("the log of another copy has been touched"));
        tell(QStringLiteral("another copy %1").arg(others_.change(chance_, instrument_, lost)));
        return judge_.acknowledge(lost);
    }
    case OutsideEvent::Operator:
        return operate();
    default:
        return endProgram();
    }
}

void Simulation::line() {
    if (chance_.oneIn(4)) {
        chattersUntil_ = now() + 10000;
        return tell(QStringLiteral("line: chatters"));
    }
    if (chance_.oneIn(4)) {
        const int error = 1001 + chance_(10);
        tell(QStringLiteral("line: event %1").arg(error));
        if (on_.ComPort.PortOpen())
            on_.ComPort.raise(error);
        return;
    }
    plugged_ = !plugged_ || chance_.oneIn(3);
    on_.ComPort.failing[1] = plugged_ ? 0 : 8005;
    if (plugged_)
        on_.ComPort.failing.erase(1);
    tell(plugged_ ? QStringLiteral("line: plugged") : QStringLiteral("line: unplugged"));
}

void Simulation::disk() {
    constexpr int errors[] = {EIO, ENOSPC, EACCES, EROFS};
    switch (chance_(7)) {
    case 0:
    case 1:
        disk_.refuses = disk_.refuses != 0 ? 0 : chance_.oneIn(3) ? EROFS : ENOSPC;
        break;
    case 2:
        slow_ = slow_ != 0 ? 0 : chance_(1500);
        break;
    case 3:
        return makeUnreadable();
    default:
        disk_.failAt(chance_(12), errors[chance_(4)]);
        return tell(QStringLiteral("disk: an error ahead"));
    }
    tell(QStringLiteral("disk: refuses %1, flushes take %2 ms").arg(disk_.refuses).arg(slow_));
}

/// One of the logs cannot be read, or all can again.
void Simulation::makeUnreadable() {
    const QStringList logs = disk_.files(QStringLiteral("Log/"));
    disk_.unreadable = logs.isEmpty() || chance_.oneIn(2) ? QString() : logs.at(chance_(int(logs.size())));
    tell(QStringLiteral("disk: cannot read \"%1\"").arg(disk_.unreadable));
}

void Simulation::setClock() {
    constexpr qint64 steps[] = {hour, -hour, 24 * hour, -24 * hour, 90000, -90000};
    if (chance_.oneIn(4)) {
        constexpr const char *zones[] = {"UTC", "Europe/Berlin", "America/New_York", "Asia/Kolkata"};
        qputenv("TZ", zones[chance_(4)]);
        ::tzset();
        return tell(QStringLiteral("clock: %1").arg(qEnvironmentVariable("TZ")));
    }
    on_.clock.shift += Milliseconds(steps[chance_(6)]);
    tell(QStringLiteral("clock: %1").arg(on_.clock.now().toString(Qt::ISODate)));
}

void Simulation::operate() {
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *window = modal != nullptr ? modal : find<QWidget>("frmMain");
    if (window == nullptr || !window->isVisible() || !(modal != nullptr || started_))
        return;
    judge_.comesUp(*window);
    if (const auto *logs = window->findChild<QListWidget *>("lstLogFiles")) {
        for (int row = 0; row < logs->count(); ++row)
            judge_.require(!others_.isNamedIn(logs->item(row)->text()),
                           QStringLiteral("the log of another copy is offered"));
    }
    if (QObject *object = hands_.reachFor(*window)) {
        tell(QStringLiteral("operator: %1 in %2").arg(object->objectName(), window->objectName()));
        judge_.command(object->objectName(), [&] { hands_.use(*window, *object); });
    }
}

void Simulation::endProgram() {
    constexpr const char *ways[] = {"power cut", "kill", "end of the session", "close box", "close box", "death"};
    const int way = chance_(std::size(ways));
    tell(QStringLiteral("end: %1").arg(ways[way]));
    switch (way) {
    case 0:
        cut_ = true;
        [[fallthrough]];
    case 1:
        dead_ = disk_.dead = true;
        return;
    case 2:
        return judge_.command(QStringLiteral("end"), [this] { on_.program->endUnasked(); });
    case 5: // in the middle of what it does with the disk
        cut_ = chance_.oneIn(2);
        return disk_.dieAt(chance_(60));
    default:
        if (QApplication::activeModalWidget() == nullptr && started_)
            judge_.command(QStringLiteral("close"), [this] { on_.closeWindow(); });
    }
}

void Simulation::waitUnderBox() {
    // Mostly the operator answers soon; sometimes nobody is there.
    for (int turns = chance_.oneIn(15) ? 100 : chance_(4); turns > 0 && !stopped(); --turns) {
        if (chance_.oneIn(4))
            tell(QStringLiteral("instrument: %1").arg(instrument_.haveNews(chance_, now())));
        deliver();
    }
}

void Simulation::answerBox(const MessageBox &box) {
    if (stopped())
        return;
    tell(QStringLiteral("box: %1").arg(box.text));
    judge_.boxComesUp(box);
    waitUnderBox();
    judge_.boxIsAnswered();
    using enum BoxAnswer;
    static const std::map<BoxButtons, std::vector<BoxAnswer>> answers = {{BoxButtons::Ok, {Ok}},
                                                                         {BoxButtons::OkCancel, {Ok, Cancel}},
                                                                         {BoxButtons::YesNo, {Yes, No}},
                                                                         {BoxButtons::YesNoCancel, {Yes, No, Cancel}}};
    const auto &offered = answers.at(box.buttons);
    on_.prompts.answers = {offered[std::size_t(chance_(int(offered.size())))]};
}

void Simulation::answerFileDialog(FakeCommonDialog &dialog) {
    dialog.whileShown = [this, &dialog] { answerFileDialog(dialog); };
    dialog.answers.clear();
    if (stopped() || chance_.oneIn(4))
        return;
    const QString title = dialog.DialogTitle; // another one may come up over this one
    const QString name = QStringLiteral("files/%1.%2").arg(QChar('a' + chance_(4))).arg(dialog.DefaultExt);
    waitUnderBox();
    dialog.answers = {on_.path(name)};
    tell(QStringLiteral("%1 %2").arg(title, name));
    judge_.chose(name, !title.startsWith(QLatin1String("Open")));
}

/// The process is gone: nobody answers what it asks.
void Simulation::leaveModal() {
    if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
        dialog->done(QDialog::Rejected);
    else if (QWidget *window = QApplication::activeModalWidget())
        window->close();
}

} // namespace ostrel
