#include "device/uiregisterhelper.h"
#include "device/zelvarv1.h"
#include "recordingfield.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QtTest>
#include <set>
#include <stdexcept>

class TestRegisterMap : public QObject
{
    Q_OBJECT

private slots:
    void descriptions_data()
    {
        QTest::addColumn<int>("address");
        QTest::addColumn<uint>("bank");
        QTest::addColumn<int>("row");
        QTest::addColumn<uint>("writable");
        QTest::addColumn<QString>("text");

        // clang-format off
        QTest::newRow("id is writable") << 3 << 0u << 3 << 1u << "ID";
        QTest::newRow("first of bank 3") << 86 << 3u << 0 << 0u << "Actual position (byte 0)";
        QTest::newRow("torque upper keeps the lower text") << 93 << 3u << 7 << 0u << "Actual torque (lower)";
        QTest::newRow("last register") << 117 << 3u << 21 << 0u << "Debug 4 (upper)";
        // Row -1: no description.
        for (int address : {41, 98, 118, 65535})
            QTest::addRow("gap %d", address) << address << 0u << -1 << 0u << QString();
        // clang-format on
    }

    void descriptions()
    {
        QFETCH(int, address);
        QFETCH(uint, bank);
        QFETCH(int, row);
        QFETCH(uint, writable);
        QFETCH(QString, text);

        const auto description = ZelvarV1().registerDescription(uint16_t(address));
        QCOMPARE(bool(description), row >= 0);
        if (!description)
            return;
        QCOMPARE(description->bank, bank);
        QCOMPARE(int(description->row), row);
        QCOMPARE(description->writable, writable);
        QCOMPARE(description->description, text);
    }

    void bankRowsAreCountedAndDense()
    {
        // A hole or a repeat would leave a row of the register view empty or overwrite one.
        const ZelvarV1 device;
        const unsigned expected[] = {27, 14, 24, 22};
        std::vector<std::set<int>> rows(4);
        for (int address = 0; address < 256; ++address) {
            if (const auto description = device.registerDescription(uint16_t(address))) {
                QVERIFY(description->bank < 4);
                QVERIFY2(rows[description->bank].insert(description->row).second,
                         qPrintable(QString("row repeated at %1").arg(address)));
            }
        }
        for (unsigned bank = 0; bank < 4; ++bank) {
            QCOMPARE(device.registerCount(bank), expected[bank]);
            QCOMPARE(unsigned(rows[bank].size()), expected[bank]);
            QCOMPARE(*rows[bank].rbegin(), int(expected[bank]) - 1);
        }
        QCOMPARE(device.registerCount(4), 0u);
    }

    void pollWalkVisitsEveryItemAndWraps()
    {
        // The scheduler steps by each item's size and wraps at 120; every stop must be an item.
        const UiRegisterHelper helper;
        size_t visited = 0;
        int address = 0;
        for (; address < 120; ++visited) {
            QVERIFY2(helper.pollMap().count(uint8_t(address)),
                     qPrintable(QString::number(address)));
            address += helper.item(uint8_t(address)).size;
        }
        QCOMPARE(address, 120);
        QCOMPARE(visited, helper.pollMap().size());
        QVERIFY_EXCEPTION_THROWN(helper.item(1), std::out_of_range);
    }

    void narrowsToTheRegisterType_data()
    {
        QTest::addColumn<int>("address");
        QTest::addColumn<QStringList>("widgets");
        QTest::addColumn<qint64>("assembled");
        QTest::addColumn<QList<int>>("shown");

        const QStringList speed{"targetAngularVelocityDoubleSpinBox",
                                "targetAngularVelocityDirectionComboBox"};
        // In the order of the status bits.
        const QStringList status{"inputVoltageStatusCheckBox", "hallStatusCheckBox",
                                 "overheatingStatusCheckBox", "encoderStatusCheckBox",
                                 "angleLimitStatusCheckBox"};
        // clang-format off
        QTest::newRow("16-bit signed") << 9 << QStringList{"counterClockwiseLimitDoubleSpinBox"} << qint64(0x8001) << QList<int>{-32767};
        QTest::newRow("32-bit signed") << 78 << QStringList{"targetPositionDoubleSpinBox"} << qint64(0xFFFFFFFF) << QList<int>{-1};
        QTest::newRow("16-bit unsigned") << 14 << QStringList{"quadratureCurrentLimitDoubleSpinBox"} << qint64(0x8001) << QList<int>{32769};
        QTest::newRow("8-bit unsigned") << 3 << QStringList{"idSpinBox"} << qint64(0x1FE) << QList<int>{254};
        QTest::newRow("one register, two widgets") << 82 << speed << qint64(0x8064) << QList<int>{0x8064, 0x8064};
        QTest::newRow("all five status bits") << 107 << status << qint64(0x1F) << QList<int>{1, 2, 4, 8, 16};
        QTest::newRow("bits 5 and 6 show nowhere") << 107 << status << qint64(0x60) << QList<int>{0, 0, 0, 0, 0};
        QTest::newRow("bit 7 is not examined") << 107 << status << qint64(0x84) << QList<int>{0, 0, 4, 0, 0};
        QTest::newRow("wider status is narrowed") << 107 << status << qint64(0x1FF) << QList<int>{1, 2, 4, 8, 16};
        // clang-format on
    }

    void narrowsToTheRegisterType()
    {
        QFETCH(int, address);
        QFETCH(QStringList, widgets);
        QFETCH(qint64, assembled);
        QFETCH(QList<int>, shown);

        UiRegisterHelper helper;
        std::vector<std::unique_ptr<RecordingField>> fields;
        for (const QString &name : widgets) {
            fields.push_back(std::make_unique<RecordingField>(name));
            helper.registerWidget(name, fields.back().get());
        }
        // The scheduler sums the bytes as unsigned 32 bits and passes them on as signed.
        helper.item(uint8_t(address)).callback(int32_t(uint32_t(assembled)));
        for (int i = 0; i < shown.size(); ++i)
            QCOMPARE(fields[size_t(i)]->values, QList<int>{shown[i]});
    }

    void valueWaitsWhileEditedAndSkipsLostWidgets()
    {
        UiRegisterHelper helper;
        for (const auto &entry : helper.pollMap())
            entry.second->callback(-1);

        auto lost = std::make_unique<RecordingField>("idSpinBox");
        helper.registerWidget(lost->objectName(), lost.get());
        lost.reset();
        helper.item(3).callback(7);

        ZelvarParametersGroupBox group;
        auto *field = new RecordingField("idSpinBox");
        field->setParent(&group);
        helper.registerWidget(field->objectName(), field);
        group.editMode = true;
        helper.item(3).callback(5);
        QVERIFY(field->values.isEmpty());
        // The mode locks still follow while the user edits.
        QCOMPARE(field->dependencyRuns, 1);

        group.editMode = false;
        helper.item(3).callback(6);
        QCOMPARE(field->values, QList<int>{6});
    }
};

QTEST_MAIN(TestRegisterMap)
#include "tst_registermap.moc"
