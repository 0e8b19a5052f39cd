#pragma once

#include "widgets/iconnectinfo.h"
#include "widgets/izelvarfield.h"

#include <QLabel>

// The caption of a mode-dependent field: it greys out when a mode controller locks the
// field, but only while a servo is connected.
//
// objectName hides QObject's non-virtual member of the same name.
class ZelvarLabel : public QLabel, public IZelvarField, public IConnectInfo
{
    Q_OBJECT

public:
    explicit ZelvarLabel(QWidget *parent = nullptr);

    QString objectName() const override { return QLabel::objectName(); }
    void setLocked(bool lock) override;

public slots:
    void connected() override;
    void disconnected() override;

private:
    bool isConnected = false;
};
