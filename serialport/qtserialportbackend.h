#pragma once

#include "serialportbackend.h"

#include <QSerialPort>

// A SerialPortBackend on a real serial port or pseudo-terminal, through QSerialPort.
class QtSerialPortBackend : public SerialPortBackend
{
    Q_OBJECT

public:
    // `portName` is what the user sees; `location` is what is opened (a name or a path).
    QtSerialPortBackend(const QString &portName, const QString &location);

    QString open(int baudRate) override;
    void close() override;
    bool isOpen() const override;
    bool write(const QByteArray &bytes) override;
    QByteArray readAll() override;
    bool waitForReadyRead(int msecs) override;
    // Settled once the port is open: the kind of port does not change while it is.
    int adapterMarginUs() const override { return marginUs; }
    int adapterLatencyUs() const override { return latencyUs; }

private:
    void onErrorOccurred(QSerialPort::SerialPortError error);
    QString openError(QSerialPort::SerialPortError error) const;
    bool requestLowLatency();
    bool isHungUp() const;
    QString devicePath() const;
    void settleTiming(bool lowLatency);
    static QString lossReason(QSerialPort::SerialPortError error);

    QSerialPort port;
    QString portName;
    int marginUs = 0;
    int latencyUs = 0;
};
