#include "cli/commandsupport.h"

#include "cli/busclient.h"
#include "cli/commandline.h"
#include "cli/console.h"
#include "cli/servosession.h"

namespace CommandSupport {

std::optional<int> number(const QString &text, int lowest, int highest)
{
    bool ok = false;
    const bool hex = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    const int value = hex ? text.mid(2).toInt(&ok, 16) : text.toInt(&ok, 10);
    if (!ok || value < lowest || value > highest)
        return std::nullopt;
    return value;
}

std::optional<int> argumentNumber(const Invocation &invocation, int index, const char *what,
                                  int lowest, int highest, const Console &console, int &status)
{
    const QString &text = invocation.arguments.at(index);
    const auto value = number(text, lowest, highest);
    if (!value) {
        console.problem(QStringLiteral("%1 must be a whole number from %2 to %3, not '%4'")
                            .arg(QLatin1String(what))
                            .arg(lowest)
                            .arg(highest)
                            .arg(text));
        status = BadUsage;
    }
    return value;
}

std::optional<int> open(const Invocation &invocation, BusClient &client, const Console &console)
{
    if (invocation.port.isEmpty()) {
        console.problem(
            QStringLiteral("no port given: --port NAME, one of those 'zelvar-servo ports' lists"));
        return BadUsage;
    }
    const auto baudRate = number(invocation.baud, 1, 100'000'000);
    if (!baudRate) {
        console.problem(QStringLiteral("--baud must be a rate in bits per second, not '%1'")
                            .arg(invocation.baud));
        return BadUsage;
    }
    if (const QString error = client.open(invocation.port, *baudRate); !error.isEmpty()) {
        console.problem(error);
        return Failed;
    }
    return std::nullopt;
}

std::optional<int> openServo(const Invocation &invocation, BusClient &client,
                             std::optional<ServoSession> &session, const Console &console)
{
    int status = Success;
    const auto id = argumentNumber(invocation, 0, "ID", 0, 253, console, status);
    if (!id)
        return status;
    if (const auto opened = open(invocation, client, console))
        return opened;
    session.emplace(client, quint8(*id));
    if (const QString problem = session->identify(); !problem.isEmpty()) {
        console.problem(problem);
        return Failed;
    }
    return std::nullopt;
}

std::optional<int> readTable(const ServoSession &session, QByteArray &table, const Console &console)
{
    const BusAnswer answer = session.readTable();
    QString problem = answer.answered ? ServoSession::errorText(answer.error) : answer.problem;
    if (!problem.isEmpty()) {
        console.problem(
            QStringLiteral("%1: %2").arg(servoName(session.bus(), session.id()), problem));
        return Failed;
    }
    table = answer.data;
    return std::nullopt;
}

QString servoName(const BusClient &client, int id)
{
    return QStringLiteral("servo %1 at %2 baud on %3")
        .arg(id)
        .arg(client.baudRate())
        .arg(client.portName());
}

} // namespace CommandSupport
