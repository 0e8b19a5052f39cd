#pragma once

#include "widgets/iconnectinfo.h"

#include <QCheckBox>

// One status bit as a coloured indicator at the right edge of its group: red while the
// bit is set and a servo is connected, grey otherwise.
//
// setText hides QAbstractButton's non-virtual member; generated form code calls it
// through this class's pointer.
class ZelvarStatusCheckBox : public QCheckBox, public IConnectInfo
{
    Q_OBJECT

public:
    explicit ZelvarStatusCheckBox(QWidget *parent = nullptr);

    void setText(const QString &text);
    void setStatus(bool on);

public slots:
    void connected() override;
    void disconnected() override;

private:
    bool isConnected = false;
    // What the style sheet was made for.
    QString styledText;
    int styledGroupWidth = -1;
    const char *styledBackground = nullptr;
};
