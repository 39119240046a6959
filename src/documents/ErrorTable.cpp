// SPDX-License-Identifier: MIT
#include "documents/ErrorTable.h"

#include <algorithm>
#include <iterator>

namespace ostrel {

namespace ErrorTable {

namespace {

using enum ErrorNumber::Value;

// clang-format off
constexpr BoxRow boxes[] = {
    // code                 icon                  caption              text
    {PrintSetupFailed,      BoxIcon::Exclamation, "ERROR!",            "Cannot Load Print Setup dialog box."},
    {ExportFailed,          BoxIcon::Exclamation, "ERROR!",            "Cannot Export."},
    {LogLost,               BoxIcon::None,        "ERROR!",            "Serious Data Error! Most recent data collected is permanently lost."},
    {LogDamaged,            BoxIcon::None,        "",                  "Log file is corapted"},
    {SettingsNotRead,       BoxIcon::Exclamation, "ERROR!",            "Cannot load configuration file.\r%1\rUsing default values."},
    {CloseFailed,           BoxIcon::None,        "FILE CLOSE ERROR!", "Disk reading error while closing"},
    {OpenFailed,            BoxIcon::None,        "FILE OPEN ERROR!",  "An error occurred while opening the Data File.  The file was NOT opened."},
    {LogNotSaved,           BoxIcon::None,        "ERROR!",            "Serious Data Error! Most recent data collected is permanently lost.\r"
                                                                       "Unable to save the log file"},
    {SaveFailed,            BoxIcon::None,        "FILE SAVE ERROR!",  "An error occurred while saving the data.  The data was NOT saved."},
    {ChartFull,             BoxIcon::None,        "",                  "Out of memory, Recording and Logging stopped.  Please exit Ostrel."},
    {PrintFailed,           BoxIcon::None,        "PRINT ERROR!",      "An error occurred during printing the chart recording.\r"
                                                                       "Please try again.  If the problem persists, contact Zarvex technical support."},
};

constexpr LogRow entries[] = {
    // code                 ends sync  text
    {FirstSyncNotFound,     false, "First Sync not found"},
    {UnknownType,           true,  "ERROR - Unknown data type."},
    {UnknownParameter,      true,  "ERROR - Unknown data parameter."},
    {LostSync,              true,  "ERROR - Lost Sync."},
    {Break,                 false, "ERROR - Break signal received."},
    {ClearToSendTimeout,    false, "ERROR - Clear-to-send timeout."},
    {DataSetReadyTimeout,   false, "ERROR - Data-set ready timeout."},
    {Overrun,               false, "The COM Port hardware is unable to keep up with the data transmission."},
    {CarrierTimeout,        false, "ERROR - Carrier detect timeout."},
    {ReceiveBufferOverflow, false, "ERROR - Receive buffer overflow."},
    {TransmitBufferFull,    false, "ERROR - Transmit buffer full."},
};
// clang-format on

constexpr qint32 silent[] = {SendEvent, DataSetReadyChanged, CarrierChanged, Ring, EndOfFile, Framing, Parity};

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

} // namespace ostrel
