#include "cli/busclient.h"
#include "cli/commandline.h"
#include "cli/commands.h"
#include "cli/commandsupport.h"
#include "cli/console.h"
#include "cli/servosession.h"
#include "cli/unitvalue.h"
#include "device/idevice.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>
#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>

using namespace CommandSupport;

namespace {

std::atomic_bool interrupted{false};

void onInterrupt(int)
{
    interrupted = true;
}

QString hexOf(const QByteArray &table, const RegisterSpan &span)
{
    return QString::fromLatin1(table.mid(span.address, span.size).toHex(' ').toUpper());
}

QJsonObject valueObject(const CatalogueEntry &entry, const DecodedValue &value)
{
    QJsonObject object{{"address", entry.span.address},
                       {"name", entry.span.description},
                       {"raw", double(value.raw)},
                       {"value", value.display}};
    if (!value.unit.isEmpty())
        object.insert("unit", value.unit);
    return object;
}

const CatalogueEntry *findRegister(const ServoSession &session, const QString &name,
                                   const Console &console)
{
    const CatalogueEntry *entry = session.catalogue().find(name);
    if (!entry)
        console.problem(
            QStringLiteral("this servo has no register '%1' (see 'zelvar-servo dump %2')")
                .arg(name)
                .arg(session.id()));
    return entry;
}

} // namespace

namespace Commands {

int get(const Invocation &invocation, const Console &console)
{
    BusClient client;
    std::optional<ServoSession> session;
    if (const auto failed = openServo(invocation, client, session, console))
        return *failed;
    std::vector<const CatalogueEntry *> entries;
    for (const QString &name : invocation.arguments.mid(1)) {
        const CatalogueEntry *entry = findRegister(*session, name, console);
        if (!entry)
            return BadUsage;
        entries.push_back(entry);
    }
    QByteArray table;
    if (const auto failed = readTable(*session, table, console))
        return *failed;
    const TelemetryDecoder &decoder = session->decoder();
    QJsonArray values;
    for (const CatalogueEntry *entry : entries) {
        const DecodedValue value = *decoder.decode(table, *entry);
        values.append(valueObject(*entry, value));
        if (!console.json())
            console.line(QStringLiteral("%1: %2").arg(entry->span.description,
                                                      decoder.displayText(value, *entry)));
    }
    if (console.json())
        console.document(values);
    return Success;
}

int set(const Invocation &invocation, const Console &console)
{
    const QStringList pairs = invocation.arguments.mid(1);
    if (pairs.size() % 2 != 0) {
        console.problem(
            QStringLiteral("set takes NAME VALUE pairs; '%1' has no value").arg(pairs.back()));
        return BadUsage;
    }
    BusClient client;
    std::optional<ServoSession> session;
    if (const auto failed = openServo(invocation, client, session, console))
        return *failed;

    // Every value is checked before the first is written.
    struct Change
    {
        const CatalogueEntry *entry;
        qint64 raw;
    };
    std::vector<Change> changes;
    const TelemetryDecoder &decoder = session->decoder();
    for (int i = 0; i < pairs.size(); i += 2) {
        const CatalogueEntry *entry = findRegister(*session, pairs.at(i), console);
        if (!entry)
            return BadUsage;
        if (!entry->span.writable) {
            console.problem(QStringLiteral("%1 is read-only; nothing was written")
                                .arg(entry->span.description));
            return BadUsage;
        }
        const UnitValue::Result value =
            UnitValue::parse(pairs.at(i + 1), *entry, session->sharedCatalogue());
        if (!value.raw) {
            console.problem(value.error + QStringLiteral("; nothing was written"));
            return BadUsage;
        }
        changes.push_back({entry, *value.raw});
    }

    QJsonArray written;
    for (const Change &change : changes) {
        const RegisterSpan &span = change.entry->span;
        const QByteArray bytes = TelemetryDecoder::bytes(span, change.raw);
        const DecodedValue value = decoder.decodeRaw(*change.entry, change.raw);
        if (!invocation.has("dry-run")) {
            const BusAnswer answer = client.write(session->id(), span.address, bytes);
            QString problem =
                answer.answered ? ServoSession::errorText(answer.error) : answer.problem;
            if (!problem.isEmpty()) {
                console.problem(
                    QStringLiteral("%1: %2 not written: %3")
                        .arg(servoName(client, session->id()), span.description, problem));
                return Failed;
            }
        }
        QJsonObject object = valueObject(*change.entry, value);
        object.insert("written", !invocation.has("dry-run"));
        written.append(object);
        if (!console.json())
            console.line(
                QStringLiteral("%1%2 = %3 (raw %4)")
                    .arg(invocation.has("dry-run") ? QStringLiteral("would set ") : QString(),
                         span.description, decoder.displayText(value, *change.entry))
                    .arg(change.raw));
    }
    if (console.json())
        console.document(written);
    return Success;
}

int dump(const Invocation &invocation, const Console &console)
{
    BusClient client;
    std::optional<ServoSession> session;
    if (const auto failed = openServo(invocation, client, session, console))
        return *failed;
    QByteArray table;
    if (const auto failed = readTable(*session, table, console))
        return *failed;
    const TelemetryDecoder &decoder = session->decoder();
    QJsonArray rows;
    int width = 0;
    for (const CatalogueEntry &entry : session->catalogue().entries())
        width = std::max(width, entry.span.description.size());
    for (const CatalogueEntry &entry : session->catalogue().entries()) {
        const auto value = decoder.decode(table, entry);
        if (!value)
            continue;
        QJsonObject row = valueObject(entry, *value);
        row.insert("hex", hexOf(table, entry.span));
        row.insert("writable", entry.span.writable);
        rows.append(row);
        if (!console.json())
            console.line(QStringLiteral("%1  %2  %3  %4")
                             .arg(entry.span.address, 3)
                             .arg(entry.span.description, -width)
                             .arg(hexOf(table, entry.span), -11)
                             .arg(decoder.displayText(*value, entry)));
    }
    if (console.json())
        console.document(rows);
    return Success;
}

int monitor(const Invocation &invocation, const Console &console)
{
    const auto rate = invocation.options.value("rate", "10").toDouble();
    if (!(rate > 0 && rate <= 1000)) {
        console.problem(QStringLiteral("--rate takes replies per second from above 0 to 1000, "
                                       "not '%1'")
                            .arg(invocation.options.value("rate")));
        return BadUsage;
    }
    const auto count = number(invocation.options.value("count", "0"), 0, 1'000'000'000);
    if (!count) {
        console.problem(QStringLiteral("--count takes a whole number of lines, not '%1'")
                            .arg(invocation.options.value("count")));
        return BadUsage;
    }
    BusClient client;
    std::optional<ServoSession> session;
    if (const auto failed = openServo(invocation, client, session, console))
        return *failed;

    // The quantities the servo reports about itself, not the targets it is given.
    std::vector<std::pair<Quantity, const CatalogueEntry *>> watched;
    for (const Quantity quantity : QuantityTable::all()) {
        const CatalogueEntry *entry = session->catalogue().find(quantity);
        if (entry && !entry->span.writable)
            watched.emplace_back(quantity, entry);
    }
    const TelemetryDecoder &decoder = session->decoder();
    const bool csv = invocation.has("csv");
    if (csv) {
        QStringList header{QStringLiteral("time [s]")};
        for (const auto &[quantity, entry] : watched) {
            const QString unit = decoder.unitText(*entry);
            header << (unit.isEmpty()
                           ? QuantityTable::key(quantity)
                           : QStringLiteral("%1 [%2]").arg(QuantityTable::key(quantity), unit));
        }
        console.line(header.join(QLatin1Char(',')));
    }

    interrupted = false;
    std::signal(SIGINT, onInterrupt);
    std::signal(SIGTERM, onInterrupt);
    const auto period = std::chrono::nanoseconds(qint64(1e9 / rate));
    QElapsedTimer clock;
    clock.start();
    int lines = 0;
    int answered = 0;
    for (int tick = 0; !interrupted && (*count == 0 || lines < *count); ++tick) {
        const auto due = std::chrono::nanoseconds(period * tick);
        while (!interrupted && std::chrono::nanoseconds(clock.nsecsElapsed()) < due)
            std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(
                due - std::chrono::nanoseconds(clock.nsecsElapsed()),
                std::chrono::milliseconds(50)));
        if (interrupted)
            break;
        const double seconds = clock.nsecsElapsed() / 1e9;
        const BusAnswer answer = session->readTable();
        ++lines;
        if (!answer.answered) {
            console.problem(QStringLiteral("%1 s: %2").arg(seconds, 0, 'f', 3).arg(answer.problem));
            continue;
        }
        ++answered;
        QStringList fields{QString::number(seconds, 'f', 3)};
        QJsonObject record{{"time", seconds}};
        for (const auto &[quantity, entry] : watched) {
            const auto value = decoder.decode(answer.data, *entry);
            if (!value)
                continue;
            record.insert(QuantityTable::key(quantity), value->display);
            fields << (csv ? QString::number(value->display, 'f', decoder.decimals(*entry))
                           : QStringLiteral("%1 %2").arg(QuantityTable::key(quantity),
                                                         decoder.displayText(*value, *entry)));
        }
        if (console.json())
            console.record(record);
        else
            console.line(fields.join(csv ? QStringLiteral(",") : QStringLiteral("  ")));
    }
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    return lines > 0 && answered == 0 ? Failed : Success;
}

} // namespace Commands
