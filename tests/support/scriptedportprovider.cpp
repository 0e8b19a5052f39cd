#include "scriptedportprovider.h"

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
        auto backend = std::make_unique<ScriptedPortBackend>();
        if (setup)
            setup(*backend);
        lastBackend = backend.get();
        return backend;
    }
    return nullptr;
}
