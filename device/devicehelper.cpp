#include "device/devicehelper.h"

#include "device/dynamixelax12.h"
#include "device/zelvarv1.h"
#include "link/serialhelper.h"

namespace {

std::shared_ptr<DeviceHelper> globalDeviceHelper;

constexpr uint8_t modelNumberAddress = 0;
constexpr uint8_t modelNumberLength = 2;
constexpr char ax12ModelNumber = 12;

// A reply too short to hold a byte reads it as 0.
char replyByte(const QByteArray &reply, int index)
{
    return index < reply.size() ? reply.at(index) : 0;
}

} // namespace

std::shared_ptr<DeviceHelper> DeviceHelper::instance(std::shared_ptr<SerialHelper> serialHelper,
                                                     std::function<void()> onLoaded)
{
    if (!globalDeviceHelper)
        globalDeviceHelper =
            std::make_shared<DeviceHelper>(std::move(serialHelper), std::move(onLoaded));
    return globalDeviceHelper;
}

std::shared_ptr<DeviceHelper> DeviceHelper::instance()
{
    return globalDeviceHelper;
}

DeviceHelper::DeviceHelper(std::shared_ptr<SerialHelper> serialHelper,
                           std::function<void()> onLoaded)
    : serialHelper(std::move(serialHelper))
    , onLoaded(std::move(onLoaded))
{}

bool DeviceHelper::identify(uint8_t servoId)
{
    if (!serialHelper)
        return false;
    using namespace std::placeholders;
    return serialHelper->readData(servoId, modelNumberAddress, modelNumberLength,
                                  std::bind(&DeviceHelper::onModelNumberRead, this, _1));
}

void DeviceHelper::onModelNumberRead(const QByteArray &reply)
{
    // Bytes 5 and 6 carry an AX-12's model number; anything but 12 is one of our own.
    const bool ax12 = replyByte(reply, 5) == ax12ModelNumber && replyByte(reply, 6) == 0;
    if (ax12)
        currentDevice = std::make_shared<DynamixelAx12>();
    else
        currentDevice = std::make_shared<ZelvarV1>();
    emit loadDeviceMetadata();
    onLoaded();
}

bool DeviceHelper::reboot(uint8_t servoId, std::function<void(QByteArray)> callback)
{
    if (!serialHelper)
        return false;
    const bool sent = serialHelper->reboot(servoId, std::move(callback));
    serialHelper->closeSerialPort();
    return sent;
}

bool DeviceHelper::factoryReset(uint8_t servoId, std::function<void(QByteArray)> callback)
{
    if (!serialHelper)
        return false;
    const bool sent = serialHelper->reset(servoId, std::move(callback));
    serialHelper->closeSerialPort();
    return sent;
}

std::shared_ptr<IDevice> DeviceHelper::device() const
{
    return currentDevice;
}
