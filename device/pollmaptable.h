#pragma once

#include <QStringList>
#include <cstdint>
#include <vector>

// How the bytes of a polled register are read; the handler narrows the value to it.
enum class PollValueType { UInt8, Int16, UInt16, Int32, UInt32, HardwareStatus };

// One stop of the own family's poll map: where it starts, how many bytes it takes, and
// the controls (by object name) that show its value.
struct PollMapRow
{
    uint8_t address;
    uint8_t size;
    PollValueType type;
    QStringList widgets;
};

// The poll map of the own family as plain data, shared by the widget bindings and the
// register catalogue so that widths and signedness are written down once.
class PollMapTable
{
public:
    // In the order the items are built; 107 comes twice and the first one counts.
    static const std::vector<PollMapRow> &ownFamily();
};
