#pragma once

#include "widgets/iconnectinfo.h"

#include <QCheckBox>

// One status bit as a coloured indicator at the right edge of its group: red while the
// bit is set and a servo is connected, grey otherwise.
class ZelvarStatusCheckBox : public QCheckBox, public IConnectInfo
{
    Q_OBJECT

public:
    explicit ZelvarStatusCheckBox(QWidget *parent = nullptr);

    void setStatus(bool on);

public slots:
    void connected() override;
    void disconnected() override;

private:
    bool isConnected = false;
};
