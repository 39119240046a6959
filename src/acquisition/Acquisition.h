// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/DataReceiver.h"
#include "acquisition/PortSearch.h"
#include "acquisition/PortSetup.h"
#include "acquisition/ProvenanceKeeper.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/RecordingSession.h"
#include "acquisition/RunNews.h"
#include "acquisition/SampleIntake.h"
#include "acquisition/StreamDecoder.h"
#include "base/Guard.h"
#include "platform/MainTimers.h"

namespace ostrel {

/// All units of the acquisition, from the serial port to the two charts, in the order in which they are made.
struct Acquisition {
    /// What the units are made from and use.
    struct Uses {
        Values &values;
        SerialControl &ComPort; ///< the link
        SerialControl &CommTmp; ///< tries ports
        PortDirectory &directory;
        const MainTimers &timers;
        Run &recorder;
        Run &log;
        const Commands &commands;
        AcquisitionWindow &window;
        SetupDialog &dialog;
        Prompts &prompts;
        ErrorRoute &errors;
        Notices &notices;
        const Clock &clock;
    };

    explicit Acquisition(const Uses &uses);
    Acquisition(const Acquisition &) = delete; // the units refer to each other
    Acquisition &operator=(const Acquisition &) = delete;

    /// Binds the click routines, and the handlers of the port and the timers.
    void bind(Commands &commands, const Guard &guard);

    ReceiveRing ring;
    DataReceiver receiver;
    RunNews news;
    SampleIntake intake;
    StreamDecoder decoder;
    RecordingSession session;
    ProvenanceKeeper recorderKeeper;
    ProvenanceKeeper logKeeper;
    PortSetup setup;
    PortSearch search;

private:
    void takeNotes();
    void showNow();

    SerialControl &ComPort_;
    const MainTimers &timers_;
    Run &recorder_;
    const RunState &run_;
    const Options &options_;
    AcquisitionWindow &window_;
};

} // namespace ostrel
