// SPDX-License-Identifier: MIT
#include "archive/Interruptions.h"

#include "archive/OstrelFile.h"
#include "chart/files/ChartFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace {

/// Tells when the first bytes are written, and stops there.
class StoppingDisk : public FileOperations {
public:
    explicit StoppingDisk(int told) : told_(told) { standIn(this); }
    ~StoppingDisk() override { standIn(nullptr); }
    ssize_t write(int fd, const void *data, std::size_t size) override {
        FileOperations::write(fd, data, size);
        FileOperations::write(told_, "x", 1);
        while (true)
            ::pause();
    }

private:
    int told_;
};

struct Pipe {
    Pipe() { EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0); }
    ~Pipe() { ::close(ends[0]); }
    /// False when the other side ended first.
    bool hears() const {
        ::close(ends[1]);
        char x = 0;
        return ::read(ends[0], &x, 1) == 1;
    }
    int ends[2];
};

class InterruptionsTest : public testing::Test {
protected:
    InterruptionsTest() {
        ChartData run;
        run.samples.append({1, 2});
        EXPECT_FALSE(saveChartFile(path("run.chd"), dataFile, run, {}));
    }
    QString path(const char *name) const { return folder.filePath(name); }
    QStringList entries() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    /// What becomes of a process of its own.
    static pid_t start(const std::function<void()> &body) {
        const pid_t child = ::fork();
        if (child != 0)
            return child;
        ::alarm(60);
        body();
        ::_exit(99);
    }
    static int endOf(pid_t child) {
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return status;
    }
    /// The program as shipped says what is in the file.
    int runInfo(const std::function<void()> &prepare) const {
        const QByteArray file = QFile::encodeName(path("run.chd"));
        const QByteArray complaints = QFile::encodeName(path("complaints"));
        return endOf(start([&] {
            ::dup2(::open(complaints.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
            prepare();
            ::execl(OSTREL_FILE, OSTREL_FILE, "info", file.constData(), nullptr);
        }));
    }
    QByteArray complaint() const {
        QFile file(path("complaints"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "none";
    }

    QTemporaryDir folder;
};

TEST_F(InterruptionsTest, aSignalEndsTheCommandAndTakesTheUnfinishedFileAway) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        const Pipe told;
        const pid_t child = start([&] {
            std::signal(number == SIGTERM ? SIGHUP : number, number == SIGTERM ? SIG_IGN : SIG_DFL);
            tidyWhenInterrupted();
            if (number == SIGTERM)
                std::raise(SIGHUP); // as under nohup: it goes on
            const StoppingDisk disk(told.ends[1]);
            QString said;
            QTextStream out(&said);
            ostrelFile({"ostrel-file", "salvage", path("run.chd"), path("saved.chd")}, out, out);
        });
        ASSERT_TRUE(told.hears());
        EXPECT_EQ(entries().size(), 2);
        ::kill(child, number);
        const int status = endOf(child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << status;
        EXPECT_EQ(entries(), QStringList{"run.chd"});
    }
}

TEST_F(InterruptionsTest, nobodyWhoReadsIsAQuietEndAndNothingToWriteToATold) {
    const int closed = runInfo([] { ::close(STDOUT_FILENO); });
    EXPECT_TRUE(WIFEXITED(closed) && WEXITSTATUS(closed) == 1) << closed;
    EXPECT_EQ(complaint(), "ostrel-file: standard output: cannot be written: Bad file descriptor\n");
    const int full = runInfo([] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    EXPECT_TRUE(WIFEXITED(full) && WEXITSTATUS(full) == 1) << full;
    EXPECT_EQ(complaint(), "ostrel-file: standard output: cannot be written: No space left on device\n");
    const int gone = runInfo([] {
        int ends[2];
        if (::pipe(ends) == 0)
            ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[0]);
        std::signal(SIGPIPE, SIG_IGN);
    });
    EXPECT_TRUE(WIFSIGNALED(gone) && WTERMSIG(gone) == SIGPIPE) << gone;
    EXPECT_EQ(complaint(), "");
}

} // namespace
