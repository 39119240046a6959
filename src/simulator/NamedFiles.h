// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/SystemFile.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

struct stat;

namespace ostrel {

/// A file that is read before the play begins. Raises a run-time error when it cannot be read or is a folder.
class InputFile {
public:
    explicit InputFile(const QString &path);

    const QByteArray &content() const { return content_; }
    /// None unless it is a plain file.
    const std::optional<FileIdentity> &identity() const { return identity_; }

private:
    QByteArray content_;
    std::optional<FileIdentity> identity_;
};

/// A file for a record of the play: a plain file, a pipe with a reader, a terminal, /dev/null. Its content is kept
/// until begin(). A file that is already standard output or standard error is written through that stream.
class OutputFile {
public:
    /// Raises a run-time error for a folder, a disk, a socket, a pipe without a reader within five seconds, and a file
    /// that may not be written.
    explicit OutputFile(const QString &path);
    /// Removes a file that the constructor made if begin() was never called.
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    /// None unless it is a plain file.
    const std::optional<FileIdentity> &identity() const { return identity_; }

    /// Empties it.
    void begin();
    /// Not buffered, so that the file is complete in whatever way the program ends. Raises a run-time error.
    void write(const QByteArray &bytes);

private:
    void joinStandardStream(const struct stat &found);
    void openApart(int flags);

    QString path_;
    SystemFile file_;
    std::optional<FileIdentity> identity_;
    bool along_ = false; // a standard stream is the same file
    bool made_ = false;
    bool begun_ = false;
};

/// A file named on the command line, and its purpose.
struct NamedFile {
    QString purpose; ///< "--truth"
    QString path;
    std::optional<FileIdentity> identity;
    bool isLink = false; ///< only the name is used, not the file that it leads to
};

/// The message about two names that are the same file, also by a link; empty when all differ.
QString clashOf(const std::vector<NamedFile> &files);

} // namespace ostrel
