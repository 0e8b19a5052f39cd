#pragma once

#include "zelvarserialport_global.h"

#include <QString>

class QFileInfo;

// The per-user runtime folder in which running virtual-bus bridges list themselves for
// the port list: a link named after the port that points at the bridge's terminal, and
// beside it NAME.pid with the bridge's process id.
class ZELVAR_SERIALPORT_EXPORT BridgeFolder
{
public:
    static QString path();
    // True while the link leads to a terminal and the bridge that made it still runs. A
    // bridge that was killed leaves its link, and the terminal's number is soon handed to
    // someone else's shell: such a link must not be listed, nor kept from a new bridge.
    static bool isLive(const QFileInfo &link);
};
