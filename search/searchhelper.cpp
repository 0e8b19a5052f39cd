#include "search/searchhelper.h"

#include "link/serialhelper.h"

QMutex SearchHelper::mutex;
QWaitCondition SearchHelper::replyArrived;

namespace {

// Model number, firmware version and the id: enough to name what answered.
constexpr uint8_t probeAddress = 0;
constexpr uint8_t probeLength = 4;

} // namespace

SearchHelper::SearchHelper(const QString &portName)
    : portName(portName)
{}

SearchHelper::~SearchHelper()
{
    if (serialHelper)
        serialHelper->closeSerialPort();
}

QByteArray SearchHelper::reply() const
{
    return replyBuffer;
}

QString SearchHelper::openError() const
{
    return lastOpenError;
}

void SearchHelper::scanServo(int id, int baudRate)
{
    serialHelper = std::make_shared<SerialHelper>();
    lastOpenError = serialHelper->openSerialPort(portName, baudRate);
    if (!lastOpenError.isEmpty())
        return;
    serialHelper->readData(static_cast<uint8_t>(id), probeAddress, probeLength,
                           [this](const QByteArray &data) { onReply(data); });
}

void SearchHelper::releasePort()
{
    if (!serialHelper)
        return;
    serialHelper->closeSerialPort();
    serialHelper.reset();
}

void SearchHelper::onReply(const QByteArray &data)
{
    replyBuffer.prepend(data);
    QMutexLocker locker(&mutex);
    replyArrived.wakeAll();
}
