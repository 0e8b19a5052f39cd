#include "simulator/virtualbus.h"

#include "broadcastpingtiming.h"
#include "packet.h"
#include "packetcodec.h"
#include "simulator/baudratecode.h"
#include "simulator/servoregisters.h"
#include "simulator/steadybusclock.h"
#include "simulator/virtualservo.h"

#include <QMutexLocker>
#include <algorithm>
#include <map>

namespace {

constexpr int BitsPerByte = 10;
constexpr int MaxGarbageBytes = 8;

} // namespace

VirtualBus::VirtualBus(std::shared_ptr<BusClock> clock)
    : clock(clock ? std::move(clock) : std::make_shared<SteadyBusClock>())
    , steppedUntil(this->clock->nanoseconds())
    , random(20240611)
{}

VirtualBus::~VirtualBus() = default;

std::shared_ptr<VirtualServo> VirtualBus::addServo(quint8 id, int baudRate)
{
    auto servo = std::make_shared<VirtualServo>();
    servo->setValue(ServoRegister::Id, 1, id);
    servo->setValue(ServoRegister::BaudRate, 1, BaudRateCode::nearest(baudRate));
    QMutexLocker locker(&mutex);
    stations.push_back({servo, {}});
    return servo;
}

void VirtualBus::addStandardServos()
{
    addServo(0, 1000000);
    addServo(1, 1000000)->setValue(ServoRegister::OperatingMode, 1, ServoMode::Wheel);
    addServo(3, 57600)->setValue(ServoRegister::OperatingMode, 1, ServoMode::Joint);
}

std::vector<std::shared_ptr<VirtualServo>> VirtualBus::servos() const
{
    QMutexLocker locker(&mutex);
    std::vector<std::shared_ptr<VirtualServo>> result;
    for (const Station &station : stations)
        result.push_back(station.servo);
    return result;
}

qint64 VirtualBus::now() const
{
    return clock->nanoseconds();
}

qint64 VirtualBus::wireNanoseconds(int bytes, int baudRate)
{
    return qint64(bytes) * BitsPerByte * 1'000'000'000 / std::max(1, baudRate);
}

void VirtualBus::advanceServos()
{
    const qint64 now = clock->nanoseconds();
    const double seconds = (now - steppedUntil) / 1e9;
    steppedUntil = now;
    for (Station &station : stations)
        station.servo->step(seconds);
}

std::vector<BusReply> VirtualBus::transfer(const Packet &request, int requestSize, int hostBaudRate)
{
    QMutexLocker locker(&mutex);
    advanceServos();
    const bool broadcast = request.id == BroadcastId;
    const qint64 requestEnd = clock->nanoseconds() + wireNanoseconds(requestSize, hostBaudRate);

    // Servos that share an id answer together; a broadcast ping is answered id by id.
    std::map<quint8, std::vector<Station *>> answering;
    for (Station &station : stations) {
        const VirtualServo &servo = *station.servo;
        if (!BaudRateCode::matches(servo.baudRateCode(), hostBaudRate))
            continue;
        if (servo.id() == request.id || broadcast)
            answering[servo.id()].push_back(&station);
    }

    // A broadcast changes every servo but only a ping is answered.
    const bool answers = !broadcast || request.instruction == Instruction::Ping;
    std::vector<BusReply> replies;
    qint64 lineFree = requestEnd;
    for (auto &[id, group] : answering) {
        QByteArray merged;
        int delay = 0;
        std::vector<Station *> senders;
        for (Station *station : group) {
            // Taken before the instruction: a new return delay applies to later replies.
            const int ownDelay = station->servo->returnDelayMicroseconds();
            const Packet status = station->servo->handle(request);
            if (!answers || strikes({station}, BusFault::Drop))
                continue;
            delay = std::max(delay, ownDelay);
            const QByteArray bytes = PacketCodec::encode(status);
            merged = merged.isNull() ? bytes : collide(merged, bytes);
            senders.push_back(station);
        }
        if (senders.empty())
            continue;
        // A broadcast ping is answered id by id, each servo in its own slot.
        const qint64 start =
            broadcast ? std::max(lineFree,
                                 requestEnd + BroadcastPingTiming::answerStartNs(id, hostBaudRate))
                      : lineFree;
        const qint64 due =
            start + qint64(delay) * 1000 + wireNanoseconds(merged.size(), hostBaudRate);
        lineFree = due;
        const auto damaged = damage(senders, merged, due, hostBaudRate);
        replies.insert(replies.end(), damaged.begin(), damaged.end());
    }
    std::stable_sort(replies.begin(), replies.end(), [](const BusReply &a, const BusReply &b) {
        return a.dueNanoseconds < b.dueNanoseconds;
    });
    return replies;
}

// Both servos drive the line; the second starts a bit later. An idle UART line is
// high, so a byte is the AND of what both send, and the header no longer survives.
QByteArray VirtualBus::collide(const QByteArray &first, const QByteArray &second)
{
    QByteArray result = first.size() >= second.size() ? first : second;
    for (int i = 0; i < std::min(first.size(), second.size()); ++i) {
        const quint8 late = quint8((quint8(second[i]) << 1) | 1);
        result[i] = char(quint8(first[i]) & late);
    }
    return result;
}

// Every sender uses up its own count, so each is asked even after one has struck.
bool VirtualBus::strikes(const std::vector<Station *> &senders, BusFault fault)
{
    bool struck = false;
    for (Station *station : senders) {
        FaultSetting &setting = station->faults[int(fault)];
        if (setting.remaining > 0) {
            --setting.remaining;
            struck = true;
        } else if (setting.probability > 0 &&
                   std::uniform_real_distribution<double>(0, 1)(random) < setting.probability) {
            struck = true;
        }
    }
    return struck;
}

std::vector<BusReply> VirtualBus::damage(const std::vector<Station *> &senders,
                                         const QByteArray &reply, qint64 due, int hostBaudRate)
{
    QByteArray bytes = reply;
    if (strikes(senders, BusFault::Corrupt)) {
        const int index = std::uniform_int_distribution<int>(0, bytes.size() - 1)(random);
        bytes[index] = char(bytes[index] ^ 0x5A);
    }
    if (strikes(senders, BusFault::Truncate)) {
        const int keep = std::uniform_int_distribution<int>(1, bytes.size() - 1)(random);
        due -= wireNanoseconds(bytes.size() - keep, hostBaudRate);
        bytes.truncate(keep);
    }
    if (strikes(senders, BusFault::Garbage)) {
        const int count = std::uniform_int_distribution<int>(1, MaxGarbageBytes)(random);
        QByteArray noise;
        // Never 0xFF, so that the noise cannot pass for the start of a header.
        for (int i = 0; i < count; ++i)
            noise.append(char(std::uniform_int_distribution<int>(0, 0xFE)(random)));
        bytes.prepend(noise);
        due += wireNanoseconds(count, hostBaudRate);
    }
    if (strikes(senders, BusFault::Late))
        due += LateReplyNanoseconds;
    const qint64 byteTime = wireNanoseconds(1, hostBaudRate);
    const qint64 wholeTime = wireNanoseconds(bytes.size(), hostBaudRate);
    std::vector<BusReply> result{{bytes, due, due - wholeTime + byteTime}};
    // The repeat starts on the wire the moment the reply ends.
    if (strikes(senders, BusFault::Twice))
        result.push_back({bytes, due + wholeTime, due + byteTime});
    return result;
}

void VirtualBus::setFaultProbability(quint8 id, BusFault fault, double probability)
{
    QMutexLocker locker(&mutex);
    for (Station &station : stations) {
        if (station.servo->id() == id)
            station.faults[int(fault)].probability = probability;
    }
}

void VirtualBus::injectFault(quint8 id, BusFault fault, int replies)
{
    QMutexLocker locker(&mutex);
    for (Station &station : stations) {
        if (station.servo->id() == id)
            station.faults[int(fault)].remaining = replies;
    }
}

void VirtualBus::clearFaults()
{
    QMutexLocker locker(&mutex);
    for (Station &station : stations)
        station.faults = {};
}
