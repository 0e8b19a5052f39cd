#pragma once

#include "widgets/iconnectinfo.h"
#include "widgets/iunitfield.h"

#include <QLabel>

// A caption followed by the display unit of its field, such as "Temperature (°C):".
//
// setText, objectName and setObjectName hide QLabel's and QObject's non-virtual members;
// generated form code calls them through this class's pointer.
class ZelvarUnitLabel : public QLabel, public IUnitField, public IConnectInfo
{
    Q_OBJECT

public:
    explicit ZelvarUnitLabel(QWidget *parent = nullptr);

    QString objectName() const override { return QLabel::objectName(); }
    void setLocked(bool lock) override;
    int32_t fieldId() const override { return id; }
    void setObjectName(const QString &name);
    // The first caption set is kept; every later call only refreshes the unit.
    void setText(const QString &caption);

public slots:
    void connected() override;
    void disconnected() override;

private:
    void showCaption();

    bool isConnected = false;
    QString baseCaption;
    int32_t id = -1;
};
