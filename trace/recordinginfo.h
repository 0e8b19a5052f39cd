#pragma once

#include <QDateTime>
#include <QString>

// What a recording's comment line says about where its rows came from.
struct RecordingInfo
{
    QString programVersion;
    QString portName;
    int baudRate = 0;
    int servoId = 0;
    int modelNumber = 0;
    int firmwareVersion = 0;
    QDateTime startTime;
};
