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

    std::vector<SerialPortItem> ports() const override
    {
        std::vector<SerialPortItem> items;
        for (const auto &script : scripts)
            items.emplace_back(script.first, "Scripted port", QString(), script.first, 0, 0);
        return items;
    }

    std::unique_ptr<SerialPortBackend> createBackend(const QString &portName) const override
    {
        for (const auto &[name, setup] : scripts) {
            if (name != portName)
                continue;
            auto backend = std::make_unique<ScriptedPortBackend>();
            if (setup)
                setup(*backend);
            lastBackend = backend.get();
            return backend;
        }
        return nullptr;
    }

    // The backend the library opened last, while the library keeps it.
    mutable QPointer<ScriptedPortBackend> lastBackend;

private:
    std::vector<std::pair<QString, Setup>> scripts;
};
