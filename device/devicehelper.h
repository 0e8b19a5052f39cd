#pragma once

#include <QByteArray>
#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>

class IDevice;
class SerialHelper;

// Finds out which servo model answers on the bus, keeps its device model and announces
// it; also sends the reboot and factory-reset commands.
class DeviceHelper : public QObject
{
    Q_OBJECT

public:
    // The process-wide helper, created from these arguments on first use; later calls
    // return it unchanged.
    static std::shared_ptr<DeviceHelper> instance(std::shared_ptr<SerialHelper> serialHelper,
                                                  std::function<void()> onLoaded);
    // The process-wide helper, or null before it has been created.
    static std::shared_ptr<DeviceHelper> instance();

    DeviceHelper(std::shared_ptr<SerialHelper> serialHelper, std::function<void()> onLoaded);

    // Reads the model number of servo servoId; the reply loads the matching model.
    bool identify(uint8_t servoId);
    void onModelNumberRead(const QByteArray &reply);

    // Both close the port as soon as the library has taken the command.
    bool reboot(uint8_t servoId, std::function<void(QByteArray)> callback);
    bool factoryReset(uint8_t servoId, std::function<void(QByteArray)> callback);

    // Null until the first servo has been identified.
    std::shared_ptr<IDevice> device() const;

signals:
    void loadDeviceMetadata();

private:
    std::shared_ptr<SerialHelper> serialHelper;
    std::shared_ptr<IDevice> currentDevice;
    std::function<void()> onLoaded;
};
