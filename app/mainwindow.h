#pragma once

#include <QMainWindow>
#include <memory>

class QCloseEvent;
class QLabel;
class QSpinBox;
class SearchDialog;
class SerialHelper;
class Settings;
class SettingsDialog;

namespace Ui {
class MainWindow;
}

// The program's single window: owns every long-lived object, the toolbar, menus,
// status bar and the two tabs.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private slots:
    void on_idSpinBoxValueChanged(int value);
    void on_pollingIntervalSpinBoxValueChanged(int value);
    void on_updateId(int value);

private:
    void fillToolBar();
    void fitIntoScreen();

    Ui::MainWindow *ui;
    std::shared_ptr<Settings> settings;
    std::shared_ptr<SettingsDialog> settingsDialog;
    std::shared_ptr<SearchDialog> searchDialog;
    std::shared_ptr<QLabel> idLabel;
    std::shared_ptr<QSpinBox> idSpinBox;
    std::shared_ptr<QLabel> pollingIntervalLabel;
    std::shared_ptr<QSpinBox> pollingIntervalSpinBox;
    std::shared_ptr<SerialHelper> serialHelper;
};
