#include "link/serialhelper.h"

#include "serialportitem.h"
#include "zelvarserialportinterface.h"

#include <utility>

namespace {

constexpr unsigned char ProtocolVersion = 2;

// Baud-rate choice index to the servo's baud-rate register. Index 9 (1,000,000 baud) has no
// row: it falls to the default, which is its value anyway. Kept so.
// clang-format off
constexpr std::pair<int, int> registerValueByIndex[] = {
    {0, 207},   //    9600
    {1, 103},   //   19200
    {2, 51},    //   38400
    {3, 34},    //   57600
    {4, 16},    //  115200
    {5, 9},     //  200000
    {6, 7},     //  250000
    {7, 4},     //  400000
    {8, 3},     //  500000
    {10, 0},    // 2000000
};
// clang-format on
constexpr int DefaultRegisterValue = 1;
constexpr int Index1000000 = 9;

} // namespace

SerialHelper::SerialHelper()
    : serialInterface(std::make_shared<ZelvarSerialPortInterface>(this, ProtocolVersion))
{}

SerialHelper::~SerialHelper()
{
    replyCallback = nullptr;
    serialInterface.reset();
}

QString SerialHelper::openSerialPort(QString portName, int baudRate)
{
    return serialInterface->openSerialPort(portName, baudRate);
}

void SerialHelper::closeSerialPort()
{
    serialInterface->closeSerialPort();
}

void SerialHelper::setTransactionObserver(TransactionObserver *observer)
{
    serialInterface->setTransactionObserver(observer);
}

std::vector<std::shared_ptr<SerialPortItem>> SerialHelper::getSerialPortList()
{
    return serialInterface->getSerialPortList();
}

bool SerialHelper::readData(uint8_t id, uint8_t address, uint8_t length,
                            std::function<void(QByteArray)> callback)
{
    remainingBytes = uint8_t(length + 11);
    replyCallback = std::move(callback);
    return serialInterface->readData(id, address, length,
                                     std::bind(&SerialHelper::onReadyRead, this));
}

bool SerialHelper::writeData(uint8_t id, uint8_t address, const QByteArray &data,
                             std::function<void(QByteArray)> callback)
{
    remainingBytes = 6;
    replyCallback = std::move(callback);
    return serialInterface->writeData(id, address, data,
                                      std::bind(&SerialHelper::onWriteReady, this));
}

bool SerialHelper::reboot(uint8_t id, std::function<void(QByteArray)> callback)
{
    remainingBytes = 6;
    replyCallback = std::move(callback);
    return serialInterface->reboot(id, std::bind(&SerialHelper::onReadyRead, this));
}

bool SerialHelper::reset(uint8_t id, std::function<void(QByteArray)> callback)
{
    remainingBytes = 6;
    replyCallback = std::move(callback);
    return serialInterface->reset(id, std::bind(&SerialHelper::onReadyRead, this));
}

int SerialHelper::baudRateRegisterValue(int index)
{
    for (const auto &[choice, value] : registerValueByIndex) {
        if (choice == index)
            return value;
    }
    return DefaultRegisterValue;
}

int SerialHelper::baudRateIndex(int registerValue)
{
    for (const auto &[choice, value] : registerValueByIndex) {
        if (value == registerValue)
            return choice;
    }
    return registerValue == DefaultRegisterValue ? Index1000000 : -1;
}

void SerialHelper::onReadyRead()
{
    if (!takePendingBytes())
        return;
    replyCallback(replyBuffer);
    replyBuffer.clear();
    serialInterface->cleanUp();
}

void SerialHelper::onWriteReady()
{
    // A write's callback is stored but never called: nothing waits for write completions.
    if (!takePendingBytes())
        return;
    replyBuffer.clear();
    serialInterface->cleanUp();
}

bool SerialHelper::takePendingBytes()
{
    const QByteArray bytes = serialInterface->readPendingSerialData();
    if (bytes.isEmpty())
        return false;
    remainingBytes = uint8_t(remainingBytes - bytes.size());
    replyBuffer.append(bytes);
    return remainingBytes == 0;
}
