#include "simulator/bridge/pseudoterminal.h"

#include "simulator/bridge/terminalrate.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

PseudoTerminal::~PseudoTerminal()
{
    if (slave >= 0)
        ::close(slave);
    if (master >= 0)
        ::close(master);
}

QString PseudoTerminal::open()
{
    master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
        return QString("Cannot create a pseudo-terminal: %1").arg(strerror(errno));
    path = QString::fromLocal8Bit(ptsname(master));
    slave = ::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave < 0)
        return QString("Cannot open %1: %2").arg(path, strerror(errno));
    // Raw both ways: no echo, no line editing, no newline translation. A program
    // that opens the slave sets its own mode and, when it closes, restores this one.
    termios settings;
    for (int fd : {master, slave}) {
        tcgetattr(fd, &settings);
        cfmakeraw(&settings);
        cfsetspeed(&settings, B1000000);
        tcsetattr(fd, TCSANOW, &settings);
    }
    return {};
}

int PseudoTerminal::baudRate() const
{
    return TerminalRate::read(slave);
}
