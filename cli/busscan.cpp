#include "cli/busscan.h"

#include "cli/busclient.h"

#include <algorithm>

const std::vector<int> &BusScan::searchRates()
{
    static const std::vector<int> rates{9600,   19200,  38400,  57600,  115200,
                                        200000, 250000, 400000, 500000, 1000000};
    return rates;
}

BusScan::BusScan(BusClient &client, QString portName)
    : client(client)
    , portName(std::move(portName))
{}

std::vector<FoundServo> BusScan::run(const std::vector<int> &baudRates, int firstId, int lastId)
{
    std::vector<FoundServo> found;
    failures.clear();
    singles = 0;
    for (int baudRate : baudRates)
        scanRate(baudRate, firstId, lastId, found);
    client.close();
    return found;
}

void BusScan::scanRate(int baudRate, int firstId, int lastId, std::vector<FoundServo> &found)
{
    if (const QString error = client.open(portName, baudRate); !error.isEmpty()) {
        failures << QStringLiteral("%1 baud: %2").arg(baudRate).arg(error);
        return;
    }
    std::vector<PingReply> replies;
    if (!client.broadcastPing(quint8(lastId), replies)) {
        failures << QStringLiteral("%1 baud: the ping could not be sent").arg(baudRate);
        return;
    }
    const size_t before = found.size();
    // The id below which damaged bytes must have come from: the last clean answer so far.
    int cleanBelow = firstId - 1;
    bool damaged = false;
    for (const PingReply &reply : replies) {
        if (reply.damaged) {
            damaged = true;
            continue;
        }
        if (reply.id < firstId || reply.id > lastId || reply.id <= cleanBelow)
            continue;
        if (damaged)
            pingEach(baudRate, cleanBelow + 1, reply.id - 1, found);
        damaged = false;
        found.push_back(servo(baudRate, reply));
        cleanBelow = reply.id;
    }
    if (damaged)
        pingEach(baudRate, cleanBelow + 1, lastId, found);
    std::sort(found.begin() + long(before), found.end(),
              [](const FoundServo &a, const FoundServo &b) { return a.id < b.id; });
}

void BusScan::pingEach(int baudRate, int fromId, int toId, std::vector<FoundServo> &found)
{
    for (int id = fromId; id <= toId; ++id) {
        std::vector<PingReply> replies;
        ++singles;
        if (!client.ping(quint8(id), replies))
            continue;
        const auto answer = std::find_if(replies.begin(), replies.end(), [id](const PingReply &r) {
            return !r.damaged && r.id == id;
        });
        if (answer != replies.end()) {
            found.push_back(servo(baudRate, *answer));
        } else if (!replies.empty()) {
            FoundServo garbled;
            garbled.baudRate = baudRate;
            garbled.id = id;
            garbled.garbled = true;
            found.push_back(garbled);
        }
    }
}

FoundServo BusScan::servo(int baudRate, const PingReply &reply)
{
    FoundServo servo;
    servo.baudRate = baudRate;
    servo.id = reply.id;
    servo.modelNumber = reply.modelNumber;
    servo.firmwareVersion = reply.firmwareVersion;
    servo.error = reply.error;
    return servo;
}
