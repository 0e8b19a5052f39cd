#include "cli/busclient.h"
#include "cli/commandline.h"
#include "cli/commands.h"
#include "cli/commandsupport.h"
#include "cli/console.h"
#include "cli/servosession.h"
#include "device/idevice.h"
#include "params/parameterdiff.h"
#include "params/parameterfilecodec.h"
#include "params/writeplanner.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QSaveFile>

using namespace CommandSupport;

namespace {

bool movesTheLink(const CatalogueEntry &entry)
{
    return entry.span.description == QLatin1String("ID") ||
           entry.span.description == QLatin1String("Baud rate");
}

QString valueText(const TelemetryDecoder &decoder, const CatalogueEntry &entry,
                  std::optional<int64_t> raw)
{
    return raw ? decoder.displayText(decoder.decodeRaw(entry, *raw), entry) : QStringLiteral("-");
}

// Where the servo answers once the plan is written: a new id or rate takes effect at once.
void followTheLink(const std::vector<ParameterDifference> &written, int &id, int &baudRate)
{
    for (const ParameterDifference &difference : written) {
        if (difference.entry->span.description == QLatin1String("ID"))
            id = int(difference.wantedRaw);
        if (difference.entry->span.description == QLatin1String("Baud rate"))
            baudRate = TelemetryDecoder::baudRateOfCode(difference.wantedRaw);
    }
}

} // namespace

namespace Commands {

int save(const Invocation &invocation, const Console &console)
{
    BusClient client;
    std::optional<ServoSession> session;
    if (const auto failed = openServo(invocation, client, session, console))
        return *failed;
    QByteArray table;
    if (const auto failed = readTable(*session, table, console))
        return *failed;
    const ParameterFileCodec codec(session->sharedDecoder());
    const ParameterFile file = codec.capture(table, QDateTime::currentDateTime());
    const QString path = invocation.arguments.at(1);
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(codec.toJson(file)) < 0 || !out.commit()) {
        console.problem(QStringLiteral("cannot write %1: %2").arg(path, out.errorString()));
        return Failed;
    }
    if (console.json())
        console.document(QJsonObject{
            {"id", session->id()}, {"file", path}, {"registers", int(file.registers.size())}});
    else
        console.line(QStringLiteral("saved %1 registers of servo %2 to %3")
                         .arg(file.registers.size())
                         .arg(session->id())
                         .arg(path));
    return Success;
}

int load(const Invocation &invocation, const Console &console)
{
    const QString path = invocation.arguments.at(1);
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly)) {
        console.problem(QStringLiteral("cannot read %1: %2").arg(path, in.errorString()));
        return BadUsage;
    }
    const QByteArray json = in.readAll();

    BusClient client;
    std::optional<ServoSession> session;
    if (const auto failed = openServo(invocation, client, session, console))
        return *failed;
    QByteArray table;
    if (const auto failed = readTable(*session, table, console))
        return *failed;
    const TelemetryDecoder &decoder = session->decoder();
    const RegisterCatalogue &catalogue = session->catalogue();
    const CatalogueEntry *modelEntry = catalogue.find(QStringLiteral("Model number"));
    const int modelNumber =
        modelEntry ? int(TelemetryDecoder::rawValue(table, modelEntry->span).value_or(0)) : 0;
    QString refusal;
    const auto file =
        ParameterFileCodec(session->sharedDecoder()).fromJson(json, modelNumber, &refusal);
    if (!file) {
        console.problem(QStringLiteral("%1 refused, nothing was written: %2").arg(path, refusal));
        return BadUsage;
    }

    // As the dialog's ticks start, with id and baud rate only when asked for.
    std::vector<ParameterDifference> ticked;
    QJsonArray rows;
    for (const ParameterDifference &difference : ParameterDiff::between(*file, table, catalogue)) {
        const CatalogueEntry &entry = *difference.entry;
        const bool write = ParameterDiff::startsTicked(entry) ||
                           (invocation.has("include-id-baud") && movesTheLink(entry));
        if (write)
            ticked.push_back(difference);
        const QString servoValue = valueText(decoder, entry, difference.servoRaw);
        const QString fileValue = valueText(decoder, entry, difference.wantedRaw);
        rows.append(QJsonObject{{"name", entry.span.description},
                                {"servo", servoValue},
                                {"file", fileValue},
                                {"write", write}});
        if (!console.json())
            console.line(QStringLiteral("%1 %2: %3 -> %4")
                             .arg(write ? QStringLiteral(" ") : QStringLiteral("-"),
                                  entry.span.description, servoValue, fileValue));
    }
    const auto report = [&](const QString &outcome, const QJsonArray &notTaken = {}) {
        if (console.json())
            console.document(
                QJsonObject{{"differences", rows}, {"outcome", outcome}, {"notTaken", notTaken}});
        else
            console.line(outcome);
    };
    if (ticked.empty()) {
        report(rows.isEmpty() ? QStringLiteral("the servo already holds the file's values")
                              : QStringLiteral("nothing to write ('-' rows are left as they are)"));
        return Success;
    }
    if (invocation.has("dry-run")) {
        report(QStringLiteral("dry run: %1 registers would be written").arg(ticked.size()));
        return Success;
    }

    const WritePlan plan = WritePlanner(catalogue).plan(ticked, table, false);
    if (!plan.error.isEmpty()) {
        console.problem(QStringLiteral("%1 Nothing was written; switch it off first: "
                                       "zelvar-servo set %2 \"Control enable\" 0")
                            .arg(plan.error)
                            .arg(session->id()));
        return Failed;
    }
    for (const WriteBlock &block : plan.blocks) {
        const BusAnswer answer = client.write(session->id(), block.address, block.data);
        const QString problem =
            answer.answered ? ServoSession::errorText(answer.error) : answer.problem;
        if (!problem.isEmpty()) {
            console.problem(QStringLiteral("%1: writing from address %2: %3")
                                .arg(servoName(client, session->id()))
                                .arg(block.address)
                                .arg(problem));
            return Failed;
        }
    }

    int id = session->id();
    int baudRate = client.baudRate();
    followTheLink(ticked, id, baudRate);
    if (baudRate != client.baudRate()) {
        if (const QString error = client.open(client.portName(), baudRate); !error.isEmpty()) {
            console.problem(error);
            return Failed;
        }
    }
    const BusAnswer readBack =
        client.read(quint8(id), 0, quint8(session->device().controlTableSize()));
    if (!readBack.answered) {
        console.problem(
            QStringLiteral("%1: reading back: %2").arg(servoName(client, id), readBack.problem));
        return Failed;
    }
    QJsonArray notTaken;
    for (const ParameterDifference &missed : ParameterDiff::notTaken(ticked, readBack.data)) {
        const QString text = QStringLiteral("%1 holds %2, not the file's %3")
                                 .arg(missed.entry->span.description,
                                      valueText(decoder, *missed.entry, missed.servoRaw),
                                      valueText(decoder, *missed.entry, missed.wantedRaw));
        notTaken.append(text);
        console.problem(text);
    }
    report(QStringLiteral("wrote %1 registers in %2 blocks; %3 did not take the file's value")
               .arg(ticked.size())
               .arg(plan.blocks.size())
               .arg(notTaken.size()),
           notTaken);
    return notTaken.isEmpty() ? Success : Failed;
}

} // namespace Commands
