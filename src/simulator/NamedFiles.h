// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/SystemFile.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

struct stat;

namespace ostrel {

/// A file that is read whole before the play begins. Raises a run-time error when it cannot be read or is a folder.
class InputFile {
public:
    explicit InputFile(const QString &path);

    const QByteArray &content() const { return content_; }
    /// None for what is no plain file.
    const std::optional<FileIdentity> &identity() const { return identity_; }

private:
    QByteArray content_;
    std::optional<FileIdentity> identity_;
};

/// A file that a record of the play goes to: a plain file, a pipe with a reader, a terminal, /dev/null. What is in
/// it is left alone until begin(). What is standard output or standard error already is written along with these.
class OutputFile {
public:
    /// Raises a run-time error for a folder, a pipe that nobody reads within five seconds, a disk, and for what may not
    /// be written.
    explicit OutputFile(const QString &path);
    /// A file that was made here and never begun is removed again.
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    /// None for what is no plain file.
    const std::optional<FileIdentity> &identity() const { return identity_; }

    /// Empties it.
    void begin();
    /// Not buffered, so that the file is whole however the program ends. Raises a run-time error.
    void write(const QByteArray &bytes);

private:
    void joinStandardStream(const struct stat &found);
    void openApart(int flags);

    QString path_;
    SystemFile file_;
    std::optional<FileIdentity> identity_;
    bool along_ = false; // with a standard stream
    bool made_ = false;
    bool begun_ = false;
};

/// A file that the command line names, and what for.
struct NamedFile {
    QString purpose; ///< "--truth"
    QString path;
    std::optional<FileIdentity> identity;
    bool isLink = false; ///< the name alone is used: what it leads to is not touched
};

/// The message about two of these that are one file, by whatever spelling or link; empty when all differ.
QString clashOf(const std::vector<NamedFile> &files);

} // namespace ostrel
