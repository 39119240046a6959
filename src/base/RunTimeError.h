// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorNumbers.h"

#include <QString>

#include <exception>
#include <system_error>

namespace ostrel {

/// A failure of the platform or of checked arithmetic: a number (see ErrorNumber) that decides how it is handled, and a
/// line of text for the operator.
class RunTimeError : public std::exception {
public:
    /// With the number's own description.
    explicit RunTimeError(int number);
    RunTimeError(int number, const QString &description);

    int number() const { return number_; }
    const QString &description() const { return description_; }
    const char *what() const noexcept override { return utf8_.constData(); }

    /// One line of text for any number; empty for 0. A number without a text of its own gets a general one.
    static QString describe(int number);

    /// The number of a failed call of the operating system; the value of `error` is an `errno`.
    static int numberOf(const std::error_code &error);
    /// The error of a failed call of the operating system; `what` names the file or device. The value of `error` is an
    /// `errno`.
    static RunTimeError from(const std::error_code &error, const QString &what);
    static RunTimeError fromErrno(int error, const QString &what);

private:
    int number_;
    QString description_;
    QByteArray utf8_;
};

/// For a catch clause: the caught exception as a run-time error. std::bad_alloc becomes 7, other exceptions 51.
RunTimeError caughtError();

} // namespace ostrel
