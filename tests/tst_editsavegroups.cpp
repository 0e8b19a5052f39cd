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
        helper->setRegisterSource(lastRead);
        form->connectLink();
        deliverServoValues();
    }

    void deliverServoValues(const QString &except = QString())
    {
        for (const QString &value : QString(servoValues).split(' ', Qt::SkipEmptyParts)) {
            if (value.section('=', 0, 0) != except)
                form->deliver(value.section('=', 0, 0), value.section('=', 1).toInt());
        }
        helper->enableEditWhereValued();
    }

    // What a user types or picks, through the Qt base classes.
    void edit(const QString &name, double value)
    {
        QObject *control = form->find<QObject>(name);
        if (auto *box = qobject_cast<QDoubleSpinBox *>(control))
            box->setValue(value);
        else if (auto *box = qobject_cast<QSpinBox *>(control))
            box->setValue(int(value));
        else if (auto *box = qobject_cast<QComboBox *>(control))
            box->setCurrentIndex(int(value));
        else if (auto *box = qobject_cast<QCheckBox *>(control))
            box->setChecked(value != 0);
    }

    // A block is the servo's bytes as last read (each byte its register's address here)
    // with only the user's edits put in: no control's idea of an unedited value, no
    // direction bit the user did not set.
    void blockCarriesOnlyEdits_data()
    {
        addColumns<bool, QStringList, int, QByteArray>(
            {"volatileGroup", "edits", "offset", "bytes"});
        QTest::newRow("nothing edited") << false << QStringList() << 0 << QByteArray();
        QTest::newRow("id typed") << false << QStringList{"idSpinBox=7"} << 0 << QByteArray("\x07");
        QTest::newRow("baud rate picked")
            << false << QStringList{"baudRateComboBox=3"} << 1 << QByteArray("\x22");
        QTest::newRow("edited and put back")
            << false << QStringList{"idSpinBox=7", "idSpinBox=5"} << 0 << QByteArray();
        QTest::newRow("horn offset, four bytes")
            << false << QStringList{"hornPositionOffsetDoubleSpinBox=0"} << 17
            << QByteArray::fromHex("00000000");
        QTest::newRow("motor switched on")
            << true << QStringList{"enableMotorCheckBox=1"} << 0 << QByteArray("\x01");
        QTest::newRow("velocity magnitude keeps the servo's direction")
            << true << QStringList{"targetAngularVelocityDoubleSpinBox=0.5"} << 34
            << QByteArray::fromHex("f481");
        QTest::newRow("velocity direction turned counter-clockwise")
            << true << QStringList{"targetAngularVelocityDirectionComboBox=0"} << 34
            << QByteArray::fromHex("5201");
        QTest::newRow("torque direction turned clockwise")
            << true << QStringList{"targetTorqueDirectionComboBox=1"} << 36
            << QByteArray::fromHex("54d5");
    }
    void blockCarriesOnlyEdits()
    {
        QFETCH(bool, volatileGroup);
        QFETCH(QStringList, edits);
        QFETCH(int, offset);
        QFETCH(QByteArray, bytes);
        // Register 83 with bit 15 set: the velocity target turns clockwise.
        helper->setRegisterSource([](uint8_t address, int length) {
            QByteArray registers = lastRead(address, length);
            if (address <= 83 && 83 < address + length)
                registers[83 - address] = char(0x81);
            return registers;
        });
        ZelvarGroupToolButton *editSave = volatileGroup ? form->ui.vParamsEditSaveToolButton
                                                        : form->ui.nvParamsEditSaveToolButton;
        editSave->click();
        for (const QString &change : edits)
            edit(change.section('=', 0, 0), change.section('=', 1).toDouble());

        const uint8_t address = volatileGroup ? 48 : 3;
        const int length = volatileGroup ? 60 : 38;
        QByteArray expected = lastRead(address, length);
        if (volatileGroup)
            expected[83 - address] = char(0x81);
        expected.replace(offset, bytes.size(), bytes);
        const QByteArray block =
            volatileGroup ? helper->volatileBlock() : helper->nonVolatileBlock();
        QCOMPARE(block.toHex(' '), expected.toHex(' '));
    }

    // Edit comes on only once every field of the group holds a servo value, so that no
    // Apply can carry bytes nobody chose; with the servo's bytes unknown there is no block.
    void editWaitsForEveryValue()
    {
        form->disconnectLink();
        form->connectLink();
        ZelvarGroupToolButton *nonVolatileEdit = form->ui.nvParamsEditSaveToolButton;
        QVERIFY(!nonVolatileEdit->isEnabled());
        deliverServoValues(QStringLiteral("idSpinBox"));
        QVERIFY(!nonVolatileEdit->isEnabled());
        QVERIFY(form->ui.vParamsEditSaveToolButton->isEnabled());
        deliverServoValues();
        QVERIFY(nonVolatileEdit->isEnabled());

        helper->setRegisterSource([](uint8_t, int) { return QByteArray(); });
        QVERIFY(helper->nonVolatileBlock().isEmpty());
        QVERIFY(helper->volatileBlock().isEmpty());
    }

    // A disconnect ends an edit: the group is back at "Edit", disabled, and after the next
    // connect its fields take the servo's values again.
    void disconnectEndsAnEdit()
    {
        Ui::EditView &ui = form->ui;
        ui.nvParamsEditSaveToolButton->click();
        edit(QStringLiteral("idSpinBox"), 9);
        QVERIFY(ui.nvParamsEditSaveToolButton->isEnabled());

        form->disconnectLink();
        QCOMPARE(ui.nvParamsEditSaveToolButton->text(), QStringLiteral("Edit"));
        QVERIFY(!ui.nvParamsEditSaveToolButton->isChecked());
        QVERIFY(!ui.nvParamsEditSaveToolButton->isEnabled());
        QVERIFY(!ui.nvParamsCancelToolButton->isEnabled());
        QVERIFY(!ui.nonVolatileParamsGroupBox->editMode);
        QCOMPARE(ui.nvParamsEditSaveToolButton->referenceCount, 0);

        form->connectLink();
        deliverServoValues();
        QVERIFY(ui.nvParamsEditSaveToolButton->isEnabled());
        QCOMPARE(form->field(QStringLiteral("idSpinBox"))->value(), 5);
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
        QCOMPARE(queued.at(0).at(1).toByteArray(), lastRead(3, 38).replace(0, 1, "\x07"));
        QVERIFY(!form->ui.nonVolatileParamsGroupBox->editMode);
        QCOMPARE(apply->text(), QStringLiteral("Edit"));
        QVERIFY(!id->isEnabled());
    }

    void cancelRestoresEveryField()
    {
        Ui::EditView &ui = form->ui;
        QDoubleSpinBox *offset = ui.hornPositionOffsetDoubleSpinBox;
        ui.nvParamsEditSaveToolButton->click();
        static_cast<QSpinBox *>(ui.idSpinBox)->setValue(9);
        ui.operatingModeComboBox->setCurrentIndex(4);
        offset->setValue(offset->value() + 1);
        QVERIFY(helper->nonVolatileBlock() != lastRead(3, 38));

        ui.nvParamsCancelToolButton->click();

        QCOMPARE(helper->nonVolatileBlock(), lastRead(3, 38));
        QCOMPARE(form->field(QStringLiteral("idSpinBox"))->value(), 5);
        QCOMPARE(ui.operatingModeComboBox->currentIndex(), 2);
        QCOMPARE(form->field(QStringLiteral("hornPositionOffsetDoubleSpinBox"))->value(), -70000);
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
            deliverServoValues();
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
