#include "ui_editview.h"

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

#include <QtTest>
#include <functional>

namespace {

// The lock each mode (Torque, Wheel, Joint, Multi-turn, Stepper) gives a label and its
// input: L locked, U unlocked, N untouched, I unlocked at input mode 0.
const struct
{
    const char *modes;
    const char *label;
    const char *input;
} expectedLocks[] = {
    {"LLUUL", "inputModeLabel", "inputModeComboBox"},
    {"LLULL", "clockwiseAngleLimitLabel", "clockwiseLimitDoubleSpinBox"},
    {"LLULL", "counterClockwiseAngleLimitLabel", "counterClockwiseLimitDoubleSpinBox"},
    {"LUUUL", "velocityProportionalTermLabel", "velocityProportionalTermDoubleSpinBox"},
    {"LLUUL", "velocityFeedforwardTermLabel", "velocityFeedforwardTermDoubleSpinBox"},
    {"LUUUL", "currentFeedforwardTermLabel", "currentFeedforwardTermDoubleSpinBox"},
    {"LLUUL", "angularVelocityProfileLabel", "angularVelocityProfileDoubleSpinBox"},
    {"LULLL", "targetAngularVelocityLabel", "targetAngularVelocityDoubleSpinBox"},
    {"LUUUL", "velocityIntegralTermLabel", "velocityIntegralTermDoubleSpinBox"},
    {"LUIIL", "accelerationProfileLabel", "accelerationProfileDoubleSpinBox"},
    {"LULLL", "targetAngularVelocityDirectionLabel", "targetAngularVelocityDirectionComboBox"},
    {"LLUUL", "targetPositionLabel", "targetPositionDoubleSpinBox"},
    {"ULLLL", "targetTorqueLabel", "targetTorqueDoubleSpinBox"},
    {"UUUUU", "quadratureCurrentLimitLabel", "quadratureCurrentLimitDoubleSpinBox"},
    {"NLUNL", "positionProportionalTermLabel", nullptr},
    {"LLUUL", nullptr, "positionProportionalTermDoubleSpinBox"},
    {"ULLLL", "targetTorqueDirectionLabel", "targetTorqueDirectionComboBox"},
    {"UUUUU", "angularVelocityLimitLabel", "angularVelocityLimitDoubleSpinBox"},
    {"NUUUU", "accelerationLimitLabel", "accelerationLimitDoubleSpinBox"},
    {"UUUUU", "hornPositionOffsetLabel", "hornPositionOffsetDoubleSpinBox"},
    {"UUUUU", nullptr, "enableMotorCheckBox"},
    {"UUUUL", nullptr, "pendingShadowInstructionCheckBox"},
    {"LLUUU", "defPositionProportionalTermLabel", "defPositionProportionalTermDoubleSpinBox"},
    {"LLUUU", "defVelocityFeedforwardTermLabel", "defVelocityFeedforwardTermDoubleSpinBox"},
    {"LUUUU", "defVelocityProportionalTermLabel", "defVelocityProportionalTermDoubleSpinBox"},
    {"LUUUU", "defVelocityIntegralTermLabel", "defVelocityIntegralTermDoubleSpinBox"},
    {"LUUUU", "defCurrentFeedforwardTermLabel", "defCurrentFeedforwardTermDoubleSpinBox"},
    {"LLUUU", "defAngularVelocityProfileLabel", "defAngularVelocityProfileDoubleSpinBox"},
    {"LUUUU", "defAccelerationProfileLabel", "defAccelerationProfileDoubleSpinBox"},
};

const char *const modeNames[] = {"Torque", "Wheel", "Joint", "Multi-turn", "Stepper"};

void runController(int mode)
{
    const std::function<void()> controllers[] = {
        [] { TorqueModeController().apply(); }, [] { WheelModeController().apply(); },
        [] { JointModeController().apply(); }, [] { MultiTurnModeController().apply(); },
        [] { StepperModeController().apply(); }};
    controllers[qBound(0, mode, 4)]();
}

} // namespace

class TestModeControllers : public QObject
{
    Q_OBJECT

    // Labels carry their lock as their disabled state; the inputs keep a flag.
    bool isLocked(const QString &name) const
    {
        QObject *control = form.find<QObject>(name);
        if (auto *box = qobject_cast<ZelvarComboBox *>(control))
            return box->isLocked();
        if (auto *box = qobject_cast<ZelvarDoubleSpinBox *>(control))
            return box->isLocked();
        if (auto *box = qobject_cast<ZelvarCheckBox *>(control))
            return box->isLocked();
        return !qobject_cast<QWidget *>(control)->isEnabled();
    }
    void showAndRun(int mode, int inputMode)
    {
        form.ui.operatingModeComboBox->setCurrentIndex(mode);
        form.ui.inputModeComboBox->setCurrentIndex(inputMode);
        runController(mode);
    }

    EditFormFixture form;

private slots:
    void initTestCase()
    {
        FieldHelper::create(form.root()->children());
        form.connectLink();
    }

    void modeTable_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("control");
        QTest::addColumn<char>("expected");
        for (int mode = 0; mode < 5; ++mode)
            for (const auto &row : expectedLocks)
                for (const char *name : {row.label, row.input})
                    if (name)
                        QTest::addRow("%s %s", modeNames[mode], name)
                            << mode << QString::fromLatin1(name) << row.modes[mode];
    }

    // From both lock states, so that an untouched control shows as keeping its state.
    void modeTable()
    {
        QFETCH(int, mode);
        QFETCH(QString, control);
        QFETCH(char, expected);
        for (const bool before : {false, true}) {
            for (const auto &row : expectedLocks)
                for (const char *name : {row.label, row.input})
                    if (name)
                        FieldHelper::instance()->field(QLatin1String(name))->setLocked(before);
            showAndRun(mode, 0);
            QCOMPARE(isLocked(control), expected == 'N' ? before : expected == 'L');
        }
    }

    // The binder runs the dependency before it shows the value, so the controller acts on
    // the mode shown so far.
    void locksFollowModeOneValueLate()
    {
        const QString mode = QStringLiteral("operatingModeComboBox");
        const QString torque = QStringLiteral("targetTorqueDoubleSpinBox");
        const QString velocity = QStringLiteral("targetAngularVelocityDoubleSpinBox");
        form.ui.operatingModeComboBox->setCurrentIndex(ControllerBase::Wheel);
        form.deliver(mode, ControllerBase::Wheel);
        QVERIFY(!isLocked(velocity));

        form.deliver(mode, ControllerBase::Torque);
        QCOMPARE(form.ui.operatingModeComboBox->currentIndex(), int(ControllerBase::Torque));
        QVERIFY(!isLocked(velocity));
        QVERIFY(isLocked(torque));

        form.deliver(mode, ControllerBase::Torque);
        QVERIFY(isLocked(velocity));
        QVERIFY(!isLocked(torque));
    }

    void unknownModeRunsJoint_data()
    {
        QTest::addColumn<QString>("extraItem");
        QTest::addColumn<bool>("jointActive");
        QTest::newRow("placeholder") << QString() << true;
        QTest::newRow("index 5 is no placeholder") << QStringLiteral("5") << false;
    }

    // An index outside the five modes runs Joint; active only at the placeholder, otherwise
    // every Joint setting is reversed.
    void unknownModeRunsJoint()
    {
        QFETCH(QString, extraItem);
        QFETCH(bool, jointActive);
        QComboBox *box = form.ui.operatingModeComboBox;
        if (!extraItem.isEmpty())
            box->insertItem(5, extraItem);
        box->setCurrentIndex(5);
        form.field(box->objectName())->applyDependency();

        QCOMPARE(isLocked(QStringLiteral("targetPositionDoubleSpinBox")), !jointActive);
        QCOMPARE(isLocked(QStringLiteral("positionProportionalTermLabel")), !jointActive);
        QCOMPARE(isLocked(QStringLiteral("targetTorqueDoubleSpinBox")), jointActive);
        QCOMPARE(isLocked(QStringLiteral("targetAngularVelocityDirectionComboBox")), jointActive);
        if (!extraItem.isEmpty())
            box->removeItem(5);
    }

    void modeSequences_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("then");
        QTest::addColumn<int>("inputMode");
        QTest::addColumn<QString>("control");
        QTest::addColumn<bool>("locked");
        const int torque = ControllerBase::Torque, wheel = ControllerBase::Wheel;
        const int joint = ControllerBase::Joint, multiTurn = ControllerBase::MultiTurn;
        const QString gain = "positionProportionalTermLabel", profile = "accelerationProfileLabel";
        const QString profileInput = "accelerationProfileDoubleSpinBox";
        QTest::newRow("wheel then torque") << wheel << torque << 0 << gain << true;
        QTest::newRow("joint then torque") << joint << torque << 0 << gain << false;
        QTest::newRow("joint, position, input") << joint << joint << 1 << profileInput << true;
        QTest::newRow("multi-turn, position") << multiTurn << multiTurn << 1 << profile << true;
        QTest::newRow("wheel ignores input mode") << wheel << wheel << 1 << profileInput << false;
    }

    void modeSequences()
    {
        QFETCH(int, first);
        QFETCH(int, then);
        QFETCH(int, inputMode);
        QFETCH(QString, control);
        QFETCH(bool, locked);
        showAndRun(first, 0);
        showAndRun(then, inputMode);
        QCOMPARE(isLocked(control), locked);
    }
};

QTEST_MAIN(TestModeControllers)
#include "tst_modecontrollers.moc"
