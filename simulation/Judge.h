// SPDX-License-Identifier: MIT
#pragma once

#include "app/ProgramFixture.h"
#include "simulation/Ledger.h"
#include "simulation/SavedFiles.h"
#include "simulation/SimulatedDisk.h"
#include "simulation/StreamModel.h"

#include <QTabBar>

namespace ostrel {

/// Holds what is seen of the program against the rules: its charts, lamps and commands against the model of the stream,
/// the disk against what it has acknowledged, its boxes against what has happened.
class Judge {
public:
    /// `gone` tells whether the program has ended or died.
    Judge(ProgramFixture &on, SimulatedDisk &disk, std::function<bool()> gone, std::function<void(QString)> tell);

    /// The first rule that was broken; empty for none.
    const QString &broken() const { return broken_; }
    void require(bool holds, const QString &rule) {
        if (!holds && broken_.isEmpty())
            broken_ = rule;
    }

    // The program's life.
    void starts(); ///< it has been made
    void hasStarted();
    void ending(); ///< it ends in order
    void ends();   ///< it is about to be unmade
    void hasEnded();

    // What happens to it.
    void somethingHappens() { ++causes_; }
    void command(const QString &name, const std::function<void()> &act);
    void comesUp(const QWidget &window);
    void boxComesUp(const MessageBox &box);
    void boxIsAnswered();
    /// The operator has chosen this file.
    void chose(const QString &name, bool toSave);
    void timePasses(const std::function<void()> &act);
    /// Of the time that passes the disk has taken so much.
    void diskWasWaitedFor(qint64 ms) {
        for (qint64 *last : {&lastTaken_, &lastPass_, &lastLogTick_})
            *last += ms;
    }
    /// These records, of a running log, are safe.
    void acknowledge(const QByteArray &records) { ledger_.acknowledge(records); }

    /// Compares, at any moment between two events.
    void look();

    /// Commands, and when they are to be had.
    struct CommandRow {
        const char *names;
        bool (*enabled)(const StreamModel &);
    };

private:
    /// A look of the watchdog, which may bring up the dialog about the lost link.
    struct WatchdogLook {
        int within; ///< boxes and log ticks that were going on when it began
        const QWidget *modal;
        bool mayBeOver = false;
    };

    struct Chosen {
        QString name;
        bool toSave = false;
        std::size_t told = 0; ///< boxes
        int run = 0;          ///< number of the recorder's before
    };

    /// A command of the operator's that is being carried out.
    struct Command {
        QString name;
        // Before.
        std::size_t told = 0; ///< boxes
        int run = 0;          ///< number of the recorder's
        QString notes{};
        bool recording = false;
        bool unsaved = false; ///< the recorder
        int front = 0;        ///< tab
        QStringList openFiles{};
        // Meanwhile.
        QStringList written{};
        Chosen chosen{};
        bool askedToLeave = false; ///< although the recorder is not saved
        bool askedToClear = false;
    };

    void watchPort();
    void watchTimers();
    void watchCommands();
    void onCommand(const char *actions, const std::function<void()> &act);
    void catchUp();
    void compare(StreamModel::Side &side, const Quillchart &chart);
    void compareCommands();
    void compareView();
    void checkCleared(const Command &done);
    void checkClosed(const Command &done);
    void checkChosen(const Command &done);
    QStringList openFiles() const;
    void fileChanged(const QString &name);
    void checkSavedRun(const QString &name, const SavedFile &saved);
    void logWritten();
    void checkMemory();

    ProgramFixture &on_;
    SimulatedDisk &disk_;
    const std::function<bool()> gone_;
    const std::function<void(QString)> tell_;
    QString broken_;
    int starts_ = 0;
    bool started_ = false;

    // The stream.
    StreamModel model_;
    std::map<QString, QAction *> actions_;
    std::map<const CommandRow *, std::vector<const QAction *>> actionsOf_;
    const Led *lamp_ = nullptr;
    const QTabBar *tabs_ = nullptr;
    const OptionButton *fullView_ = nullptr;
    const Quillchart *recorder_ = nullptr;
    const Quillchart *log_ = nullptr;
    bool begun_ = false; ///< the port has brought something
    std::vector<WatchdogLook> looks_;
    bool *undecided_ = nullptr; ///< whether the look that has just begun finds the link lost
    bool unsure_ = false;       ///< whether the port has told of something: the look may be over
    qint64 lastTaken_ = 0;      ///< from the port, ms
    qint64 lastPass_ = 0;
    qint64 lastLogTick_ = 0;

    // Commands and boxes.
    std::vector<Command> commands_; ///< the innermost last
    qint64 changesSaved_ = 0;       ///< of the model's, by the last save of the recorder
    bool sessionEnds_ = false;      ///< nobody is asked then
    bool mayEnd_ = false;           ///< somebody has asked for it, or it cannot go on
    QStringList boxes_;             ///< that are up, their texts
    int saving_ = 0;                ///< ticks of the log that are going on
    int causes_ = 0;                ///< for which a box may come up
    struct Told {
        int times = 0;
        qint64 last = 0; ///< ms of the uptime
    };
    std::map<std::pair<QString, int>, Told> toldFor_; ///< by text and cause

    // The disk.
    SavedFiles saved_{disk_};
    Ledger ledger_{on_, disk_, [this](bool holds, const QString &rule) { require(holds, rule); }};
    qint64 atFirst_ = 0; ///< bytes in use
};

} // namespace ostrel
