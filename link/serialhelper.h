#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class SerialPortItem;
class TransactionObserver;
class ZelvarSerialPortInterface;

// Owns the serial-port library object and turns its "bytes are waiting" notices into
// one callback per complete reply, by counting the reply's expected length.
class SerialHelper : public QObject
{
    Q_OBJECT

public:
    SerialHelper();
    ~SerialHelper() override;

    QString openSerialPort(QString portName, int baudRate);
    void closeSerialPort();
    std::vector<std::shared_ptr<SerialPortItem>> getSerialPortList();

    bool readData(uint8_t id, uint8_t address, uint8_t length,
                  std::function<void(QByteArray)> callback);
    bool writeData(uint8_t id, uint8_t address, const QByteArray &data,
                   std::function<void(QByteArray)> callback);
    bool reboot(uint8_t id, std::function<void(QByteArray)> callback);
    bool reset(uint8_t id, std::function<void(QByteArray)> callback);

    // The one listener on the library's transactions; not owned, null for none.
    void setTransactionObserver(TransactionObserver *observer);

    // Baud-rate choice index (9600 ... 2000000, then the placeholder) to the value
    // of the servo's baud-rate register, and back (-1 for a value with no index).
    static int baudRateRegisterValue(int index);
    static int baudRateIndex(int registerValue);

signals:
    // Declared for the scheduler's sake; nothing emits or connects them.
    void queueRequest(uint8_t, uint8_t address, QByteArray data,
                      std::function<void(QByteArray)> groupCallback);
    void startScheduler(int interval);
    void stopScheduler();

private:
    void onReadyRead();
    void onWriteReady();
    bool takePendingBytes();

    std::shared_ptr<ZelvarSerialPortInterface> serialInterface;
    std::function<void(QByteArray)> replyCallback;
    uint8_t remainingBytes = 0;
    QByteArray replyBuffer;
};
