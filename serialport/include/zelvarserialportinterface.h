#pragma once

#include "pingreply.h"
#include "serialportitem.h"
#include "zelvarserialport_global.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class BusSession;
class TransactionObserver;

// The program's only door to a servo bus. One object drives one port; requests are
// framed as Protocol 2.0 and their replies are handed back through
// readPendingSerialData() once they are complete and valid.
class ZELVAR_SERIALPORT_EXPORT ZelvarSerialPortInterface : public QObject
{
    Q_OBJECT

public:
    // `protocolVersion` selects the wire protocol; only 2 is spoken.
    ZelvarSerialPortInterface(QObject *parent, unsigned char protocolVersion);
    virtual ~ZelvarSerialPortInterface();

    QString openSerialPort(QString portName, int baudRate);
    void closeSerialPort();
    std::vector<std::shared_ptr<SerialPortItem>> getSerialPortList();

    bool readData(unsigned char id, unsigned char address, unsigned char length,
                  std::function<void()> onData);
    bool writeData(unsigned char id, unsigned char address, const QByteArray &data,
                   std::function<void()> onData);
    bool reboot(unsigned char id, std::function<void()> onData);
    bool reset(unsigned char id, std::function<void()> onData);

    // What a factory reset leaves as it was.
    enum class ResetKeeps { Nothing, Id, IdAndBaudRate };
    bool reset(unsigned char id, ResetKeeps keeps, std::function<void()> onData);

    // Ping one servo and return once it has answered or its time is up. False when no
    // port is open, a request is under way or the ping could not be sent.
    bool ping(unsigned char id, std::vector<PingReply> &replies);
    // Ping every servo at once. Servos answer in order of id, each in a slot of its own;
    // this returns once servos up to `highestId` have had their time to answer.
    bool broadcastPing(unsigned char highestId, std::vector<PingReply> &replies);

    QByteArray readPendingSerialData();
    void cleanUp();

    // Told of every transaction and of a lost port; not owned, null for none. Observing
    // changes neither what is handed over nor when.
    void setTransactionObserver(TransactionObserver *observer);

private:
    std::unique_ptr<BusSession> session;
};
