// SPDX-License-Identifier: MIT
#include "base/RunTimeError.h"

#include <cerrno>
#include <new>

namespace ostrel {

namespace {

struct Description {
    int number;
    const char *text;
};

// clang-format off
constexpr Description descriptions[] = {
    {0,                                 ""},
    {ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument"},
    {ErrorNumber::Overflow,             "Overflow"},
    {ErrorNumber::OutOfMemory,          "Out of memory"},
    {ErrorNumber::SubscriptOutOfRange,  "Subscript out of range"},
    {ErrorNumber::TypeMismatch,         "Type mismatch"},
    {ErrorNumber::InternalError,        "Internal error"},
    {ErrorNumber::FileNotFound,         "File not found"},
    {ErrorNumber::FileAlreadyExists,    "File already exists"},
    {ErrorNumber::DiskFull,             "Disk full"},
    {ErrorNumber::PermissionDenied,     "Permission denied"},
    {ErrorNumber::PathFileAccess,       "Path/File access error"},
    {ErrorNumber::PathNotFound,         "Path not found"},
    {ErrorNumber::InvalidPortNumber,    "Invalid port number"},
    {ErrorNumber::PortAlreadyOpen,      "Port already open"},
    {ErrorNumber::DialogCancelled,      "Cancel was selected."},
};
// clang-format on

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

int RunTimeError::numberOf(const std::error_code &error) {
    switch (error.value()) {
    case ENOENT:
    case ENOTDIR:
        return ErrorNumber::PathNotFound;
    case EEXIST:
        return ErrorNumber::FileAlreadyExists;
    case ENOSPC:
    case EDQUOT:
        return ErrorNumber::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return ErrorNumber::PermissionDenied;
    case ENOMEM:
        return ErrorNumber::OutOfMemory;
    default:
        return ErrorNumber::PathFileAccess;
    }
}

RunTimeError RunTimeError::from(const std::error_code &error, const QString &what) {
    // A failed call without an error code must not be reported as a success.
    const QString why = error ? QString::fromLocal8Bit(error.message().c_str()) : describe(ErrorNumber::PathFileAccess);
    return {numberOf(error), QStringLiteral("%1: %2").arg(what, why)};
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
        return RunTimeError(ErrorNumber::OutOfMemory);
    } catch (const std::exception &error) {
        return {ErrorNumber::InternalError, QString::fromLocal8Bit(error.what())};
    }
}

} // namespace ostrel
