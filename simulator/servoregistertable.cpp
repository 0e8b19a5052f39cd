#include "simulator/servoregistertable.h"

#include "simulator/servoregisters.h"

namespace {

// Factory defaults sit in the middle of each register's range: a 12 V servo with
// a 2.3 rad/s top speed, gentle profiles and gains a position loop can live with.
const ServoRegisterTable::Row rows[] = {
    {0, 2, false, 0x0105}, // model number
    {2, 1, false, 16},     // firmware version
    {3, 1, true, 0},       // id
    {4, 1, true, 1},       // baud rate code: 1,000,000 baud
    {5, 1, true, 10},      // return delay, 2 us per count
    {6, 1, true, 2},       // operating mode: joint
    {7, 2, true, -2047},   // clockwise angle limit, pi/2047 per count
    {9, 2, true, 2047},    // counter-clockwise angle limit
    {11, 1, true, 80},     // temperature limit, degC
    {12, 1, true, 90},     // lowest input voltage, 0.1 V
    {13, 1, true, 160},    // highest input voltage
    {14, 2, true, 4000},   // torque limit, mN.m
    {16, 2, true, 2300},   // angular velocity limit, 0.001 rad/s
    {18, 2, true, 20000},  // acceleration limit, 0.001 rad/s^2
    {20, 4, true, 0},      // home position offset
    {24, 2, true, 20},     // moving threshold, 0.001 rad/s
    {26, 1, true, 0},      // input mode: trajectory
    {27, 2, true, 400},    // default position P gain
    {29, 2, true, 1000},   // default velocity feedforward gain
    {31, 2, true, 0},      // default current feedforward gain
    {33, 2, true, 100},    // default velocity I gain
    {35, 2, true, 500},    // default velocity P gain
    {37, 2, true, 1000},   // default angular velocity profile
    {39, 2, true, 10000},  // default acceleration profile
    {48, 1, true, 0},      // control enable
    {49, 1, true, 0},      // pending shadow instruction
    {54, 2, true, 400},    // position P gain
    {56, 2, true, 1000},   // velocity feedforward gain
    {58, 2, true, 0},      // current feedforward gain
    {60, 2, true, 100},    // velocity I gain
    {62, 2, true, 500},    // velocity P gain
    {68, 2, true, 1000},   // angular velocity profile
    {70, 2, true, 10000},  // acceleration profile
    {78, 4, true, 0},      // target position, 4096 counts per turn
    {82, 2, true, 0},      // target angular velocity, direction in bit 15
    {84, 2, true, 0},      // target torque, direction in bit 15
    {86, 4, false, 0},     // actual position
    {90, 2, false, 0},     // actual angular velocity
    {92, 2, false, 0},     // actual torque
    {94, 1, false, 120},   // actual voltage
    {95, 2, false, 0},     // actual phase current, mA
    {97, 1, false, 25},    // actual temperature
    {99, 1, false, 0},     // moving
    {101, 2, false, 1000}, // angular velocity profile in use
    {107, 1, false, 0},    // hardware error status
    {112, 1, false, 0},    // debug 1
    {113, 1, false, 0},    // debug 2
    {114, 2, false, 0},    // debug 3
    {116, 2, false, 0},    // debug 4
};

} // namespace

const ServoRegisterTable::Row *ServoRegisterTable::rowAt(int address)
{
    for (const Row &row : rows) {
        if (address >= row.address && address < row.address + row.width)
            return &row;
    }
    return nullptr;
}

bool ServoRegisterTable::isWritable(int address)
{
    const Row *row = rowAt(address);
    return row && row->writable;
}

QByteArray ServoRegisterTable::factoryDefaults()
{
    QByteArray table(ServoRegister::TableSize, '\0');
    for (const Row &row : rows) {
        for (int i = 0; i < row.width; ++i)
            table[row.address + i] = char((row.factoryDefault >> (8 * i)) & 0xFF);
    }
    return table;
}

const std::vector<ServoRegisterTable::DefaultCopy> &ServoRegisterTable::defaultCopies()
{
    static const std::vector<DefaultCopy> copies = {
        {27, 54}, {29, 56}, {31, 58}, {33, 60}, {35, 62}, {37, 68}, {39, 70},
    };
    return copies;
}
