#pragma once

#include "serialportitem.h"
#include "zelvarserialport_global.h"

#include <memory>
#include <vector>

class SerialPortBackend;

// A source of ports besides the system's serial ports, such as the in-process
// virtual bus. Providers are installed process-wide and may be asked from any thread.
class ZELVAR_SERIALPORT_EXPORT PortProvider
{
public:
    virtual ~PortProvider();

    virtual std::vector<SerialPortItem> ports() const = 0;
    // A closed backend for `portName`, or null when the name is not one of ours.
    virtual std::unique_ptr<SerialPortBackend> createBackend(const QString &portName) const = 0;

    static void install(const std::shared_ptr<PortProvider> &provider);
    static void uninstall(const std::shared_ptr<PortProvider> &provider);
    static std::vector<std::shared_ptr<PortProvider>> installed();
};
