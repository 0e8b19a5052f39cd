#include "app/parameterfileactions.h"

#include "device/physicalquantities.h"
#include "device/zelvarv1.h"
#include "link/parametertransfer.h"
#include "params/parameterdiff.h"
#include "params/parameterfilecodec.h"
#include "params/writeplanner.h"
#include "settings/settingsdialog.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"
#include "views/loadparametersdialog.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QSaveFile>

namespace {

// Far above any parameter file: what is larger was chosen by mistake.
constexpr qint64 largestFile = 1 << 20;

const char *const fileFilter =
    QT_TRANSLATE_NOOP("ParameterFileActions", "Parameter files (*.json);;All files (*)");

int64_t rawOf(const QByteArray &table, const RegisterCatalogue &catalogue, const char *name)
{
    const CatalogueEntry *entry = catalogue.find(QLatin1String(name));
    return entry ? TelemetryDecoder::rawValue(table, entry->span).value_or(0) : 0;
}

} // namespace

ParameterFileActions::ParameterFileActions(QMainWindow *window, QAction *insertBefore)
    : window(window)
{
    menu = new QMenu(tr("Servo"), window);
    menu->setObjectName(QStringLiteral("menuServo"));
    saveAction = menu->addAction(tr("Save parameters…"));
    saveAction->setObjectName(QStringLiteral("actionSaveParameters"));
    loadAction = menu->addAction(tr("Load parameters…"));
    loadAction->setObjectName(QStringLiteral("actionLoadParameters"));
    window->menuBar()->insertMenu(insertBefore, menu);
    connect(saveAction, SIGNAL(triggered()), this, SLOT(on_actionSaveParameters_triggered()));
    connect(loadAction, SIGNAL(triggered()), this, SLOT(on_actionLoadParameters_triggered()));
    clearLink();
}

ParameterFileActions::~ParameterFileActions() = default;

void ParameterFileActions::setLink(std::shared_ptr<UiScheduler> scheduler,
                                   std::shared_ptr<IDevice> device, uint8_t servoId,
                                   int pollingIntervalMs)
{
    clearLink();
    if (!scheduler || !dynamic_cast<const ZelvarV1 *>(device.get()))
        return;
    this->servoId = servoId;
    // Units are chosen only while disconnected, so this copy holds for the connection.
    const auto units = std::make_shared<PhysicalQuantities>(
        SettingsDialog::instance() ? SettingsDialog::instance()->units() : PhysicalQuantities());
    decoder =
        std::make_shared<TelemetryDecoder>(std::make_shared<RegisterCatalogue>(*device), units);
    codec = std::make_unique<ParameterFileCodec>(decoder);
    transfer = new ParameterTransfer(std::move(scheduler), pollingIntervalMs, this);
    setBusy(false);
}

void ParameterFileActions::clearLink()
{
    // A reply after a disconnect goes nowhere. Deleted later: this may run inside one of
    // its callbacks.
    if (transfer) {
        transfer->cancel();
        transfer->deleteLater();
    }
    transfer = nullptr;
    codec.reset();
    decoder.reset();
    saveAction->setEnabled(false);
    loadAction->setEnabled(false);
}

void ParameterFileActions::on_actionSaveParameters_triggered()
{
    const QString suggested = QDir::home().filePath(tr("servo-%1.json").arg(servoId));
    const QString path =
        QFileDialog::getSaveFileName(window, tr("Save parameters"), suggested, tr(fileFilter));
    if (!path.isEmpty())
        save(path);
}

void ParameterFileActions::on_actionLoadParameters_triggered()
{
    const QString path = QFileDialog::getOpenFileName(window, tr("Load parameters"),
                                                      QDir::homePath(), tr(fileFilter));
    if (!path.isEmpty())
        load(path);
}

void ParameterFileActions::save(const QString &path)
{
    if (!transfer || transfer->busy())
        return;
    setBusy(true);
    transfer->readTable([this, path](const QByteArray &table) {
        setBusy(false);
        if (!isWholeTable(table)) {
            showError(tr("Servo id:%1 did not answer; nothing was saved.").arg(servoId));
            return;
        }
        const QByteArray json =
            codec->toJson(codec->capture(table, QDateTime::currentDateTimeUtc()));
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.commit()) {
            showError(tr("Could not write %1: %2")
                          .arg(QDir::toNativeSeparators(path), file.errorString()));
            return;
        }
        showSuccess(tr("The parameters of servo id:%1 were saved to %2.")
                        .arg(servoId)
                        .arg(QDir::toNativeSeparators(path)));
    });
}

void ParameterFileActions::load(const QString &path)
{
    if (!transfer || transfer->busy())
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        showError(
            tr("Could not read %1: %2").arg(QDir::toNativeSeparators(path), file.errorString()));
        return;
    }
    if (file.size() > largestFile) {
        showError(tr("%1 is too large for a parameter file; nothing was written.")
                      .arg(QDir::toNativeSeparators(path)));
        return;
    }
    const QByteArray json = file.readAll();
    setBusy(true);
    transfer->readTable([this, path, json](const QByteArray &table) {
        setBusy(false);
        offerDifferences(path, json, table);
    });
}

void ParameterFileActions::offerDifferences(const QString &path, const QByteArray &json,
                                            const QByteArray &table)
{
    const QString name = QFileInfo(path).fileName();
    if (!isWholeTable(table)) {
        showError(tr("Servo id:%1 did not answer; nothing was written.").arg(servoId));
        return;
    }
    const RegisterCatalogue &catalogue = decoder->catalogue();
    QString cause;
    const std::optional<ParameterFile> loaded =
        codec->fromJson(json, int(rawOf(table, catalogue, "Model number")), &cause);
    if (!loaded) {
        showError(tr("%1 was not loaded. %2 Nothing was written.").arg(name, cause));
        return;
    }
    const std::vector<ParameterDifference> differences =
        ParameterDiff::between(*loaded, table, catalogue);
    if (differences.empty()) {
        showSuccess(tr("Servo id:%1 already holds every value of %2.").arg(servoId).arg(name));
        return;
    }

    const QString summary =
        tr("%1, saved %2 from servo id:%3 (firmware %4). %n register(s) differ from servo id:%5; "
           "tick the ones to write. ID, baud rate, the motor switch and the targets start "
           "unticked.",
           nullptr, int(differences.size()))
            .arg(name, QLocale().toString(loaded->date.toLocalTime(), QLocale::ShortFormat))
            .arg(loaded->id)
            .arg(loaded->firmwareVersion)
            .arg(servoId);
    const bool motorOn = rawOf(table, catalogue, "Control enable") != 0;
    LoadParametersDialog dialog(summary, differences, *decoder, motorOn, window);
    if (dialog.exec() != QDialog::Accepted || !transfer)
        return;

    const std::vector<ParameterDifference> ticked = dialog.tickedDifferences();
    const WritePlan plan = WritePlanner(catalogue).plan(ticked, table, dialog.switchMotorOff());
    if (!plan.error.isEmpty()) {
        showError(tr("Nothing was written. %1").arg(plan.error));
        return;
    }
    setBusy(true);
    transfer->write(plan.blocks, [this, path, ticked](const QByteArray &after) {
        setBusy(false);
        reportWrite(path, ticked, after);
    });
}

void ParameterFileActions::reportWrite(const QString &path,
                                       const std::vector<ParameterDifference> &written,
                                       const QByteArray &table)
{
    const QString name = QFileInfo(path).fileName();
    for (const ParameterDifference &difference : written) {
        if (ParameterDiff::movesTheLink(*difference.entry)) {
            showSuccess(tr("The ticked registers of %1 were written. Servo id:%2 now answers "
                           "at another id or baud rate: connect to it there to check them.")
                            .arg(name)
                            .arg(servoId));
            return;
        }
    }
    if (!isWholeTable(table)) {
        showError(tr("The ticked registers of %1 were sent, but servo id:%2 did not answer "
                     "the read-back.")
                      .arg(name)
                      .arg(servoId));
        return;
    }
    const std::vector<ParameterDifference> refused = ParameterDiff::notTaken(written, table);
    if (refused.empty()) {
        showSuccess(tr("Servo id:%1 took all %2 ticked registers of %3.")
                        .arg(servoId)
                        .arg(written.size())
                        .arg(name));
        return;
    }
    QStringList lines;
    for (const ParameterDifference &difference : refused) {
        const CatalogueEntry &entry = *difference.entry;
        lines << tr("%1: servo %2, file %3")
                     .arg(entry.span.description,
                          decoder->displayText(decoder->decodeRaw(entry, *difference.servoRaw),
                                               entry),
                          decoder->displayText(decoder->decodeRaw(entry, difference.wantedRaw),
                                               entry));
    }
    showError(tr("Servo id:%1 did not take %n register(s) of %2:", nullptr, int(refused.size()))
                  .arg(servoId)
                  .arg(name) +
              QLatin1Char('\n') + lines.join(QLatin1Char('\n')));
}

void ParameterFileActions::setBusy(bool busy)
{
    saveAction->setEnabled(transfer && !busy);
    loadAction->setEnabled(transfer && !busy);
}

bool ParameterFileActions::isWholeTable(const QByteArray &table) const
{
    return decoder && table.size() == int(decoder->catalogue().tableSize());
}

void ParameterFileActions::showError(const QString &text)
{
    QMessageBox::critical(window, tr("Error"), text);
}

void ParameterFileActions::showSuccess(const QString &text)
{
    QMessageBox::information(window, tr("Success"), text);
}
