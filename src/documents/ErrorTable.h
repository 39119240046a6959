// SPDX-License-Identifier: MIT
#pragma once

#include "base/ErrorNumbers.h"
#include "platform/Prompts.h"

#include <QtGlobal>

namespace ostrel {

/// How each number of the error route is reported. A number in none of the tables is logged with its description.
namespace ErrorTable {

/// Shown in a message box with an Ok button; `text` may contain descriptionPlace.
struct BoxRow {
    qint32 code;
    BoxIcon icon;
    const char *caption; ///< empty: the application's title
    const char *text;
};

/// Reported by a beep and an entry of the error log.
struct LogRow {
    qint32 code;
    bool endsSync; ///< the decoder must search for synchronisation again
    const char *text;
};

/// The placeholder in a box's text for the description of the current run-time error.
inline constexpr char descriptionPlace[] = "%1";

/// The box of a number, the log entry of a number; nullptr for none.
const BoxRow *boxFor(qint32 code);
const LogRow *logFor(qint32 code);
/// The number is ignored.
bool isSilent(qint32 code);

inline constexpr int fullBuffer = 32000; ///< bytes beyond which the input buffer counts as full
inline constexpr char bufferFullText[] = "ERROR - Communication buffer full.";

} // namespace ErrorTable

} // namespace ostrel
