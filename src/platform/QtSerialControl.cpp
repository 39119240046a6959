// SPDX-License-Identifier: MIT
#include "platform/QtSerialControl.h"

#include "base/RunTimeError.h"
#include "base/Steps.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int lookForDeviceEvery = 1000; ///< ms
/// ms; only for faults without bytes, as every receive event looks too.
constexpr int tellFaultsEvery = 2000;

struct FaultRow {
    int LineCounters::*counter;
    SerialControl::Event event;
};

constexpr FaultRow faults[] = {
    {&LineCounters::breaks, SerialControl::Break},    {&LineCounters::framing, SerialControl::Framing},
    {&LineCounters::overrun, SerialControl::Overrun}, {&LineCounters::lost, SerialControl::ReceiveBufferOverflow},
    {&LineCounters::parity, SerialControl::Parity},
};

int errorFor(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::DeviceNotFoundError:
        return RunTimeError::InvalidPortNumber;
    case QSerialPort::PermissionError:
        return RunTimeError::PortAlreadyOpen;
    default:
        return RunTimeError::PathFileAccess;
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
    tellFaults_.setInterval(tellFaultsEvery);
    connect(&line_, &QSerialPort::readyRead, this, &QtSerialControl::receive);
    connect(&line_, &QSerialPort::errorOccurred, this, &QtSerialControl::onLineError);
    connect(&lookForDevice_, &QTimer::timeout, this, &QtSerialControl::lookForDevice);
    connect(&tellFaults_, &QTimer::timeout, this, &QtSerialControl::tellFaults);
}

void QtSerialControl::setPortOpen(bool open) {
    if (open == open_)
        return;
    if (open) {
        path_ = deviceOfPort_(port_);
        if (path_.isEmpty())
            throw RunTimeError(RunTimeError::InvalidPortNumber);
        input_.clear();
        overflowing_ = false;
        openDevice();
        // What came before nobody listened to; a line that was closed has heard nothing.
        line_.clear(QSerialPort::Input);
    } else {
        closeDevice();
        lookForDevice_.stop();
    }
    open_ = open;
}

void QtSerialControl::openDevice() {
    device_.emplace(path_);
    line_.setPortName(path_);
    if (!line_.open(QIODevice::ReadOnly)) {
        device_.reset();
        throw RunTimeError(errorFor(line_.error()), line_.errorString());
    }
    device_->excludeOthers();
    countInDevice();
    told_ = counting_(*device_);
    if (told_)
        tellFaults_.start();
}

void QtSerialControl::closeDevice() {
    tellFaults_.stop();
    line_.close();
    device_.reset();
}

/// The device has vanished. QSerialPort would go on complaining without end, so that the first complaint closes it. No
/// event is raised: an unplugged line is no sign of life.
void QtSerialControl::onLineError(QSerialPort::SerialPortError error) {
    if (error == QSerialPort::NoError || !line_.isOpen() || !open_)
        return;
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

void QtSerialControl::receive() {
    const bool kept = keep(line_.readAll());
    tellFaults();
    if (!kept && !std::exchange(overflowing_, true))
        raise(ReceiveBufferOverflow);
    if (threshold_ > 0 && InBufferCount() >= threshold_)
        raise(Receive);
    countInDevice();
}

/// False when the input buffer could not take all of it.
bool QtSerialControl::keep(const QByteArray &bytes) {
    const qsizetype room = std::max<qsizetype>(0, inBufferSize_ - input_.size());
    input_ += bytes.left(room);
    return bytes.size() <= room;
}

/// One event for each kind of fault since the last look, however many there were.
void QtSerialControl::tellFaults() {
    if (!device_ || !told_)
        return;
    const LineCounters before = *told_;
    const LineCounters now = counting_(*device_).value_or(before);
    told_ = now;
    for (const FaultRow &fault : faults) {
        if (now.*fault.counter != before.*fault.counter)
            raise(fault.event);
    }
}

/// Nothing comes from a port that a handler has closed meanwhile.
void QtSerialControl::raise(int event) {
    event_ = event;
    if (open_ && OnComm)
        OnComm();
}

/// What already waits in the input buffer need not be counted again.
void QtSerialControl::countInDevice() {
    if (device_)
        device_->reportAt(static_cast<int>(std::max<qsizetype>(1, threshold_ - input_.size())));
}
