// SPDX-License-Identifier: MIT
#include "documents/ErrorTable.h"

#include <algorithm>
#include <iterator>

namespace ErrorTable {

namespace {

// clang-format off
constexpr BoxRow boxes[] = {
    // code icon                  caption              text
    {-25, BoxIcon::Exclamation, "ERROR!",            "Cannot Load Print Setup dialog box."},
    {-24, BoxIcon::Exclamation, "ERROR!",            "Cannot Export."},
    {-22, BoxIcon::None,        "ERROR!",            "Serious Data Error! Most recent data collected is permanently lost."},
    {-21, BoxIcon::None,        "",                  "Log file is corapted"},
    {-20, BoxIcon::Exclamation, "ERROR!",            "Cannot load configuration file.\r%1\rUsing default values."},
    {-19, BoxIcon::None,        "FILE CLOSE ERROR!", "Disk reading error while closing"},
    {-18, BoxIcon::None,        "FILE OPEN ERROR!",  "An error occurred while opening the Data File.  The file was NOT opened."},
    {-17, BoxIcon::None,        "ERROR!",            "Serious Data Error! Most recent data collected is permanently lost.\r"
                                                     "Unable to save the log file"},
    {-16, BoxIcon::None,        "FILE SAVE ERROR!",  "An error occurred while saving the data.  The data was NOT saved."},
    {-15, BoxIcon::None,        "",                  "Out of memory, Recording and Logging stopped.  Please exit Ostrel."},
    {-14, BoxIcon::None,        "PRINT ERROR!",      "An error occurred during printing the chart recording.\r"
                                                     "Please try again.  If the problem persists, contact Zarvex technical support."},
};

constexpr LogRow entries[] = {
    // code ends sync  text
    {-13,   false, "First Sync not found"},
    {-12,   true,  "ERROR - Unknown data type."},
    {-11,   true,  "ERROR - Unknown data parameter."},
    {-10,   true,  "ERROR - Lost Sync."},
    {1001,  false, "ERROR - Break signal received."},
    {1002,  false, "ERROR - Clear-to-send timeout."},
    {1003,  false, "ERROR - Data-set ready timeout."},
    {1006,  false, "The COM Port hardware is unable to keep up with the data transmission."},
    {1007,  false, "ERROR - Carrier detect timeout."},
    {1008,  false, "ERROR - Receive buffer overflow."},
    {1010,  false, "ERROR - Transmit buffer full."},
};
// clang-format on

constexpr qint32 silent[] = {1, 4, 5, 6, 7, 1004, 1009};

template <typename Row, std::size_t count>
const Row *find(const Row (&rows)[count], qint32 code) {
    const auto found =
        std::find_if(std::begin(rows), std::end(rows), [code](const Row &row) { return row.code == code; });
    return found == std::end(rows) ? nullptr : &*found;
}

} // namespace

const BoxRow *boxFor(qint32 code) { return find(boxes, code); }

const LogRow *logFor(qint32 code) { return find(entries, code); }

bool isSilent(qint32 code) { return std::find(std::begin(silent), std::end(silent), code) != std::end(silent); }

} // namespace ErrorTable
