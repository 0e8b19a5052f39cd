#include "datacolumns.h"
#include "packetcodec.h"
#include "packetframer.h"

#include <QtTest>

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(QByteArray(text).replace(' ', ""));
}

QList<Packet> frameAll(PacketFramer &framer)
{
    QList<Packet> packets;
    while (const auto packet = framer.next())
        packets.append(*packet);
    return packets;
}

// Full of stuffing cases: the header pattern after a third FF, followed by FD, near misses.
QByteArray awkwardParameters(int count)
{
    const QByteArray cases = hex("FF FF FF FD FD FF FD");
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(i % 8 == 7 ? char(i) : cases[i % 8]);
    return bytes;
}

} // namespace

class TestProtocol : public QObject
{
    Q_OBJECT

private slots:
    void publicExamples_data()
    {
        addColumns<QByteArray, QByteArray>({"encoded", "expected"});

        // clang-format off
        QTest::newRow("ping id 1") << PacketCodec::ping(1) << hex("FF FF FD 00 01 03 00 01 19 4E");
        QTest::newRow("read 4 bytes at 132") << PacketCodec::read(1, 132, 4) << hex("FF FF FD 00 01 07 00 02 84 00 04 00 1D 15");
        QTest::newRow("write 512 at 116") << PacketCodec::write(1, 116, hex("00 02 00 00")) << hex("FF FF FD 00 01 09 00 03 74 00 00 02 00 00 CA 89");
        QTest::newRow("reboot") << PacketCodec::reboot(1) << hex("FF FF FD 00 01 03 00 08 2F 4E");
        QTest::newRow("factory reset but id and rate") << PacketCodec::factoryReset(1, FactoryResetMode::KeepIdAndBaudRate) << hex("FF FF FD 00 01 04 00 06 02 AB E6");
        QTest::newRow("status of read") << PacketCodec::status(1, 0, hex("A6 00 00 00")) << hex("FF FF FD 00 01 08 00 55 00 A6 00 00 00 8C C0");
        QTest::newRow("status of write") << PacketCodec::status(1, 0) << hex("FF FF FD 00 01 04 00 55 00 A1 0C");
        // The padding byte counts in the length and is covered by the CRC.
        QTest::newRow("stuffed write") << PacketCodec::write(1, 28, hex("FF FF FD 00")) << hex("FF FF FD 00 01 0A 00 03 1C 00 FF FF FD FD 00 A2 09");
        // clang-format on
    }

    void publicExamples()
    {
        QFETCH(QByteArray, encoded);
        QFETCH(QByteArray, expected);
        QCOMPARE(encoded.toHex(' '), expected.toHex(' '));

        PacketFramer framer;
        framer.append(expected);
        const auto packets = frameAll(framer);
        QCOMPARE(packets.size(), 1);
        QCOMPARE(PacketCodec::encode(packets.first()).toHex(' '), expected.toHex(' '));
    }

    void framesEveryParameterCountCutAnywhere()
    {
        QByteArray stream;
        for (int count = 0; count <= 255; ++count)
            stream += PacketCodec::status(3, quint8(count), awkwardParameters(count));
        // Pieces of 13 bytes cut the packets, their headers and their stuffing everywhere.
        PacketFramer framer;
        QList<Packet> packets;
        for (int offset = 0; offset < stream.size(); offset += 13) {
            framer.append(stream.mid(offset, 13));
            packets += frameAll(framer);
        }
        QCOMPARE(packets.size(), 256);
        for (int count = 0; count <= 255; ++count)
            QCOMPARE(packets[count].parameters, char(count) + awkwardParameters(count));
    }

    void skipsGarbageAndBadPackets_data()
    {
        QTest::addColumn<QByteArray>("stream");
        QTest::addColumn<QList<int>>("ids");

        const QByteArray a = PacketCodec::status(1, 0, hex("10 20"));
        const QByteArray b = PacketCodec::status(2, 0, hex("30"));
        QByteArray badCrc = PacketCodec::status(9, 0, hex("40"));
        badCrc[badCrc.size() - 1] = char(badCrc.back() ^ 0x01);
        // Its CRC is right, but a sender that stuffs would have put FD after FF FF FD.
        QByteArray unstuffed = hex("FF FF FD 00 07 08 00 55 00 FF FF FD 00");
        const quint16 crc = PacketCodec::crc16(unstuffed);
        unstuffed += char(crc & 0xFF);
        unstuffed += char(crc >> 8);

        // clang-format off
        QTest::newRow("garbage before") << hex("00 13 FF FD 00 FF") + a << QList<int>{1};
        QTest::newRow("garbage between") << a + hex("FF FF 55 00") + b << QList<int>{1, 2};
        QTest::newRow("bad crc dropped") << badCrc + a << QList<int>{1};
        QTest::newRow("header with impossible length") << hex("FF FF FD 00 01 FF FF") + a << QList<int>{1};
        QTest::newRow("header with too short length") << hex("FF FF FD 00 01 02 00") + b << QList<int>{2};
        QTest::newRow("header that cannot carry an id") << hex("FF FF FD 00 FF 03 00") + b << QList<int>{2};
        QTest::newRow("truncated packet then a whole one") << b.left(b.size() - 3) + a << QList<int>{1};
        QTest::newRow("unstuffed header inside a body") << unstuffed + a << QList<int>{1};
        QTest::newRow("header claiming more than arrives") << hex("FF FF FD 00 01 90 01 55") + a + b << QList<int>{1, 2};
        // clang-format on
    }

    void skipsGarbageAndBadPackets()
    {
        QFETCH(QByteArray, stream);

        PacketFramer framer;
        framer.append(stream);
        QList<int> framed;
        for (const Packet &packet : frameAll(framer))
            framed.append(packet.id);
        QTEST(framed, "ids");
    }

    void capsItsBuffer()
    {
        PacketFramer framer;
        // A header announcing a long packet keeps the framer waiting; the flood must not grow it.
        framer.append(hex("FF FF FD 00 01 00 02"));
        for (int i = 0; i < 100; ++i) {
            framer.append(QByteArray(1000, char(0xFF)));
            QVERIFY(!framer.next());
            QVERIFY(framer.bufferedSize() <= PacketFramer::BufferCap);
        }
        framer.append(PacketCodec::status(4, 0));
        const auto packet = framer.next();
        QVERIFY(packet && packet->id == 4);
    }
};

QTEST_GUILESS_MAIN(TestProtocol)
#include "tst_protocol.moc"
