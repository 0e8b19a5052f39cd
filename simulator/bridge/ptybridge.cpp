#include "simulator/bridge/ptybridge.h"

#include "packetcodec.h"
#include "simulator/bridge/pseudoterminal.h"
#include "simulator/virtualbus.h"

#include <QSocketNotifier>
#include <QTimer>
#include <cerrno>
#include <unistd.h>

namespace {

constexpr int RetryMilliseconds = 100;

} // namespace

PtyBridge::PtyBridge(PseudoTerminal &terminal, std::shared_ptr<VirtualBus> bus, QObject *parent)
    : QObject(parent)
    , terminal(terminal)
    , bus(bus)
    , replies([bus] { return bus->now(); })
    , notifier(new QSocketNotifier(terminal.masterDescriptor(), QSocketNotifier::Read, this))
    , retry(new QTimer(this))
{
    retry->setSingleShot(true);
    retry->setInterval(RetryMilliseconds);
    connect(notifier, SIGNAL(activated(int)), this, SLOT(onReadable()));
    connect(retry, SIGNAL(timeout()), this, SLOT(resume()));
    connect(&replies, SIGNAL(due()), this, SLOT(onRepliesDue()));
}

void PtyBridge::onReadable()
{
    char buffer[4096];
    for (;;) {
        const ssize_t count = read(terminal.masterDescriptor(), buffer, sizeof buffer);
        if (count > 0) {
            requests.append(QByteArray(buffer, int(count)));
            continue;
        }
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && errno == EAGAIN)
            break;
        // Hung up: look again a little later instead of spinning on the notifier.
        notifier->setEnabled(false);
        retry->start();
        break;
    }
    const int baudRate = terminal.baudRate();
    while (const auto request = requests.next())
        replies.schedule(bus->transfer(*request, PacketCodec::encode(*request).size(), baudRate));
}

void PtyBridge::onRepliesDue()
{
    const QByteArray bytes = replies.takeDue();
    // Nobody may be reading the other end; what does not fit is lost, as on a wire.
    [[maybe_unused]] const auto written =
        write(terminal.masterDescriptor(), bytes.constData(), size_t(bytes.size()));
}

void PtyBridge::resume()
{
    notifier->setEnabled(true);
}
