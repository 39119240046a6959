// SPDX-License-Identifier: MIT
#pragma once

#include "acquisition/AcquisitionRig.h"
#include "acquisition/StreamScript.h"
#include "base/Steps.h"

#include <gtest/gtest.h>

#include <ostream>

inline void PrintTo(const QString &text, std::ostream *out) { *out << '"' << text.toStdString() << '"'; }

/// An instrument on the line whose stream has been recognised; nothing is recorded yet and logging is on.
class LinkedTest : public testing::Test, protected AcquisitionRig {
protected:
    void SetUp() override {
        play(".");
        tick();
    }

    void feed(const QByteArray &bytes) {
        ComPort.arrive(bytes);
        tick();
    }
    void play(const QString &script) { feed(stream(script)); }
    void tick() { clock.advance(std::chrono::milliseconds(700)); }

    static int count(const ostrel::Run &of) { return int(of.data().samples.size()); }
    /// The labels of a chart's marks.
    static QString marks(const ostrel::Run &of) {
        QStringList labels;
        for (const EventMark &mark : of.data().marks)
            labels << mark.label;
        return labels.join(' ');
    }
    SamplePair lastLogged() const { return log.data().samples.at(count(log) - 1); }
};
