#pragma once

#include "zelvarserialport_global.h"

#include <QString>

// Description of one port as the port list shows it.
class ZELVAR_SERIALPORT_EXPORT SerialPortItem
{
public:
    SerialPortItem() = default;
    SerialPortItem(const QString &portName, const QString &description, const QString &manufacturer,
                   const QString &systemLocation, quint16 vendorIdentifier,
                   quint16 productIdentifier);
    SerialPortItem(const SerialPortItem &) = default;
    SerialPortItem &operator=(const SerialPortItem &) = default;
    virtual ~SerialPortItem();

    const QString getPortName() const;
    const QString getDescription() const;
    const QString getManufacturer() const;
    const QString getSystemLocation() const;
    quint16 getVendorIdentifier() const;
    quint16 getProductIdentifier() const;

private:
    QString portName;
    QString description;
    QString manufacturer;
    QString systemLocation;
    quint16 vendorIdentifier = 0;
    quint16 productIdentifier = 0;
};
