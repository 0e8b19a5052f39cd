#include "search/searchdialog.h"

#include "link/serialhelper.h"
#include "search/searchhelper.h"
#include "serialportitem.h"
#include "settings/settings.h"
#include "ui_searchdialog.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QTreeWidgetItem>
#include <algorithm>

namespace {

SearchDialog *searchDialogInstance = nullptr;

// The GUI thread waits this long for each probe; a servo that needs longer is not found.
constexpr unsigned long replyWaitMs = 20;
// Byte of the read reply that names the model (the model number's upper byte).
constexpr int modelByteIndex = 10;
constexpr int defaultLower = 1;
constexpr int defaultUpper = 10;

} // namespace

SearchDialog::SearchDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::SearchDialog>())
    , settings(std::make_shared<Settings>(QStringLiteral("port settings")))
    , baudRateGroup(std::make_shared<QButtonGroup>())
{
    searchDialogInstance = this;
    ui->setupUi(this);

    // Ids in ascending baud-rate order: the scan goes through the group by id.
    QAbstractButton *const baudRateBoxes[] = {
        ui->baudRate9600CheckBox,    ui->baudRate19200CheckBox,  ui->baudRate38400CheckBox,
        ui->baudRate57600CheckBox,   ui->baudRate115200CheckBox, ui->baudRate200000CheckBox,
        ui->baudRate250000CheckBox,  ui->baudRate400000CheckBox, ui->baudRate500000CheckBox,
        ui->baudRate1000000CheckBox,
    };
    baudRateGroup->setExclusive(false);
    int id = 0;
    for (QAbstractButton *box : baudRateBoxes)
        baudRateGroup->addButton(box, id++);

    fillPortList();

    connect(ui->selectPushButton, SIGNAL(clicked()), this, SLOT(select()));
    connect(ui->cancelPushButton, SIGNAL(clicked()), this, SLOT(cancel()));
    connect(ui->scanPushButton, SIGNAL(clicked()), this, SLOT(scan()));
    connect(ui->abortScanPushButton, SIGNAL(clicked()), this, SLOT(abortScan()));
    connect(ui->lowerSearchRangeSpinBox, SIGNAL(valueChanged(int)), this,
            SLOT(on_lowerIdValueChanged(int)));
    connect(ui->upperSearchRangeSpinBox, SIGNAL(valueChanged(int)), this,
            SLOT(on_upperIdValueChanged(int)));
    connect(ui->serialPortInfoListBox, SIGNAL(currentTextChanged(QString)), this,
            SLOT(on_serialPortTextChanged(QString)));
    connect(ui->selectCheckBox, SIGNAL(stateChanged(int)), this, SLOT(on_selectStateChanged(int)));
    connect(baudRateGroup.get(), SIGNAL(buttonToggled(int, bool)), this,
            SLOT(on_baudRateCheckBoxToggled(int, bool)));
    connect(ui->servoTreeWidget, SIGNAL(itemSelectionChanged()), this, SLOT(on_itemClicked()));
}

SearchDialog::~SearchDialog()
{
    thread.quit();
    thread.wait();
    if (searchDialogInstance == this)
        searchDialogInstance = nullptr;
}

SearchDialog *SearchDialog::instance()
{
    return searchDialogInstance;
}

void SearchDialog::setVisible(bool visible)
{
    QDialog::setVisible(visible);
    if (!visible) {
        // Closed in the middle of a scan: nobody is left to watch it, so stop it.
        abortRequested = true;
        return;
    }
    for (QAbstractButton *box : baudRateGroup->buttons())
        box->setChecked(false);
    // Set together, unguarded: the guards would refuse either value on its own when
    // the old range lies wholly above or below the new one.
    {
        const QSignalBlocker lowerBlocker(ui->lowerSearchRangeSpinBox);
        const QSignalBlocker upperBlocker(ui->upperSearchRangeSpinBox);
        ui->lowerSearchRangeSpinBox->setValue(defaultLower);
        ui->upperSearchRangeSpinBox->setValue(defaultUpper);
    }
    rememberedLower = defaultLower;
    rememberedUpper = defaultUpper;
    ui->servoTreeWidget->clear();
}

void SearchDialog::select()
{
    const QList<QTreeWidgetItem *> selected = ui->servoTreeWidget->selectedItems();
    if (selected.isEmpty())
        return;
    QTreeWidgetItem *item = selected.first();
    // A baud-rate row has no parent and names no servo.
    QTreeWidgetItem *root = item->parent();
    if (!root)
        return;
    emit updateBaudRate(root->text(0).toInt());
    emit updateId(item->text(1).toInt());
    // The servo was found on the port scanned, not necessarily on the one in the settings.
    emit updatePortName(ui->serialPortInfoListBox->currentText());
    hide();
}

void SearchDialog::cancel()
{
    close();
}

void SearchDialog::scan()
{
    if (scanning)
        return;
    scanning = true;
    abortRequested = false;
    ui->servoTreeWidget->clear();
    ui->scanPushButton->setEnabled(false);
    ui->abortScanPushButton->setEnabled(true);
    repaint();

    QList<int> ids;
    for (int id = ui->lowerSearchRangeSpinBox->value(); id <= ui->upperSearchRangeSpinBox->value();
         ++id)
        ids.append(id);
    QList<int> found;

    for (int buttonId = 0; buttonId < baudRateGroup->buttons().size(); ++buttonId) {
        QCoreApplication::processEvents();
        const QAbstractButton *box = baudRateGroup->button(buttonId);
        if (box->isChecked() && !sweepIds(box->text().toInt(), ids, found))
            break;
        if (abortRequested)
            break;
    }

    ui->servoTreeWidget->expandAll();
    scanning = false;
    updateScanButton();
    ui->abortScanPushButton->setEnabled(false);
}

void SearchDialog::abortScan()
{
    abortRequested = true;
}

void SearchDialog::show()
{
    ui->serialPortInfoListBox->setCurrentText(
        settings->value(QStringLiteral("serialPortName"), QString()).toString());
    QDialog::show();
    ui->selectPushButton->setFocus();
    rememberedLower = ui->lowerSearchRangeSpinBox->value();
    rememberedUpper = ui->upperSearchRangeSpinBox->value();
}

void SearchDialog::on_lowerIdValueChanged(int value)
{
    if (value <= ui->upperSearchRangeSpinBox->value())
        rememberedLower = value;
    else
        ui->lowerSearchRangeSpinBox->setValue(rememberedLower);
}

void SearchDialog::on_upperIdValueChanged(int value)
{
    if (value >= ui->lowerSearchRangeSpinBox->value())
        rememberedUpper = value;
    else
        ui->upperSearchRangeSpinBox->setValue(rememberedUpper);
}

void SearchDialog::on_serialPortTextChanged(QString)
{
    updateScanButton();
}

void SearchDialog::on_selectStateChanged(int state)
{
    if (!updatingSelectAll)
        return;
    // A click moves the box on by one state; turn that into all-or-none. The corrected
    // state is set quietly, the baud-rate boxes below report the final one.
    int target = state;
    {
        const QSignalBlocker blocker(ui->selectCheckBox);
        if (ui->selectCheckBox->checkState() == Qt::Checked) {
            ui->selectCheckBox->setCheckState(Qt::Unchecked);
            target = Qt::Unchecked;
        } else if (ui->selectCheckBox->checkState() == Qt::PartiallyChecked) {
            ui->selectCheckBox->setCheckState(Qt::Checked);
            target = Qt::Checked;
        }
    }
    for (QAbstractButton *box : baudRateGroup->buttons())
        box->setChecked(target == Qt::Checked);
}

void SearchDialog::on_baudRateCheckBoxToggled(int, bool)
{
    int checked = 0;
    for (const QAbstractButton *box : baudRateGroup->buttons())
        checked += box->isChecked() ? 1 : 0;
    updatingSelectAll = false;
    if (checked == baudRateGroup->buttons().size())
        ui->selectCheckBox->setCheckState(Qt::Checked);
    else if (checked > 0)
        ui->selectCheckBox->setCheckState(Qt::PartiallyChecked);
    else
        ui->selectCheckBox->setCheckState(Qt::Unchecked);
    updateScanButton();
    updatingSelectAll = true;
}

void SearchDialog::on_itemClicked()
{
    const QList<QTreeWidgetItem *> selected = ui->servoTreeWidget->selectedItems();
    ui->selectPushButton->setEnabled(!selected.isEmpty() && selected.first()->parent());
}

QTreeWidgetItem *SearchDialog::addTreeRoot(QString baudRate)
{
    return newRootItem(baudRate);
}

void SearchDialog::addTreeChild(QTreeWidgetItem *parent, QString id, QString model)
{
    if (parent)
        newChildItem(parent, id, model);
}

QByteArray SearchDialog::probe(int id, int baudRate)
{
    searchHelper = std::make_shared<SearchHelper>(ui->serialPortInfoListBox->currentText());
    searchHelper->moveToThread(&thread);
    connect(this, SIGNAL(doScanServo(int, int)), searchHelper.get(), SLOT(scanServo(int, int)));
    connect(&thread, SIGNAL(finished()), searchHelper.get(), SLOT(releasePort()),
            Qt::DirectConnection);

    // Locked before the worker can exist, so its wake cannot come before the wait.
    SearchHelper::mutex.lock();
    thread.start(QThread::InheritPriority);
    emit doScanServo(id, baudRate);
    const bool woken = SearchHelper::replyArrived.wait(&SearchHelper::mutex, replyWaitMs);
    SearchHelper::mutex.unlock();

    QByteArray reply;
    if (woken)
        reply = searchHelper->reply();
    thread.quit();
    thread.wait();
    lastOpenError = searchHelper->openError();
    searchHelper.reset();
    return reply;
}

void SearchDialog::fillPortList()
{
    ui->serialPortInfoListBox->clear();
    serialHelper = std::make_shared<SerialHelper>();
    const QString notAvailable = tr("N/A");
    const auto textOrNotAvailable = [&](const QString &text) {
        return text.isEmpty() ? notAvailable : text;
    };
    const auto hexOrNotAvailable = [&](quint16 identifier) {
        return identifier ? QString::number(identifier, 16) : notAvailable;
    };
    for (const auto &port : serialHelper->getSerialPortList()) {
        if (!port)
            continue;
        const QStringList info = {port->getPortName(),
                                  textOrNotAvailable(port->getDescription()),
                                  textOrNotAvailable(port->getManufacturer()),
                                  port->getSystemLocation(),
                                  hexOrNotAvailable(port->getVendorIdentifier()),
                                  hexOrNotAvailable(port->getProductIdentifier())};
        ui->serialPortInfoListBox->addItem(port->getPortName(), info);
    }
}

bool SearchDialog::sweepIds(int baudRate, const QList<int> &ids, QList<int> &found)
{
    QTreeWidgetItem *root = nullptr;
    for (int id : ids) {
        if (found.contains(id))
            continue;
        const QByteArray reply = probe(id, baudRate);
        if (!lastOpenError.isEmpty()) {
            // Every further probe would fail the same way and find nothing.
            QMessageBox::critical(this, tr("Error"), lastOpenError);
            return false;
        }
        if (reply.size() <= modelByteIndex)
            continue;
        if (!root)
            root = newRootItem(QString::number(baudRate));
        // Signed on purpose: a model byte of 128 or more shows as a negative number.
        const auto model = static_cast<qint8>(reply.at(modelByteIndex));
        newChildItem(root, QString::number(id), QString::number(model));
        root->setExpanded(true);
        repaint();
        found.append(id);
    }
    return true;
}

void SearchDialog::updateScanButton()
{
    ui->scanPushButton->setEnabled(
        !scanning && !ui->serialPortInfoListBox->currentText().isEmpty() && anyBaudRateChecked());
}

bool SearchDialog::anyBaudRateChecked() const
{
    const QList<QAbstractButton *> boxes = baudRateGroup->buttons();
    return std::any_of(boxes.cbegin(), boxes.cend(),
                       [](const QAbstractButton *box) { return box->isChecked(); });
}

QTreeWidgetItem *SearchDialog::newRootItem(const QString &baudRate)
{
    auto *root = new QTreeWidgetItem(ui->servoTreeWidget);
    root->setText(0, baudRate);
    // Only servos are meant to be picked; a baud-rate row carries no id.
    root->setFlags(root->flags() & ~Qt::ItemIsSelectable);
    return root;
}

QTreeWidgetItem *SearchDialog::newChildItem(QTreeWidgetItem *parent, const QString &id,
                                            const QString &model)
{
    auto *child = new QTreeWidgetItem(parent);
    child->setText(1, id);
    child->setText(2, tr("Zelvar M") + model);
    return child;
}
