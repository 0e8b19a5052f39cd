#include "device/uiregisterhelper.h"
#include "device/zelvarv1.h"
#include "recordingfield.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QtTest>
#include <set>

class TestRegisterMap : public QObject
{
    Q_OBJECT

private slots:
    void descriptionsKeepRepeatedTextsAndLeaveGaps()
    {
        const ZelvarV1 device;
        const auto upper = device.registerDescription(93);
        QVERIFY(upper);
        QCOMPARE(upper->description, QStringLiteral("Actual torque (lower)"));
        for (uint16_t gap : {41, 98, 118, 65535})
            QVERIFY2(!device.registerDescription(gap), qPrintable(QString::number(gap)));
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
        QTest::newRow("magnitude and direction") << 82 << speed << qint64(0x8064) << QList<int>{0x64, 1};
        QTest::newRow("counter-clockwise") << 82 << speed << qint64(0x7FFF) << QList<int>{0x7FFF, 0};
        QTest::newRow("all five status bits") << 107 << status << qint64(0x1F) << QList<int>{1, 2, 4, 8, 16};
        QTest::newRow("bits 5 and 6 show nowhere") << 107 << status << qint64(0x60) << QList<int>{0, 0, 0, 0, 0};
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
