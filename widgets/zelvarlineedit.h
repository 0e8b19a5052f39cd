#pragma once

#include "widgets/boundfieldstate.h"
#include "widgets/iconnectinfo.h"
#include "widgets/igroupinputcomponent.h"
#include "widgets/iunitdatafield.h"

#include <QLineEdit>

// Shows a field's value as text, formatted by its field id: a physical value in the
// display unit, the model number as high.low, or the raw integer. Empty while no value
// is known.
//
// objectName and setObjectName hide QObject's non-virtual members; generated form code
// calls them through this class's pointer.
class ZelvarLineEdit : public QLineEdit,
                       public IGroupInputComponent,
                       public IConnectInfo,
                       public IUnitDataField
{
    Q_OBJECT

public:
    explicit ZelvarLineEdit(QWidget *parent = nullptr);

    void setEditable(bool enable) override;
    void restoreValue() override;

    QString objectName() const override { return QLineEdit::objectName(); }
    void setLocked(bool lock) override;
    int32_t fieldId() const override { return state.fieldId; }
    void setValue(int raw) override;
    int value() override { return text().toInt(); }
    void setObjectName(const QString &name) override;
    void applyDependency() override {}

public slots:
    void connected() override;
    void disconnected() override;
    void on_deviceLoaded();
    void on_textChanged(const QString &value);

signals:
    void setIsDirty(bool dirty);

private:
    QString format(int raw) const;

    QString storedText;
    BoundFieldState state;
};
