#pragma once

#include "serialportitem.h"

#include <memory>
#include <vector>

class SerialPortBackend;

// Where ports come from: the system's serial ports, the installed port providers and
// the bridges that zelvar-virtual-bus registers in the runtime folder.
class PortCatalog
{
public:
    // USB adapters first, then virtual buses, then the rest; each group by name.
    static std::vector<SerialPortItem> ports();
    // A closed backend for `portName`; unknown names are tried as system ports.
    static std::unique_ptr<SerialPortBackend> createBackend(const QString &portName);

private:
    static std::vector<SerialPortItem> bridges();
};
