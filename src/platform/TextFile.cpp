// SPDX-License-Identifier: MIT
#include "platform/TextFile.h"

#include "base/RunTimeError.h"
#include "files/FileOperations.h"

#include <QFile>
#include <fcntl.h>

#include <cerrno>

void TextFile::append(const QString &path, const QString &text) {
    FileOperations &system = FileOperations::system();
    const int file = system.open(QFile::encodeName(path).constData(), O_WRONLY | O_APPEND | O_CREAT, 0666);
    if (file < 0)
        throw RunTimeError::fromErrno(errno, path);
    const QByteArray bytes = text.toUtf8();
    int error = writeAll(system, file, bytes.constData(), static_cast<std::size_t>(bytes.size())) ? 0 : errno;
    if (system.close(file) != 0 && error == 0)
        error = errno;
    if (error != 0)
        throw RunTimeError::fromErrno(error, path);
}
