// Renders the load dialog of parameter files into PNG files, for a look at its table and
// the motor warning: a file whose registers differ from a running servo in degrees, rpm
// and degF, as loaded (ID and targets unticked) and with the switch-off box ticked. On a
// real display it also shoots the screen with the main window's "Servo" menu open.
// Prints each file and how long it took.
//
//   bench_loadparametersdialogscreenshot [output folder]

#include "app/mainwindow.h"
#include "device/physicalquantities.h"
#include "device/zelvarv1.h"
#include "params/parameterdiff.h"
#include "params/parameterfilecodec.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualservo.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"
#include "views/loadparametersdialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

int main(int argc, char *argv[])
{
    // The main window reads and writes settings: none of the user's.
    QTemporaryDir config;
    qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
    QApplication app(argc, argv);
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath());
    folder.mkpath(QStringLiteral("."));

    // Degrees, rpm and degF: the units a user is most likely to compare by eye.
    PhysicalQuantities units;
    units.angularVelocity = 1;
    units.angle = 1;
    units.temperature = 1;
    const auto decoder =
        std::make_shared<TelemetryDecoder>(std::make_shared<RegisterCatalogue>(ZelvarV1()),
                                           std::make_shared<PhysicalQuantities>(units));
    const ParameterFileCodec codec(decoder);

    VirtualServo fileServo;
    fileServo.setValue(ServoRegister::Id, 1, 7);
    fileServo.setValue(ServoRegister::BaudRate, 1, 3);
    fileServo.setValue(ServoRegister::ClockwiseLimit, 2, -1024);
    fileServo.setValue(ServoRegister::TemperatureLimit, 1, 75);
    fileServo.setValue(ServoRegister::VelocityLimit, 2, 1500);
    fileServo.setValue(ServoRegister::PositionP, 2, 1200);
    fileServo.setValue(ServoRegister::TargetPosition, 4, -2048);
    fileServo.setValue(ServoRegister::TargetVelocity, 2, 0x8000 | 500);
    const ParameterFile file = codec.capture(fileServo.controlTable(),
                                             QDateTime(QDate(2026, 11, 20), QTime(14, 5), Qt::UTC));

    VirtualServo running;
    running.setValue(ServoRegister::Id, 1, 1);
    running.setValue(ServoRegister::ControlEnable, 1, 1);
    const std::vector<ParameterDifference> differences =
        ParameterDiff::between(file, running.controlTable(), decoder->catalogue());

    const QString summary =
        QStringLiteral(
            "arm-shoulder.json, saved 20/11/2026 15:05 from servo id:7 (firmware 1). %1 registers "
            "differ from servo id:1; tick the ones to write. ID, baud rate, the motor switch and "
            "the targets start unticked.")
            .arg(differences.size());
    LoadParametersDialog dialog(summary, differences, *decoder, true);
    dialog.show();
    for (const char *state : {"loaded", "motor-off-ticked"}) {
        if (QLatin1String(state) == QLatin1String("motor-off-ticked"))
            dialog.findChild<QCheckBox *>(QStringLiteral("switchMotorOffCheckBox"))
                ->setChecked(true);
        QApplication::processEvents();
        QElapsedTimer timer;
        timer.start();
        const QString path = folder.filePath(QStringLiteral("load-parameters-%1.png").arg(state));
        dialog.grab().save(path);
        std::printf("%s  %lld ms\n", qPrintable(path), timer.elapsed());
    }
    dialog.hide();

    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return 0;
    MainWindow window;
    window.resize(900, 400);
    window.show();
    auto *menu = window.findChild<QMenu *>(QStringLiteral("menuServo"));
    QTimer::singleShot(300, [&] {
        window.menuBar()->setActiveAction(menu->menuAction());
        QTimer::singleShot(300, [&] {
            const QString path = folder.filePath(QStringLiteral("servo-menu.png"));
            QGuiApplication::primaryScreen()->grabWindow(0, 0, 0, 900, 400).save(path);
            std::printf("%s\n", qPrintable(path));
            app.quit();
        });
    });
    return app.exec();
}
