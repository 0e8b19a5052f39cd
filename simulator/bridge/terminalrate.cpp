#include "simulator/bridge/terminalrate.h"

#include <asm/ioctls.h>
#include <asm/termbits.h>

extern "C" int ioctl(int fd, unsigned long request, ...);

int TerminalRate::read(int fd)
{
    struct termios2 settings = {};
    if (ioctl(fd, TCGETS2, &settings) != 0)
        return 0;
    return int(settings.c_ospeed);
}
