// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <vector>

namespace ostrel {

/// Something that happens to the program from outside. `number` decides all that is left open, so that an event does
/// the same in a shorter list.
struct OutsideEvent {
    enum Kind { Instrument, Line, Disk, Clock, Copies, Operator, Ending, kinds };
    qint64 at; ///< ms
    Kind kind;
    quint64 number;
};

using OutsideEvents = std::vector<OutsideEvent>;

/// What happens in so many hours of a world; in a quiet one little more than the instrument's own news.
OutsideEvents eventsOf(quint64 seed, double hours, bool quiet);

/// A line each: time, kind, number. What stands behind a # is for the reader.
QByteArray written(const OutsideEvents &events);
OutsideEvents readEvents(const QByteArray &lines);

} // namespace ostrel
