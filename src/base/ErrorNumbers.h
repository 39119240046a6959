// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace ostrel {

/// All error numbers of the program, by name. `documents/ErrorTable` says how the error route reports each of them,
/// `base/RunTimeError` has the descriptions of the run-time errors.
namespace ErrorNumber {

enum Value : qint32 {
    // Of the stream. After the first three the decoder searches for synchronisation again.
    LostSync = -10,
    UnknownParameter = -11,
    UnknownType = -12,
    FirstSyncNotFound = -13,

    // Of charts, documents and settings.
    PrintFailed = -14,
    ChartFull = -15, ///< no memory for another sample, mark or text: recording and logging end
    SaveFailed = -16,
    LogNotSaved = -17,
    OpenFailed = -18,
    CloseFailed = -19,
    SettingsNotRead = -20,
    LogDamaged = -21,
    LogLost = -22,
    ExportFailed = -24,
    PrintSetupFailed = -25,

    // Events of the serial control.
    SendEvent = 1,
    ReceiveEvent = 2,
    ClearToSendChanged = 3,
    DataSetReadyChanged = 4,
    CarrierChanged = 5,
    Ring = 6,
    EndOfFile = 7,
    Break = 1001,
    ClearToSendTimeout = 1002,
    DataSetReadyTimeout = 1003,
    Framing = 1004,
    Overrun = 1006,
    CarrierTimeout = 1007,
    ReceiveBufferOverflow = 1008,
    Parity = 1009,
    TransmitBufferFull = 1010,

    // Run-time errors. Events of the serial control have the first three numbers too.
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    InternalError = 51,
    FileNotFound = 53,
    FileAlreadyExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    InvalidPortNumber = 8002,
    PortAlreadyOpen = 8005,
    DialogCancelled = 32755,
};

} // namespace ErrorNumber

} // namespace ostrel
