// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace ostrel {

/// Every failure of the system is reported here. Its number decides what the operator sees and what is logged.
class ErrorRoute {
public:
    virtual ~ErrorRoute() = default;

    /// Negative numbers are the system's own, 1 to 7 and 1001 to 1010 the serial control's events, all else run-time
    /// error numbers. May show a box and so dispatch events before it returns.
    virtual void HandelError(qint32 ErrorCode) = 0;
};

} // namespace ostrel
