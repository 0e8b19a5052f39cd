#pragma once

// The baud rate set on a terminal, read through termios2 so that custom rates
// (BOTHER) come through too. Kept apart: <asm/termbits.h> clashes with <termios.h>.
class TerminalRate
{
public:
    // Bits per second, or 0 when it cannot be read.
    static int read(int fd);
};
