#include "simulator/virtualbusportprovider.h"

#include "simulator/virtualbus.h"
#include "simulator/virtualbusportbackend.h"

#include <mutex>

const char *const VirtualBusPortProvider::PortName = "Virtual bus";
const char *const VirtualBusPortProvider::Description = "Simulated Zelvar servos";

VirtualBusPortProvider::VirtualBusPortProvider(std::shared_ptr<VirtualBus> bus)
    : bus(std::move(bus))
{}

std::vector<SerialPortItem> VirtualBusPortProvider::ports() const
{
    return {SerialPortItem(PortName, Description, QString(), QString(), 0, 0)};
}

std::unique_ptr<SerialPortBackend>
VirtualBusPortProvider::createBackend(const QString &portName) const
{
    if (portName != QLatin1String(PortName))
        return nullptr;
    return std::make_unique<VirtualBusPortBackend>(bus);
}

std::shared_ptr<VirtualBus> VirtualBusPortProvider::installProcessBus()
{
    static std::once_flag installed;
    static std::shared_ptr<VirtualBus> processBus;
    std::call_once(installed, [] {
        processBus = std::make_shared<VirtualBus>();
        processBus->addStandardServos();
        PortProvider::install(std::make_shared<VirtualBusPortProvider>(processBus));
    });
    return processBus;
}
