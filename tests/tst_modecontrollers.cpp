#include "controllers/jointmodecontroller.h"
#include "controllers/multiturnmodecontroller.h"
#include "controllers/steppermodecontroller.h"
#include "controllers/torquemodecontroller.h"
#include "controllers/wheelmodecontroller.h"
#include "device/fieldhelper.h"
#include "editformfixture.h"
#include "widgets/izelvarfield.h"
#include "widgets/zelvarcheckbox.h"
#include "widgets/zelvarcombobox.h"
#include "widgets/zelvardoublespinbox.h"

#include <QComboBox>
#include <QtTest>

namespace {

// The lock each mode gives a control when its controller is active: L locked, U
// unlocked, N untouched, I unlocked only at input mode 0.
const struct
{
    const char *name;
    const char *modes; // Torque, Wheel, Joint, Multi-turn, Stepper
} expectedLocks[] = {
    {"inputModeLabel", "LLUUL"},
    {"clockwiseAngleLimitLabel", "LLULL"},
    {"counterClockwiseAngleLimitLabel", "LLULL"},
    {"velocityProportionalTermLabel", "LUUUL"},
    {"velocityFeedforwardTermLabel", "LLUUL"},
    {"currentFeedforwardTermLabel", "LUUUL"},
    {"angularVelocityProfileLabel", "LLUUL"},
    {"targetAngularVelocityLabel", "LULLL"},
    {"velocityIntegralTermLabel", "LUUUL"},
    {"accelerationProfileLabel", "LUIIL"},
    {"targetAngularVelocityDirectionLabel", "LULLL"},
    {"targetPositionLabel", "LLUUL"},
    {"targetTorqueLabel", "ULLLL"},
    {"quadratureCurrentLimitLabel", "UUUUU"},
    {"positionProportionalTermLabel", "NLUNL"},
    {"targetTorqueDirectionLabel", "ULLLL"},
    {"angularVelocityLimitLabel", "UUUUU"},
    {"accelerationLimitLabel", "NUUUU"},
    {"hornPositionOffsetLabel", "UUUUU"},
    {"defPositionProportionalTermLabel", "LLUUU"},
    {"defVelocityFeedforwardTermLabel", "LLUUU"},
    {"defVelocityProportionalTermLabel", "LUUUU"},
    {"defVelocityIntegralTermLabel", "LUUUU"},
    {"defCurrentFeedforwardTermLabel", "LUUUU"},
    {"defAngularVelocityProfileLabel", "LLUUU"},
    {"defAccelerationProfileLabel", "LUUUU"},
    {"inputModeComboBox", "LLUUL"},
    {"clockwiseLimitDoubleSpinBox", "LLULL"},
    {"counterClockwiseLimitDoubleSpinBox", "LLULL"},
    {"positionProportionalTermDoubleSpinBox", "LLUUL"},
    {"velocityFeedforwardTermDoubleSpinBox", "LLUUL"},
    {"currentFeedforwardTermDoubleSpinBox", "LUUUL"},
    {"targetAngularVelocityDoubleSpinBox", "LULLL"},
    {"velocityProportionalTermDoubleSpinBox", "LUUUL"},
    {"velocityIntegralTermDoubleSpinBox", "LUUUL"},
    {"angularVelocityProfileDoubleSpinBox", "LLUUL"},
    {"accelerationProfileDoubleSpinBox", "LUIIL"},
    {"targetPositionDoubleSpinBox", "LLUUL"},
    {"targetAngularVelocityDirectionComboBox", "LULLL"},
    {"targetTorqueDoubleSpinBox", "ULLLL"},
    {"targetTorqueDirectionComboBox", "ULLLL"},
    {"quadratureCurrentLimitDoubleSpinBox", "UUUUU"},
    {"angularVelocityLimitDoubleSpinBox", "UUUUU"},
    {"accelerationLimitDoubleSpinBox", "NUUUU"},
    {"hornPositionOffsetDoubleSpinBox", "UUUUU"},
    {"enableMotorCheckBox", "UUUUU"},
    {"pendingShadowInstructionCheckBox", "UUUUL"},
    {"defPositionProportionalTermDoubleSpinBox", "LLUUU"},
    {"defVelocityFeedforwardTermDoubleSpinBox", "LLUUU"},
    {"defVelocityProportionalTermDoubleSpinBox", "LUUUU"},
    {"defVelocityIntegralTermDoubleSpinBox", "LUUUU"},
    {"defCurrentFeedforwardTermDoubleSpinBox", "LUUUU"},
    {"defAngularVelocityProfileDoubleSpinBox", "LLUUU"},
    {"defAccelerationProfileDoubleSpinBox", "LUUUU"},
};

const char *const modeNames[] = {"Torque", "Wheel", "Joint", "Multi-turn", "Stepper"};

void runController(int mode)
{
    switch (mode) {
    case ControllerBase::Torque:
        TorqueModeController().apply();
        break;
    case ControllerBase::Wheel:
        WheelModeController().apply();
        break;
    case ControllerBase::Joint:
        JointModeController().apply();
        break;
    case ControllerBase::MultiTurn:
        MultiTurnModeController().apply();
        break;
    default:
        StepperModeController().apply();
        break;
    }
}

} // namespace

class TestModeControllers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void modeTable_data();
    void modeTable();
    void locksFollowModeOneValueLate();
    void unknownModeRunsJoint_data();
    void unknownModeRunsJoint();
    void untouchedControlKeepsPreviousMode_data();
    void untouchedControlKeepsPreviousMode();
    void inputModeGatesAccelerationProfile_data();
    void inputModeGatesAccelerationProfile();

private:
    // Labels carry their lock as their disabled state; the inputs keep a flag.
    bool isLocked(const QString &name) const;
    void showModes(int operatingMode, int inputMode);
    void setAllLocks(bool lock);

    EditFormFixture form;
    QComboBox *operatingMode = nullptr;
};

void TestModeControllers::initTestCase()
{
    FieldHelper::create(form.root()->children());
    form.connectLink();
    operatingMode = form.find<QComboBox>(QStringLiteral("operatingModeComboBox"));
}

bool TestModeControllers::isLocked(const QString &name) const
{
    QObject *control = form.root()->findChild<QObject *>(name);
    if (auto *box = qobject_cast<ZelvarComboBox *>(control))
        return box->isLocked();
    if (auto *box = qobject_cast<ZelvarDoubleSpinBox *>(control))
        return box->isLocked();
    if (auto *box = qobject_cast<ZelvarCheckBox *>(control))
        return box->isLocked();
    return !qobject_cast<QWidget *>(control)->isEnabled();
}

void TestModeControllers::showModes(int mode, int inputMode)
{
    operatingMode->setCurrentIndex(mode);
    form.find<QComboBox>(QStringLiteral("inputModeComboBox"))->setCurrentIndex(inputMode);
}

void TestModeControllers::setAllLocks(bool lock)
{
    for (const auto &row : expectedLocks)
        FieldHelper::instance()->field(QLatin1String(row.name))->setLocked(lock);
}

void TestModeControllers::modeTable_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("control");
    QTest::addColumn<char>("expected");
    for (int mode = 0; mode < 5; ++mode) {
        for (const auto &row : expectedLocks) {
            QTest::addRow("%s %s", modeNames[mode], row.name)
                << mode << QString::fromLatin1(row.name) << row.modes[mode];
        }
    }
}

// Each mode against each control, from both lock states, so that an untouched control
// shows as keeping whatever state it had.
void TestModeControllers::modeTable()
{
    QFETCH(int, mode);
    QFETCH(QString, control);
    QFETCH(char, expected);
    for (const bool before : {false, true}) {
        setAllLocks(before);
        showModes(mode, 0);
        runController(mode);
        const bool locked = isLocked(control);
        switch (expected) {
        case 'L':
            QVERIFY(locked);
            break;
        case 'U':
        case 'I':
            QVERIFY(!locked);
            break;
        default:
            QCOMPARE(locked, before);
        }
    }
}

// The binder runs the dependency before it shows the value, so the controller acts on
// the mode shown so far.
void TestModeControllers::locksFollowModeOneValueLate()
{
    const QString torqueTarget = QStringLiteral("targetTorqueDoubleSpinBox");
    const QString velocityTarget = QStringLiteral("targetAngularVelocityDoubleSpinBox");
    showModes(ControllerBase::Wheel, 0);
    form.deliver(QStringLiteral("operatingModeComboBox"), ControllerBase::Wheel);
    QVERIFY(!isLocked(velocityTarget));

    form.deliver(QStringLiteral("operatingModeComboBox"), ControllerBase::Torque);
    QCOMPARE(operatingMode->currentIndex(), int(ControllerBase::Torque));
    QVERIFY(!isLocked(velocityTarget));
    QVERIFY(isLocked(torqueTarget));

    form.deliver(QStringLiteral("operatingModeComboBox"), ControllerBase::Torque);
    QVERIFY(isLocked(velocityTarget));
    QVERIFY(!isLocked(torqueTarget));
}

void TestModeControllers::unknownModeRunsJoint_data()
{
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("jointActive");
    const QStringList formItems{"Torque", "Wheel", "Joint", "Multi-turn", "Stepper", "-"};
    QTest::newRow("placeholder") << formItems << 5 << true;
    QTest::newRow("joint") << formItems << 2 << true;
    QTest::newRow("index 5 is no placeholder") << (QStringList(formItems.mid(0, 5)) << "5"
                                                                                    << "-")
                                               << 5 << false;
}

// An index outside the five modes runs Joint; active only when it is the placeholder,
// otherwise every Joint setting is reversed.
void TestModeControllers::unknownModeRunsJoint()
{
    QFETCH(QStringList, items);
    QFETCH(int, index);
    QFETCH(bool, jointActive);
    const QStringList formItems = [this] {
        QStringList texts;
        for (int i = 0; i < operatingMode->count(); ++i)
            texts << operatingMode->itemText(i);
        return texts;
    }();
    operatingMode->clear();
    operatingMode->addItems(items);
    showModes(index, 0);
    form.field(QStringLiteral("operatingModeComboBox"))->applyDependency();

    QCOMPARE(isLocked(QStringLiteral("targetPositionDoubleSpinBox")), !jointActive);
    QCOMPARE(isLocked(QStringLiteral("positionProportionalTermLabel")), !jointActive);
    QCOMPARE(isLocked(QStringLiteral("targetTorqueDoubleSpinBox")), jointActive);
    QCOMPARE(isLocked(QStringLiteral("targetAngularVelocityDirectionComboBox")), jointActive);

    operatingMode->clear();
    operatingMode->addItems(formItems);
}

void TestModeControllers::untouchedControlKeepsPreviousMode_data()
{
    QTest::addColumn<int>("previous");
    QTest::addColumn<bool>("locked");
    QTest::newRow("wheel then torque") << int(ControllerBase::Wheel) << true;
    QTest::newRow("joint then torque") << int(ControllerBase::Joint) << false;
}

void TestModeControllers::untouchedControlKeepsPreviousMode()
{
    QFETCH(int, previous);
    QFETCH(bool, locked);
    showModes(previous, 0);
    runController(previous);
    showModes(ControllerBase::Torque, 0);
    runController(ControllerBase::Torque);
    QCOMPARE(isLocked(QStringLiteral("positionProportionalTermLabel")), locked);
}

void TestModeControllers::inputModeGatesAccelerationProfile_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("inputMode");
    QTest::addColumn<bool>("locked");
    QTest::newRow("joint, trajectory") << int(ControllerBase::Joint) << 0 << false;
    QTest::newRow("joint, position") << int(ControllerBase::Joint) << 1 << true;
    QTest::newRow("multi-turn, trajectory") << int(ControllerBase::MultiTurn) << 0 << false;
    QTest::newRow("multi-turn, position") << int(ControllerBase::MultiTurn) << 1 << true;
    QTest::newRow("wheel ignores input mode") << int(ControllerBase::Wheel) << 1 << false;
}

void TestModeControllers::inputModeGatesAccelerationProfile()
{
    QFETCH(int, mode);
    QFETCH(int, inputMode);
    QFETCH(bool, locked);
    showModes(mode, 0);
    runController(mode);
    showModes(mode, inputMode);
    runController(mode);
    QCOMPARE(isLocked(QStringLiteral("accelerationProfileLabel")), locked);
    QCOMPARE(isLocked(QStringLiteral("accelerationProfileDoubleSpinBox")), locked);
}

QTEST_MAIN(TestModeControllers)
#include "tst_modecontrollers.moc"
