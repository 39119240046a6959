// SPDX-License-Identifier: MIT
#include "archive/ArchiveCheck.h"

#include "archive/ArchiveFiles.h"
#include "archive/CheckedFiles.h"
#include "archive/Manifest.h"
#include "archive/RunFile.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>
#include <optional>

namespace ostrel {

namespace {

constexpr std::chrono::milliseconds untilProgress(200);

const char *const asListed = "";
const char *const changed = "changed since the manifest";
const char *const missing = "missing";
const char *const unlisted = "not in the manifest";

struct Tally {
    qint64 whole = 0;
    qint64 damaged = 0;
    // Against the manifest.
    qint64 changed = 0;
    qint64 missing = 0;
    qint64 unlisted = 0;
};

QString counted(qint64 number) { return QLocale(QLocale::English, QLocale::UnitedStates).toString(number); }

QString files(qint64 number) { return counted(number) + (number == 1 ? " file" : " files"); }

/// On a terminal.
class Progress {
public:
    Progress(const ArchiveCall &call, std::size_t files)
        : complaints_(call.complaints), files_(static_cast<qint64>(files)) {
        sinceShown_.start();
    }
    ~Progress() { takeAway(); }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    void tick(qint64 done, qint64 damaged) {
        if (isOn_ && sinceShown_.hasExpired(untilProgress.count())) {
            complaints_.show(counted(done) + " of " + files(files_) + ", " + counted(damaged) + " damaged");
            sinceShown_.start();
        }
    }
    void takeAway() {
        if (isOn_)
            complaints_.show({});
    }

private:
    Lines &complaints_;
    qint64 files_;
    bool isOn_ = complaints_.isTerminal();
    QElapsedTimer sinceShown_;
};

/// Files of the manifest are looked for in the folders that are checked, whatever has become of their names and marks.
void addListed(ArchiveFiles &found, const ManifestFile &manifest) {
    for (const auto &[name, sum] : manifest.manifest().sums) {
        const QString place = manifest.placeOf(name);
        for (const ArchiveFile &folder : found.folders) {
            if (place.startsWith(folder.place + u'/'))
                found.files.push_back({folder.path + place.mid(folder.place.size()), place});
        }
    }
    found.sort();
}

class Check {
public:
    explicit Check(const ArchiveCall &call) : call_(call), isJson_(call.line.isSet("json")) {}

    ExitCode run();

private:
    void find();
    bool tellAll();
    bool tell(const ArchiveFile &file, const CheckedFile &checked);
    const char *compared(const ArchiveFile &file, const CheckedFile &checked);
    QString faultOf(const CheckedFile &checked) const;
    void writeManifest();
    void sumUp() const;
    void complain(const QString &what) const { call_.complaints.tell("ostrel-file: " + what); }

    bool isCompared() const { return manifest_ && manifest_->isThere(); }
    bool isGood() const { return tally_.damaged + tally_.changed + tally_.missing == 0 && found_.unread.isEmpty(); }

    const ArchiveCall &call_;
    bool isJson_;
    std::optional<ManifestFile> manifest_;
    ArchiveFiles found_;
    Tally tally_;
    Manifest sums_; ///< of the whole files, for a first manifest
    QJsonArray told_;
    bool isWritten_ = false;
    bool isRefused_ = false; ///< the manifest could not be written
};

ExitCode Check::run() {
    if (call_.line.isSet("manifest"))
        manifest_.emplace(call_.line.value("manifest"));
    find();
    if (!tellAll())
        return Failed;
    if (manifest_ && !isCompared())
        writeManifest();
    sumUp();
    return isGood() && !isRefused_ ? Good : Failed;
}

void Check::find() {
    found_ = findArchiveFiles(call_.operands);
    if (manifest_)
        std::erase_if(found_.files, [this](const ArchiveFile &file) { return file.place == manifest_->place(); });
    if (isCompared())
        addListed(found_, *manifest_);
    for (const QString &what : found_.unread)
        complain(what);
}

/// False when the results cannot be written.
bool Check::tellAll() {
    CheckedFiles checks(found_.files, manifest_.has_value());
    Progress progress(call_, found_.files.size());
    for (std::size_t number = 0; number < found_.files.size(); ++number) {
        const auto tick = [&] { progress.tick(static_cast<qint64>(number), tally_.damaged); };
        const CheckedFile *checked = nullptr;
        while ((checked = checks.wait(number, untilProgress)) == nullptr)
            tick();
        tick();
        if (call_.out.isTerminal())
            progress.takeAway();
        if (!tell(found_.files[number], *checked))
            return false;
    }
    return true;
}

bool Check::tell(const ArchiveFile &file, const CheckedFile &checked) {
    const QString against = isCompared() ? compared(file, checked) : asListed;
    const bool isMissing = against == missing;
    const QString fault = isMissing ? missing : faultOf(checked);
    const bool isWhole = fault.isEmpty();
    if (!isMissing)
        ++(isWhole ? tally_.whole : tally_.damaged);
    if (isWhole && manifest_ && !isCompared())
        sums_.sums[manifest_->nameOf(file.place)] = checked.sum;
    if (isJson_) {
        QJsonObject object{{"file", file.path}, {"whole", isWhole}, {"fault", isWhole ? QJsonValue() : fault}};
        if (isCompared())
            object["manifest"] = against.isEmpty() ? QJsonValue() : against;
        told_.append(object);
        return true;
    }
    const auto samples = static_cast<qint64>(checked.report.samples);
    const auto minutes = static_cast<float>(ChartData::timeOf(std::max<qint64>(samples - 1, 0))); // as info tells it
    QStringList words{isWhole ? "whole, " + duration(minutes) : fault};
    if (!against.isEmpty() && !isMissing)
        words.prepend(against);
    call_.out.tell(file.path + ": " + words.join("; "));
    return call_.out.deliver();
}

QString Check::faultOf(const CheckedFile &checked) const {
    if (!checked.report.good())
        return describe(checked.report);
    return manifest_ && checked.sum.isEmpty() ? "changed while it was read" : QString();
}

const char *Check::compared(const ArchiveFile &file, const CheckedFile &checked) {
    const auto &sums = manifest_->manifest().sums;
    const auto listed = sums.find(manifest_->nameOf(file.place));
    if (listed == sums.end()) {
        ++tally_.unlisted;
        return unlisted;
    }
    if (checked.report.error == std::errc::no_such_file_or_directory ||
        checked.report.error == std::errc::not_a_directory) {
        ++tally_.missing;
        return missing;
    }
    if (checked.sum.isEmpty() || checked.sum == listed->second)
        return asListed;
    ++tally_.changed;
    return changed;
}

void Check::writeManifest() {
    isRefused_ = true;
    if (!isGood())
        return complain(manifest_->path() + ": was not written, since not all files are whole and readable");
    if (sums_.sums.empty())
        return complain(manifest_->path() + ": was not written, since there are no chart files");
    const QString failure = manifest_->write(sums_);
    if (!failure.isEmpty())
        return complain(failure);
    isRefused_ = false;
    isWritten_ = true;
}

void Check::sumUp() const {
    if (isJson_) {
        QJsonObject all{{"files", told_}, {"whole", tally_.whole}, {"damaged", tally_.damaged}};
        if (isCompared()) {
            all["changed"] = tally_.changed;
            all["missing"] = tally_.missing;
            all["new"] = tally_.unlisted;
        }
        call_.out.tell(QJsonDocument(all));
        return;
    }
    QString line = files(tally_.whole + tally_.damaged) + ": " + counted(tally_.whole) + " whole, " +
                   counted(tally_.damaged) + " damaged";
    if (isCompared())
        line += "; against the manifest: " + counted(tally_.changed) + " changed, " + counted(tally_.missing) +
                " missing, " + counted(tally_.unlisted) + " new";
    if (isWritten_)
        line += "; the manifest is written";
    call_.out.tell(line);
}

} // namespace

void declareCheck(QCommandLineParser &line) {
    line.addOptions({
        {"json", "Answer as a JSON object."},
        {"manifest", "Compare the files with this list of checksums; if it is not there, write it.", "file"},
    });
}

ExitCode check(const ArchiveCall &call) { return Check(call).run(); }

} // namespace ostrel
