// SPDX-License-Identifier: MIT
#include "app/ProgramFixture.h"
#include "desktop/QtSettingsStore.h"
#include "files/FileOperations.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>

#include <algorithm>
#include <optional>

namespace {

/// What is left of a disk: the content of each file by its path, and the folders, which have none.
using Remains = std::map<QString, std::optional<QByteArray>>;

/// What a power cut may leave at a number of the log's ticks, and where it struck first.
using Cuts = std::map<std::pair<Remains, int>, QString>;

/// What becomes of a write that was not flushed when the power goes.
enum class Kept { Nothing, FirstHalf, SecondHalf, All };

/// A disk that keeps book of what is safe on it, and collects what a power cut behind each operation may leave: what
/// was flushed, and of the rest, contents and entries of folders, nothing, halves or all.
class PowerCutDisk : public FileOperations {
public:
    explicit PowerCutDisk(QString root) : root_(std::move(root)) { standIn(this); }
    ~PowerCutDisk() override { standIn(nullptr); }

    int open(const char *path, int flags, mode_t mode) override {
        const int fd = FileOperations::open(path, flags, mode);
        if (fd >= 0 && (flags & O_CREAT) != 0)
            entries_.try_emplace(nameOf(path), std::make_shared<File>());
        const auto entry = entries_.find(nameOf(path));
        open_[fd] = {nameOf(path), entry != entries_.end() ? entry->second : nullptr};
        return collect(nameOf(path), fd);
    }
    ssize_t write(int fd, const void *data, std::size_t size) override {
        return writeAt(fd, data, size, open_[fd].second->content(Kept::All).size());
    }
    ssize_t writeAt(int fd, const void *data, std::size_t size, off_t position) override {
        const auto &[name, file] = open_[fd];
        file->unsafe.emplace_back(position, QByteArray(static_cast<const char *>(data), static_cast<int>(size)));
        return collect(name, FileOperations::writeAt(fd, data, size, position));
    }
    int sync(int fd) override {
        const auto &[name, file] = open_[fd];
        if (file) {
            *file = {file->content(Kept::All), {}};
        } else {
            const auto isHere = [folder = name](const auto &entry) { return folderOf(entry.first) == folder; };
            std::erase_if(safeEntries_, isHere);
            std::copy_if(entries_.begin(), entries_.end(), std::inserter(safeEntries_, safeEntries_.end()), isHere);
        }
        return collect(name, 0);
    }
    int syncData(int fd) override { return sync(fd); }
    int rename(const char *from, const char *to) override {
        entries_[nameOf(to)] = entries_.extract(nameOf(from)).mapped();
        return collect(nameOf(to), FileOperations::rename(from, to));
    }
    int remove(const char *path) override {
        entries_.erase(nameOf(path));
        return collect(nameOf(path), FileOperations::remove(path));
    }
    int makeFolder(const char *path, mode_t mode) override {
        entries_.try_emplace(nameOf(path));
        return collect(nameOf(path), FileOperations::makeFolder(path, mode));
    }
    int removeFolder(const char *path) override {
        const int status = FileOperations::removeFolder(path);
        if (status == 0)
            entries_.erase(nameOf(path));
        return collect(nameOf(path), status);
    }

    int ticks = 0; ///< of the log that have answered for what the log chart held
    Cuts cuts;

private:
    struct File {
        QByteArray safe;
        std::vector<std::pair<qsizetype, QByteArray>> unsafe;

        QByteArray content(Kept kept) const {
            QByteArray all = safe;
            for (const auto &[position, data] : unsafe) {
                const qsizetype tear = middleOf(data);
                const qsizetype from = kept == Kept::SecondHalf ? tear : 0;
                const qsizetype to = kept == Kept::Nothing ? 0 : kept == Kept::FirstHalf ? tear : data.size();
                all.resize(std::max(all.size(), to > 0 ? position + to : 0), '\0');
                all.replace(position + from, to - from, data.mid(from, to - from));
            }
            return all;
        }
        /// Apart from the zeros at the end, which are laid out ahead.
        static qsizetype middleOf(const QByteArray &data) {
            const auto last = std::find_if(data.rbegin(), data.rend(), [](char byte) { return byte != 0; });
            return (data.rend() - last) / 2;
        }
    };
    using Entries = std::map<QString, std::shared_ptr<File>>; // a folder has no file

    QString nameOf(const char *path) const { return QDir::cleanPath(QFile::decodeName(path)).mid(root_.size() + 1); }
    static QString folderOf(const QString &name) { return name.section(u'/', 0, -2); }
    /// Hands the result on.
    template <typename Result>
    Result collect(const QString &name, Result result) {
        ++count_;
        for (const Entries *entries : {&safeEntries_, &entries_}) {
            for (const Kept kept : {Kept::Nothing, Kept::FirstHalf, Kept::SecondHalf, Kept::All}) {
                Remains left;
                for (const auto &[path, file] : *entries) {
                    if (const QString folder = folderOf(path); folder.isEmpty() || left.contains(folder))
                        left[path] = file ? std::optional(file->content(kept)) : std::nullopt;
                }
                cuts.try_emplace({std::move(left), ticks}, QStringLiteral("operation %1, %2").arg(count_).arg(name));
            }
        }
        return result;
    }

    QString root_;
    Entries entries_;
    Entries safeEntries_;
    std::map<int, std::pair<QString, std::shared_ptr<File>>> open_;
    int count_ = 0;
};

class PowerCutTest : public testing::Test {
protected:
    /// What the log chart held at a tick.
    struct Held {
        QVariantList samples;
        QVariantList marks;
    };

    QByteArray nextPair() {
        ++sent;
        return sampleBlock('U', sent) + sampleBlock('C', -sent);
    }
    static QString settingsFile(const ProgramFixture &on) { return on.folder.filePath("settings.ini"); }

    /// The cuts in two sessions of five ticks each, the last two of which fill a second data file. The first one ends
    /// with a cut and is recovered; the second one ends in order, and leaves nothing that anybody has to answer for.
    Cuts cutsOfTwoSessions() {
        ProgramFixture on;
        PowerCutDisk disk(on.folder.path());
        QtSettingsStore store(settingsFile(on));
        on.settings = &store;
        store.SaveSetting("Options", "DataFileSizeHours", "0.01"); // the least is a minute
        on.dialogAnswers["frmDataRecovery"] = [&] { on.recoverTo(on.folder.filePath("saved.chl")); };
        record(on, disk);
        on.program.reset();
        on.clock.advance(1h);
        record(on, disk);
        answeredFor.emplace_back();
        ++disk.ticks;
        on.program->endAgreed();
        on.program.reset();
        return std::move(disk.cuts);
    }
    void record(ProgramFixture &on, PowerCutDisk &disk) {
        on.start();
        FakeTimer &TimerSaveLog = *on.timers["TimerSaveLog"];
        TimerSaveLog.Tick = [this, &on, &disk, tick = TimerSaveLog.Tick] {
            tick();
            ASSERT_TRUE(on.enabled("mnuSaveLog"));
            answeredFor.push_back({on.chart(5).samples(0, on.chart(5).SampleCount()), on.chart(5).marks()});
            ++disk.ticks;
        };
        const int last = disk.ticks + 5;
        while (disk.ticks < last)
            on.feed(nextPair() + nextPair() + nextPair() + stream("E2"));
    }
    static bool stands(ProgramFixture &on, const QString &name, const Held &held) {
        Quillchart &chart = on.chart(6);
        return chart.LoadDataFile(on.folder.filePath(name)) && chart.samples(0, held.samples.size()) == held.samples &&
               chart.marks().mid(0, held.marks.size()) == held.marks;
    }
    static void lay(const Remains &left, const QDir &folder) {
        for (const auto &[path, content] : left) {
            QFile file(folder.filePath(path));
            if (content)
                ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(*content) == content->size());
            else
                ASSERT_TRUE(folder.mkdir(path));
        }
    }
    /// The next start finds what the cut has left.
    static void restart(const Remains &left, const Held &held) {
        ProgramFixture on;
        lay(left, on.folder.path());
        QtSettingsStore store(settingsFile(on));
        on.settings = &store;
        on.clock.advance(1h);
        int offered = 0;
        on.dialogAnswers["frmDataRecovery"] = [&] {
            ++offered;
            on.recoverTo(on.folder.filePath("recovered.chl"));
        };
        on.start();
        EXPECT_LE(offered, 1);
        EXPECT_TRUE(on.prompts.shown.empty());
        EXPECT_FALSE(QFile::exists(on.folder.filePath("ChartErr.log")));
        EXPECT_EQ(on.find<QWidget>("frmMain")->windowTitle(), "Ostrel MS - System: Default");
        EXPECT_EQ(store.GetSetting("LogInfo", "0", ""), "1");
        EXPECT_EQ(QDir(on.folder.filePath("Log")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
        EXPECT_TRUE(held.samples.empty() || stands(on, "recovered.chl", held) || stands(on, "saved.chl", held));
    }

    float sent = 0;
    std::vector<Held> answeredFor{1}; ///< at each number of ticks
};

TEST_F(PowerCutTest, whatATickHasAnsweredForOutlivesEveryPowerCut) {
    const Cuts cuts = cutsOfTwoSessions();
    EXPECT_GT(cuts.size(), 100U);
    for (const auto &[cut, place] : cuts) {
        SCOPED_TRACE(testing::Message() << "after " << cut.second << " ticks, " << place.toStdString());
        EXPECT_NO_THROW(restart(cut.first, answeredFor[cut.second]));
    }
}

} // namespace
