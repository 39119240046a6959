// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"

#include <cerrno>
#include <new>

namespace {

struct Description {
    int number;
    const char *text;
};

// clang-format off
constexpr Description descriptions[] = {
    {0,     ""},
    {5,     "Invalid procedure call or argument"},
    {6,     "Overflow"},
    {7,     "Out of memory"},
    {9,     "Subscript out of range"},
    {13,    "Type mismatch"},
    {51,    "Internal error"},
    {53,    "File not found"},
    {58,    "File already exists"},
    {61,    "Disk full"},
    {70,    "Permission denied"},
    {75,    "Path/File access error"},
    {76,    "Path not found"},
    {8002,  "Invalid port number"},
    {8005,  "Port already open"},
    {32755, "Cancel was selected."},
};
// clang-format on

int numberForErrno(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return RunTimeError::PathNotFound;
    case EEXIST:
        return RunTimeError::FileAlreadyExists;
    case ENOSPC:
    case EDQUOT:
        return RunTimeError::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return RunTimeError::PermissionDenied;
    case ENOMEM:
        return RunTimeError::OutOfMemory;
    default:
        return RunTimeError::PathFileAccess;
    }
}

} // namespace

RunTimeError::RunTimeError(int number) : RunTimeError(number, describe(number)) {}

RunTimeError::RunTimeError(int number, const QString &description)
    : number_(number), description_(description),
      utf8_(QByteArray("Run-time error ") + QByteArray::number(number) + ": " + description.toUtf8()) {}

QString RunTimeError::describe(int number) {
    for (const Description &entry : descriptions) {
        if (entry.number == number)
            return QString::fromLatin1(entry.text);
    }
    return QStringLiteral("Application-defined or object-defined error");
}

RunTimeError RunTimeError::from(const std::error_code &error, const QString &what) {
    // A call that failed without a reason must not be told as a success.
    const QString why = error ? QString::fromLocal8Bit(error.message().c_str()) : describe(PathFileAccess);
    return {numberForErrno(error.value()), QStringLiteral("%1: %2").arg(what, why)};
}

RunTimeError RunTimeError::fromErrno(int error, const QString &what) {
    return from({error, std::generic_category()}, what);
}

RunTimeError caughtError() {
    try {
        throw;
    } catch (const RunTimeError &error) {
        return error;
    } catch (const std::bad_alloc &) {
        return RunTimeError(RunTimeError::OutOfMemory);
    } catch (const std::exception &error) {
        return {RunTimeError::InternalError, QString::fromLocal8Bit(error.what())};
    }
}
