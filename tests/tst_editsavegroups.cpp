#include "ui_editview.h"

#include "datacolumns.h"
#include "editformfixture.h"
#include "widgets/uigrouphelper.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

// Raw values from the servo, within the limits of the own family's model, in the order
// the binder reads them.
const char servoValues[] =
    "idSpinBox=5 baudRateComboBox=3 ackResponseTimeSpinBox=10 operatingModeComboBox=2 "
    "clockwiseLimitDoubleSpinBox=-100 counterClockwiseLimitDoubleSpinBox=1000 "
    "temperatureLimitDoubleSpinBox=80 minVoltageLimitDoubleSpinBox=60 "
    "maxVoltageLimitDoubleSpinBox=140 quadratureCurrentLimitDoubleSpinBox=2000 "
    "angularVelocityLimitDoubleSpinBox=1500 accelerationLimitDoubleSpinBox=30000 "
    "hornPositionOffsetDoubleSpinBox=-70000 movingThresholdDoubleSpinBox=20 "
    "inputModeComboBox=1 defPositionProportionalTermDoubleSpinBox=100 "
    "defVelocityFeedforwardTermDoubleSpinBox=200 defCurrentFeedforwardTermDoubleSpinBox=300 "
    "defVelocityIntegralTermDoubleSpinBox=400 defVelocityProportionalTermDoubleSpinBox=500 "
    "defAngularVelocityProfileDoubleSpinBox=600 defAccelerationProfileDoubleSpinBox=700 "
    "enableMotorCheckBox=0 pendingShadowInstructionCheckBox=0 "
    "positionProportionalTermDoubleSpinBox=150 velocityFeedforwardTermDoubleSpinBox=1000 "
    "currentFeedforwardTermDoubleSpinBox=250 velocityIntegralTermDoubleSpinBox=1200 "
    "velocityProportionalTermDoubleSpinBox=1300 angularVelocityProfileDoubleSpinBox=900 "
    "accelerationProfileDoubleSpinBox=40000 targetPositionDoubleSpinBox=123456 "
    "targetAngularVelocityDoubleSpinBox=1000 targetAngularVelocityDirectionComboBox=1 "
    "targetTorqueDoubleSpinBox=500 targetTorqueDirectionComboBox=0";

// The servo's registers as last read: each byte holds its register's address.
QByteArray lastRead(uint8_t address, int length)
{
    QByteArray registers;
    for (int i = 0; i < length; ++i)
        registers.append(char(address + i));
    return registers;
}

} // namespace

class TestEditSaveGroups : public QObject
{
    Q_OBJECT

    std::unique_ptr<EditFormFixture> form;
    std::unique_ptr<UiGroupHelper> helper;

private slots:
    void init()
    {
        helper.reset();
        form = std::make_unique<EditFormFixture>();
        helper = std::make_unique<UiGroupHelper>(form->root(), &form->connectAction,
                                                 &form->disconnectAction);
        form->connectLink();
        for (const QString &value : QString(servoValues).split(' ', Qt::SkipEmptyParts))
            form->deliver(value.section('=', 0, 0), value.section('=', 1).toInt());
    }

    void nonVolatileBlock_data()
    {
        addColumns<int, QByteArray>({"baudRateCode", "expected"});
        const QByteArray values = QByteArray::fromHex(
            "05 03 0A 02 9CFF E803 50 3C 8C D007 DC05 3075 90EEFEFF 1400 01 6400 C800 2C01 9001 "
            "F401 5802 BC02");
        QTest::newRow("values from the servo") << 3 << values;
        // The baud box then shows its placeholder, which is no baud rate to write.
        QTest::newRow("unknown baud rate keeps the servo's code")
            << 99 << QByteArray(values).replace(1, 1, "\x04");
    }
    void nonVolatileBlock()
    {
        QFETCH(int, baudRateCode);
        QFETCH(QByteArray, expected);
        helper->setRegisterSource(lastRead);
        form->deliver(QStringLiteral("baudRateComboBox"), baudRateCode);
        QCOMPARE(helper->nonVolatileBlock().toHex(' '), expected.toHex(' '));
    }

    // Gaps at 2-5, 16-19, 24-29 and 38-59 keep the servo's values; direction bit 15 on the
    // velocity target only.
    void volatileBlock()
    {
        helper->setRegisterSource(lastRead);
        form->ui.enableMotorCheckBox->setEnabled(true);
        form->ui.enableMotorCheckBox->setChecked(true);
        QCOMPARE(helper->volatileBlock().toHex(' '),
                 QByteArray::fromHex("01 00 32333435 9600 E803 FA00 B004 1405 40414243 8403 409C"
                                     "48494A4B4C4D 40E20100 E883 F401 565758595A5B5C5D5E5F606162"
                                     "636465666768696A6B")
                     .toHex(' '));
    }

    // Apply is enabled while any field is dirty, and queues the group's block. The controls'
    // own setValue takes a raw value from the servo; a user edits through the Qt base class.
    void applyFollowsDirtyCountAndQueuesTheBlock()
    {
        QSignalSpy queued(helper.get(), SIGNAL(addQueueRequest(uint8_t, const QByteArray &)));
        ZelvarGroupToolButton *apply = form->ui.nvParamsEditSaveToolButton;
        QSpinBox *id = form->ui.idSpinBox;
        QDoubleSpinBox *temperature = form->ui.temperatureLimitDoubleSpinBox;
        apply->click();
        QCOMPARE(apply->text(), QStringLiteral("Apply"));
        QVERIFY(!apply->isEnabled());

        const double stored = temperature->value();
        id->setValue(7);
        temperature->setValue(stored + 5);
        QCOMPARE(apply->referenceCount, 2);
        temperature->setValue(stored);
        QVERIFY(apply->isEnabled());
        id->setValue(5);
        QVERIFY(!apply->isEnabled());
        id->setValue(7);
        apply->click();

        QCOMPARE(queued.count(), 1);
        QCOMPARE(queued.at(0).at(0).value<uint8_t>(), uint8_t(3));
        QCOMPARE(queued.at(0).at(1).toByteArray().at(0), char(7));
        QVERIFY(!form->ui.nonVolatileParamsGroupBox->editMode);
        QCOMPARE(apply->text(), QStringLiteral("Edit"));
        QVERIFY(!id->isEnabled());
    }

    void cancelRestoresEveryField()
    {
        Ui::EditView &ui = form->ui;
        QDoubleSpinBox *offset = ui.hornPositionOffsetDoubleSpinBox;
        ui.nvParamsEditSaveToolButton->click();
        const QByteArray stored = helper->nonVolatileBlock();
        static_cast<QSpinBox *>(ui.idSpinBox)->setValue(9);
        ui.operatingModeComboBox->setCurrentIndex(4);
        offset->setValue(offset->value() + 1);
        QVERIFY(helper->nonVolatileBlock() != stored);

        ui.nvParamsCancelToolButton->click();

        QCOMPARE(helper->nonVolatileBlock().toHex(' '), stored.toHex(' '));
        QVERIFY(!ui.nvParamsEditSaveToolButton->isChecked());
        QCOMPARE(ui.nvParamsEditSaveToolButton->text(), QStringLiteral("Edit"));
        QCOMPARE(ui.nvParamsEditSaveToolButton->referenceCount, 0);
        QVERIFY(!ui.nvParamsCancelToolButton->isEnabled());
        QVERIFY(!ui.nonVolatileParamsGroupBox->editMode);
        QVERIFY(!ui.idSpinBox->isEnabled());
    }

    void lockingDirtyFieldWithdrawsItsMark()
    {
        ZelvarDoubleSpinBox *target = form->ui.targetPositionDoubleSpinBox;
        QDoubleSpinBox *shown = target;
        ZelvarGroupToolButton *apply = form->ui.vParamsEditSaveToolButton;
        apply->click();
        const double stored = shown->value();
        shown->setValue(stored + 2.0);
        QVERIFY(apply->isEnabled());

        target->setLocked(true);
        QCOMPARE(apply->referenceCount, 0);
        QVERIFY(!apply->isEnabled());
        QVERIFY(!target->isEnabled());
        QCOMPARE(target->text(), QString());

        target->setLocked(false);
        QCOMPARE(shown->value(), stored);
        QVERIFY(target->isEnabled());
        QCOMPARE(target->value(), 123456);
    }

    void editButtonsFollowTheLink_data()
    {
        addColumns<bool, bool, bool, bool, bool>(
            {"dynamixelAx12", "motorOn", "disconnect", "nonVolatileEditable", "volatileEditable"});
        QTest::newRow("own family, motor off") << false << false << false << true << true;
        QTest::newRow("own family, motor on") << false << true << false << false << true;
        // The blocks hold our register layout; written into an AX-12 they would change its
        // id and baud rate.
        QTest::newRow("AX-12") << true << false << false << false << false;
        // The motor box drops to unchecked on disconnect, after the buttons went offline.
        QTest::newRow("disconnected with the motor on") << false << true << true << false << false;
    }
    void editButtonsFollowTheLink()
    {
        QFETCH(bool, dynamixelAx12);
        QFETCH(bool, motorOn);
        QFETCH(bool, disconnect);
        QFETCH(bool, nonVolatileEditable);
        QFETCH(bool, volatileEditable);
        if (dynamixelAx12) {
            form->disconnectLink();
            form->connectLink(true);
        }
        form->deliver(QStringLiteral("enableMotorCheckBox"), motorOn);
        if (disconnect)
            form->disconnectLink();
        QCOMPARE(form->ui.nvParamsEditSaveToolButton->isEnabled(), nonVolatileEditable);
        QCOMPARE(form->ui.vParamsEditSaveToolButton->isEnabled(), volatileEditable);
    }

    // Switched inside the volatile group's edit, the motor box must still decide whether the
    // non-volatile group can be edited once Apply or Cancel ends that edit.
    void motorSwitchedInEditDecidesAfterwards()
    {
        ZelvarGroupToolButton *nonVolatileEdit = form->ui.nvParamsEditSaveToolButton;
        ZelvarGroupToolButton *volatileEdit = form->ui.vParamsEditSaveToolButton;
        QCheckBox *motor = form->ui.enableMotorCheckBox;

        volatileEdit->click();
        motor->click();
        QVERIFY(nonVolatileEdit->isEnabled());
        volatileEdit->click();
        QVERIFY(!nonVolatileEdit->isEnabled());
        form->deliver(QStringLiteral("enableMotorCheckBox"), 1);

        volatileEdit->click();
        motor->click();
        form->ui.vParamsCancelToolButton->click();
        QVERIFY(motor->isChecked());
        QVERIFY(!nonVolatileEdit->isEnabled());
    }
};

QTEST_MAIN(TestEditSaveGroups)
#include "tst_editsavegroups.moc"
