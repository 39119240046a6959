// SPDX-License-Identifier: MIT
#include "fakes/TestFolder.h"

#include <QMimeDatabase>

namespace {

/// What a file of this name and content is taken for on a desktop that has the program installed.
class MimeTypes : public testing::Test {
protected:
    static void SetUpTestSuite() {
        qputenv("XDG_DATA_HOME", DATA_HOME);
        qputenv("XDG_DATA_DIRS", DATA_HOME);
    }

    std::string typeOf(const QString &name, const QByteArray &content) const {
        folder_.lay(name, content);
        return QMimeDatabase().mimeTypeForFile(folder_.at(name)).name().toStdString();
    }
    QByteArray golden(const QString &name) const { return folder_.content(GOLDEN + name); }

    const std::string data_ = "application/x-ostrel-data";
    const std::string log_ = "application/x-ostrel-log";
    const std::string diskImage_ = "application/x-mame-chd";
    const QByteArray diskImageContent_ = "MComprHD" + QByteArray(120, '\0');

private:
    TestFolder folder_;
};

} // namespace

TEST_F(MimeTypes, OwnFilesAreKnownByTheirContent) {
    for (const char *name : {"run.chd", "RUN.CHD", "run"})
        EXPECT_EQ(typeOf(name, golden("version1.chd")), data_) << name;
    for (const char *name : {"run.chl", "run"})
        EXPECT_EQ(typeOf(name, golden("version1.chl")), log_) << name;
}

TEST_F(MimeTypes, FilesOfOthersStayTheirs) {
    EXPECT_EQ(typeOf("disk.chd", diskImageContent_), diskImage_);
    EXPECT_EQ(typeOf("disk", diskImageContent_), diskImage_);
}

TEST_F(MimeTypes, AFileWithoutContentGoesByItsName) {
    EXPECT_EQ(typeOf("run.chl", {}), log_);
    const std::string either = typeOf("run.chd", {});
    EXPECT_TRUE(either == data_ || either == diskImage_) << either;
}
