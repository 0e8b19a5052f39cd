#pragma once

#include "widgets/boundfieldstate.h"
#include "widgets/iconnectinfo.h"
#include "widgets/igroupinputcomponent.h"
#include "widgets/iservovalue.h"
#include "widgets/iunitdatafield.h"

#include <QComboBox>

// A combo box bound to a field whose raw value is the item index. Its last item is the
// placeholder, shown while no value is known and hidden from the popup while connected.
//
// setEditable, setValue, value, objectName and setObjectName hide QComboBox's and
// QObject's non-virtual members of the same names; generated form code calls them
// through this class's pointer, so it reaches these.
class ZelvarComboBox : public QComboBox,
                       public IGroupInputComponent,
                       public IConnectInfo,
                       public IUnitDataField,
                       public IServoValue
{
    Q_OBJECT

public:
    explicit ZelvarComboBox(QWidget *parent = nullptr);

    void setEditable(bool enable) override;
    void restoreValue() override;

    QString objectName() const override { return QComboBox::objectName(); }
    void setLocked(bool lock) override;
    int32_t fieldId() const override { return state.fieldId; }
    void setValue(int raw) override;
    int value() override { return currentIndex(); }
    void setObjectName(const QString &name) override;
    void applyDependency() override;

    bool holdsServoValue() const override { return state.holdsServoValue(); }
    bool isEdited() const override { return state.dirty; }

    bool isLocked() const { return state.locked; }
    // What the box paints: blank unless connected, valued and unlocked.
    QString displayedText() const;

public slots:
    void connected() override;
    void disconnected() override;
    virtual void on_deviceLoaded();
    void on_currentIndexChanged(int value);

signals:
    void setIsDirty(bool dirty);

protected:
    void paintEvent(QPaintEvent *event) override;
    // Whether index counts as a change away from the servo's value.
    virtual bool isChangedIndex(int index) const;
    int placeholderIndex() const { return count() - 1; }

    BoundFieldState state;
};
