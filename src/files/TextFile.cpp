// SPDX-License-Identifier: MIT
#include "files/TextFile.h"

#include "base/RunTimeError.h"
#include "files/PlainFile.h"

#include <fcntl.h>

#include <cerrno>

namespace ostrel {

void TextFile::append(const QString &path, const QString &text) {
    FileOperations &system = FileOperations::system();
    const OpenedFile file = openPlainFile(path, O_WRONLY | O_APPEND | O_CREAT, 0666, system);
    if (file.error)
        throw RunTimeError::from(file.error, path);
    const QByteArray bytes = text.toUtf8();
    int error = writeAll(system, file.fd, bytes.constData(), static_cast<std::size_t>(bytes.size())) ? 0 : errno;
    if (system.close(file.fd) != 0 && error == 0)
        error = errno;
    if (error != 0)
        throw RunTimeError::fromErrno(error, path);
}

} // namespace ostrel
