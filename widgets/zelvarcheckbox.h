#pragma once

#include "widgets/boundfieldstate.h"
#include "widgets/iconnectinfo.h"
#include "widgets/igroupinputcomponent.h"
#include "widgets/iservovalue.h"
#include "widgets/iunitdatafield.h"

#include <QCheckBox>

// A check box bound to a field: raw 0 is unchecked, anything else checked. Its
// indicator sits at the right edge of its group, and its caption greys when locked.
//
// setText, objectName and setObjectName hide QAbstractButton's and QObject's
// non-virtual members; generated form code calls them through this class's pointer.
class ZelvarCheckBox : public QCheckBox,
                       public IGroupInputComponent,
                       public IConnectInfo,
                       public IUnitDataField,
                       public IServoValue
{
    Q_OBJECT

public:
    explicit ZelvarCheckBox(QWidget *parent = nullptr);

    void setEditable(bool enable) override;
    void restoreValue() override;

    QString objectName() const override { return QCheckBox::objectName(); }
    void setLocked(bool lock) override;
    int32_t fieldId() const override { return state.fieldId; }
    void setValue(int raw) override;
    int value() override { return isChecked() ? 1 : 0; }
    void setObjectName(const QString &name) override;
    void applyDependency() override;

    void setText(const QString &text);

    bool holdsServoValue() const override { return state.holdsServoValue(); }
    bool isEdited() const override { return state.dirty; }

    bool isLocked() const { return state.locked; }

public slots:
    void connected() override;
    void disconnected() override;
    void on_deviceLoaded();
    void on_toggled(bool value);

signals:
    void setIsDirty(bool dirty);

private:
    // setDisabled with the caption recoloured: pale when a locked box is locked again.
    void disableRecoloured(bool disable);

    BoundFieldState state;
    // The caption colour the last recolouring gave; null while the style has its own.
    const char *captionColour = nullptr;
};
