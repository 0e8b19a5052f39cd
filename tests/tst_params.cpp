#include "datacolumns.h"
#include "device/physicalquantities.h"
#include "device/zelvarv1.h"
#include "params/parameterdiff.h"
#include "params/parameterfilecodec.h"
#include "params/writeplanner.h"
#include "simulator/virtualservo.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

std::shared_ptr<const TelemetryDecoder> zelvarDecoder()
{
    return std::make_shared<TelemetryDecoder>(std::make_shared<RegisterCatalogue>(ZelvarV1()),
                                              std::make_shared<PhysicalQuantities>());
}

int modelNumberOf(const QByteArray &table)
{
    return quint8(table[0]) | quint8(table[1]) << 8;
}

// A file of the simulated servo's table, as JSON, with one change made to its text.
QJsonObject savedFile(const ParameterFileCodec &codec, const QByteArray &table)
{
    const QDateTime date(QDate(2026, 11, 23), QTime(21, 30), Qt::UTC);
    return QJsonDocument::fromJson(codec.toJson(codec.capture(table, date))).object();
}

QJsonObject withRegister(QJsonObject file, const QString &description, const QString &key,
                         const QJsonValue &value)
{
    QJsonArray registers = file["registers"].toArray();
    for (int i = 0; i < registers.size(); ++i) {
        QJsonObject item = registers[i].toObject();
        if (item["description"] == description) {
            item[key] = value;
            registers[i] = item;
        }
    }
    file["registers"] = registers;
    return file;
}

QString blocksText(const std::vector<WriteBlock> &blocks)
{
    QStringList text;
    for (const WriteBlock &block : blocks)
        text << QString::number(block.address) + ':' + block.data.toHex();
    return text.join(' ');
}

} // namespace

class TestParams : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip()
    {
        const auto decoder = zelvarDecoder();
        const ParameterFileCodec codec(decoder);
        VirtualServo servo;
        servo.setValue(78, 4, -123456);
        servo.setValue(82, 2, 0x8000 | 1500);
        const QByteArray table = servo.controlTable();

        const ParameterFile saved = codec.capture(table, QDateTime::currentDateTimeUtc());
        QString error;
        const std::optional<ParameterFile> loaded =
            codec.fromJson(codec.toJson(saved), modelNumberOf(table), &error);
        QVERIFY2(loaded, qPrintable(error));
        QCOMPARE(loaded->modelNumber, saved.modelNumber);
        QCOMPARE(loaded->id, servo.id());
        QCOMPARE(loaded->baudRate, 1000000);
        QCOMPARE(loaded->date.toString(Qt::ISODate), saved.date.toString(Qt::ISODate));
        QCOMPARE(loaded->registers.size(), saved.registers.size());
        int writable = 0;
        for (const CatalogueEntry &entry : decoder->catalogue().entries())
            writable += entry.span.writable;
        QCOMPARE(int(saved.registers.size()), writable);
        for (size_t i = 0; i < saved.registers.size(); ++i) {
            QCOMPARE(loaded->registers[i].description, saved.registers[i].description);
            QCOMPARE(loaded->registers[i].raw, saved.registers[i].raw);
            QCOMPARE(loaded->registers[i].base, saved.registers[i].base);
        }

        QVERIFY(ParameterDiff::between(*loaded, table, decoder->catalogue()).empty());
        servo.setValue(7, 2, -1000);
        servo.setValue(60, 2, 77);
        QStringList differing;
        for (const ParameterDifference &difference :
             ParameterDiff::between(*loaded, servo.controlTable(), decoder->catalogue()))
            differing << difference.entry->span.description + '=' +
                             QString::number(*difference.servoRaw) + "->" +
                             QString::number(difference.wantedRaw);
        QCOMPARE(differing.join(", "),
                 "CW angle limit=-1000->-2047, Velocity integral gain=77->100");
    }

    void refused_data()
    {
        addColumns<QByteArray, QString>({"json", "error"});

        const ParameterFileCodec codec(zelvarDecoder());
        const QByteArray table = VirtualServo().controlTable();
        const QJsonObject file = savedFile(codec, table);
        const auto text = [](const QJsonObject &object) { return QJsonDocument(object).toJson(); };
        const QByteArray whole = text(file);
        QJsonObject otherModel = file;
        otherModel["modelNumber"] = modelNumberOf(table) + 1;
        QJsonObject newerFormat = file;
        newerFormat["formatVersion"] = 2;
        QJsonObject twice = file;
        QJsonArray registers = twice["registers"].toArray();
        registers.append(registers.first());
        twice["registers"] = registers;

        QTest::newRow("another model")
            << text(otherModel)
            << QString("The file is for model number %1; this servo is model number %2.")
                   .arg(modelNumberOf(table) + 1)
                   .arg(modelNumberOf(table));
        QTest::newRow("cut short") << whole.left(whole.size() / 2)
                                   << QString("The file is damaged: unterminated object at "
                                              "character %1.")
                                          .arg(whole.size() / 2);
        QTest::newRow("not a parameter file") << QByteArray("[1, 2]")
                                              << "The file is not a parameter file: it has no "
                                                 "format version.";
        QTest::newRow("newer format") << text(newerFormat)
                                      << "The file has format version 2; this program reads "
                                         "version 1.";
        QTest::newRow("raw and value disagree")
            << text(withRegister(file, "Target position", "value", 3.0))
            << "The file is damaged: \"Target position\" has raw value 0, which is 0 radians, "
               "but value 3.";
        QTest::newRow("raw out of range")
            << text(withRegister(withRegister(file, "ID", "raw", 254), "ID", "value", QJsonValue()))
            << "The file is damaged: its raw value 254 is out of range (ID takes raw values 0 "
               "to 253).";
        QTest::newRow("unknown register")
            << text(withRegister(file, "Upper temperature limit", "description", "Lower limit"))
            << "The file names a register this model does not have: \"Lower limit\".";
        QTest::newRow("read-only register")
            << text(withRegister(file, "ID", "description", "Actual voltage"))
            << "The file sets \"Actual voltage\", which is read-only.";
        QTest::newRow("fraction") << text(withRegister(file, "Operating mode", "raw", 1.5))
                                  << "The file is damaged: the raw value of \"Operating mode\" "
                                     "is missing or not a whole number.";
        QTest::newRow("named twice")
            << text(twice) << "The file is damaged: it names \"ID\" twice.";
    }

    void refused()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);

        const ParameterFileCodec codec(zelvarDecoder());
        QString cause;
        QVERIFY(!codec.fromJson(json, modelNumberOf(VirtualServo().controlTable()), &cause));
        QCOMPARE(cause, error);
    }

    void plan_data()
    {
        addColumns<QStringList, bool, bool, QString, QString>(
            {"ticked", "motorOn", "switchMotorOff", "blocks", "error"});

        const bool on = true, off = false;
        QTest::newRow("neighbours share a block")
            << QStringList{"CW angle limit=-2047", "CCW angle limit=2047"} << off << off
            << "7:01f8ff07"
            << "";
        QTest::newRow("an unticked register between splits")
            << QStringList{"Lower input voltage limit=60", "Torque limit=5000"} << off << off
            << "12:3c 14:8813"
            << "";
        QTest::newRow("four-byte signed")
            << QStringList{"Home position offset=-2"} << off << off << "20:feffffff"
            << "";
        QTest::newRow("direction bit kept")
            << QStringList{"Target angular velocity=33768", "Target torque=100"} << off << off
            << "82:e8836400"
            << "";
        QTest::newRow("new id and rate go last")
            << QStringList{"ID=9", "Baud rate=3", "Acknowledge response time=10",
                           "Velocity integral gain=5", "Upper temperature limit=70"}
            << off << off << "11:46 60:0500 3:09030a"
            << "";
        QTest::newRow("volatile writes with the motor on")
            << QStringList{"Position proportional gain=100"} << on << off << "54:6400"
            << "";
        QTest::newRow("non-volatile refused with the motor on")
            << QStringList{"Moving threshold=10"} << on << off << ""
            << "The motor is on: the servo takes the non-volatile registers only with the motor "
               "off.";
        QTest::newRow("motor switched off first")
            << QStringList{"Moving threshold=10", "Control enable=1"} << on << on
            << "48:00 24:0a00 48:01"
            << "";
        QTest::newRow("nothing ticked") << QStringList() << on << off << ""
                                        << "";
    }

    void plan()
    {
        QFETCH(QStringList, ticked);
        QFETCH(bool, motorOn);
        QFETCH(bool, switchMotorOff);
        QFETCH(QString, blocks);
        QFETCH(QString, error);

        const RegisterCatalogue catalogue{ZelvarV1()};
        VirtualServo servo;
        servo.setValue(48, 1, motorOn);
        std::vector<ParameterDifference> wanted;
        for (const QString &item : ticked) {
            const CatalogueEntry *entry = catalogue.find(item.section('=', 0, 0));
            QVERIFY(entry);
            wanted.push_back({entry, std::nullopt, item.section('=', 1).toLongLong()});
        }
        const WritePlan plan =
            WritePlanner(catalogue).plan(wanted, servo.controlTable(), switchMotorOff);
        QCOMPARE(plan.error, error);
        QCOMPARE(blocksText(plan.blocks), blocks);
    }
};

QTEST_GUILESS_MAIN(TestParams)
#include "tst_params.moc"
