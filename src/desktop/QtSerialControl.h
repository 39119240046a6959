// SPDX-License-Identifier: MIT
#pragma once

#include "desktop/HeldPort.h"
#include "desktop/SerialDevice.h"
#include "platform/SerialControl.h"

#include <QList>
#include <QObject>
#include <QSerialPort>
#include <QTimer>

#include <functional>
#include <optional>
#include <set>

namespace ostrel {

/// A serial port with QSerialPort. The terminal itself counts the bytes up to RThreshold, so the program wakes up only
/// for a whole receive event.
class QtSerialControl : public QObject, public SerialControl {
    Q_OBJECT

public:
    /// Returns the device path for a port number; empty for none.
    using DeviceOfPort = std::function<QString(int)>;
    /// Reads the counters of the line's faults and signal changes.
    using Counting = std::function<std::optional<LineCounters>(const SerialDevice &)>;

    /// `name` becomes the object name.
    QtSerialControl(QObject *parent, const QString &name, DeviceOfPort deviceOfPort,
                    Counting counting = &SerialDevice::counters);

    qint16 CommPort() const override { return port_; }
    void setCommPort(qint16 number) override { port_ = number; }
    bool PortOpen() const override { return open_; }
    /// Opening an open port does nothing.
    void setPortOpen(bool open) override;
    void setInBufferSize(int bytes) override { inBufferSize_ = bytes; }
    void setRThreshold(int bytes) override;
    int InBufferCount() const override;
    QByteArray Input() override;
    int CommEvent() const override { return event_; }
    void lookAtLine() override;

private:
    void openDevice();
    void closeDevice();
    void onLineError();
    void lookForDevice();
    bool keep(const QByteArray &bytes);
    std::set<int> eventsOfLine();
    void raise(const QList<int> &events);
    void countInDevice();

    DeviceOfPort deviceOfPort_;
    Counting counting_;
    qint16 port_ = 1;
    int inBufferSize_ = 32000;
    int threshold_ = 1;
    int event_ = 0;

    bool open_ = false;
    QString path_;                       ///< of the open port
    std::optional<SerialDevice> device_; ///< none while the port is closed or its device unplugged
    std::optional<HeldPort> held_;       ///< of the device
    QSerialPort line_;
    QTimer lookForDevice_; ///< on while the device is unplugged
    QTimer lookAtLine_;    ///< on while the device counts, or has signals
    std::optional<LineCounters> seen_;

    QByteArray input_;
    bool overflowing_ = false; ///< bytes are being lost, and the event was raised
};

} // namespace ostrel
