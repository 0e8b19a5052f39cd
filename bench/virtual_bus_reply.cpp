// Reply time of a 118-byte read through the library, on the in-process virtual bus and
// on zelvar-virtual-bus behind a pseudo-terminal, at 1,000,000 and 57,600 baud, beside
// what the wire takes: request and reply at 10 bits a byte, plus the return delay.
// Usage: bench_virtual_bus_reply [path-to-zelvar-virtual-bus]
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"
#include "zelvarserialportinterface.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int Rounds = 30;
constexpr int ReplySize = 118 + 11;

// Both buses run the same standard servos, with their factory return delays.
qint64 returnDelayNanoseconds(quint8 id)
{
    for (const auto &servo : VirtualBusPortProvider::installProcessBus()->servos()) {
        if (servo->id() == id)
            return servo->returnDelayMicroseconds() * 1000LL;
    }
    return 0;
}

void measure(const QString &label, const QString &portName, int baudRate, quint8 id)
{
    ZelvarSerialPortInterface port(nullptr, 2);
    if (const QString error = port.openSerialPort(portName, baudRate); !error.isEmpty()) {
        printf("%-28s %9d  %s\n", qPrintable(label), baudRate, qPrintable(error));
        return;
    }
    std::vector<double> times;
    for (int round = 0; round < Rounds; ++round) {
        QByteArray reply;
        QElapsedTimer clock;
        clock.start();
        port.readData(id, 0, 118, [&] { reply += port.readPendingSerialData(); });
        while (reply.size() < ReplySize && clock.elapsed() < 1000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        if (reply.size() >= ReplySize)
            times.push_back(clock.nsecsElapsed() / 1e6);
        port.cleanUp();
    }
    port.closeSerialPort();
    std::sort(times.begin(), times.end());
    const double expected =
        (VirtualBus::wireNanoseconds(14 + ReplySize, baudRate) + returnDelayNanoseconds(id)) / 1e6;
    if (times.empty()) {
        printf("%-28s %9d  no replies\n", qPrintable(label), baudRate);
        return;
    }
    printf("%-28s %9d  wire+delay %7.3f ms  median %7.3f ms  min %7.3f  max %7.3f  (%zu/%d)\n",
           qPrintable(label), baudRate, expected, times[times.size() / 2], times.front(),
           times.back(), times.size(), Rounds);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    // The bridge lists itself in a private runtime folder of the bench's own, which the
    // library here scans too; a user's real one is left alone.
    const QTemporaryDir runtime;
    if (!runtime.isValid()) {
        printf("cannot make a temporary runtime folder\n");
        return 1;
    }
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
    VirtualBusPortProvider::installProcessBus();
    measure("in-process \"Virtual bus\"", VirtualBusPortProvider::PortName, 1000000, 0);
    measure("in-process \"Virtual bus\"", VirtualBusPortProvider::PortName, 57600, 3);

    const QString bridgePath =
        argc > 1 ? QString(argv[1])
                 : QCoreApplication::applicationDirPath() + "/../simulator/zelvar-virtual-bus";
    const QString name = QString("bench-%1").arg(QCoreApplication::applicationPid());
    QProcess bridge;
    bridge.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    bridge.start(bridgePath, {"--name", name});
    if (!bridge.waitForReadyRead(10000)) {
        printf("zelvar-virtual-bus did not start: %s\n", qPrintable(bridgePath));
        return 1;
    }
    measure("zelvar-virtual-bus (pty)", name, 1000000, 0);
    measure("zelvar-virtual-bus (pty)", name, 57600, 3);
    bridge.terminate();
    bridge.waitForFinished(10000);
    return 0;
}
