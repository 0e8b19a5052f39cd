#pragma once

#include "portprovider.h"

#include <memory>

class VirtualBus;

// Lists the in-process virtual bus among the serial ports and opens it.
class VirtualBusPortProvider : public PortProvider
{
public:
    static const char *const PortName;
    static const char *const Description;

    explicit VirtualBusPortProvider(std::shared_ptr<VirtualBus> bus);

    std::vector<SerialPortItem> ports() const override;
    std::unique_ptr<SerialPortBackend> createBackend(const QString &portName) const override;

    // Creates the process's bus with its standard servos and lists it, once; later
    // calls return the same bus, on which tests may add servos and inject faults.
    static std::shared_ptr<VirtualBus> installProcessBus();

private:
    std::shared_ptr<VirtualBus> bus;
};
