#include "zelvarserialportinterface.h"

#include "bussession.h"
#include "packet.h"
#include "packetcodec.h"
#include "portcatalog.h"
#include "transactionobserver.h"

namespace {

BusRequest makeRequest(BusRequest::Kind kind, unsigned char id, QByteArray packet,
                       std::function<void()> onData)
{
    BusRequest request;
    request.kind = kind;
    request.id = id;
    request.packet = std::move(packet);
    request.onData = std::move(onData);
    return request;
}

} // namespace

ZelvarSerialPortInterface::ZelvarSerialPortInterface(QObject *parent, unsigned char protocolVersion)
    : QObject(parent)
    , session(std::make_unique<BusSession>(protocolVersion))
{}

ZelvarSerialPortInterface::~ZelvarSerialPortInterface() = default;

QString ZelvarSerialPortInterface::openSerialPort(QString portName, int baudRate)
{
    return session->open(portName, baudRate);
}

void ZelvarSerialPortInterface::closeSerialPort()
{
    session->close();
}

std::vector<std::shared_ptr<SerialPortItem>> ZelvarSerialPortInterface::getSerialPortList()
{
    std::vector<std::shared_ptr<SerialPortItem>> list;
    for (const SerialPortItem &item : PortCatalog::ports())
        list.push_back(std::make_shared<SerialPortItem>(item));
    return list;
}

bool ZelvarSerialPortInterface::readData(unsigned char id, unsigned char address,
                                         unsigned char length, std::function<void()> onData)
{
    BusRequest request = makeRequest(BusRequest::Kind::Read, id,
                                     PacketCodec::read(id, address, length), std::move(onData));
    request.address = address;
    request.length = length;
    return session->submit(std::move(request));
}

bool ZelvarSerialPortInterface::writeData(unsigned char id, unsigned char address,
                                          const QByteArray &data, std::function<void()> onData)
{
    BusRequest request = makeRequest(BusRequest::Kind::Write, id,
                                     PacketCodec::write(id, address, data), std::move(onData));
    request.address = address;
    request.length = quint16(data.size());
    return session->submit(std::move(request));
}

bool ZelvarSerialPortInterface::reboot(unsigned char id, std::function<void()> onData)
{
    return session->submitAndWait(
        makeRequest(BusRequest::Kind::Reboot, id, PacketCodec::reboot(id), std::move(onData)));
}

bool ZelvarSerialPortInterface::reset(unsigned char id, std::function<void()> onData)
{
    // Everything but id and baud rate, so the servo stays where the user found it.
    return reset(id, ResetKeeps::IdAndBaudRate, std::move(onData));
}

bool ZelvarSerialPortInterface::reset(unsigned char id, ResetKeeps keeps,
                                      std::function<void()> onData)
{
    const quint8 mode = keeps == ResetKeeps::Nothing ? FactoryResetMode::All
                        : keeps == ResetKeeps::Id    ? FactoryResetMode::KeepId
                                                     : FactoryResetMode::KeepIdAndBaudRate;
    return session->submitAndWait(makeRequest(
        BusRequest::Kind::Reset, id, PacketCodec::factoryReset(id, mode), std::move(onData)));
}

bool ZelvarSerialPortInterface::ping(unsigned char id, std::vector<PingReply> &replies)
{
    return session->ping(id, id, replies);
}

bool ZelvarSerialPortInterface::broadcastPing(unsigned char highestId,
                                              std::vector<PingReply> &replies)
{
    return session->ping(BroadcastId, highestId, replies);
}

QByteArray ZelvarSerialPortInterface::readPendingSerialData()
{
    return session->takeHandedOver();
}

void ZelvarSerialPortInterface::cleanUp()
{
    // A whole reply has been consumed; nothing left over belongs to the next request.
    session->discardHandedOver();
}

void ZelvarSerialPortInterface::setTransactionObserver(TransactionObserver *observer)
{
    session->setObserver(observer);
}

TransactionObserver::~TransactionObserver() = default;
