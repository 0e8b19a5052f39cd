#include "cli/busclient.h"

#include <QEventLoop>
#include <QTimer>

namespace {

// The library gives every request up within its own time; this only guards against
// waiting forever should it ever fail to say so.
constexpr int GiveUpMs = 10000;
// Status packet: header, id, length, instruction and error byte before the data.
constexpr int ReadDataOffset = 9;

} // namespace

BusClient::BusClient()
    : library(nullptr, 2)
{
    library.setTransactionObserver(this);
}

BusClient::~BusClient()
{
    library.setTransactionObserver(nullptr);
    library.closeSerialPort();
}

QString BusClient::open(const QString &portName, int baudRate)
{
    lostReason.clear();
    const QString error = library.openSerialPort(portName, baudRate);
    openPort = error.isEmpty() ? portName : QString();
    openRate = error.isEmpty() ? baudRate : 0;
    return error;
}

void BusClient::close()
{
    library.closeSerialPort();
    openPort.clear();
    openRate = 0;
}

std::vector<std::shared_ptr<SerialPortItem>> BusClient::ports()
{
    return library.getSerialPortList();
}

BusAnswer BusClient::read(quint8 id, quint8 address, quint8 length)
{
    ended.reset();
    return finish(library.readData(id, address, length, {}), ReadDataOffset, length);
}

BusAnswer BusClient::write(quint8 id, quint8 address, const QByteArray &data)
{
    ended.reset();
    return finish(library.writeData(id, address, data, {}), 0, 0);
}

BusAnswer BusClient::reboot(quint8 id)
{
    ended.reset();
    return finish(library.reboot(id, {}), 0, 0);
}

BusAnswer BusClient::reset(quint8 id, ZelvarSerialPortInterface::ResetKeeps keeps)
{
    ended.reset();
    return finish(library.reset(id, keeps, {}), 0, 0);
}

bool BusClient::ping(quint8 id, std::vector<PingReply> &replies)
{
    return library.ping(id, replies);
}

bool BusClient::broadcastPing(quint8 highestId, std::vector<PingReply> &replies)
{
    return library.broadcastPing(highestId, replies);
}

void BusClient::transactionEnded(const BusTransaction &transaction)
{
    ended = transaction;
    if (waiting)
        waiting->quit();
}

void BusClient::portLost(const QString &reason)
{
    lostReason = reason;
    if (waiting)
        waiting->quit();
}

BusAnswer BusClient::finish(bool sent, int dataOffset, int dataLength)
{
    BusAnswer answer;
    if (!sent) {
        answer.problem = lostReason.isEmpty()
                             ? QStringLiteral("the request could not be sent on %1").arg(openPort)
                             : lostReason;
        return answer;
    }
    if (!ended && lostReason.isEmpty()) {
        QEventLoop loop;
        QTimer::singleShot(GiveUpMs, &loop, &QEventLoop::quit);
        waiting = &loop;
        loop.exec();
        waiting = nullptr;
    }
    library.cleanUp();
    if (!ended) {
        answer.problem = lostReason.isEmpty() ? QStringLiteral("no answer") : lostReason;
        return answer;
    }
    switch (ended->outcome) {
    case BusTransaction::Outcome::Reply:
        answer.answered = true;
        answer.error = ended->error;
        answer.data = ended->reply.mid(dataOffset, dataLength);
        answer.packet = ended->reply;
        break;
    case BusTransaction::Outcome::Timeout:
        answer.problem = QStringLiteral("no answer");
        break;
    case BusTransaction::Outcome::Damaged:
        answer.problem = QStringLiteral("only a damaged answer");
        break;
    case BusTransaction::Outcome::PortLost:
        answer.problem = lostReason.isEmpty() ? QStringLiteral("the port was lost") : lostReason;
        break;
    case BusTransaction::Outcome::NotSent:
    case BusTransaction::Outcome::Superseded:
        answer.problem = QStringLiteral("the request could not be sent on %1").arg(openPort);
        break;
    }
    return answer;
}
