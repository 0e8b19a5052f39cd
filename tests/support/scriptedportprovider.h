#pragma once

#include "portprovider.h"
#include "scriptedportbackend.h"

#include <QPointer>
#include <functional>

// Makes scripted ports reachable by name through the serial-port library, for as long
// as it is installed.
class ScriptedPortProvider : public PortProvider
{
public:
    using Setup = std::function<void(ScriptedPortBackend &)>;

    void addPort(const QString &portName, Setup setup = {})
    {
        scripts.emplace_back(portName, std::move(setup));
    }

    std::vector<SerialPortItem> ports() const override;
    std::unique_ptr<SerialPortBackend> createBackend(const QString &portName) const override;

    // The backend the library opened last, while the library keeps it.
    mutable QPointer<ScriptedPortBackend> lastBackend;

private:
    std::vector<std::pair<QString, Setup>> scripts;
};
