#pragma once

#include "simulator/busfault.h"

#include <QByteArray>
#include <QMutex>
#include <array>
#include <memory>
#include <random>
#include <vector>

class BusClock;
class VirtualServo;
struct Packet;

// Bytes that a host will see on the bus, when the first of them has arrived and when
// they have finished arriving.
struct BusReply
{
    QByteArray bytes;
    qint64 dueNanoseconds = 0;
    qint64 firstByteNanoseconds = 0;
};

// A half-duplex bus of simulated servos. It decides who answers a request, what the
// host receives (including collisions and injected faults) and when. Safe to use
// from several threads; servos handed out are meant to be set up before traffic.
class VirtualBus
{
public:
    // Long enough to miss any timeout of the program.
    static constexpr qint64 LateReplyNanoseconds = 3'000'000'000;

    explicit VirtualBus(std::shared_ptr<BusClock> clock = nullptr);
    ~VirtualBus();

    std::shared_ptr<VirtualServo> addServo(quint8 id, int baudRate);
    // Id 0 factory-fresh and id 1 in wheel mode at 1,000,000 baud; id 3 in joint
    // mode at 57,600 baud.
    void addStandardServos();
    std::vector<std::shared_ptr<VirtualServo>> servos() const;
    qint64 now() const;

    // The replies to one request of `requestSize` bytes that a host at `hostBaudRate`
    // finished writing now, in the order they arrive.
    std::vector<BusReply> transfer(const Packet &request, int requestSize, int hostBaudRate);

    // Faults apply to every servo that has `id` when they are set.
    void setFaultProbability(quint8 id, BusFault fault, double probability);
    void injectFault(quint8 id, BusFault fault, int replies);
    void clearFaults();

    static qint64 wireNanoseconds(int bytes, int baudRate);

private:
    struct FaultSetting
    {
        double probability = 0;
        int remaining = 0;
    };
    struct Station
    {
        std::shared_ptr<VirtualServo> servo;
        std::array<FaultSetting, BusFaultCount> faults;
    };

    void advanceServos();
    // A fault strikes a reply when it strikes any of the servos that sent it; a servo
    // whose reply is dropped does not take part in a collision.
    bool strikes(const std::vector<Station *> &senders, BusFault fault);
    std::vector<BusReply> damage(const std::vector<Station *> &senders, const QByteArray &reply,
                                 qint64 due, int hostBaudRate);
    static QByteArray collide(const QByteArray &first, const QByteArray &second);

    mutable QMutex mutex;
    std::shared_ptr<BusClock> clock;
    std::vector<Station> stations;
    qint64 steppedUntil;
    std::mt19937 random;
};
