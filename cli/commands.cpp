#include "cli/commands.h"

#include "cli/busclient.h"
#include "cli/busscan.h"
#include "cli/commandline.h"
#include "cli/commandsupport.h"
#include "cli/console.h"
#include "cli/servosession.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>
#include <map>

using namespace CommandSupport;

namespace {

QString hexBytes(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

QJsonObject pingObject(const PingReply &reply)
{
    return {{"id", reply.id},
            {"model", reply.modelNumber},
            {"firmware", reply.firmwareVersion},
            {"alert", bool(reply.error & 0x80)}};
}

// Ends a command that sent one instruction: the servo's error, or the problem, or success.
int outcome(const BusAnswer &answer, const BusClient &client, int id, const Console &console)
{
    if (!answer.answered) {
        console.problem(QStringLiteral("%1: %2").arg(servoName(client, id), answer.problem));
        return Failed;
    }
    if (const QString error = ServoSession::errorText(answer.error); !error.isEmpty()) {
        console.problem(QStringLiteral("%1: %2").arg(servoName(client, id), error));
        return Failed;
    }
    return Success;
}

std::optional<std::vector<int>> scanRates(const QString &text)
{
    if (text == QLatin1String("all"))
        return BusScan::searchRates();
    std::vector<int> rates;
    for (const QString &part : text.split(QLatin1Char(','))) {
        const auto rate = number(part.trimmed(), 1, 100'000'000);
        if (!rate)
            return std::nullopt;
        if (std::find(rates.begin(), rates.end(), *rate) == rates.end())
            rates.push_back(*rate);
    }
    return rates;
}

std::optional<std::pair<int, int>> idRange(const QString &text)
{
    const QStringList ends = text.split(QLatin1Char('-'));
    if (ends.size() > 2)
        return std::nullopt;
    const auto first = number(ends.front().trimmed(), 0, 253);
    const auto last = number(ends.back().trimmed(), 0, 253);
    if (!first || !last || *first > *last)
        return std::nullopt;
    return std::make_pair(*first, *last);
}

} // namespace

namespace Commands {

int run(const Invocation &invocation, const Console &console)
{
    static const std::map<QString, int (*)(const Invocation &, const Console &)> table{
        {"ports", ports}, {"scan", scan},       {"ping", ping}, {"reboot", reboot},
        {"reset", reset}, {"read", read},       {"get", get},   {"set", set},
        {"dump", dump},   {"monitor", monitor}, {"save", save}, {"load", load},
    };
    const auto command = table.find(invocation.command);
    if (command == table.end()) {
        console.problem(QStringLiteral("unknown command '%1'").arg(invocation.command));
        return BadUsage;
    }
    return command->second(invocation, console);
}

int ports(const Invocation &, const Console &console)
{
    BusClient client;
    const auto list = client.ports();
    QJsonArray array;
    int width = 0;
    for (const auto &port : list)
        width = std::max(width, port->getPortName().size());
    for (const auto &port : list) {
        array.append(QJsonObject{{"name", port->getPortName()},
                                 {"description", port->getDescription()},
                                 {"manufacturer", port->getManufacturer()},
                                 {"location", port->getSystemLocation()},
                                 {"vendorId", port->getVendorIdentifier()},
                                 {"productId", port->getProductIdentifier()}});
        if (!console.json())
            console.line(QStringLiteral("%1  %2")
                             .arg(port->getPortName(), -width)
                             .arg(port->getDescription())
                             .trimmed());
    }
    if (console.json())
        console.document(array);
    return Success;
}

int scan(const Invocation &invocation, const Console &console)
{
    const auto rates = scanRates(invocation.baud);
    if (!rates) {
        console.problem(QStringLiteral("--baud takes 'all' or rates like 57600,1000000, not '%1'")
                            .arg(invocation.baud));
        return BadUsage;
    }
    const auto ids = idRange(invocation.options.value("ids", "0-253"));
    if (!ids) {
        console.problem(QStringLiteral("--ids takes A-B with 0 <= A <= B <= 253, not '%1'")
                            .arg(invocation.options.value("ids")));
        return BadUsage;
    }
    if (invocation.port.isEmpty()) {
        console.problem(
            QStringLiteral("no port given: --port NAME, one of those 'zelvar-servo ports' lists"));
        return BadUsage;
    }

    BusClient client;
    BusScan busScan(client, invocation.port);
    QElapsedTimer clock;
    clock.start();
    const std::vector<FoundServo> found = busScan.run(*rates, ids->first, ids->second);
    const double seconds = clock.nsecsElapsed() / 1e9;
    for (const QString &problem : busScan.problems())
        console.problem(problem);

    QJsonArray servos;
    QJsonArray garbled;
    if (!console.json() && !found.empty())
        console.line(QStringLiteral(" ID     BAUD  MODEL  FIRMWARE"));
    for (const FoundServo &servo : found) {
        if (servo.garbled) {
            garbled.append(QJsonObject{{"id", servo.id}, {"baud", servo.baudRate}});
            console.problem(QStringLiteral("id %1 at %2 baud: only damaged answers, even alone "
                                           "(two servos with this id?)")
                                .arg(servo.id)
                                .arg(servo.baudRate));
            continue;
        }
        servos.append(QJsonObject{{"id", servo.id},
                                  {"baud", servo.baudRate},
                                  {"model", servo.modelNumber},
                                  {"firmware", servo.firmwareVersion},
                                  {"alert", bool(servo.error & 0x80)}});
        if (!console.json())
            console.line(QStringLiteral("%1 %2 %3 %4")
                             .arg(servo.id, 3)
                             .arg(servo.baudRate, 8)
                             .arg(servo.modelNumber, 6)
                             .arg(servo.firmwareVersion, 9));
    }
    if (console.json())
        console.document(QJsonObject{{"servos", servos},
                                     {"damaged", garbled},
                                     {"seconds", seconds},
                                     {"singlePings", busScan.singlePings()}});
    else
        console.line(QStringLiteral("%1 found in %2 s").arg(servos.size()).arg(seconds, 0, 'f', 2));
    return servos.isEmpty() && garbled.isEmpty() ? Failed : Success;
}

int ping(const Invocation &invocation, const Console &console)
{
    int status = Success;
    const auto id = argumentNumber(invocation, 0, "ID", 0, 253, console, status);
    if (!id)
        return status;
    BusClient client;
    if (const auto opened = open(invocation, client, console))
        return *opened;
    std::vector<PingReply> replies;
    if (!client.ping(quint8(*id), replies)) {
        console.problem(
            QStringLiteral("%1: the ping could not be sent").arg(servoName(client, *id)));
        return Failed;
    }
    const auto answer = std::find_if(replies.begin(), replies.end(),
                                     [&](const PingReply &r) { return !r.damaged && r.id == *id; });
    if (answer == replies.end()) {
        console.problem(QStringLiteral("%1: %2").arg(
            servoName(client, *id), replies.empty() ? QStringLiteral("no answer")
                                                    : QStringLiteral("only a damaged answer")));
        return Failed;
    }
    if (const QString error = ServoSession::errorText(answer->error); !error.isEmpty()) {
        console.problem(QStringLiteral("%1: %2").arg(servoName(client, *id), error));
        return Failed;
    }
    if (console.json())
        console.document(pingObject(*answer));
    else
        console.line(QStringLiteral("id %1: model %2, firmware %3%4")
                         .arg(answer->id)
                         .arg(answer->modelNumber)
                         .arg(answer->firmwareVersion)
                         .arg(answer->error & 0x80 ? QStringLiteral(", alert") : QString()));
    return Success;
}

int reboot(const Invocation &invocation, const Console &console)
{
    int status = Success;
    const auto id = argumentNumber(invocation, 0, "ID", 0, 253, console, status);
    if (!id)
        return status;
    BusClient client;
    if (const auto opened = open(invocation, client, console))
        return *opened;
    status = outcome(client.reboot(quint8(*id)), client, *id, console);
    if (status == Success) {
        if (console.json())
            console.document(QJsonObject{{"id", *id}, {"rebooted", true}});
        else
            console.line(QStringLiteral("servo %1 rebooted").arg(*id));
    }
    return status;
}

int reset(const Invocation &invocation, const Console &console)
{
    using Keeps = ZelvarSerialPortInterface::ResetKeeps;
    static const std::map<QString, std::pair<Keeps, const char *>> keepChoices{
        {"id,baud", {Keeps::IdAndBaudRate, "keeping its id and baud rate"}},
        {"baud,id", {Keeps::IdAndBaudRate, "keeping its id and baud rate"}},
        {"id", {Keeps::Id, "keeping its id"}},
        {"none", {Keeps::Nothing, "id and baud rate included"}},
    };
    int status = Success;
    const auto id = argumentNumber(invocation, 0, "ID", 0, 253, console, status);
    if (!id)
        return status;
    const QString keep = invocation.options.value("keep", "id,baud");
    const auto choice = keepChoices.find(keep);
    if (choice == keepChoices.end()) {
        console.problem(QStringLiteral("--keep takes id,baud, id or none, not '%1'").arg(keep));
        return BadUsage;
    }
    BusClient client;
    if (const auto opened = open(invocation, client, console))
        return *opened;
    status = outcome(client.reset(quint8(*id), choice->second.first), client, *id, console);
    if (status == Success) {
        if (console.json())
            console.document(QJsonObject{{"id", *id}, {"reset", true}, {"keep", keep}});
        else
            console.line(QStringLiteral("servo %1 reset to its factory settings, %2")
                             .arg(*id)
                             .arg(QLatin1String(choice->second.second)));
    }
    return status;
}

int read(const Invocation &invocation, const Console &console)
{
    int status = Success;
    const auto id = argumentNumber(invocation, 0, "ID", 0, 253, console, status);
    const auto address =
        id ? argumentNumber(invocation, 1, "ADDR", 0, 255, console, status) : std::nullopt;
    const auto length =
        address ? argumentNumber(invocation, 2, "LEN", 1, 255, console, status) : std::nullopt;
    if (!length)
        return status;
    BusClient client;
    if (const auto opened = open(invocation, client, console))
        return *opened;
    const BusAnswer answer = client.read(quint8(*id), quint8(*address), quint8(*length));
    status = outcome(answer, client, *id, console);
    if (status != Success)
        return status;
    if (console.json()) {
        QJsonArray bytes;
        for (const char byte : answer.data)
            bytes.append(quint8(byte));
        console.document(QJsonObject{{"id", *id}, {"address", *address}, {"bytes", bytes}});
    } else {
        console.line(hexBytes(answer.data));
    }
    return Success;
}

} // namespace Commands
