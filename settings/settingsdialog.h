#pragma once

#include "device/physicalquantities.h"

#include <QDialog>
#include <QString>
#include <cstdint>
#include <memory>

class QIntValidator;
class SerialHelper;
class Settings;

namespace Ui {
class SettingsDialog;
}

// Chooses the serial port, its baud rate and the units values are shown in, and keeps
// the live copy of those choices for the rest of the program. One per process.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    struct PortSettings
    {
        QString portName;
        int32_t baudRate = 0;
        QString baudRateText;
        int32_t dataBits = 8;
        QString dataBitsText;
        int32_t parity = 0;
        QString parityText;
        int32_t stopBits = 1;
        QString stopBitsText;
        // Never set: the library opens a port by name and baud rate only.
        int32_t flowControl = 0;
        QString flowControlText;
        bool localEchoEnabled = false;
    };

    explicit SettingsDialog(QWidget *parent = nullptr);
    ~SettingsDialog() override;

    // The dialog of this process, or null before it is built and after it is gone.
    static SettingsDialog *instance();

    PortSettings portSettings() const;
    PhysicalQuantities units() const;

signals:
    // The user confirmed the dialog; what is shown in units may have to be converted anew.
    void unitsApplied();

public slots:
    void show();
    void on_updateBaudRate(int baudRate);
    void on_updatePortName(const QString &portName);

private slots:
    void showPortInfo(int idx);
    void apply();
    void cancel();
    void checkCustomBaudRatePolicy(int idx);

private:
    void fillPortsParameters();
    void fillPortsInfo();
    void loadUnits();
    void showUnits();
    void readUnits();
    void readPortSettings();

    Ui::SettingsDialog *ui;
    PortSettings currentPortSettings;
    PhysicalQuantities currentUnits;
    std::shared_ptr<Settings> portSettingsStore;
    std::shared_ptr<Settings> unitsSettingsStore;
    std::shared_ptr<SerialHelper> serialHelper;
    QIntValidator *customBaudRateValidator;
};
