#include "views/registerview.h"
#include "ui_registerview.h"

#include "device/devicehelper.h"
#include "device/idevice.h"
#include "settings/settingsdialog.h"

#include <QHeaderView>
#include <QPointer>
#include <QTableWidgetItem>

namespace {

// Tracks the view's lifetime, so that a reply arriving after the view is gone finds nothing
// to update rather than a dangling pointer.
QPointer<RegisterView> processView;

constexpr int bankCount = 4;
constexpr int addressColumnWidth = 80;
constexpr int valueColumnWidth = 40;
constexpr int decimalServoData = 1;
const QColor readOnlyTint(227, 235, 240, 150);

// Replaces the forms' 10 pt style: the tables are read at 8 pt.
// clang-format off
const char tableStyleSheet[] =
    "         QTableWidget"
    "         {"
    "         alternate-background-color: rgba(227,235,240,150);"
    "         background-color: white;"
    "         font-size: 8pt;"
    "         }"
    "        QHeaderView"
    "         {"
    "          font-size: 8pt;"
    "         }"
    "        ";
// clang-format on

std::shared_ptr<IDevice> currentDevice()
{
    const std::shared_ptr<DeviceHelper> helper = DeviceHelper::instance();
    return helper ? helper->device() : nullptr;
}

bool showsDecimal()
{
    const SettingsDialog *settings = SettingsDialog::instance();
    return settings && settings->units().servoData == decimalServoData;
}

QString formatted(uint number, bool decimal)
{
    if (decimal)
        return QString::number(number);
    return QStringLiteral("0x%1").arg(number, 2, 16, QLatin1Char('0'));
}

} // namespace

RegisterView::RegisterView(QWidget *parent)
    : QWidget(parent)
    , ui(new Ui::RegisterView)
{
    ui->setupUi(this);
    processView = this;
    applyTableStyle();
}

RegisterView::~RegisterView()
{
    delete ui;
}

RegisterView *RegisterView::instance()
{
    return processView;
}

void RegisterView::connectDevice()
{
    if (const std::shared_ptr<DeviceHelper> helper = DeviceHelper::instance())
        connect(helper.get(), SIGNAL(loadDeviceMetadata()), this, SLOT(on_deviceLoaded()));
}

void RegisterView::disconnectDevice()
{
    // Every receiver, not only this view: the bound widgets connect again on the next connect.
    if (const std::shared_ptr<DeviceHelper> helper = DeviceHelper::instance())
        helper->disconnect(SIGNAL(loadDeviceMetadata()));
    for (unsigned bank = 0; bank < bankCount; ++bank)
        bankTable(bank)->setRowCount(0);
}

void RegisterView::on_deviceLoaded()
{
    const std::shared_ptr<IDevice> device = currentDevice();
    if (!device)
        return;
    for (unsigned bank = 0; bank < bankCount; ++bank)
        bankTable(bank)->setRowCount(int(device->registerCount(bank)));
}

void RegisterView::updateRegister(quint16 address, quint8 size, quint32 value)
{
    setRegisterByte(address, quint8(value & 0xFF));
    if (size > 1)
        setRegisterByte(quint16(address + 1), quint8((value >> 8) & 0xFF));
    // No register is 3 bytes wide; a size of 3 shows two bytes.
    if (size == 4) {
        setRegisterByte(quint16(address + 2), quint8((value >> 16) & 0xFF));
        setRegisterByte(quint16(address + 3), quint8((value >> 24) & 0xFF));
    }
}

void RegisterView::setRegisterByte(quint16 address, quint8 value)
{
    const bool decimal = showsDecimal();
    ShownByte *shown = address < shownBytes.size() ? &shownBytes[address] : nullptr;
    if (shown && shown->valueItem && shown->value == value && shown->decimal == decimal &&
        shown->table->item(shown->row, 1) == shown->valueItem)
        return;
    const std::shared_ptr<IDevice> device = currentDevice();
    if (!device)
        return;
    const std::unique_ptr<RegisterDescription> record = device->registerDescription(address);
    if (!record)
        return;
    QTableWidget *table = bankTable(record->bank);
    // Before the device is loaded the tables have no rows; an item set outside them is lost.
    if (!table || record->row >= table->rowCount())
        return;

    const int row = record->row;
    const QString texts[] = {formatted(address, decimal), formatted(value, decimal),
                             record->description};
    // A row that already shows these texts is left alone: replacing its items would repaint
    // every cell of the table on every poll, which costs more than all else a reply does.
    const QTableWidgetItem *shownAddress = table->item(row, 0);
    QTableWidgetItem *shownValue = table->item(row, 1);
    const QTableWidgetItem *shownDescription = table->item(row, 2);
    if (shownAddress && shownValue && shownDescription && shownAddress->text() == texts[0] &&
        shownDescription->text() == texts[2]) {
        // Only the value changed: its cell alone is repainted.
        if (shownValue->text() != texts[1])
            shownValue->setText(texts[1]);
    } else {
        for (int column = 0; column < 3; ++column) {
            auto *item = new QTableWidgetItem(texts[column]);
            if (!record->writable)
                item->setBackground(readOnlyTint);
            table->setItem(row, column, item);
        }
    }
    if (shown)
        *shown = {table, row, table->item(row, 1), value, decimal};
}

QTableWidget *RegisterView::bankTable(unsigned bank) const
{
    switch (bank) {
    case 0:
        return ui->eepromRegisterBank1Widget;
    case 1:
        return ui->eepromRegisterBank2Widget;
    case 2:
        return ui->ramRegisterBank1TableWidget;
    case 3:
        return ui->ramRegisterBank2TableWidget;
    default:
        return nullptr;
    }
}

void RegisterView::applyTableStyle()
{
    for (unsigned bank = 0; bank < bankCount; ++bank) {
        QTableWidget *table = bankTable(bank);
        table->verticalHeader()->setVisible(false);
        table->horizontalHeader()->setStretchLastSection(true);
        table->setColumnWidth(0, addressColumnWidth);
        table->setColumnWidth(1, valueColumnWidth);
        table->setSelectionMode(QAbstractItemView::NoSelection);
        table->setStyleSheet(QString::fromLatin1(tableStyleSheet));
    }
}
