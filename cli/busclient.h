#pragma once

#include "transactionobserver.h"
#include "zelvarserialportinterface.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

class QEventLoop;

// What became of one request: the servo's data and error byte, or why there is none.
struct BusAnswer
{
    bool answered = false;
    quint8 error = 0;
    // The bytes read, after the error byte; empty for other requests.
    QByteArray data;
    // The whole status packet.
    QByteArray packet;
    // Why nothing usable came back; empty when the servo answered.
    QString problem;
};

// The library driven one request at a time, each call returning with its outcome, as a
// console program wants it. The outcome comes from the library's own account of the
// transaction, so a lost or damaged reply is told apart from a servo's error.
class BusClient : public TransactionObserver
{
public:
    BusClient();
    ~BusClient() override;

    // Empty on success, otherwise the library's text for the user.
    QString open(const QString &portName, int baudRate);
    void close();
    QString portName() const { return openPort; }
    int baudRate() const { return openRate; }

    std::vector<std::shared_ptr<SerialPortItem>> ports();

    BusAnswer read(quint8 id, quint8 address, quint8 length);
    BusAnswer write(quint8 id, quint8 address, const QByteArray &data);
    BusAnswer reboot(quint8 id);
    BusAnswer reset(quint8 id, ZelvarSerialPortInterface::ResetKeeps keeps);
    // False when the ping could not be sent; `replies` in the order they arrived.
    bool ping(quint8 id, std::vector<PingReply> &replies);
    bool broadcastPing(quint8 highestId, std::vector<PingReply> &replies);

private:
    void transactionEnded(const BusTransaction &transaction) override;
    void portLost(const QString &reason) override;
    BusAnswer finish(bool sent, int dataOffset, int dataLength);

    ZelvarSerialPortInterface library;
    QString openPort;
    int openRate = 0;
    std::optional<BusTransaction> ended;
    QString lostReason;
    QEventLoop *waiting = nullptr;
};
