#pragma once

#include "widgets/iconnectinfo.h"

#include <QGroupBox>

// A group of bound fields that is edited and saved as one block. It relays the link's
// connect and disconnect to its fields and carries the group's edit flag.
class ZelvarParametersGroupBox : public QGroupBox, public IConnectInfo
{
    Q_OBJECT

public:
    explicit ZelvarParametersGroupBox(QWidget *parent = nullptr);

    // True while the user edits the group; values from the servo are then held back.
    bool editMode = false;

public slots:
    void connected() override;
    void disconnected() override;
};
