#include "portcatalog.h"

#include "bridgefolder.h"
#include "portprovider.h"
#include "qtserialportbackend.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <algorithm>

namespace {

void sortByName(std::vector<SerialPortItem> &items)
{
    std::sort(items.begin(), items.end(), [](const SerialPortItem &a, const SerialPortItem &b) {
        return a.getPortName() < b.getPortName();
    });
}

} // namespace

std::vector<SerialPortItem> PortCatalog::ports()
{
    std::vector<SerialPortItem> usb;
    std::vector<SerialPortItem> virtualBuses = bridges();
    std::vector<SerialPortItem> others;

    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts()) {
        SerialPortItem item(info.portName(), info.description(), info.manufacturer(),
                            info.systemLocation(), info.vendorIdentifier(),
                            info.productIdentifier());
        (info.hasVendorIdentifier() ? usb : others).push_back(item);
    }
    for (const auto &provider : PortProvider::installed()) {
        const auto provided = provider->ports();
        virtualBuses.insert(virtualBuses.end(), provided.begin(), provided.end());
    }

    sortByName(usb);
    sortByName(virtualBuses);
    sortByName(others);
    usb.insert(usb.end(), virtualBuses.begin(), virtualBuses.end());
    usb.insert(usb.end(), others.begin(), others.end());
    return usb;
}

std::unique_ptr<SerialPortBackend> PortCatalog::createBackend(const QString &portName)
{
    for (const auto &provider : PortProvider::installed()) {
        if (auto backend = provider->createBackend(portName))
            return backend;
    }
    for (const SerialPortItem &bridge : bridges()) {
        if (bridge.getPortName() == portName)
            return std::make_unique<QtSerialPortBackend>(portName, bridge.getSystemLocation());
    }
    return std::make_unique<QtSerialPortBackend>(portName, portName);
}

std::vector<SerialPortItem> PortCatalog::bridges()
{
    std::vector<SerialPortItem> items;
    const QString path = BridgeFolder::forListing();
    if (path.isEmpty())
        return items;
    const QDir folder(path);
    const auto entries = folder.entryInfoList(QDir::System | QDir::Files | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (!BridgeFolder::isLive(entry))
            continue;
        items.emplace_back(entry.fileName(), QStringLiteral("Virtual bus bridge"), QString(),
                           entry.symLinkTarget(), 0, 0);
    }
    return items;
}
