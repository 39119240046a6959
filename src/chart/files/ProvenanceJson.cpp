// SPDX-License-Identifier: MIT
#include "chart/files/ProvenanceJson.h"

#include "chart/run/IsoDate.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

QJsonValue textOrNull(const QString &text) { return text.isEmpty() ? QJsonValue() : QJsonValue(text); }

QJsonValue dateOrNull(const QDateTime &date) { return date.isValid() ? QJsonValue(isoDate(date)) : QJsonValue(); }

QJsonValue number(double value) { return std::isfinite(value) ? QJsonValue(value) : QJsonValue(); }

QDateTime date(const QJsonValue &value) { return QDateTime::fromString(value.toString(), Qt::ISODate); }

QJsonObject toJson(const Provenance::Stretch &stretch) {
    const bool isOpen = !stretch.ended.isValid() && stretch.to <= stretch.from;
    return {{"from", number(stretch.from)},
            {"to", isOpen ? QJsonValue() : number(stretch.to)},
            {"begun", dateOrNull(stretch.begun)},
            {"ended", dateOrNull(stretch.ended)}};
}

QJsonObject toJson(const Provenance::ClockStep &step) {
    return {{"minutes", number(step.minutes)}, {"seconds", number(step.seconds)}};
}

QJsonObject toJson(const Provenance::Save &save) {
    return {{"saved", dateOrNull(save.saved)}, {"program", textOrNull(save.program)}, {"change", save.change}};
}

QJsonValue toJson(const std::optional<Provenance::Parent> &parent) {
    if (!parent)
        return {};
    return QJsonObject{
        {"identity", textOrNull(parent->identity)}, {"from", number(parent->from)}, {"to", number(parent->to)}};
}

void take(const QJsonObject &object, Provenance::Stretch &stretch) {
    stretch = {object["from"].toDouble(), object["to"].toDouble(), date(object["begun"]), date(object["ended"])};
}

void take(const QJsonObject &object, Provenance::ClockStep &step) {
    step = {object["minutes"].toDouble(), object["seconds"].toDouble()};
}

void take(const QJsonObject &object, Provenance::Save &save) {
    save = {date(object["saved"]), object["program"].toString(), object["change"].toString()};
}

template <typename Item>
QJsonArray listOf(const std::vector<Item> &items) {
    QJsonArray list;
    for (const Item &item : items)
        list.append(toJson(item));
    return list;
}

template <typename Item>
void takeList(const QJsonValue &list, std::vector<Item> &items) {
    const QJsonArray all = list.toArray();
    for (const auto &value : all) {
        if (value.isObject())
            take(value.toObject(), items.emplace_back());
    }
}

} // namespace

QJsonObject toJson(const Provenance &provenance) {
    return {{"identity", textOrNull(provenance.identity)},
            {"system", textOrNull(provenance.system)},
            {"device", textOrNull(provenance.device)},
            {"program", textOrNull(provenance.program)},
            {"interval", provenance.interval > 0 ? number(provenance.interval) : QJsonValue()},
            {"begun", dateOrNull(provenance.begun())},
            {"ended", dateOrNull(provenance.ended())},
            {"stretches", listOf(provenance.stretches)},
            {"clockSteps", listOf(provenance.clockSteps)},
            {"parent", toJson(provenance.parent)},
            {"history", listOf(provenance.history)}};
}

Provenance provenanceFrom(const QJsonObject &object) {
    Provenance provenance;
    provenance.identity = object["identity"].toString();
    provenance.system = object["system"].toString();
    provenance.device = object["device"].toString();
    provenance.program = object["program"].toString();
    provenance.interval = object["interval"].toDouble();
    takeList(object["stretches"], provenance.stretches);
    takeList(object["clockSteps"], provenance.clockSteps);
    takeList(object["history"], provenance.history);
    if (const QJsonValue parent = object["parent"]; parent.isObject())
        provenance.parent = {parent["identity"].toString(), parent["from"].toDouble(), parent["to"].toDouble()};
    return provenance;
}

} // namespace ostrel
