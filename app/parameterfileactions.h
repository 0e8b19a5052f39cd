#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>

class IDevice;
class ParameterFileCodec;
class ParameterTransfer;
class QAction;
class QMainWindow;
class QMenu;
class TelemetryDecoder;
class UiScheduler;
struct ParameterDifference;

// The "Servo" menu: saves the connected servo's settings to a parameter file and loads a
// file back, writing only the registers the user ticks and reporting what did not take.
class ParameterFileActions : public QObject
{
    Q_OBJECT

public:
    // The menu goes into the window's menu bar before `insertBefore`, and lives with it.
    ParameterFileActions(QMainWindow *window, QAction *insertBefore);
    ~ParameterFileActions() override;

    // Once the servo is identified and polled; only servos of the own family have files.
    void setLink(std::shared_ptr<UiScheduler> scheduler, std::shared_ptr<IDevice> device,
                 uint8_t servoId, int pollingIntervalMs);
    void clearLink();

    void save(const QString &path);
    void load(const QString &path);

private slots:
    void on_actionSaveParameters_triggered();
    void on_actionLoadParameters_triggered();

private:
    void setBusy(bool busy);
    bool isWholeTable(const QByteArray &table) const;
    void offerDifferences(const QString &path, const QByteArray &json, const QByteArray &table);
    void reportWrite(const QString &path, const std::vector<ParameterDifference> &written,
                     const QByteArray &table);
    void showError(const QString &text);
    void showSuccess(const QString &text);

    QMainWindow *window;
    QMenu *menu;
    QAction *saveAction;
    QAction *loadAction;
    uint8_t servoId = 0;
    std::shared_ptr<TelemetryDecoder> decoder;
    std::unique_ptr<ParameterFileCodec> codec;
    ParameterTransfer *transfer = nullptr;
};
