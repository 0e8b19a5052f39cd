#pragma once

#include <QString>
#include <QStringList>
#include <vector>

class BusClient;
struct PingReply;

// A servo that answered a scan.
struct FoundServo
{
    int baudRate = 0;
    int id = 0;
    int modelNumber = 0;
    int firmwareVersion = 0;
    int error = 0;
    // Its answers were damaged even when asked alone: most likely two servos share the id.
    bool garbled = false;
};

// Finds the servos on a bus: one broadcast ping per baud rate, and pings one id at a time
// only where the broadcast was ambiguous. Answers come in order of id, so damaged bytes
// between the answers of ids a and b can only come from the ids between them.
class BusScan
{
public:
    // The rates the search dialog offers.
    static const std::vector<int> &searchRates();

    BusScan(BusClient &client, QString portName);

    // In order of rate, then id. Rates that could not be scanned are named in problems().
    std::vector<FoundServo> run(const std::vector<int> &baudRates, int firstId, int lastId);
    const QStringList &problems() const { return failures; }
    // Ids pinged one by one after the broadcasts.
    int singlePings() const { return singles; }

private:
    void scanRate(int baudRate, int firstId, int lastId, std::vector<FoundServo> &found);
    void pingEach(int baudRate, int fromId, int toId, std::vector<FoundServo> &found);
    static FoundServo servo(int baudRate, const PingReply &reply);

    BusClient &client;
    QString portName;
    QStringList failures;
    int singles = 0;
};
