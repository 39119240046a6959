// SPDX-License-Identifier: MIT
#include "simulation/OtherCopies.h"

#include "base/Steps.h"
#include "files/Directories.h"

namespace ostrel {

namespace {

constexpr char section[] = "LogInfo";
constexpr int firstKey = 20; // beyond those that the program gives itself
constexpr int pairsLogged = 100;

} // namespace

const char *OtherCopies::change(Chance &chance, Instrument &instrument, QByteArray &lost) {
    if (int(copies_.size()) < most_ && (none() || chance.oneIn(2))) {
        skippingErrors([&] { start(instrument.pairs()); });
        return "starts";
    }
    if (none())
        return "does not start";
    const auto copy = std::move(copies_.back());
    copies_.pop_back();
    if (chance.oneIn(2)) {
        lost = copy->log;
        return "crashes";
    }
    end(*copy);
    return "ends";
}

void OtherCopies::start(qint64 &pairs) {
    ++begun_;
    auto copy = std::make_unique<Copy>(QStringLiteral("Log/9%1").arg(begun_, 12, 10, QLatin1Char('0')),
                                       QString::number(firstKey + begun_));
    for (const QString &folder : {QStringLiteral("Log"), copy->directory})
        std::ignore = Directories::make(on_.path(folder));
    if (!copy->lock.tryTake(on_.path(copy->directory)))
        return;
    settings_.SaveSetting(section, copy->key, QStringLiteral("Other|1.1.26|%1|").arg(begun_) + copy->directory.mid(4));
    Quillchart chart(scratchChart);
    for (const qint64 last = pairs + pairsLogged; pairs < last; ++pairs)
        chart.AddSample(uvOf(pairs), condOf(pairs));
    if (chart.WriteLog(on_.path(copy->directory) + u'/', firstKey, 20000, 24) == 0)
        copy->log = disk_.content(fileOf(*copy));
    copies_.push_back(std::move(copy));
}

void OtherCopies::end(const Copy &copy) {
    skippingErrors([&] { disk_.remove(QFile::encodeName(on_.path(fileOf(copy))).constData()); },
                   [&] { Directories::remove(on_.path(copy.directory)); },
                   [&] { settings_.DeleteSetting(section, copy.key); });
}

QByteArrayList OtherCopies::lose() {
    QByteArrayList logs;
    for (const auto &copy : std::exchange(copies_, {}))
        logs << copy->log;
    return logs;
}

bool OtherCopies::areIntact() const {
    return std::all_of(copies_.begin(), copies_.end(), [this](const auto &copy) {
        return copy->log.isEmpty() || disk_.content(fileOf(*copy)) == copy->log;
    });
}

bool OtherCopies::isNamedIn(const QString &text) const {
    return std::any_of(copies_.begin(), copies_.end(),
                       [&](const auto &copy) { return text.contains(copy->directory.section(u'/', -1)); });
}

} // namespace ostrel
