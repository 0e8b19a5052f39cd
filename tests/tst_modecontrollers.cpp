#include "ui_editview.h"

#include "controllers/controllerbase.h"
#include "datacolumns.h"
#include "device/fieldhelper.h"
#include "editformfixture.h"

#include <QtTest>

namespace {

// The lock each mode (Torque, Wheel, Joint, Multi-turn, Stepper) gives a label and its
// input: L locked, U unlocked, N untouched, I unlocked at input mode 0.
const struct
{
    const char *modes, *label, *input;
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

// The five modes, then the placeholder (the unknown mode), then an index past the modes
// that is no placeholder. Both of the last run Joint: as is at the placeholder, reversed
// past it.
const char *const modeNames[] = {"Torque",  "Wheel",       "Joint",  "Multi-turn",
                                 "Stepper", "placeholder", "index 5"};
constexpr int placeholder = 5, beyondTheModes = 6;

char expectedLock(const char *modes, int mode)
{
    if (mode < placeholder)
        return modes[mode];
    const char joint = modes[ControllerBase::Joint];
    if (mode == placeholder)
        return joint;
    // Reversed; the acceleration profile at input mode 0 was unlocked, so it locks.
    return joint == 'U' || joint == 'I' ? 'L' : joint == 'L' ? 'U' : joint;
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
    // Shows the mode and runs the operating-mode combo box's dependency, as a poll does.
    void showAndRun(int mode, int inputMode)
    {
        QComboBox *box = form.ui.operatingModeComboBox;
        if (mode == beyondTheModes)
            box->insertItem(placeholder, QStringLiteral("5"));
        box->setCurrentIndex(qMin(mode, placeholder));
        form.ui.inputModeComboBox->setCurrentIndex(inputMode);
        form.field(box->objectName())->applyDependency();
        if (mode == beyondTheModes)
            box->removeItem(placeholder);
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
        addColumns<int, QString, char>({"mode", "control", "expected"});
        for (int mode = 0; mode <= beyondTheModes; ++mode)
            for (const auto &row : expectedLocks)
                for (const char *name : {row.label, row.input})
                    if (name)
                        QTest::addRow("%s %s", modeNames[mode], name)
                            << mode << QString::fromLatin1(name) << expectedLock(row.modes, mode);
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

    void inputModeLocksTheProfile_data()
    {
        addColumns<int, QString, bool>({"mode", "control", "locked"});
        const QString label = "accelerationProfileLabel";
        const QString input = "accelerationProfileDoubleSpinBox";
        QTest::newRow("joint") << int(ControllerBase::Joint) << input << true;
        QTest::newRow("multi-turn") << int(ControllerBase::MultiTurn) << label << true;
        QTest::newRow("wheel ignores it") << int(ControllerBase::Wheel) << input << false;
    }
    // At input mode 1 ("Position"); the table above is checked at input mode 0.
    void inputModeLocksTheProfile()
    {
        QFETCH(int, mode);
        QFETCH(QString, control);
        QFETCH(bool, locked);
        showAndRun(mode, 0);
        showAndRun(mode, 1);
        QCOMPARE(isLocked(control), locked);
    }

    // The AX-12 has no modes: neither the last model's controller nor its locks may follow
    // it, or the fields it does have stay blank.
    void locksEndWithTheLink()
    {
        const QString velocity = QStringLiteral("targetAngularVelocityDoubleSpinBox");
        showAndRun(ControllerBase::Joint, 0);
        QVERIFY(isLocked(velocity));
        form.disconnectLink();
        form.connectLink(true);
        form.deliver(QStringLiteral("operatingModeComboBox"), ControllerBase::Joint);
        form.deliver(velocity, 500);
        QVERIFY(!isLocked(velocity));
        QVERIFY(!form.find<QDoubleSpinBox>(velocity)->text().isEmpty());
        form.disconnectLink();
        form.connectLink();
    }
};

QTEST_MAIN(TestModeControllers)
#include "tst_modecontrollers.moc"
