#include "bridgefolder.h"
#include "simulator/baudratecode.h"
#include "simulator/bridge/bridgeregistration.h"
#include "simulator/bridge/pseudoterminal.h"
#include "simulator/bridge/ptybridge.h"
#include "simulator/bridge/signalwatcher.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualservo.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRegularExpression>
#include <algorithm>
#include <cstdio>
#include <limits>

namespace {

struct FaultName
{
    const char *name;
    BusFault fault;
};

const FaultName faultNames[] = {
    {"drop", BusFault::Drop},         {"corrupt", BusFault::Corrupt},
    {"truncate", BusFault::Truncate}, {"garbage", BusFault::Garbage},
    {"late", BusFault::Late},         {"twice", BusFault::Twice},
};

// ID@BAUD, e.g. 1@1000000.
QString addServo(VirtualBus &bus, const QString &text)
{
    const auto match = QRegularExpression("^(\\d{1,3})@(\\d+)$").match(text);
    const int id = match.captured(1).toInt();
    bool rateIsNumber = false;
    const int baudRate = match.captured(2).toInt(&rateIsNumber);
    if (!match.hasMatch() || id > 253)
        return QString("--servo %1: expected ID@BAUD with an id from 0 to 253").arg(text);
    if (!rateIsNumber || !BaudRateCode::matches(BaudRateCode::nearest(baudRate), baudRate))
        return QString("--servo %1: a Zelvar servo cannot run at %2 baud")
            .arg(text, match.captured(2));
    bus.addServo(quint8(id), baudRate);
    return {};
}

bool hasServo(const VirtualBus &bus, int id)
{
    const auto servos = bus.servos();
    return std::any_of(servos.begin(), servos.end(),
                       [id](const auto &servo) { return servo->id() == id; });
}

// ID:KIND:N for the next N replies, ID:KIND:P% for a probability.
QString addFault(VirtualBus &bus, const QString &text)
{
    const auto match = QRegularExpression("^(\\d+):([a-z]+):(\\d+(?:\\.\\d+)?)(%?)$").match(text);
    const FaultName *kind = nullptr;
    for (const FaultName &name : faultNames) {
        if (match.captured(2) == QLatin1String(name.name))
            kind = &name;
    }
    if (!match.hasMatch() || !kind)
        return QString("--fault %1: expected ID:KIND:N or ID:KIND:P%, KIND one of drop, corrupt, "
                       "truncate, garbage, late, twice")
            .arg(text);
    bool idIsNumber = false;
    const int id = match.captured(1).toInt(&idIsNumber);
    if (!idIsNumber || !hasServo(bus, id))
        return QString("--fault %1: no servo has the id %2").arg(text, match.captured(1));
    if (match.captured(4).isEmpty()) {
        bool countIsNumber = false;
        const int replies = match.captured(3).toInt(&countIsNumber);
        if (!countIsNumber || replies < 1)
            return QString("--fault %1: N must be a whole number from 1 to %2")
                .arg(text)
                .arg(std::numeric_limits<int>::max());
        bus.injectFault(quint8(id), kind->fault, replies);
    } else {
        const double percent = match.captured(3).toDouble();
        if (percent <= 0 || percent > 100)
            return QString("--fault %1: P must be above 0 and at most 100").arg(text);
        bus.setFaultProbability(quint8(id), kind->fault, percent / 100);
    }
    return {};
}

int fail(const QString &message)
{
    fprintf(stderr, "zelvar-virtual-bus: %s\n", qPrintable(message));
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName("zelvar-virtual-bus");

    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Simulated Zelvar servos behind a pseudo-terminal. Prints the terminal's path and "
        "lists it among the serial ports until it ends (Ctrl+C).");
    parser.addHelpOption();
    const QCommandLineOption servo("servo",
                                   "A servo with this id at this baud rate (repeatable). "
                                   "Default: 0@1000000, 1@1000000 (wheel mode), 3@57600 "
                                   "(joint mode).",
                                   "ID@BAUD");
    const QCommandLineOption fault("fault",
                                   "Spoil replies of servo ID (repeatable): the next N, or P% "
                                   "of them. KIND is drop, corrupt, truncate, garbage, late "
                                   "or twice.",
                                   "ID:KIND:N|ID:KIND:P%");
    const QCommandLineOption link("link", "Also make a symbolic link to the terminal here.",
                                  "PATH");
    const QCommandLineOption name(
        "name", "The name shown in the port list.", "NAME",
        QString("zelvar-virtual-bus-%1").arg(application.applicationPid()));
    parser.addOptions({servo, fault, link, name});
    parser.process(application);

    auto bus = std::make_shared<VirtualBus>();
    if (parser.values(servo).isEmpty())
        bus->addStandardServos();
    for (const QString &text : parser.values(servo)) {
        if (const QString error = addServo(*bus, text); !error.isEmpty())
            return fail(error);
    }
    for (const QString &text : parser.values(fault)) {
        if (const QString error = addFault(*bus, text); !error.isEmpty())
            return fail(error);
    }

    // Before anything is registered, so that no signal can end the bridge without
    // removing what it registered.
    SignalWatcher signalWatcher;
    QObject::connect(&signalWatcher, SIGNAL(terminationRequested()), &application, SLOT(quit()));

    PseudoTerminal terminal;
    if (const QString error = terminal.open(); !error.isEmpty())
        return fail(error);
    BridgeRegistration registration;
    if (const QString error = registration.addListed(parser.value(name), terminal.slavePath());
        !error.isEmpty())
        return fail(error);
    if (parser.isSet(link)) {
        if (const QString error = registration.addLink(parser.value(link), terminal.slavePath());
            !error.isEmpty())
            return fail(error);
    }

    PtyBridge bridge(terminal, bus);
    printf("%s\n", qPrintable(terminal.slavePath()));
    fflush(stdout);
    fprintf(stderr, "Listed as \"%s\" in %s\n", qPrintable(parser.value(name)),
            qPrintable(BridgeFolder::path()));
    return application.exec();
}
