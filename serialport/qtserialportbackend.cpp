#include "qtserialportbackend.h"

#include <QFileInfo>
#include <QSerialPortInfo>
#include <algorithm>

#ifdef Q_OS_LINUX
#include <linux/serial.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

constexpr int HighestCustomRate = 4000000;
// A USB adapter in low-latency mode, or a port on the board.
constexpr int LowLatencyMarginUs = 2000;
// A pseudo-terminal is served by another process, which the scheduler may keep
// waiting for a few milliseconds on a busy machine.
constexpr int PseudoTerminalMarginUs = 10000;
// USB adapters that refuse low-latency mode hold replies back for up to 16 ms.
constexpr int BufferedMarginUs = 18000;
// What a USB adapter holds back once the line is quiet: its latency timer.
constexpr int LowLatencyUsbLatencyUs = 1000;
constexpr int BufferedUsbLatencyUs = 16000;

bool isUsbAdapter(const QString &devicePath)
{
    const auto ports = QSerialPortInfo::availablePorts();
    return std::any_of(ports.begin(), ports.end(), [&devicePath](const QSerialPortInfo &info) {
        return info.systemLocation() == devicePath && info.hasVendorIdentifier();
    });
}

} // namespace

QtSerialPortBackend::QtSerialPortBackend(const QString &portName, const QString &location)
    : portName(portName)
{
    port.setPortName(location);
    connect(&port, &QSerialPort::readyRead, this, &SerialPortBackend::readyRead);
    connect(&port, &QSerialPort::errorOccurred, this, &QtSerialPortBackend::onErrorOccurred);
}

QString QtSerialPortBackend::open(int baudRate)
{
    if (baudRate <= 0 || baudRate > HighestCustomRate)
        return tr("Cannot open %1: the baud rate %2 is not supported.").arg(portName).arg(baudRate);
    if (port.isOpen())
        port.close();
    if (!port.open(QIODevice::ReadWrite))
        return openError(port.error());
    const bool configured =
        port.setDataBits(QSerialPort::Data8) && port.setParity(QSerialPort::NoParity) &&
        port.setStopBits(QSerialPort::OneStop) && port.setFlowControl(QSerialPort::NoFlowControl);
    if (!port.setBaudRate(baudRate)) {
        port.close();
        return tr("Cannot open %1: the port does not support the baud rate %2.")
            .arg(portName)
            .arg(baudRate);
    }
    if (!configured) {
        const QString reason = port.errorString();
        port.close();
        return tr("Cannot open %1: the port refused 8 data bits, no parity, 1 stop bit (%2).")
            .arg(portName, reason);
    }
    settleTiming(requestLowLatency());
    port.clear();
    return {};
}

void QtSerialPortBackend::close()
{
    if (port.isOpen())
        port.close();
}

bool QtSerialPortBackend::isOpen() const
{
    return port.isOpen();
}

bool QtSerialPortBackend::write(const QByteArray &bytes)
{
    if (!port.isOpen() || port.write(bytes) != bytes.size())
        return false;
    // Out now rather than at the next event loop turn: the reply timeout is already running.
    port.flush();
    return true;
}

QByteArray QtSerialPortBackend::readAll()
{
    return port.isOpen() ? port.readAll() : QByteArray();
}

bool QtSerialPortBackend::waitForReadyRead(int msecs)
{
    return port.isOpen() && port.waitForReadyRead(msecs);
}

QString QtSerialPortBackend::devicePath() const
{
    const QString location =
        port.portName().startsWith('/') ? port.portName() : "/dev/" + port.portName();
    // Through any link to it: udev's by-id links, or the one a bus bridge leaves.
    const QString resolved = QFileInfo(location).canonicalFilePath();
    return resolved.isEmpty() ? location : resolved;
}

void QtSerialPortBackend::settleTiming(bool lowLatency)
{
    const QString device = devicePath();
    if (device.startsWith(QLatin1String("/dev/pts/"))) {
        marginUs = PseudoTerminalMarginUs;
        latencyUs = 0;
    } else if (!isUsbAdapter(device)) {
        marginUs = LowLatencyMarginUs;
        latencyUs = 0;
    } else {
        marginUs = lowLatency ? LowLatencyMarginUs : BufferedMarginUs;
        latencyUs = lowLatency ? LowLatencyUsbLatencyUs : BufferedUsbLatencyUs;
    }
}

void QtSerialPortBackend::onErrorOccurred(QSerialPort::SerialPortError error)
{
    if (!port.isOpen())
        return;
    if (error != QSerialPort::ResourceError && error != QSerialPort::ReadError &&
        error != QSerialPort::WriteError)
        return;
    // A read notification for bytes that an earlier poll already took finds nothing and
    // reads as an error; the port is fine.
    if (error == QSerialPort::ReadError && !isHungUp()) {
        port.clearError();
        return;
    }
    // Left open, QSerialPort reports the same error again and again from its notifier.
    port.close();
    emit failed(tr("The connection to %1 was lost: %2.").arg(portName, lossReason(error)));
}

// QSerialPort's own texts for these say little more than "Unknown error". A read error
// gets here only once the other end has hung up.
QString QtSerialPortBackend::lossReason(QSerialPort::SerialPortError error)
{
    if (error == QSerialPort::WriteError)
        return tr("the port took no more data; the adapter was probably unplugged");
    return tr("the adapter was unplugged or stopped answering");
}

QString QtSerialPortBackend::openError(QSerialPort::SerialPortError error) const
{
    switch (error) {
    case QSerialPort::DeviceNotFoundError:
        return tr("Cannot open %1: there is no such port.").arg(portName);
    case QSerialPort::PermissionError: {
        // QSerialPort reports a port held by another program as a permission error too.
        const QFileInfo device(devicePath());
        if (device.isReadable() && device.isWritable())
            return tr("Cannot open %1: the port is busy; another program is using it.")
                .arg(portName);
        return tr("Cannot open %1: permission denied. Add your user to the dialout group "
                  "(sudo usermod -aG dialout $USER) and log in again.")
            .arg(portName);
    }
    case QSerialPort::OpenError:
        return tr("Cannot open %1: the port is already open.").arg(portName);
    case QSerialPort::UnknownError:
        return tr("Cannot open %1: the system gave no reason. Unplug the adapter, plug it "
                  "in again and retry.")
            .arg(portName);
    default:
        return tr("Cannot open %1: %2.").arg(portName, port.errorString());
    }
}

bool QtSerialPortBackend::isHungUp() const
{
#ifdef Q_OS_LINUX
    pollfd descriptor{int(port.handle()), POLLIN, 0};
    if (descriptor.fd < 0 || poll(&descriptor, 1, 0) < 0)
        return true;
    return descriptor.revents & (POLLHUP | POLLERR | POLLNVAL);
#else
    return true;
#endif
}

bool QtSerialPortBackend::requestLowLatency()
{
#ifdef Q_OS_LINUX
    // Without it, USB adapters collect received bytes for up to 16 ms before passing them on.
    // Pseudo-terminals and some drivers do not know the request; they work without it.
    const int fd = int(port.handle());
    serial_struct serial{};
    if (fd < 0 || ioctl(fd, TIOCGSERIAL, &serial) != 0)
        return false;
    serial.flags |= ASYNC_LOW_LATENCY;
    return ioctl(fd, TIOCSSERIAL, &serial) == 0;
#else
    return false;
#endif
}
