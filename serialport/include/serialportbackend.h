#pragma once

#include "zelvarserialport_global.h"

#include <QObject>

// A byte pipe to one servo bus: a serial port, a pseudo-terminal or an in-process
// simulation. It knows nothing of packets; the library frames what it carries.
// A backend lives in the thread that created it and signals there.
class ZELVAR_SERIALPORT_EXPORT SerialPortBackend : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~SerialPortBackend() override;

    // Empty on success, otherwise a text for the user that names the port and the cause.
    virtual QString open(int baudRate) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    virtual bool write(const QByteArray &bytes) = 0;
    virtual QByteArray readAll() = 0;
    // Blocks until bytes are waiting or `msecs` have passed, for the calls that must
    // return with their reply (reboot, factory reset). True when bytes are waiting.
    virtual bool waitForReadyRead(int msecs) = 0;
    // How long a reply may lag behind its wire time on its way in. By default a few
    // milliseconds, for a bus that answers through a busy event loop.
    virtual int adapterMarginUs() const;
    // How long the adapter may hold received bytes back once the line has gone quiet,
    // so that the end of a reply can look like silence. None by default.
    virtual int adapterLatencyUs() const;
    // Whether bytes arrive no sooner than the wire can carry them, so that a reply that
    // comes before it could have crossed the wire is known not to be one. A stand-in
    // that answers at once says no.
    virtual bool keepsWireTime() const;

signals:
    void readyRead();
    // The bus is gone (adapter unplugged, bridge ended). The backend has already closed
    // itself; `reason` is for the user.
    void failed(const QString &reason);
};
