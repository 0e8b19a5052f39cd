#pragma once

#include "widgets/boundfieldstate.h"
#include "widgets/iconnectinfo.h"
#include "widgets/igroupinputcomponent.h"
#include "widgets/iservovalue.h"
#include "widgets/iunitdatafield.h"

#include <QSpinBox>

// An integer spin box bound to a field. Unlike the double spin box it maps raw 0 (not
// rawMin) to physicalMin; that difference is deliberate. It is blank unless connected,
// valued and unlocked.
//
// setValue, value, objectName and setObjectName hide QSpinBox's and QObject's
// non-virtual members: generated form code reaches these through this class's pointer,
// and this class calls QSpinBox::setValue/value itself for the shown number.
class ZelvarSpinBox : public QSpinBox,
                      public IGroupInputComponent,
                      public IConnectInfo,
                      public IUnitDataField,
                      public IServoValue
{
    Q_OBJECT

public:
    explicit ZelvarSpinBox(QWidget *parent = nullptr);

    void setEditable(bool enable) override;
    void restoreValue() override;

    QString objectName() const override { return QSpinBox::objectName(); }
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
    void on_valueChanged(int value);

signals:
    void setIsDirty(bool dirty);

protected:
    QString textFromValue(int value) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    void showOrBlank();

    BoundFieldState state;
    // Whether the text shows the number (true) or is blank.
    bool textShown = false;
    mutable bool measuring = false;
};
