#include "editformfixture.h"
#include "widgets/iunitdatafield.h"
#include "widgets/uigrouphelper.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

namespace {

// Raw values from the servo, within the limits of the own family's model.
const struct
{
    const char *name;
    int raw;
} servoValues[] = {
    {"idSpinBox", 5},
    {"baudRateComboBox", 3},
    {"ackResponseTimeSpinBox", 10},
    {"operatingModeComboBox", 2},
    {"clockwiseLimitDoubleSpinBox", -100},
    {"counterClockwiseLimitDoubleSpinBox", 1000},
    {"temperatureLimitDoubleSpinBox", 80},
    {"minVoltageLimitDoubleSpinBox", 60},
    {"maxVoltageLimitDoubleSpinBox", 140},
    {"quadratureCurrentLimitDoubleSpinBox", 2000},
    {"angularVelocityLimitDoubleSpinBox", 1500},
    {"accelerationLimitDoubleSpinBox", 30000},
    {"hornPositionOffsetDoubleSpinBox", -70000},
    {"movingThresholdDoubleSpinBox", 20},
    {"inputModeComboBox", 1},
    {"defPositionProportionalTermDoubleSpinBox", 100},
    {"defVelocityFeedforwardTermDoubleSpinBox", 200},
    {"defCurrentFeedforwardTermDoubleSpinBox", 300},
    {"defVelocityIntegralTermDoubleSpinBox", 400},
    {"defVelocityProportionalTermDoubleSpinBox", 500},
    {"defAngularVelocityProfileDoubleSpinBox", 600},
    {"defAccelerationProfileDoubleSpinBox", 700},
    {"enableMotorCheckBox", 0},
    {"pendingShadowInstructionCheckBox", 0},
    {"positionProportionalTermDoubleSpinBox", 150},
    {"velocityFeedforwardTermDoubleSpinBox", 1000},
    {"currentFeedforwardTermDoubleSpinBox", 250},
    {"velocityIntegralTermDoubleSpinBox", 1200},
    {"velocityProportionalTermDoubleSpinBox", 1300},
    {"angularVelocityProfileDoubleSpinBox", 900},
    {"accelerationProfileDoubleSpinBox", 40000},
    {"targetPositionDoubleSpinBox", 123456},
    {"targetAngularVelocityDoubleSpinBox", 1000},
    {"targetAngularVelocityDirectionComboBox", 1},
    {"targetTorqueDoubleSpinBox", 500},
    {"targetTorqueDirectionComboBox", 0},
};

} // namespace

class TestEditSaveGroups : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void nonVolatileBlock();
    void volatileBlock_data();
    void volatileBlock();
    void applyFollowsDirtyCount();
    void applyQueuesBlockAndLeavesEdit();
    void cancelRestoresEveryField();
    void lockingDirtyFieldWithdrawsItsMark();
    void enableMotorLocksNonVolatileGroup();

private:
    void edit(const char *buttonName);

    std::unique_ptr<EditFormFixture> form;
    std::unique_ptr<UiGroupHelper> helper;
};

void TestEditSaveGroups::init()
{
    form = std::make_unique<EditFormFixture>();
    helper = std::make_unique<UiGroupHelper>(form->root(), &form->connectAction,
                                             &form->disconnectAction);
    form->connectLink();
    for (const auto &value : servoValues)
        form->deliver(QLatin1String(value.name), value.raw);
}

void TestEditSaveGroups::cleanup()
{
    helper.reset();
    form.reset();
}

void TestEditSaveGroups::edit(const char *buttonName)
{
    form->button(QLatin1String(buttonName))->click();
}

void TestEditSaveGroups::nonVolatileBlock()
{
    const QByteArray expected = QByteArray::fromHex("05 03 0A 02 9CFF E803 50 3C 8C D007 DC05 3075"
                                                    "90EEFEFF 1400 01 6400 C800 2C01 9001 F401"
                                                    "5802 BC02");
    QCOMPARE(helper->nonVolatileBlock().toHex(' '), expected.toHex(' '));
}

void TestEditSaveGroups::volatileBlock_data()
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

void TestEditSaveGroups::volatileBlock()
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
    form->find<QCheckBox>(QStringLiteral("enableMotorCheckBox"))->setEnabled(true);
    form->find<QCheckBox>(QStringLiteral("enableMotorCheckBox"))->setChecked(true);
    QCOMPARE(helper->volatileBlock().toHex(' '), expected.toHex(' '));
}

void TestEditSaveGroups::applyFollowsDirtyCount()
{
    edit("nvParamsEditSaveToolButton");
    ZelvarGroupToolButton *apply = form->button(QStringLiteral("nvParamsEditSaveToolButton"));
    auto *id = form->find<QSpinBox>(QStringLiteral("idSpinBox"));
    auto *temperature = form->find<QDoubleSpinBox>(QStringLiteral("temperatureLimitDoubleSpinBox"));
    QCOMPARE(apply->text(), QStringLiteral("Apply"));
    QVERIFY(!apply->isEnabled());

    const double storedTemperature = temperature->value();
    id->setValue(7);
    temperature->setValue(storedTemperature + 5);
    QCOMPARE(apply->referenceCount, 2);
    id->setValue(5);
    QVERIFY(apply->isEnabled());
    temperature->setValue(storedTemperature);
    QCOMPARE(apply->referenceCount, 0);
    QVERIFY(!apply->isEnabled());
}

void TestEditSaveGroups::applyQueuesBlockAndLeavesEdit()
{
    QSignalSpy queued(helper.get(), SIGNAL(addQueueRequest(uint8_t, const QByteArray &)));
    edit("nvParamsEditSaveToolButton");
    form->find<QSpinBox>(QStringLiteral("idSpinBox"))->setValue(7);
    edit("nvParamsEditSaveToolButton");

    QCOMPARE(queued.count(), 1);
    QCOMPARE(queued.at(0).at(0).value<uint8_t>(), uint8_t(3));
    const QByteArray block = queued.at(0).at(1).toByteArray();
    QCOMPARE(block.size(), 38);
    QCOMPARE(block.at(0), char(7));
    QVERIFY(!form->group(QStringLiteral("nonVolatileParamsGroupBox"))->editMode);
    QCOMPARE(form->button(QStringLiteral("nvParamsEditSaveToolButton"))->text(),
             QStringLiteral("Edit"));
    QVERIFY(!form->find<QSpinBox>(QStringLiteral("idSpinBox"))->isEnabled());
}

void TestEditSaveGroups::cancelRestoresEveryField()
{
    edit("nvParamsEditSaveToolButton");
    auto *id = form->find<QSpinBox>(QStringLiteral("idSpinBox"));
    auto *mode = form->find<QComboBox>(QStringLiteral("operatingModeComboBox"));
    auto *offset = form->find<QDoubleSpinBox>(QStringLiteral("hornPositionOffsetDoubleSpinBox"));
    const double storedOffset = offset->value();
    id->setValue(9);
    mode->setCurrentIndex(4);
    offset->setValue(storedOffset + 1.0);

    form->button(QStringLiteral("nvParamsCancelToolButton"))->click();

    QCOMPARE(id->value(), 5);
    QCOMPARE(mode->currentIndex(), 2);
    QCOMPARE(offset->value(), storedOffset);
    QCOMPARE(helper->nonVolatileBlock().mid(17, 4), QByteArray::fromHex("90EEFEFF"));
    ZelvarGroupToolButton *editSave = form->button(QStringLiteral("nvParamsEditSaveToolButton"));
    QVERIFY(!editSave->isChecked());
    QVERIFY(editSave->isEnabled());
    QCOMPARE(editSave->text(), QStringLiteral("Edit"));
    QCOMPARE(editSave->referenceCount, 0);
    QVERIFY(!form->button(QStringLiteral("nvParamsCancelToolButton"))->isEnabled());
    QVERIFY(!form->group(QStringLiteral("nonVolatileParamsGroupBox"))->editMode);
    QVERIFY(!id->isEnabled());
}

void TestEditSaveGroups::lockingDirtyFieldWithdrawsItsMark()
{
    edit("vParamsEditSaveToolButton");
    ZelvarGroupToolButton *apply = form->button(QStringLiteral("vParamsEditSaveToolButton"));
    auto *target = form->find<QDoubleSpinBox>(QStringLiteral("targetPositionDoubleSpinBox"));
    const double stored = target->value();
    target->setValue(stored + 2.0);
    QVERIFY(apply->isEnabled());

    form->field(QStringLiteral("targetPositionDoubleSpinBox"))->setLocked(true);
    QCOMPARE(apply->referenceCount, 0);
    QVERIFY(!apply->isEnabled());
    QVERIFY(!target->isEnabled());
    QCOMPARE(target->text(), QString());

    form->field(QStringLiteral("targetPositionDoubleSpinBox"))->setLocked(false);
    QCOMPARE(target->value(), stored);
    QVERIFY(target->isEnabled());
    QCOMPARE(form->field(QStringLiteral("targetPositionDoubleSpinBox"))->value(), 123456);
}

void TestEditSaveGroups::enableMotorLocksNonVolatileGroup()
{
    ZelvarGroupToolButton *nonVolatile = form->button(QStringLiteral("nvParamsEditSaveToolButton"));
    QVERIFY(nonVolatile->isEnabled());
    form->deliver(QStringLiteral("enableMotorCheckBox"), 1);
    QVERIFY(!nonVolatile->isEnabled());
    form->deliver(QStringLiteral("enableMotorCheckBox"), 0);
    QVERIFY(nonVolatile->isEnabled());
}

QTEST_MAIN(TestEditSaveGroups)
#include "tst_editsavegroups.moc"
