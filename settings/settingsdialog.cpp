#include "settings/settingsdialog.h"
#include "ui_settingsdialog.h"

#include "link/serialhelper.h"
#include "serialportitem.h"
#include "settings/settings.h"

#include <QIntValidator>
#include <QLineEdit>

namespace {
SettingsDialog *dialogInstance = nullptr;

const QString baudRateKey = QStringLiteral("baudRate");
const QString serialPortNameKey = QStringLiteral("serialPortName");
const QString returnDelayKey = QStringLiteral("returnDelay");

struct ComboItem
{
    const char *text;
    int data;
};

// clang-format off
const ComboItem baudRates[] = {
    {"9600", 9600},
    {"19200", 19200},
    {"38400", 38400},
    {"57600", 57600},
    {"115200", 115200},
    {"200000", 200000},
    {"250000", 250000},
    {"400000", 400000},
    {"500000", 500000},
    {"1000000", 1000000},
    {"2000000", 2000000},
};

const ComboItem dataBits[] = {
    {"5", 5},
    {"6", 6},
    {"7", 7},
    {"8", 8},
};

// The values are the serial-port enumeration's, hence Mark 5 before Space 4 and 1.5 stop bits 3.
const ComboItem parities[] = {
    {"None", 0},
    {"Even", 2},
    {"Odd", 3},
    {"Mark", 5},
    {"Space", 4},
};

const ComboItem stopBits[] = {
    {"1", 1},
    {"1.5", 3},
    {"2", 2},
};
// clang-format on

// One row per unit choice, in the order apply() writes them. A quantity with a single
// unit has no code-1 button.
struct UnitChoice
{
    const char *key;
    int32_t PhysicalQuantities::*value;
    QRadioButton *Ui::SettingsDialog::*code0;
    QRadioButton *Ui::SettingsDialog::*code1;
};

using Form = Ui::SettingsDialog;
using Units = PhysicalQuantities;

// clang-format off
const UnitChoice unitChoices[] = {
    {"angularVelocity",     &Units::angularVelocity,     &Form::radsPerSecondRadioButton,        &Form::revsPerMinuteRadioButton},
    {"angle",               &Units::angle,               &Form::radiansRadioButton,              &Form::degreesRadioButton},
    {"angularAcceleration", &Units::angularAcceleration, &Form::radsPerSecondSquaredRadioButton, nullptr},
    {"torque",              &Units::torque,              &Form::newtonMetersRadioButton,         &Form::kgCentimetresRadioButton},
    {"voltage",             &Units::voltage,             &Form::voltageRadioButton,              nullptr},
    {"current",             &Units::current,             &Form::ampsRadioButton,                 &Form::milliAmpsRadioButton},
    {"temperature",         &Units::temperature,         &Form::centigradeRadioButton,           &Form::fahrenheitRadioButton},
    {"servoData",           &Units::servoData,           &Form::hexRadioButton,                  &Form::decimalRadioButton},
};
// clang-format on

template<std::size_t N>
void fill(QComboBox *box, const ComboItem (&items)[N])
{
    for (const ComboItem &item : items)
        box->addItem(QString::fromLatin1(item.text), item.data);
}
} // namespace

SettingsDialog::SettingsDialog(QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::SettingsDialog)
{
    ui->setupUi(this);
    dialogInstance = this;
    setModal(true);
    customBaudRateValidator = new QIntValidator(0, 4000000, this);
    ui->baudRateBox->setInsertPolicy(QComboBox::NoInsert);

    connect(ui->okButton, SIGNAL(clicked()), this, SLOT(apply()));
    connect(ui->cancelButton, SIGNAL(clicked()), this, SLOT(cancel()));
    connect(ui->baudRateBox, SIGNAL(currentIndexChanged(int)), this,
            SLOT(checkCustomBaudRatePolicy(int)));
    connect(ui->serialPortInfoListBox, SIGNAL(currentIndexChanged(int)), this,
            SLOT(showPortInfo(int)));

    portSettingsStore = std::make_shared<Settings>(QStringLiteral("port settings"));
    unitsSettingsStore = std::make_shared<Settings>(QStringLiteral("units settings"));
    serialHelper = std::make_shared<SerialHelper>();

    fillPortsParameters();
    fillPortsInfo();

    currentPortSettings.baudRate = portSettingsStore->value(baudRateKey, 1000000).toInt();
    ui->baudRateBox->setCurrentText(QString::number(currentPortSettings.baudRate));
    currentPortSettings.portName =
        portSettingsStore->value(serialPortNameKey, QString()).toString();
    ui->serialPortInfoListBox->setCurrentText(currentPortSettings.portName);

    currentPortSettings.dataBits = 8;
    currentPortSettings.parity = 0;
    currentPortSettings.stopBits = 1;

    loadUnits();
    readPortSettings();
    readUnits();
}

SettingsDialog::~SettingsDialog()
{
    if (dialogInstance == this)
        dialogInstance = nullptr;
    delete ui;
}

SettingsDialog *SettingsDialog::instance()
{
    return dialogInstance;
}

SettingsDialog::PortSettings SettingsDialog::portSettings() const
{
    return currentPortSettings;
}

PhysicalQuantities SettingsDialog::units() const
{
    return currentUnits;
}

void SettingsDialog::show()
{
    showUnits();
    QDialog::show();
    ui->settingsTabWidget->setCurrentIndex(0);
    ui->okButton->setFocus();
}

// Persisted at once: the search may find the servo without this dialog ever being opened.
void SettingsDialog::on_updateBaudRate(int baudRate)
{
    currentPortSettings.baudRate = baudRate;
    portSettingsStore->setValue(baudRateKey, baudRate);
    ui->baudRateBox->setCurrentText(QString::number(baudRate));
}

void SettingsDialog::showPortInfo(int idx)
{
    if (idx == -1)
        return;

    const QStringList list = ui->serialPortInfoListBox->itemData(idx).toStringList();
    ui->descriptionLabel->setText(tr("Description: %1").arg(list.value(1)));
    ui->manufacturerLabel->setText(tr("Manufacturer: %1").arg(list.value(2)));
    ui->locationLabel->setText(tr("Location: %1").arg(list.value(3)));
    ui->vidLabel->setText(tr("Vendor Identifier: %1").arg(list.value(4)));
    ui->pidLabel->setText(tr("Product Identifier: %1").arg(list.value(5)));
}

void SettingsDialog::apply()
{
    readPortSettings();
    portSettingsStore->setValue(baudRateKey, currentPortSettings.baudRate);
    portSettingsStore->setValue(serialPortNameKey, currentPortSettings.portName);

    readUnits();
    for (const UnitChoice &choice : unitChoices)
        unitsSettingsStore->setValue(QLatin1String(choice.key), currentUnits.*choice.value);

    hide();
}

void SettingsDialog::cancel()
{
    close();
}

void SettingsDialog::checkCustomBaudRatePolicy(int idx)
{
    const bool isCustomBaudRate = !ui->baudRateBox->itemData(idx).isValid();
    ui->baudRateBox->setEditable(isCustomBaudRate);
    if (isCustomBaudRate) {
        ui->baudRateBox->clearEditText();
        ui->baudRateBox->lineEdit()->setValidator(customBaudRateValidator);
    }
}

void SettingsDialog::fillPortsParameters()
{
    fill(ui->baudRateBox, baudRates);
    fill(ui->dataBitsBox, dataBits);
    ui->dataBitsBox->setCurrentIndex(3);
    fill(ui->parityBox, parities);
    fill(ui->stopBitsBox, stopBits);
}

void SettingsDialog::fillPortsInfo()
{
    ui->serialPortInfoListBox->clear();
    const QString notAvailable = tr("N/A");
    // Lower case, as lsusb and the kernel's sysfs show vendor and product ids.
    const auto hexOrNotAvailable = [&notAvailable](quint16 id) {
        return id ? QString::number(id, 16) : notAvailable;
    };
    const auto textOrNotAvailable = [&notAvailable](const QString &text) {
        return text.isEmpty() ? notAvailable : text;
    };

    for (const auto &port : serialHelper->getSerialPortList()) {
        const QStringList list{port->getPortName(),
                               textOrNotAvailable(port->getDescription()),
                               textOrNotAvailable(port->getManufacturer()),
                               port->getSystemLocation(),
                               hexOrNotAvailable(port->getVendorIdentifier()),
                               hexOrNotAvailable(port->getProductIdentifier())};
        ui->serialPortInfoListBox->addItem(list.first(), list);
    }
}

void SettingsDialog::loadUnits()
{
    for (const UnitChoice &choice : unitChoices)
        currentUnits.*choice.value =
            unitsSettingsStore->value(QLatin1String(choice.key), 0).toInt();
    currentUnits.returnDelay = unitsSettingsStore->value(returnDelayKey, 0).toInt();
    showUnits();
}

// A lone button cannot be unchecked, so a value other than 0 leaves it as it is.
void SettingsDialog::showUnits()
{
    for (const UnitChoice &choice : unitChoices) {
        const int32_t value = currentUnits.*choice.value;
        if (choice.code1)
            (value == 1 ? ui->*choice.code1 : ui->*choice.code0)->setChecked(true);
        else if (value == 0)
            (ui->*choice.code0)->setChecked(true);
    }
}

void SettingsDialog::readUnits()
{
    for (const UnitChoice &choice : unitChoices) {
        if (choice.code1)
            currentUnits.*choice.value = (ui->*choice.code1)->isChecked() ? 1 : 0;
        else if ((ui->*choice.code0)->isChecked())
            currentUnits.*choice.value = 0;
    }
}

// The baud rate comes from the text, so a typed custom rate counts.
void SettingsDialog::readPortSettings()
{
    currentPortSettings.portName = ui->serialPortInfoListBox->currentText();
    currentPortSettings.baudRate = ui->baudRateBox->currentText().toInt();
    currentPortSettings.dataBits = ui->dataBitsBox->currentData().toInt();
    currentPortSettings.dataBitsText = ui->dataBitsBox->currentText();
    currentPortSettings.parity = ui->parityBox->currentData().toInt();
    currentPortSettings.parityText = ui->parityBox->currentText();
    currentPortSettings.stopBits = ui->stopBitsBox->currentData().toInt();
    currentPortSettings.stopBitsText = ui->stopBitsBox->currentText();
}
