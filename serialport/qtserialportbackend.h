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

    // Time a reply may lag behind its wire time in the adapter and the kernel.
    int adapterMarginUs() const;

private:
    void onErrorOccurred(QSerialPort::SerialPortError error);
    QString openError(QSerialPort::SerialPortError error) const;
    bool requestLowLatency();

    QSerialPort port;
    QString portName;
    bool lowLatency = false;
};
