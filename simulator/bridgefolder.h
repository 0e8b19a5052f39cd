#pragma once

#include <QStandardPaths>
#include <QString>

// The per-user runtime folder in which running bridges list themselves, one link each,
// for the library's port list.
inline QString bridgeFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
           "/zelvar-virtual-bus";
}
