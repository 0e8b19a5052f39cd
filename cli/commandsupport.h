#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

struct Invocation;
class BusClient;
class Console;
class ServoSession;

// What the commands share: reading their arguments and reaching the bus and the servo.
// Each returns the exit status to end with, or nothing to go on.
namespace CommandSupport {

// A whole number from `lowest` to `highest`, decimal or 0x hexadecimal.
std::optional<int> number(const QString &text, int lowest, int highest);
std::optional<int> argumentNumber(const Invocation &invocation, int index, const char *what,
                                  int lowest, int highest, const Console &console, int &status);

std::optional<int> open(const Invocation &invocation, BusClient &client, const Console &console);
// Opens the bus and identifies the servo whose id is the command's first argument.
std::optional<int> openServo(const Invocation &invocation, BusClient &client,
                             std::optional<ServoSession> &session, const Console &console);

// The servo's whole control table into `table`.
std::optional<int> readTable(const ServoSession &session, QByteArray &table,
                             const Console &console);

// "servo 3 at 57600 baud on Virtual bus".
QString servoName(const BusClient &client, int id);

} // namespace CommandSupport
