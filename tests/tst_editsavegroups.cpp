#include "ui_editview.h"

#include "editformfixture.h"
#include "widgets/uigrouphelper.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

// Raw values from the servo, within the limits of the own family's model, in the order
// the binder reads them.
const char servoValues[] =
    "idSpinBox=5 baudRateComboBox=3 ackResponseTimeSpinBox=10 "
    "operatingModeComboBox=2 clockwiseLimitDoubleSpinBox=-100 "
    "counterClockwiseLimitDoubleSpinBox=1000 temperatureLimitDoubleSpinBox=80 "
    "minVoltageLimitDoubleSpinBox=60 maxVoltageLimitDoubleSpinBox=140 "
    "quadratureCurrentLimitDoubleSpinBox=2000 angularVelocityLimitDoubleSpinBox=1500 "
    "accelerationLimitDoubleSpinBox=30000 hornPositionOffsetDoubleSpinBox=-70000 "
    "movingThresholdDoubleSpinBox=20 inputModeComboBox=1 "
    "defPositionProportionalTermDoubleSpinBox=100 "
    "defVelocityFeedforwardTermDoubleSpinBox=200 "
    "defCurrentFeedforwardTermDoubleSpinBox=300 "
    "defVelocityIntegralTermDoubleSpinBox=400 "
    "defVelocityProportionalTermDoubleSpinBox=500 "
    "defAngularVelocityProfileDoubleSpinBox=600 "
    "defAccelerationProfileDoubleSpinBox=700 enableMotorCheckBox=0 "
    "pendingShadowInstructionCheckBox=0 positionProportionalTermDoubleSpinBox=150 "
    "velocityFeedforwardTermDoubleSpinBox=1000 "
    "currentFeedforwardTermDoubleSpinBox=250 velocityIntegralTermDoubleSpinBox=1200 "
    "velocityProportionalTermDoubleSpinBox=1300 "
    "angularVelocityProfileDoubleSpinBox=900 accelerationProfileDoubleSpinBox=40000 "
    "targetPositionDoubleSpinBox=123456 targetAngularVelocityDoubleSpinBox=1000 "
    "targetAngularVelocityDirectionComboBox=1 targetTorqueDoubleSpinBox=500 "
    "targetTorqueDirectionComboBox=0";

} // namespace

class TestEditSaveGroups : public QObject
{
    Q_OBJECT

    std::unique_ptr<EditFormFixture> form;
    std::unique_ptr<UiGroupHelper> helper;

private slots:
    void init()
    {
        form = std::make_unique<EditFormFixture>();
        helper = std::make_unique<UiGroupHelper>(form->root(), &form->connectAction,
                                                 &form->disconnectAction);
        form->connectLink();
        for (const QString &value : QString(servoValues).split(' ', Qt::SkipEmptyParts))
            form->deliver(value.section('=', 0, 0), value.section('=', 1).toInt());
    }

    void cleanup()
    {
        helper.reset();
        form.reset();
    }

    void nonVolatileBlock()
    {
        QCOMPARE(helper->nonVolatileBlock().toHex(' '),
                 QByteArray::fromHex("05 03 0A 02 9CFF E803 50 3C 8C D007 DC05 3075 90EEFEFF "
                                     "1400 01 6400 C800 2C01 9001 F401 5802 BC02")
                     .toHex(' '));
    }

    void volatileBlock_data()
    {
        QTest::addColumn<bool>("lastReadKnown");
        QTest::addColumn<QByteArray>("expected");
        // Gaps at 2-5, 16-19, 24-29 and 38-59; direction bit 15 on the velocity target only.
        QTest::newRow("gaps keep the servo's values")
            << true
            << QByteArray::fromHex("01 00 03040506 9600 E803 FA00 B004 1405 11121314 8403 409C"
                                   "191A1B1C1D1E 40E20100 E883 F401 2728292A2B2C2D2E2F303132333435"
                                   "363738393A3B3C");
        QTest::newRow("gaps unknown")
            << false
            << QByteArray::fromHex("01 00 00000000 9600 E803 FA00 B004 1405 00000000 8403 409C"
                                   "000000000000 40E20100 E883 F401")
                   .leftJustified(60, '\0');
    }

    void volatileBlock()
    {
        QFETCH(bool, lastReadKnown);
        QFETCH(QByteArray, expected);
        if (lastReadKnown) {
            helper->setRegisterSource([](uint8_t address, int length) {
                QByteArray registers;
                for (int i = 0; i < length; ++i)
                    registers.append(char(address - 48 + i + 1));
                return registers;
            });
        }
        form->ui.enableMotorCheckBox->setEnabled(true);
        form->ui.enableMotorCheckBox->setChecked(true);
        QCOMPARE(helper->volatileBlock().toHex(' '), expected.toHex(' '));
    }

    // The controls' own setValue takes a raw value from the servo; a user edits through the
    // Qt base class.
    void applyFollowsDirtyCount()
    {
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
        id->setValue(5);
        QVERIFY(apply->isEnabled());
        temperature->setValue(stored);
        QCOMPARE(apply->referenceCount, 0);
        QVERIFY(!apply->isEnabled());
    }

    void applyQueuesBlockAndLeavesEdit()
    {
        QSignalSpy queued(helper.get(), SIGNAL(addQueueRequest(uint8_t, const QByteArray &)));
        form->ui.nvParamsEditSaveToolButton->click();
        static_cast<QSpinBox *>(form->ui.idSpinBox)->setValue(7);
        form->ui.nvParamsEditSaveToolButton->click();

        QCOMPARE(queued.count(), 1);
        QCOMPARE(queued.at(0).at(0).value<uint8_t>(), uint8_t(3));
        const QByteArray block = queued.at(0).at(1).toByteArray();
        QCOMPARE(block.size(), 38);
        QCOMPARE(block.at(0), char(7));
        QVERIFY(!form->ui.nonVolatileParamsGroupBox->editMode);
        QCOMPARE(form->ui.nvParamsEditSaveToolButton->text(), QStringLiteral("Edit"));
        QVERIFY(!form->ui.idSpinBox->isEnabled());
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
        QCOMPARE(ui.operatingModeComboBox->currentIndex(), 2);
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

    void enableMotorLocksNonVolatileGroup()
    {
        QVERIFY(form->ui.nvParamsEditSaveToolButton->isEnabled());
        form->deliver(QStringLiteral("enableMotorCheckBox"), 1);
        QVERIFY(!form->ui.nvParamsEditSaveToolButton->isEnabled());
        form->deliver(QStringLiteral("enableMotorCheckBox"), 0);
        QVERIFY(form->ui.nvParamsEditSaveToolButton->isEnabled());
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
