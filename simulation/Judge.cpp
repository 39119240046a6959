// SPDX-License-Identifier: MIT
#include "simulation/Judge.h"

#include "simulation/Instrument.h"

#include <malloc.h>

#include <bit>

namespace ostrel {

namespace {

constexpr qint64 longestWait = 2000; // ms until good bytes are decoded
constexpr qint64 longestLogInterval = 60000;
constexpr int pairsPerMinute = 300;
constexpr int reportedAt = 50;     // bytes in the port
constexpr char files[] = "files/"; // the operator's

// What stands in a box behind which the program may end.
constexpr const char *endings[] = {"before exiting", "Exit without save", "The recorder cannot start",
                                   "All available COM"};

// What begins a box that only a failing disk brings up; that one is also told of a log that is empty.
constexpr const char *lost = "Serious Data Error";
constexpr const char *failures[] = {"Run-time error",
                                    "Error in ",
                                    "An error occurred while saving",
                                    lost,
                                    "Disk reading error",
                                    "These logs could not",
                                    "A part of this log",
                                    "Log file is corapted"};

// clang-format off
constexpr Judge::CommandRow commandRows[] = {
    {"mnuOpenData mnuOpenLog mnuExit mnuLogName mnuMethod mnuNotes mnuIntro mnuIndex mnuAbout "
     "cmdOpen cmdMethod cmdNotes cmdLogOn cmdLogOff",            [](const StreamModel &) { return true; }},
    {"mnuSaveData mnuSaveDataAs mnuSaveSlectedData mnuExport mnuPrintSetup mnuPrint "
     "cmdSave cmdPrint cmdClear",                                [](const StreamModel &m) { return m.fileCommandsEnabled; }},
    {"mnuClose",                                                 [](const StreamModel &m) { return m.front != 0; }},
    {"mnuClear",                                                 [](const StreamModel &m) { return m.front == 0 && m.fileCommandsEnabled; }},
    {"mnuStart",                                                 [](const StreamModel &m) { return m.canStart; }},
    {"mnuStop",                                                  [](const StreamModel &m) { return m.canStop; }},
    {"mnuComPort",                                               [](const StreamModel &m) { return m.canChoosePort; }},
    {"cmdRecord cmdStop",                                        [](const StreamModel &m) { return m.buttonsLive; }},
    {"mnuLogOn",                                                 [](const StreamModel &m) { return !m.logging; }},
    {"mnuLogOff",                                                [](const StreamModel &m) { return m.logging; }},
};
// clang-format on

QByteArray bytesOf(const SampleStore &samples) {
    QByteArray bytes;
    bytes.reserve(samples.size() * 8);
    for (qint64 i = 0; i < samples.size(); ++i) {
        const SamplePair pair = samples.at(i);
        bytes.append(reinterpret_cast<const char *>(&pair), sizeof pair);
    }
    return bytes;
}

/// The samples that the time axis shows.
QByteArray stretchOf(const Quillchart &chart) {
    const QByteArray all = bytesOf(chart.run().data().samples);
    QByteArray stretch;
    for (qsizetype i = 0; i * 8 < all.size(); ++i) {
        const auto time = float(double(i) / pairsPerMinute);
        if (time >= chart.TimeAxisMin() && time <= chart.TimeAxisMax())
            stretch += all.mid(i * 8, 8);
    }
    return stretch;
}

QByteArray utf16(const QString &text) { return {reinterpret_cast<const char *>(text.utf16()), 2 * text.size()}; }

bool equal(const SavedFile &file, const ChartData &run) {
    return file.samples == bytesOf(run.samples) && file.marks == int(run.marks.size()) &&
           file.texts == int(run.methodTexts.size()) && file.notes == utf16(run.notes);
}

} // namespace

Judge::Judge(ProgramFixture &on, SimulatedDisk &disk, std::function<bool()> gone, std::function<void(QString)> tell)
    : on_(on), disk_(disk), gone_(std::move(gone)), tell_(std::move(tell)) {
    disk_.changed = [this](const QString &name) { fileChanged(name); };
    on_.process.atEnd = [this] { ending(); };
    disk_.asked = [this](const QString &name) {
        if (!name.startsWith(QLatin1String("Log/")))
            return;
        lastLogTick_ = on_.clock.elapsed.count(); // behind an error the log is written at once
        if (saving_ > 0)
            ledger_.writesInto(name.section(u'/', 0, -2));
    };
}

void Judge::starts() {
    ++starts_;
    started_ = begun_ = mayEnd_ = sessionEnds_ = false;
    model_ = StreamModel();
    looks_.clear();
    undecided_ = nullptr;
    unsure_ = false;
    commands_.clear();
    toldFor_.clear();
    boxes_.clear();
    saving_ = 0;
    on_.notices.standing.clear();
    changesSaved_ = 0;
    lastLogTick_ = lastTaken_ = lastPass_ = on_.clock.elapsed.count();
    ledger_.starts();
    watchPort();
    watchTimers();
    watchCommands();
    lamp_ = find<Led>("ShapeReciveLed");
    tabs_ = find<QTabBar>("TabChart");
    fullView_ = find<OptionButton>("optTimeAxis(0)");
    // A tab that is none brings that in front to the front once more.
    QObject::connect(tabs_, &QTabBar::currentChanged, tabs_, [this] { model_.bringToFront(tabs_->currentIndex()); });
    recorder_ = &on_.chart(recorderChart);
    log_ = &on_.chart(logChart);
}

/// The program ends in order. What comes in while dialogs of the ended process are still on their way out is in no
/// chart of a real one.
void Judge::ending() {
    if (disk_.dead || ledger_.diskFailed())
        return;
    ledger_.acknowledge(*log_);
    if (model_.recorderChanges > changesSaved_)
        ledger_.acknowledge(*recorder_);
}

void Judge::hasStarted() {
    started_ = true;
    ledger_.hasStarted();
}

void Judge::ends() {
    require(!on_.process.ended || mayEnd_ || disk_.dead, QStringLiteral("the program has ended unasked"));
    require(QApplication::activeModalWidget() == nullptr, QStringLiteral("a dialog stays behind the program's end"));
    checkMemory();
}

void Judge::hasEnded() {
    const QStringList changed = saved_.changed();
    require(changed.isEmpty(), QStringLiteral("%1 has changed without a command").arg(changed.join(u' ')));
    ledger_.hasEnded();
}

void Judge::watchPort() {
    on_.ComPort.OnComm = [this, inner = on_.ComPort.OnComm] {
        catchUp();
        model_.eventSeen = true;
        unsure_ = false;
        if (!std::exchange(begun_, true))
            model_.logging = on_.enabled("mnuLogOff");
        const bool receives = on_.ComPort.CommEvent() == ErrorNumber::ReceiveEvent;
        const QByteArray waiting = on_.ComPort.waiting();
        inner();
        if (on_.ComPort.InBufferCount() == 0) {
            lastTaken_ = on_.clock.elapsed.count();
            if (receives)
                model_.arrive(waiting);
        }
    };
}

void Judge::watchTimers() {
    const auto wrap = [this](const char *timer, auto around) {
        FakeTimer &watched = *on_.timers[timer];
        watched.Tick = [around, tick = watched.Tick] { around(tick); };
    };
    wrap("TimerProcess", [this](const auto &tick) {
        catchUp();
        model_.pass(on_.clock.elapsed.count());
        lastPass_ = on_.clock.elapsed.count();
        tick();
    });
    wrap("TimerCheckComData", [this](const auto &tick) {
        catchUp();
        const qint64 logged = model_.writesLog ? log_->SampleCount() : 0;
        bool lost = !model_.eventSeen;
        if (unsure_)
            undecided_ = &lost;
        else if (lost)
            model_.loseLink();
        looks_.push_back({int(boxes_.size()) + saving_, QApplication::activeModalWidget()});
        tick();
        if (!gone_()) {
            catchUp();
            unsure_ = looks_.back().mayBeOver && model_.eventSeen;
            model_.eventSeen = unsure_;
            looks_.pop_back();
        }
        undecided_ = nullptr;
        require(gone_() || !lost || ledger_.safeInLog() >= logged || ledger_.diskFailed() ||
                    !actions_.at("mnuSaveLog")->isEnabled(),
                QStringLiteral("the log was not written when the link was lost"));
    });
    wrap("TimerStopWaitForMethod", [this](const auto &tick) {
        require(on_.clock.elapsed.count() >= model_.waitsForMethod,
                QStringLiteral("the wait for the method has ended early"));
        model_.waitsForMethod = -1;
        tick();
    });
    wrap("TimerSaveLog", [this](const auto &tick) {
        const int failures = disk_.failures;
        lastLogTick_ = on_.clock.elapsed.count();
        ++saving_;
        tick();
        --saving_;
        if (!gone_() && failures == disk_.failures && disk_.refuses == 0)
            logWritten();
    });
}

void Judge::watchCommands() {
    actions_.clear();
    for (QAction *action : find<QWidget>("frmMain")->findChildren<QAction *>(QRegularExpression("^(mnu|cmd)")))
        actions_[action->objectName()] = action;
    actionsOf_.clear();
    for (const Judge::CommandRow &row : commandRows) {
        for (const QString &name : QString::fromLatin1(row.names).split(u' '))
            actionsOf_[&row].push_back(actions_.at(name));
    }
    onCommand("mnuStart cmdRecord", [this] { model_.record(); });
    onCommand("mnuStop cmdStop", [this] { model_.stop(); });
    onCommand("mnuLogOn cmdLogOn", [this] {
        if (unsure_)
            model_.eventSeen = on_.timers["TimerSaveLog"]->Enabled();
        model_.switchLogging(true);
    });
    onCommand("mnuLogOff cmdLogOff", [this] { model_.switchLogging(false); });
}

void Judge::onCommand(const char *actions, const std::function<void()> &act) {
    for (const QString &name : QString::fromLatin1(actions).split(u' '))
        QObject::connect(actions_.at(name), &QAction::triggered, actions_.at(name), act);
}

void Judge::comesUp(const QWidget &window) {
    if (window.objectName() == QLatin1String("frmDataRecovery"))
        ledger_.offered();
    if (const auto *cmdExit = window.findChild<QAbstractButton *>("cmdExit")) // by a key too
        QObject::connect(cmdExit, &QAbstractButton::pressed, cmdExit, [this] { mayEnd_ = true; });
    if (window.objectName() == QLatin1String("frmSetup")) {
        const auto *cmdOk = window.findChild<QAbstractButton *>("cmdOk");
        QObject::connect(cmdOk, &QAbstractButton::pressed, cmdOk, [this] { model_.choosePort(); });
    }
}

void Judge::boxComesUp(const MessageBox &box) {
    if (box.buttons == BoxButtons::Ok) {
        // An error that nothing handles may come from the port, the pass and the log, and counts as new after a quiet
        // minute.
        const int most = box.text.startsWith(QLatin1String("Run-time error")) ? 3 : 1;
        constexpr qint64 minute = 60000;
        Told &told = toldFor_[{box.text, causes_}];
        if (most > 1 && on_.clock.elapsed.count() - told.last > minute)
            told.times = 0;
        told.last = on_.clock.elapsed.count();
        require(++told.times <= most, QStringLiteral("told twice: %1").arg(box.text));
        require(!boxes_.contains(box.text) || most == 1, QStringLiteral("one over the other: %1").arg(box.text));
    }
    // It may come from the watchdog's look, which is over then, or from a command within it.
    const bool endsLook = !looks_.empty() && looks_.back().within == int(boxes_.size()) + saving_ &&
                          looks_.back().modal == QApplication::activeModalWidget();
    if (endsLook && box.text.startsWith(QLatin1String("Run-time error"))) {
        looks_.back().mayBeOver = true;
        unsure_ = model_.eventSeen;
    }
    const bool nothingLogged = log_->SampleCount() == 0;
    for (const char *failure : failures)
        require(!box.text.startsWith(QLatin1String(failure)) || ledger_.diskFailed() ||
                    (nothingLogged && failure == lost),
                QStringLiteral("told of a failure that is none: %1").arg(box.text));
    if (box.text.startsWith(QLatin1String("Not all Log files")))
        ledger_.decided();
    if (box.text == QLatin1String("Log file is corapted"))
        ledger_.toldOfDamage();
    for (const char *end : endings)
        mayEnd_ |= box.text.contains(QLatin1String(end));
    if (!commands_.empty()) {
        commands_.back().askedToClear |= box.text.startsWith(QLatin1String("The Chart Recorder Data is NOT"));
        commands_.back().askedToLeave |= box.text.startsWith(QLatin1String("Chart Recorder Data or opened"));
    }
    boxes_ << box.text;
}

void Judge::boxIsAnswered() {
    boxes_.removeLast();
    causes_ += !commands_.empty(); // Enter held down brings it up again
}

void Judge::timePasses(const std::function<void()> &act) {
    const qint64 before = on_.clock.elapsed.count();
    act();
    const qint64 now = on_.clock.elapsed.count();
    if (on_.ComPort.InBufferCount() < reportedAt)
        lastTaken_ = now;
    if (!model_.writesLog)
        lastLogTick_ = now;
    if (gone_() || now == before)
        return;
    require(
        now - lastTaken_ <= longestWait,
        QStringLiteral("%1 bytes wait in the port for %2 ms").arg(on_.ComPort.InBufferCount()).arg(now - lastTaken_));
    require(model_.waiting() <= 2 || now - lastPass_ <= longestWait,
            QStringLiteral("nobody has looked at %1 bytes for %2 ms").arg(model_.waiting()).arg(now - lastPass_));
}

/// The model is not told when another tab comes to the front, and it may not know what the watchdog has found.
void Judge::catchUp() {
    if (undecided_ != nullptr) {
        const bool lost = *std::exchange(undecided_, nullptr) = !on_.timers["TimerCheckComData"]->Enabled();
        if (lost)
            model_.loseLink();
    }
    if (tabs_->currentIndex() != model_.front)
        model_.bringToFront(tabs_->currentIndex());
}

void Judge::command(const QString &name, const std::function<void()> &act) {
    const bool unsaved = model_.recorderChanges > changesSaved_ && recorder_->SampleCount() > 0;
    commands_.push_back({.name = name,
                         .told = on_.prompts.shown.size(),
                         .run = recorder_->run().number(),
                         .notes = recorder_->GetNotes(),
                         .recording = model_.recording,
                         .unsaved = unsaved,
                         .front = tabs_->currentIndex(),
                         .openFiles = openFiles()});
    ++causes_;
    mayEnd_ |= QStringLiteral("close end mnuExit cmdExit").split(u' ').contains(name);
    sessionEnds_ |= name == QLatin1String("end");
    if (name == QLatin1String("cmdDoneButton") || name == QLatin1String("cmdRecoverButton"))
        ledger_.decided();
    act();
    const Command done = commands_.back();
    commands_.pop_back();
    if (!commands_.empty()) { // one that was given from a dialog of another one
        commands_.back().askedToLeave |= done.askedToLeave;
        commands_.back().askedToClear |= done.askedToClear;
    }
    const bool told = on_.prompts.shown.size() != done.told;
    for (const QString &file : done.written)
        saved_.wrote(file, !gone_() && !told);
    if (on_.process.ended && (name == QLatin1String("close") || name == QLatin1String("mnuExit")))
        require(!done.unsaved || done.askedToLeave || sessionEnds_,
                QStringLiteral("the program has ended without a question, and the recorder is not saved"));
    if (gone_())
        return;
    if (name.endsWith(QLatin1String("Clear")))
        checkCleared(done);
    else if (recorder_->GetNotes() != done.notes)
        require(recorder_->GetNotes() == log_->GetNotes(), QStringLiteral("the log has not got the notes"));
    if (name == QLatin1String("mnuClose") && !told)
        checkClosed(done);
    if (started_)
        checkChosen(done);
}

void Judge::checkCleared(const Command &done) {
    const ChartData &run = recorder_->run().data();
    if (recorder_->run().number() == done.run || run.samples.size() != 0 || !run.marks.empty())
        return;
    require(!model_.recording || done.recording, QStringLiteral("a recording that has just begun was cleared"));
    require(!done.unsaved || done.askedToClear, QStringLiteral("the recorder was cleared without a question"));
    model_.clearRecorder();
    changesSaved_ = model_.recorderChanges;
}

void Judge::checkClosed(const Command &done) {
    QStringList files = done.openFiles;
    if (openFiles() == files || done.front == 0)
        return;
    files.removeAt(done.front - 1);
    require(openFiles().first(files.size()) == files, QStringLiteral("another file was closed"));
}

QStringList Judge::openFiles() const {
    QStringList files;
    for (int tab = 1; tab < tabs_->count(); ++tab)
        files << tabs_->tabText(tab);
    return files;
}

void Judge::chose(const QString &name, bool toSave) {
    if (!commands_.empty())
        commands_.back().chosen = {name, toSave, on_.prompts.shown.size()};
}

/// Who has chosen a file has it saved or opened, or is told that it is not.
void Judge::checkChosen(const Command &done) {
    const Chosen &chosen = done.chosen;
    if (chosen.name.isEmpty() || on_.prompts.shown.size() > chosen.told)
        return;
    if (chosen.toSave)
        return require(done.written.contains(chosen.name),
                       QStringLiteral("%1 was neither saved nor not").arg(chosen.name));
    const SavedFile file = readSavedFile(disk_.content(chosen.name));
    require(file.whole && tabs_->currentIndex() != 0 && equal(file, on_.chart(tabs_->currentIndex()).run().data()),
            QStringLiteral("%1 was opened as something else").arg(chosen.name));
}

void Judge::look() {
    catchUp();
    if (!begun_ || log_ == nullptr)
        return;
    const qint64 now = on_.clock.elapsed.count();
    require(now - lastLogTick_ <= longestLogInterval,
            QStringLiteral("the log was not written for %1 ms").arg(now - lastLogTick_));
    require(ledger_.untold().isEmpty(), ledger_.untold());
    compare(model_.recorder, *recorder_);
    compare(model_.log, *log_);
    if (started_) {
        compareCommands();
        compareView();
    }
    if (!broken_.isEmpty())
        broken_ += QStringLiteral(" (at %1 ms)").arg(on_.clock.elapsed.count());
}

void Judge::compare(StreamModel::Side &side, const Quillchart &chart) {
    const ChartData &data = chart.run().data();
    const QString name = chart.objectName();
    require(data.samples.size() == side.samples && qint64(data.marks.size()) == side.marks &&
                qint64(data.methodTexts.size()) == side.texts,
            QStringLiteral("%1 has %2 pairs, %3 marks and %4 texts where there should be %5, %6 and %7")
                .arg(name)
                .arg(data.samples.size())
                .arg(data.marks.size())
                .arg(data.methodTexts.size())
                .arg(side.samples)
                .arg(side.marks)
                .arg(side.texts));
    if (!broken_.isEmpty())
        return;
    qint64 at = side.samples - std::ssize(side.newSamples);
    for (const quint64 pair : side.newSamples) {
        require(std::bit_cast<quint64>(data.samples.at(at)) == pair,
                QStringLiteral("%1 has another pair %2").arg(name).arg(at));
        ++at;
    }
    std::size_t place = data.marks.size() - side.newMarks.size();
    for (const StreamModel::Mark &mark : side.newMarks) {
        const EventMark &there = data.marks[place++];
        require(there.label == QLatin1String(mark.label) &&
                    qRound64(double(there.time) * pairsPerMinute) == mark.sample,
                QStringLiteral("%1 has mark %2 at pair %3 instead of %4 at %5")
                    .arg(name, there.label)
                    .arg(qRound64(double(there.time) * pairsPerMinute))
                    .arg(QLatin1String(mark.label))
                    .arg(mark.sample));
    }
    side.newSamples.clear();
    side.newMarks.clear();
}

void Judge::compareCommands() {
    for (const Judge::CommandRow &row : commandRows) {
        const bool enabled = row.enabled(model_);
        for (const QAction *action : actionsOf_[&row])
            require(action->isEnabled() == enabled,
                    QStringLiteral("%1 should be %2").arg(action->objectName()).arg(enabled ? "enabled" : "disabled"));
    }
}

void Judge::compareView() {
    require((lamp_->FillColor() == QColor(0, 255, 0)) == model_.lamp, QStringLiteral("the lamp of the link is wrong"));
    require(!model_.lamp || on_.notices.at(News::LinkLost).isEmpty(),
            QStringLiteral("a notice still tells of the lost link"));
    require(on_.timers["TimerSaveLog"]->Enabled() == model_.writesLog, QStringLiteral("the log's timer is wrong"));
    require(actions_.at("cmdClear")->text() == (model_.front != 0 ? "Close" : "Clear"),
            QStringLiteral("Clear and Close are mixed up"));
    require(lamp_->window()->windowTitle().startsWith(QLatin1String("Ostrel MS - System: ")),
            QStringLiteral("the window has lost its title"));
    const Quillchart &chart = on_.chart(model_.front);
    require(chart.UvAxisMin() < chart.UvAxisMax() && chart.CondAxisMin() < chart.CondAxisMax() &&
                chart.TimeAxisMin() < chart.TimeAxisMax(),
            QStringLiteral("an axis has no length"));
    require(!fullView_->Value() || (chart.TimeAxisMin() == 0 && chart.TimeAxisMax() >= chart.GetLastTime()),
            QStringLiteral("the full view of chart %1 goes from %2 to %3 of %4")
                .arg(model_.front)
                .arg(double(chart.TimeAxisMin()))
                .arg(double(chart.TimeAxisMax()))
                .arg(double(chart.GetLastTime())));
}

/// A file has got its name: when the operator saves one, it holds what the chart holds at this moment.
void Judge::fileChanged(const QString &name) {
    if (!name.startsWith(QLatin1String(files)) || name.contains(QLatin1String("/.")) || !disk_.has(name))
        return;
    tell_(QStringLiteral("file %1 written").arg(name));
    require(!commands_.empty() || on_.ComDlg.FileName == on_.path(name),
            QStringLiteral("%1 is written without a command").arg(name));
    if (commands_.empty())
        saved_.wrote(name, false); // at the end of the program, which the operator has begun in a box
    else
        commands_.back().written << name;
    if (name.endsWith(QLatin1String(".txt")))
        return;
    const SavedFile file = readSavedFile(disk_.content(name));
    require(file.whole, QStringLiteral("%1 is no whole file").arg(name));
    if (!file.isLog)
        checkSavedRun(name, file);
    else if (started_)
        ledger_.logSaved(name);
    else
        ledger_.decided(); // a left-over one
}

void Judge::checkSavedRun(const QString &name, const SavedFile &file) {
    const QString command = commands_.empty() ? QString() : commands_.back().name;
    const bool stretch = command == QLatin1String("mnuSaveSlectedData");
    const Quillchart &chart = on_.chart(model_.front);
    const QString title =
        command == QLatin1String("mnuSaveDataAs") ? name.section(u'/', -1).section(u'.', 0, 0) : chart.ChartTitle();
    require(stretch ? file.samples == stretchOf(chart) : file.title == utf16(title) && equal(file, chart.run().data()),
            QStringLiteral("%1 does not hold what the chart holds").arg(name));
    if (!stretch && model_.front == 0 && !model_.recording)
        changesSaved_ = model_.recorderChanges;
}

void Judge::logWritten() {
    const bool canSave = actions_.at("mnuSaveLog")->isEnabled();
    require(canSave || !started_ || !on_.timers["TimerSaveLog"]->Enabled(),
            QStringLiteral("the log was written, and cannot be saved"));
    require(on_.notices.at(News::LogNotWritten).isEmpty(), QStringLiteral("a notice still tells of the log"));
    ledger_.logWritten(canSave);
}

/// What the program has in use grows with its samples alone, from start to start and before its end.
void Judge::checkMemory() {
    qint64 samples = 0;
    for (int i = recorderChart; i < chartInstances; ++i)
        samples += on_.chart(i).SampleCount();
    const auto info = mallinfo2();
    const qint64 inUse = qint64(info.uordblks + info.hblkhd) - disk_.bytes() - saved_.bytes() - 12 * samples;
    if (starts_ == 3)
        atFirst_ = inUse;
    require(starts_ <= 3 || inUse < atFirst_ + 16'000'000 + 100'000 * starts_,
            QStringLiteral("%1 bytes are in use that were not at first").arg(inUse - atFirst_));
}

} // namespace ostrel
