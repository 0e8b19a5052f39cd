#include "portprovider.h"

#include <QMutex>
#include <QMutexLocker>
#include <algorithm>

namespace {

// Providers are reached from the GUI thread and from the search dialog's worker thread.
QMutex registryMutex;

std::vector<std::shared_ptr<PortProvider>> &registry()
{
    static std::vector<std::shared_ptr<PortProvider>> providers;
    return providers;
}

} // namespace

PortProvider::~PortProvider() = default;

void PortProvider::install(const std::shared_ptr<PortProvider> &provider)
{
    QMutexLocker locker(&registryMutex);
    auto &providers = registry();
    if (provider && std::find(providers.begin(), providers.end(), provider) == providers.end())
        providers.push_back(provider);
}

void PortProvider::uninstall(const std::shared_ptr<PortProvider> &provider)
{
    QMutexLocker locker(&registryMutex);
    auto &providers = registry();
    providers.erase(std::remove(providers.begin(), providers.end(), provider), providers.end());
}

std::vector<std::shared_ptr<PortProvider>> PortProvider::installed()
{
    QMutexLocker locker(&registryMutex);
    return registry();
}
