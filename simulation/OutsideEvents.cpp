// SPDX-License-Identifier: MIT
#include "simulation/OutsideEvents.h"

#include "simulation/Chance.h"

#include <QList>

#include <algorithm>

namespace ostrel {

namespace {

struct KindRow {
    const char *name;
    double every; ///< seconds, on the average
    bool quiet;   ///< in a quiet world too
};

// clang-format off
constexpr KindRow kinds[OutsideEvent::kinds] = {
    {"instrument",   90, true},
    {"line",        600, false},
    {"disk",       1200, false},
    {"clock",      4000, false},
    {"copies",     1500, false},
    {"operator",     15, false},
    {"ending",     2400, false},
};
// clang-format on

} // namespace

OutsideEvents eventsOf(quint64 seed, double hours, bool quiet) {
    OutsideEvents events;
    for (int kind = 0; kind < OutsideEvent::kinds; ++kind) {
        if (quiet && !kinds[kind].quiet)
            continue;
        Chance chance(seed * OutsideEvent::kinds + quint64(kind));
        // Things like to come together: one in three follows the one before it closely.
        for (double at = 5000; at < hours * 3600000;) {
            at += double(chance.wait(kinds[kind].every * (chance.oneIn(3) ? 100 : 1500)));
            events.push_back({static_cast<qint64>(at), OutsideEvent::Kind(kind), chance.next()});
        }
    }
    std::stable_sort(events.begin(), events.end(), [](const auto &a, const auto &b) { return a.at < b.at; });
    return events;
}

QByteArray written(const OutsideEvents &events) {
    QByteArray lines;
    for (const OutsideEvent &event : events)
        lines +=
            QByteArray::number(event.at) + ' ' + kinds[event.kind].name + ' ' + QByteArray::number(event.number) + '\n';
    return lines;
}

OutsideEvents readEvents(const QByteArray &lines) {
    OutsideEvents events;
    for (const QByteArray &line : lines.split('\n')) {
        const auto words = line.split('#').first().simplified().split(' ');
        const auto kind = std::find_if(std::begin(kinds), std::end(kinds),
                                       [&](const KindRow &row) { return row.name == words.value(1); });
        if (kind != std::end(kinds))
            events.push_back({words[0].toLongLong(), OutsideEvent::Kind(kind - kinds), words.value(2).toULongLong()});
    }
    return events;
}

} // namespace ostrel
