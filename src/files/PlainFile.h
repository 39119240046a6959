// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileOperations.h"

#include <QByteArray>
#include <QString>

#include <system_error>

namespace ostrel {

/// How a symbolic link at the end of a path is treated.
enum class Links { Follow, Refuse };

/// The error for a path that is not a plain file, with a text for the file type in its mode: "is a folder", "is a named
/// pipe", "is a symbolic link", "is a device", "is a socket". The value is an errno.
std::error_code notPlainError(mode_t mode);

struct OpenedFile {
    int fd = -1; ///< the caller closes it
    std::error_code error;
};

/// Opens a plain file and refuses anything else, without waiting for a pipe, opening a device or following a link.
/// `flags` as for open(2); with O_CREAT a missing file is made.
OpenedFile openPlainFile(const QString &path, int flags, mode_t mode = 0666,
                         FileOperations &operations = FileOperations::system());

/// Reads a small plain file: EFBIG beyond 16 MiB. On an error `content` stays as it was.
std::error_code readPlainFile(const QString &path, QByteArray &content,
                              FileOperations &operations = FileOperations::system());

} // namespace ostrel
