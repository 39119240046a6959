// SPDX-License-Identifier: MIT
#pragma once

#include "files/PlainFile.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <system_error>

namespace ostrel {

/// Replaces a file, or makes it: the data goes to a temporary file beside it (TemporaryFiles.h), and commit() renames
/// that once all of it is on the disk. After any failure, and after a power cut at any moment, the old file or the new
/// one is complete.
///
/// The new file keeps the permissions of the old one, and a symbolic link goes on pointing to it, unless links are
/// refused. A file that the user may not write is refused, although its folder would allow the rename; so is anything
/// but a plain file. The values of errors are those of the operating system (errno).
class DurableFile {
public:
    explicit DurableFile(const QString &path, FileOperations &operations = FileOperations::system(),
                         Links links = Links::Follow);
    /// Without a commit the old file stays and the temporary file is removed.
    ~DurableFile();
    DurableFile(const DurableFile &) = delete;
    DurableFile &operator=(const DurableFile &) = delete;

    /// Not buffered: each call is a call of the operating system, so pass large pieces. After a failure nothing more is
    /// written, and commit() returns the failure too. False when there was one.
    bool write(QByteArrayView data);
    /// Brings the data to the disk, while the old file still has its place: of several files that belong together none
    /// need be replaced when one of them cannot be written.
    std::error_code bringToDisk();
    /// Does the same, then replaces. Without an error the new file is on the disk, under its name.
    std::error_code commit();

private:
    void openTemporary();
    bool replaceable();
    void failWith(int error) { failWith({error, std::generic_category()}); }
    void failWith(std::error_code error);
    void syncFolder();

    FileOperations &operations_;
    QByteArray path_;      ///< the file itself, not a link to it
    QByteArray folder_;    ///< with a trailing separator
    QByteArray temporary_; ///< empty when there is none
    int fd_ = -1;
    int mode_ = -1; ///< permissions of the old file, -1 for none
    std::error_code error_;
};

/// Replaces a file by `content` in one call.
std::error_code replaceFile(const QString &path, QByteArrayView content,
                            FileOperations &operations = FileOperations::system(), Links links = Links::Follow);

} // namespace ostrel
