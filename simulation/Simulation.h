// SPDX-License-Identifier: MIT
#pragma once

#include "app/ProgramFixture.h"
#include "desktop/QtSettingsStore.h"
#include "simulation/Chance.h"
#include "simulation/Hands.h"
#include "simulation/Instrument.h"
#include "simulation/Judge.h"
#include "simulation/OtherCopies.h"
#include "simulation/OutsideEvents.h"
#include "simulation/SimulatedDisk.h"

namespace ostrel {

/// The whole program, with its windows, in a world that follows from a list of events: instrument, line, disk, clock,
/// other copies, operator. After each end, crash or power cut it starts again on what is left, and a judge watches it.
class Simulation {
public:
    /// `end` in ms of the world. At most so many other copies are there at a time.
    Simulation(OutsideEvents events, qint64 end, int otherCopies);
    ~Simulation();

    /// Plays to the end, or to the first rule that is broken; answers that rule, empty for none.
    QString play();
    qint64 now() const { return on_.clock.elapsed.count(); }
    const QStringList &lastEvents() const { return told_; } ///< the latest ones, in words
    int starts() const { return starts_; }

private:
    void startProgram();
    void turn();
    void afterTurn(int ms);
    void letPass(qint64 upTo);
    void deliver();
    void waitUnderBox();
    void happen(const OutsideEvent &event);
    void line();
    void disk();
    void makeUnreadable();
    void setClock();
    void operate();
    void endProgram();
    void answerBox(const MessageBox &box);
    void answerFileDialog(FakeCommonDialog &dialog);
    static void leaveModal();
    bool stopped() const { return dead_ || on_.process.ended || !judge_.broken().isEmpty(); }
    void tell(const QString &what);

    OutsideEvents events_;
    std::size_t next_ = 0;
    const qint64 end_;
    Chance chance_; ///< of the event that goes on
    Chance pieces_; ///< of the line, whatever else goes on
    Hands hands_{chance_};
    QStringList told_;
    int starts_ = 0;
    int depth_ = 0;        ///< of turns within turns
    bool started_ = false; ///< the main window is up and named
    bool dead_ = false;    ///< the program has been killed
    bool cut_ = false;     ///< and the computer with it

    ProgramFixture on_;
    SimulatedDisk disk_{on_.folder.path()};
    QtSettingsStore settings_{on_.path(QStringLiteral("settings.ini"))};
    QObject here_;
    std::unique_ptr<QTimer> coming_; ///< brings the next turn
    Instrument instrument_;
    OtherCopies others_;
    Judge judge_{on_, disk_, [this] { return stopped(); }, [this](const QString &what) { tell(what); }};
    QString dialog_;            ///< in front
    qint64 operatorIsBack_ = 0; ///< when
    bool plugged_ = true;
    qint64 chattersUntil_ = 0; ///< with short pieces, one right behind the other
    QByteArray onTheLine_;
    qint64 nextDelivery_ = 0;
    qint64 slow_ = 0; ///< ms that a flush takes
};

} // namespace ostrel
