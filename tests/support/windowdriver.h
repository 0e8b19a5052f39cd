#pragma once

#include "settings/settingsdialog.h"

#include <QtTest>
#include <QtWidgets>

// The main window driven as a user drives it: through its actions, toolbar and settings.
namespace WindowDriver {

inline QAction *action(const QMainWindow &window, const char *name)
{
    return window.findChild<QAction *>(QLatin1String(name));
}

inline QString status(const QMainWindow &window)
{
    return window.statusBar()->currentMessage();
}

inline void choosePort(const QMainWindow &window, const QString &portName, int baudRate,
                       quint8 servoId)
{
    SettingsDialog *dialog = SettingsDialog::instance();
    // Shown, as a user would open it: the list is read afresh then.
    dialog->show();
    auto *ports = dialog->findChild<QComboBox *>("serialPortInfoListBox");
    QVERIFY2(ports->findText(portName) >= 0, qPrintable(portName));
    ports->setCurrentText(portName);
    dialog->findChild<QComboBox *>("baudRateBox")->setCurrentText(QString::number(baudRate));
    dialog->findChild<QPushButton *>("okButton")->click();
    window.findChild<QToolBar *>()->findChild<QSpinBox *>("idSpinBox")->setValue(servoId);
}

// Identification is asked once: on a busy machine a bridge's answer can miss the library's
// timeout, and the window then waits, as it should, until the user disconnects and tries
// again. So does this, once. False if the window never says it is connected.
inline bool connectWithOneRetry(const QMainWindow &window)
{
    const auto connected = [&window] { return status(window) == QLatin1String("Connected"); };
    action(window, "actionConnect")->trigger();
    if (QTest::qWaitFor(connected, 3000))
        return true;
    action(window, "actionDisconnect")->trigger();
    QTest::qWait(150);
    action(window, "actionConnect")->trigger();
    return QTest::qWaitFor(connected, 20000);
}

} // namespace WindowDriver
