#pragma once

#include "widgets/boundfieldstate.h"
#include "widgets/iconnectinfo.h"
#include "widgets/igroupinputcomponent.h"
#include "widgets/iservovalue.h"
#include "widgets/iunitdatafield.h"

#include <QDoubleSpinBox>

// A spin box that shows a field in its display unit: rawMin maps to physicalMin, and
// the range, step and decimals come from the field. Blank unless connected, valued and
// unlocked.
//
// setValue(int), value, objectName and setObjectName hide QDoubleSpinBox's and
// QObject's non-virtual members: generated form code reaches these through this class's
// pointer. Note that setValue(int) takes a raw value; the shown number is set with
// QDoubleSpinBox::setValue.
class ZelvarDoubleSpinBox : public QDoubleSpinBox,
                            public IGroupInputComponent,
                            public IConnectInfo,
                            public IUnitDataField,
                            public IServoValue
{
    Q_OBJECT

public:
    explicit ZelvarDoubleSpinBox(QWidget *parent = nullptr);

    void setEditable(bool enable) override;
    void restoreValue() override;

    QString objectName() const override { return QDoubleSpinBox::objectName(); }
    void setLocked(bool lock) override;
    int32_t fieldId() const override { return state.fieldId; }
    void setValue(int raw) override;
    int value() override;
    void setObjectName(const QString &name) override;
    void applyDependency() override {}

    bool holdsServoValue() const override { return state.holdsServoValue(); }
    bool isEdited() const override { return state.dirty; }

    bool isLocked() const { return state.locked; }

public slots:
    void connected() override;
    void disconnected() override;
    void on_deviceLoaded();
    void on_valueChanged(double value);

signals:
    void setIsDirty(bool dirty);

protected:
    QString textFromValue(double value) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    void showOrBlank();

    // The number shown for storedValue; edits are measured against it.
    double storedNumber = 0.0;
    BoundFieldState state;
    // Whether the text shows the number (true) or is blank.
    bool textShown = false;
    mutable bool measuring = false;
};
