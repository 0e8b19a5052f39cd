#pragma once

#include <QString>

// A pseudo-terminal pair. The bridge talks through the master; the program opens
// the slave by its path like any serial port.
class PseudoTerminal
{
public:
    PseudoTerminal() = default;
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;
    ~PseudoTerminal();

    // Empty on success, otherwise what went wrong.
    QString open();
    int masterDescriptor() const { return master; }
    QString slavePath() const { return path; }
    // The rate the program last set on the slave.
    int baudRate() const;

private:
    int master = -1;
    // Held open by the bridge itself, so that the master never hangs up between two
    // programs and the line settings survive; a closed slave would make the master
    // report a hang-up over and over.
    int slave = -1;
    QString path;
};
