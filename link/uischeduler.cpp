#include "link/uischeduler.h"

#include "device/devicehelper.h"
#include "device/idevice.h"
#include "device/statushelper.h"
#include "device/uiregisterhelper.h"
#include "link/serialhelper.h"
#include "telemetry/telemetrydecoder.h"
#include "views/registerview.h"
#include "widgets/uigrouphelper.h"

#include <QPointer>
#include <QTimerEvent>

namespace {

constexpr int replyDataOffset = 9;
constexpr int replyErrorByte = 8;
constexpr int idRegister = 3;
constexpr int baudRateRegister = 4;

// The register's bytes from the reply, little-endian; bytes past the reply's end count as 0.
quint32 assembledValue(const QByteArray &reply, int address, int size)
{
    quint32 value = 0;
    for (int i = 0; i < size; ++i) {
        const int index = replyDataOffset + address + i;
        if (index >= reply.size())
            break;
        value += quint32(quint8(reply.at(index))) << (8 * i);
    }
    return value;
}

} // namespace

UiScheduler::UiScheduler(uint8_t servoId, std::shared_ptr<SerialHelper> serialHelper)
    : servoId(servoId)
    , serialHelper(std::move(serialHelper))
{
    UiRegisterHelper::instance();
    pollCursor = 0;
    const std::shared_ptr<UiGroupHelper> groupHelper = UiGroupHelper::create(nullptr);
    // Dies with this scheduler, so only the newest one receives the groups' writes.
    connect(groupHelper.get(), "2addQueueRequest(uint8_t , const QByteArray &)", this,
            "1addQueueRequest(uint8_t, const QByteArray &)");
    QPointer<UiScheduler> self(this);
    groupHelper->setRegisterSource([self](uint8_t address, int length) {
        return self ? self->lastRegisters(address, length) : QByteArray();
    });
}

void UiScheduler::addQueueRequest(uint8_t address, const QByteArray &data)
{
    // Writes nobody waits for: the stored callback does nothing.
    queue.push_back(
        std::make_shared<QueueRequest>(QueueRequest{servoId, address, data, [](QByteArray) {}}));
}

void UiScheduler::startScheduler(int pollingInterval)
{
    timerId = startTimer(pollingInterval, Qt::CoarseTimer);
}

void UiScheduler::stopScheduler()
{
    killTimer(timerId);
}

void UiScheduler::timerEvent(QTimerEvent *)
{
    if (!queue.empty())
        sendFirstQueued();
    else
        poll();
}

void UiScheduler::sendFirstQueued()
{
    // Dropped whether or not the library took it: there is no retry.
    const std::shared_ptr<QueueRequest> request = queue.front();
    queue.erase(queue.begin());
    serialHelper->writeData(request->id, request->address, request->data, request->callback);
    followMove(*request);
}

void UiScheduler::followMove(const QueueRequest &write)
{
    const auto writtenAt = [&write](int address) {
        const int offset = address - write.address;
        return offset >= 0 && offset < write.data.size() ? int(quint8(write.data.at(offset))) : -1;
    };
    const QByteArray known = lastRegisters(baudRateRegister, 1);
    const int id = writtenAt(idRegister);
    const int code = writtenAt(baudRateRegister);
    const bool newId = id >= 0 && id != write.id;
    const bool newBaudRate = code >= 0 && (known.isEmpty() || code != quint8(known.at(0)));
    if (newId || newBaudRate)
        emit servoMoving(newId ? id : write.id,
                         newBaudRate ? TelemetryDecoder::baudRateOfCode(code) : 0);
}

void UiScheduler::poll()
{
    // The walk decides nothing about what is read; its lookup still insists on an item at
    // every stop, which keeps the poll map honest.
    const RegisterItemHelper &item = UiRegisterHelper::instance()->item(pollCursor);

    const std::shared_ptr<DeviceHelper> deviceHelper = DeviceHelper::instance();
    const std::shared_ptr<IDevice> device = deviceHelper ? deviceHelper->device() : nullptr;
    if (device) {
        // A reply may outlive this scheduler (the next connect replaces it); it then goes nowhere.
        QPointer<UiScheduler> self(this);
        serialHelper->readData(servoId, 0, uint8_t(device->controlTableSize()),
                               [self](QByteArray reply) {
                                   if (self)
                                       self->groupCallback(reply);
                               });
    }

    pollCursor = uint8_t(pollCursor + item.size);
    if (pollCursor >= pollCursorEnd)
        pollCursor = 0;
}

void UiScheduler::groupCallback(const QByteArray &reply)
{
    lastReply = reply;
    RegisterView *registerView = RegisterView::instance();
    for (const auto &[address, item] : UiRegisterHelper::instance()->pollMap()) {
        const quint32 value = assembledValue(reply, address, item->size);
        item->callback(int32_t(value));
        if (registerView)
            registerView->updateRegister(address, item->size, value);
    }
    const char error = reply.size() > replyErrorByte ? reply.at(replyErrorByte) : 0;
    StatusHelper::instance()->updateStatusPacket(int8_t(error));
    if (const auto groupHelper = UiGroupHelper::instance())
        groupHelper->enableEditWhereValued();
    emit tableRead(reply);
}

QByteArray UiScheduler::lastRegisters(uint8_t address, int length) const
{
    return lastReply.mid(replyDataOffset + address, length);
}
