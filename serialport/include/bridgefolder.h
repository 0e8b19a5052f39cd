#pragma once

#include "zelvarserialport_global.h"

#include <QString>

class QFileInfo;

// The per-user folder in which running virtual-bus bridges list themselves for the port
// list: a link named after the port that points at the bridge's terminal, and beside it
// NAME.pid with the bridge's process id. It lives in $XDG_RUNTIME_DIR, or where none is
// set, in a folder of the user's own in the temporary folder.
class ZELVAR_SERIALPORT_EXPORT BridgeFolder
{
public:
    static QString path();
    // Why the folder must not be used, or an empty text while it is a real folder of this
    // user that no one else may enter. In a shared temporary folder anyone may have put a
    // link or a folder of their own at that name, to show us ports or collect our links.
    static QString refusal(const QString &folder);
    // The folder to list bridges from, or empty when there is none to trust; a folder that
    // is there but not trusted is reported once on stderr.
    static QString forListing();
    // Makes the folder if needed; returns why it cannot be used, or an empty text.
    static QString prepare();
    // True while the link leads to a terminal and the bridge that made it still runs. A
    // bridge that was killed leaves its link, and the terminal's number is soon handed to
    // someone else's shell: such a link must not be listed, nor kept from a new bridge.
    static bool isLive(const QFileInfo &link);
};
