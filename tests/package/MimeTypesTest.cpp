// SPDX-License-Identifier: MIT
#include "fakes/TestFolder.h"

#include <QMimeDatabase>
#include <gmock/gmock.h>

/// On a desktop that has the program installed.
TEST(MimeTypes, OwnFilesAreKnownByTheirContentOrElseTheirNameAndThoseOfOthersStayTheirs) {
    qputenv("XDG_DATA_HOME", DATA_HOME);
    qputenv("XDG_DATA_DIRS", DATA_HOME);
    const TestFolder folder;
    const QByteArray data = folder.content(GOLDEN "version1.chd");
    const QByteArray log = folder.content(GOLDEN "version1.chl");
    const QByteArray diskImage = "MComprHD" + QByteArray(120, '\0');
    const std::tuple<const char *, QByteArray, const char *> files[] = {
        {"run.chd", data, "ostrel-data"},
        {"RUN.CHD", data, "ostrel-data"},
        {"run", data, "ostrel-data"},
        {"run.chl", log, "ostrel-log"},
        {"run", log, "ostrel-log"},
        {"run.chl", {}, "ostrel-log"},
        {"disk", diskImage, "mame-chd"},
        {"disk.chd", diskImage, "mame-chd"},
        {"run.chd", {}, "(ostrel-data|mame-chd)"},
    };
    for (const auto &[name, content, type] : files) {
        folder.lay(name, content);
        const std::string found = QMimeDatabase().mimeTypeForFile(folder.at(name)).name().toStdString();
        EXPECT_THAT(found, testing::MatchesRegex(std::string("application/x-") + type)) << name;
    }
}
