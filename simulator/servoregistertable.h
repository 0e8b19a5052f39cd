#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <vector>

// The layout of the Zelvar control table: which addresses exist, how wide each
// register is, whether a host may write it, and what a new servo holds there.
class ServoRegisterTable
{
public:
    struct Row
    {
        int address;
        int width;
        bool writable;
        qint64 factoryDefault;
    };

    // The row whose register covers `address`, or null for an undescribed address.
    static const Row *rowAt(int address);
    static bool isWritable(int address);
    static QByteArray factoryDefaults();

    // Each volatile gain and profile with the non-volatile default it starts from.
    struct DefaultCopy
    {
        int from;
        int to;
    };
    static const std::vector<DefaultCopy> &defaultCopies();
};
