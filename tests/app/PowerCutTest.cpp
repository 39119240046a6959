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

/// What a power cut may leave at a number of the log's ticks, and behind which operation first.
using Cuts = std::map<std::pair<Remains, int>, int>;

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
        return collect(fd);
    }
    ssize_t write(int fd, const void *data, std::size_t size) override {
        return writeAt(fd, data, size, open_[fd].second->content().size());
    }
    ssize_t writeAt(int fd, const void *data, std::size_t size, off_t position) override {
        open_[fd].second->unsafe.emplace_back(position, QByteArray(static_cast<const char *>(data), int(size)));
        return collect(FileOperations::writeAt(fd, data, size, position));
    }
    int sync(int fd) override {
        const auto &[name, file] = open_[fd];
        if (file) {
            *file = {file->content(), {}};
        } else {
            const auto isHere = [folder = name](const auto &entry) { return folderOf(entry.first) == folder; };
            std::erase_if(safeEntries_, isHere);
            std::copy_if(entries_.begin(), entries_.end(), std::inserter(safeEntries_, safeEntries_.end()), isHere);
        }
        return collect(0);
    }
    int syncData(int fd) override { return sync(fd); }
    int rename(const char *from, const char *to) override {
        entries_[nameOf(to)] = entries_.extract(nameOf(from)).mapped();
        return collect(FileOperations::rename(from, to));
    }
    int remove(const char *path) override {
        entries_.erase(nameOf(path));
        return collect(FileOperations::remove(path));
    }
    int makeFolder(const char *path, mode_t mode) override {
        entries_.try_emplace(nameOf(path));
        return collect(FileOperations::makeFolder(path, mode));
    }
    int removeFolder(const char *path) override {
        const int status = FileOperations::removeFolder(path);
        if (status == 0)
            entries_.erase(nameOf(path));
        return collect(status);
    }

    int ticks = 0; ///< of the log that have answered for what the log chart held
    Cuts cuts;

private:
    struct File {
        QByteArray safe;
        std::vector<std::pair<qsizetype, QByteArray>> unsafe;

        /// With these parts of what was not flushed.
        QByteArray content(bool firstHalf = true, bool secondHalf = true) const {
            QByteArray all = safe;
            for (const auto &[position, data] : unsafe) {
                const auto last = std::find_if(data.rbegin(), data.rend(), [](char byte) { return byte != 0; });
                const qsizetype middle = (data.rend() - last) / 2; // the zeros at the end are laid out ahead
                const qsizetype from = firstHalf ? 0 : middle;
                const qsizetype to = secondHalf ? data.size() : middle;
                if (to > from)
                    all.resize(std::max(all.size(), position + to), '\0');
                all.replace(position + from, to - from, data.mid(from, to - from));
            }
            return all;
        }
    };
    using Entries = std::map<QString, std::shared_ptr<File>>; // a folder has no file

    QString nameOf(const char *path) const { return QDir::cleanPath(QFile::decodeName(path)).mid(root_.size() + 1); }
    static QString folderOf(const QString &name) { return name.section(u'/', 0, -2); }
    /// Hands the result on.
    ssize_t collect(ssize_t result) {
        ++count_;
        for (const Entries *entries : {&safeEntries_, &entries_}) {
            for (const auto &[first, second] : {std::pair{false, false}, {true, false}, {false, true}, {true, true}}) {
                Remains left;
                for (const auto &[path, file] : *entries) {
                    if (const QString folder = folderOf(path); folder.isEmpty() || left.contains(folder))
                        left[path] = file ? std::optional(file->content(first, second)) : std::nullopt;
                }
                cuts.try_emplace({std::move(left), ticks}, count_);
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
        QVariantList samples, marks;
    };

    /// The cuts in two sessions of five ticks each, the last two of which fill a second data file. The first one ends
    /// with a cut and is recovered; the second one ends in order, and leaves nothing that anybody has to answer for.
    Cuts cutsOfTwoSessions() {
        ProgramFixture on;
        PowerCutDisk disk(on.folder.path());
        QtSettingsStore store(on.path("settings.ini"));
        on.settings = &store;
        store.SaveSetting("Options", "DataFileSizeHours", "0.01"); // the least is a minute
        on.willRecoverTo("saved.chl");
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
        for (const int last = disk.ticks + 5; disk.ticks < last;) {
            QByteArray brought = stream("E2");
            for (int pair = 0; pair < 3; ++pair, ++sent)
                brought += sampleBlock('U', sent) + sampleBlock('C', -sent);
            on.feed(brought);
        }
    }
    static bool holds(ProgramFixture &on, const QString &name, const Held &held) {
        Quillchart &chart = on.chart(6);
        return chart.LoadDataFile(on.path(name)) && chart.samples(0, held.samples.size()) == held.samples &&
               chart.marks().mid(0, held.marks.size()) == held.marks;
    }
    /// The next start finds what the cut has left.
    static void restart(const Remains &left, const Held &held) {
        ProgramFixture on;
        for (const auto &[name, content] : left)
            content ? on.put(name, *content) : void(QDir().mkdir(on.path(name)));
        QtSettingsStore store(on.path("settings.ini"));
        on.settings = &store;
        on.clock.advance(1h);
        on.willRecoverTo("recovered.chl");
        on.start();
        EXPECT_EQ(on.told(), "");
        EXPECT_FALSE(on.exists("ChartErr.log"));
        EXPECT_EQ(find<QWidget>("frmMain")->windowTitle(), "Ostrel MS - System: Default");
        EXPECT_EQ(store.GetSetting("LogInfo", "0", ""), "1");
        EXPECT_EQ(on.logDirectories().size(), 1);
        EXPECT_TRUE(held.samples.empty() || holds(on, "recovered.chl", held) || holds(on, "saved.chl", held));
    }

    float sent = 1;
    std::vector<Held> answeredFor{1}; ///< at each number of ticks
};

TEST_F(PowerCutTest, whatATickHasAnsweredForOutlivesEveryPowerCut) {
    const Cuts cuts = cutsOfTwoSessions();
    EXPECT_GT(cuts.size(), 100U);
    for (const auto &[cut, operation] : cuts) {
        SCOPED_TRACE(testing::Message() << "after " << cut.second << " ticks, operation " << operation);
        EXPECT_NO_THROW(restart(cut.first, answeredFor[cut.second]));
    }
}

} // namespace
