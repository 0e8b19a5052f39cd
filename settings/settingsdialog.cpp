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

// Shown as plain numbers: the rate is read back from the box's text.
const int baudRates[] = {9600,   19200,  38400,  57600,   115200, 200000,
                         250000, 400000, 500000, 1000000, 2000000};

struct ComboItem
{
    const char *text;
    int data;
};

// clang-format off
const ComboItem dataBits[] = {
    {QT_TRANSLATE_NOOP("SettingsDialog", "5"), 5},
    {QT_TRANSLATE_NOOP("SettingsDialog", "6"), 6},
    {QT_TRANSLATE_NOOP("SettingsDialog", "7"), 7},
    {QT_TRANSLATE_NOOP("SettingsDialog", "8"), 8},
};

// The values are the serial-port enumeration's, hence Mark 5 before Space 4 and 1.5 stop bits 3.
const ComboItem parities[] = {
    {QT_TRANSLATE_NOOP("SettingsDialog", "None"), 0},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Even"), 2},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Odd"), 3},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Mark"), 5},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Space"), 4},
};

const ComboItem stopBits[] = {
    {QT_TRANSLATE_NOOP("SettingsDialog", "1"), 1},
    {QT_TRANSLATE_NOOP("SettingsDialog", "1.5"), 3},
    {QT_TRANSLATE_NOOP("SettingsDialog", "2"), 2},
};
// clang-format on

// One row per unit choice, in the order of the units record. returnDelay has no button:
// it is loaded but never shown, read back or written. A quantity with a single unit has
// no code-1 button.
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
    {"returnDelay",         &Units::returnDelay,         nullptr,                                nullptr},
    {"servoData",           &Units::servoData,           &Form::hexRadioButton,                  &Form::decimalRadioButton},
};
// clang-format on

bool hasButton(const UnitChoice &choice)
{
    return choice.code0 != nullptr;
}

template<std::size_t N>
void fill(QComboBox *box, const ComboItem (&items)[N])
{
    for (const ComboItem &item : items)
        box->addItem(SettingsDialog::tr(item.text), item.data);
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
    // Read afresh: an adapter or a bridge may have appeared since the last look. This
    // departs from filling the list once, which hid a bridge started after the program.
    fillPortsInfo();
    ui->serialPortInfoListBox->setCurrentText(currentPortSettings.portName);
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

// Persisted at once, like the baud rate: the next Connect goes where the search found the servo.
void SettingsDialog::on_updatePortName(const QString &portName)
{
    currentPortSettings.portName = portName;
    portSettingsStore->setValue(serialPortNameKey, portName);
    ui->serialPortInfoListBox->setCurrentText(portName);
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
    for (const UnitChoice &choice : unitChoices) {
        if (hasButton(choice))
            unitsSettingsStore->setValue(QLatin1String(choice.key), currentUnits.*choice.value);
    }

    hide();
    emit unitsApplied();
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
    for (const int baudRate : baudRates)
        ui->baudRateBox->addItem(QString::number(baudRate), baudRate);
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
    showUnits();
}

// A lone button cannot be unchecked, so a value other than 0 leaves it as it is.
void SettingsDialog::showUnits()
{
    for (const UnitChoice &choice : unitChoices) {
        if (!hasButton(choice))
            continue;
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
        if (!hasButton(choice))
            continue;
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
