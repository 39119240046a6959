// SPDX-License-Identifier: MIT
#include "desktop/QtSerialControl.h"

#include "base/RunTimeError.h"
#include "base/Steps.h"
#include "desktop/PortLocks.h"

#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <set>
#include <utility>

namespace ostrel {

namespace {

constexpr int lookForDeviceEvery = 1000; ///< ms
/// ms; only for events without bytes, since every arrival of bytes checks the line too.
constexpr int lookAtLineEvery = 2000;

constexpr QFile::Permissions readableToAll = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;

struct LineRow {
    int LineCounters::*counter;
    int event;
};

// clang-format off
constexpr LineRow lineEvents[] = {
    {&LineCounters::cts,     ErrorNumber::ClearToSendChanged},
    {&LineCounters::dsr,     ErrorNumber::DataSetReadyChanged},
    {&LineCounters::carrier, ErrorNumber::CarrierChanged},
    {&LineCounters::ring,    ErrorNumber::Ring},
    {&LineCounters::breaks,  ErrorNumber::Break},
    {&LineCounters::framing, ErrorNumber::Framing},
    {&LineCounters::overrun, ErrorNumber::Overrun},
    {&LineCounters::lost,    ErrorNumber::ReceiveBufferOverflow},
    {&LineCounters::parity,  ErrorNumber::Parity},
};
// clang-format on

int errorFor(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::DeviceNotFoundError:
        return ErrorNumber::InvalidPortNumber;
    case QSerialPort::PermissionError:
        return ErrorNumber::PortAlreadyOpen;
    default:
        return ErrorNumber::PathFileAccess;
    }
}

} // namespace

QtSerialControl::QtSerialControl(QObject *parent, const QString &name, DeviceOfPort deviceOfPort, Counting counting)
    : QObject(parent), deviceOfPort_(std::move(deviceOfPort)), counting_(std::move(counting)) {
    setObjectName(name);
    line_.setBaudRate(QSerialPort::Baud9600);
    line_.setDataBits(QSerialPort::Data8);
    line_.setParity(QSerialPort::NoParity);
    line_.setStopBits(QSerialPort::OneStop);
    line_.setFlowControl(QSerialPort::NoFlowControl);
    lookForDevice_.setInterval(lookForDeviceEvery);
    lookAtLine_.setInterval(lookAtLineEvery);
    // Queued: QSerialPort emits no second signal while a handler of the first one runs, not even from the event loop of
    // a dialog, and none at all after an exception.
    connect(&line_, &QSerialPort::readyRead, this, &QtSerialControl::lookAtLine, Qt::QueuedConnection);
    connect(&line_, &QSerialPort::errorOccurred, this, &QtSerialControl::onLineError, Qt::QueuedConnection);
    connect(&lookForDevice_, &QTimer::timeout, this, &QtSerialControl::lookForDevice);
    connect(&lookAtLine_, &QTimer::timeout, this, &QtSerialControl::lookAtLine);
}

void QtSerialControl::setPortOpen(bool open) {
    if (open == open_)
        return;
    if (open) {
        path_ = deviceOfPort_(port_);
        if (path_.isEmpty())
            throw RunTimeError(ErrorNumber::InvalidPortNumber);
        input_.clear();
        overflowing_ = false;
        openDevice();
        // Bytes that arrived before the opening are dropped: a closed port receives nothing.
        line_.clear(QSerialPort::Input);
        line_.clearError();
    } else {
        closeDevice();
        lookForDevice_.stop();
    }
    open_ = open;
}

void QtSerialControl::openDevice() {
    auto unlessOpen = qScopeGuard([this] { closeDevice(); });
    device_.emplace(path_);
    PortLocks::takeOver({path_, device_->path()});
    const QString name = PortLocks::freeName({device_->path(), device_->privatePath()});
    const QString lockFile = PortLocks::fileOfQSerialPort(name);
    held_.emplace(device_->descriptor(), lockFile);
    line_.setPortName(name);
    if (!line_.open(QIODevice::ReadOnly))
        throw RunTimeError(errorFor(line_.error()), line_.errorString());
    QFile::setPermissions(lockFile, readableToAll); // other users must be able to see whether its owner is alive
    device_->excludeOthers();
    countInDevice();
    seen_ = counting_(*device_);
    if (seen_)
        lookAtLine_.start();
    unlessOpen.dismiss();
}

void QtSerialControl::closeDevice() {
    lookAtLine_.stop();
    if (line_.isOpen())
        line_.close();
    held_.reset();
    device_.reset();
}

/// The device was unplugged. The first error closes it, since QSerialPort would repeat the error without end. No event
/// is raised: it would count as a sign of life. An error of a port that was closed meanwhile is ignored.
void QtSerialControl::onLineError() {
    if (!open_ || !line_.isOpen() || line_.error() == QSerialPort::NoError)
        return;
    keep(line_.readAll() + device_->takeWaiting());
    closeDevice();
    lookForDevice_.start();
}

void QtSerialControl::lookForDevice() {
    if (errorNumberOf([this] { openDevice(); }) == 0)
        lookForDevice_.stop();
}

void QtSerialControl::setRThreshold(int bytes) {
    threshold_ = bytes;
    countInDevice();
}

int QtSerialControl::InBufferCount() const {
    const qsizetype waiting = input_.size() + line_.bytesAvailable() + (device_ ? device_->waiting() : 0);
    return static_cast<int>(std::min<qsizetype>(waiting, inBufferSize_));
}

QByteArray QtSerialControl::Input() {
    QByteArray bytes = std::exchange(input_, {});
    if (device_)
        bytes += line_.readAll() + device_->takeWaiting();
    overflowing_ = false;
    countInDevice();
    return bytes;
}

void QtSerialControl::lookAtLine() {
    if (!device_)
        return;
    const auto afterwards = qScopeGuard([this] { countInDevice(); });
    const QByteArray arrived = line_.readAll() + device_->takeWaiting();
    std::set<int> happened = eventsOfLine();
    if (!keep(arrived) && !std::exchange(overflowing_, true))
        happened.insert(ErrorNumber::ReceiveBufferOverflow);
    QList<int> events(happened.begin(), happened.end());
    if (threshold_ > 0 && !arrived.isEmpty() && input_.size() >= threshold_)
        events << ErrorNumber::ReceiveEvent;
    raise(events);
}

/// False when the input buffer could not take all of it.
bool QtSerialControl::keep(const QByteArray &bytes) {
    const qsizetype room = std::max<qsizetype>(0, inBufferSize_ - input_.size());
    input_ += bytes.left(room);
    return bytes.size() <= room;
}

/// The events since the last check of the line, each once.
std::set<int> QtSerialControl::eventsOfLine() {
    std::set<int> events;
    if (!seen_)
        return events;
    const LineCounters before = *seen_;
    seen_ = counting_(*device_).value_or(before);
    for (const LineRow &row : lineEvents) {
        if ((*seen_).*row.counter != before.*row.counter)
            events.insert(row.event);
    }
    return events;
}

/// Stops when a handler has closed the port. After an error of a handler the other events are still raised.
void QtSerialControl::raise(const QList<int> &events) {
    EveryStep told;
    for (const int event : events) {
        event_ = event;
        if (open_ && OnComm)
            told.run(OnComm);
    }
    told.raise();
}

/// The device counts only the bytes that the input buffer still lacks for a receive event.
void QtSerialControl::countInDevice() {
    if (device_)
        device_->reportAt(static_cast<int>(std::max<qsizetype>(1, threshold_ - input_.size())));
}

} // namespace ostrel
