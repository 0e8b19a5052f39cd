#include "serialportitem.h"

SerialPortItem::SerialPortItem(const QString &portName, const QString &description,
                               const QString &manufacturer, const QString &systemLocation,
                               quint16 vendorIdentifier, quint16 productIdentifier)
    : portName(portName)
    , description(description)
    , manufacturer(manufacturer)
    , systemLocation(systemLocation)
    , vendorIdentifier(vendorIdentifier)
    , productIdentifier(productIdentifier)
{}

SerialPortItem::~SerialPortItem() = default;

const QString SerialPortItem::getPortName() const
{
    return portName;
}

const QString SerialPortItem::getDescription() const
{
    return description;
}

const QString SerialPortItem::getManufacturer() const
{
    return manufacturer;
}

const QString SerialPortItem::getSystemLocation() const
{
    return systemLocation;
}

quint16 SerialPortItem::getVendorIdentifier() const
{
    return vendorIdentifier;
}

quint16 SerialPortItem::getProductIdentifier() const
{
    return productIdentifier;
}
