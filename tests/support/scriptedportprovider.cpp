#include "scriptedportprovider.h"

void ScriptedPortProvider::addPort(const QString &portName, Setup setup)
{
    scripts.emplace_back(portName, std::move(setup));
}

std::vector<SerialPortItem> ScriptedPortProvider::ports() const
{
    std::vector<SerialPortItem> items;
    for (const auto &script : scripts)
        items.emplace_back(script.first, QStringLiteral("Scripted port"), QString(), script.first,
                           0, 0);
    return items;
}

std::unique_ptr<SerialPortBackend>
ScriptedPortProvider::createBackend(const QString &portName) const
{
    for (const auto &[name, setup] : scripts) {
        if (name != portName)
            continue;
        auto backend = std::make_unique<ScriptedPortBackend>(name);
        if (setup)
            setup(*backend);
        last = backend.get();
        return backend;
    }
    return nullptr;
}

ScriptedPortBackend *ScriptedPortProvider::lastBackend() const
{
    return last.data();
}
