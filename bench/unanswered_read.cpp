// Cost of a read that nobody answers: the time from one request going out to the next one
// going out behind it, through the library, at 1,000,000 and 57,600 baud. Measured on an
// in-process port that stays silent and on a pseudo-terminal that nobody answers.
#include "bridgefolder.h"
#include "packetcodec.h"
#include "portprovider.h"
#include "serialportbackend.h"
#include "zelvarserialportinterface.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSocketNotifier>
#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int Reads = 100;
constexpr int ReadLength = 118;
const QString SilentPortName = "bench-silent";
const QString BridgeName = "bench-pty";

QElapsedTimer benchClock;

// Swallows every request and never answers; notes when each one left.
class SilentBackend : public SerialPortBackend
{
public:
    explicit SilentBackend(std::vector<qint64> &sentAt)
        : sentAt(sentAt)
    {}
    QString open(int) override
    {
        opened = true;
        return {};
    }
    void close() override { opened = false; }
    bool isOpen() const override { return opened; }
    bool write(const QByteArray &) override
    {
        sentAt.push_back(benchClock.nsecsElapsed());
        return true;
    }
    QByteArray readAll() override { return {}; }
    bool waitForReadyRead(int) override { return false; }

private:
    std::vector<qint64> &sentAt;
    bool opened = false;
};

class SilentProvider : public PortProvider
{
public:
    std::vector<SerialPortItem> ports() const override
    {
        return {SerialPortItem(SilentPortName, "Silent bench port", {}, {}, 0, 0)};
    }
    std::unique_ptr<SerialPortBackend> createBackend(const QString &portName) const override
    {
        if (portName != SilentPortName)
            return nullptr;
        return std::make_unique<SilentBackend>(sentAt);
    }
    mutable std::vector<qint64> sentAt;
};

// Queues reads that differ in their address, so none replaces another, and waits until
// the last has gone out. The gaps between departures are the cost of an unanswered read.
std::vector<double> departuresGaps(ZelvarSerialPortInterface &library,
                                   const std::vector<qint64> &sentAt)
{
    for (int i = 0; i < Reads; ++i)
        library.readData(1, quint8(i), ReadLength, [] {});
    QElapsedTimer limit;
    limit.start();
    while (int(sentAt.size()) < Reads && limit.elapsed() < 30000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    std::vector<double> gaps;
    for (std::size_t i = 1; i < sentAt.size(); ++i)
        gaps.push_back((sentAt[i] - sentAt[i - 1]) / 1e6);
    std::sort(gaps.begin(), gaps.end());
    return gaps;
}

void report(const char *label, int baudRate, const std::vector<double> &gaps)
{
    if (gaps.empty()) {
        printf("%-34s %9d  no figures\n", label, baudRate);
        return;
    }
    printf("%-34s %9d  median %6.2f ms  min %6.2f ms  max %6.2f ms  (%zu reads)\n", label, baudRate,
           gaps[gaps.size() / 2], gaps.front(), gaps.back(), gaps.size());
}

void measureSilentPort(int baudRate)
{
    auto provider = std::make_shared<SilentProvider>();
    PortProvider::install(provider);
    ZelvarSerialPortInterface library(nullptr, 2);
    library.openSerialPort(SilentPortName, baudRate);
    report("in-process silent port", baudRate, departuresGaps(library, provider->sentAt));
    library.closeSerialPort();
    PortProvider::uninstall(provider);
}

void measurePseudoTerminal(int baudRate)
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        printf("pseudo-terminal: cannot create one\n");
        return;
    }
    BridgeFolder::prepare();
    const QString folder = BridgeFolder::path();
    QFile::remove(folder + "/" + BridgeName);
    QFile::link(QString::fromLocal8Bit(ptsname(master)), folder + "/" + BridgeName);

    std::vector<qint64> sentAt;
    int received = 0;
    const int requestSize = PacketCodec::read(1, 0, ReadLength).size();
    QSocketNotifier notifier(master, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, [&] {
        char buffer[256];
        for (ssize_t n; (n = ::read(master, buffer, sizeof buffer)) > 0;) {
            for (ssize_t i = 0; i < n; ++i) {
                if (++received % requestSize == 0)
                    sentAt.push_back(benchClock.nsecsElapsed());
            }
        }
    });

    ZelvarSerialPortInterface library(nullptr, 2);
    const QString error = library.openSerialPort(BridgeName, baudRate);
    if (error.isEmpty())
        report("pseudo-terminal nobody answers", baudRate, departuresGaps(library, sentAt));
    else
        printf("pseudo-terminal: %s\n", qPrintable(error));
    library.closeSerialPort();
    QFile::remove(folder + "/" + BridgeName);
    ::close(master);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    benchClock.start();
    printf("Cost of an unanswered %d-byte read (request out to next request out)\n", ReadLength);
    for (const int baudRate : {1000000, 57600}) {
        measureSilentPort(baudRate);
        measurePseudoTerminal(baudRate);
    }
    return 0;
}
