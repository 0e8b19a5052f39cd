// Draws the volatile parameters of a wheel servo turning clockwise on the virtual bus,
// before and after an Apply that changes only a control term, and prints the servo's
// target velocity register each time: its direction bit must survive the unrelated save.
//
//   bench_directionscreenshots [output folder]

#include "app/mainwindow.h"
#include "settings/settingsdialog.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QSpinBox>
#include <QToolBar>

#include <cstdio>

namespace {

constexpr quint8 wheelServoId = 1;
// Clockwise (bit 15) at 500 counts of 0.001 rad/s.
constexpr uint clockwiseTarget = 0x8000 | 500;

bool waitFor(const std::function<bool()> &condition, int timeoutMs = 5000)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < timeoutMs)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    return condition();
}

void settle(int ms)
{
    waitFor([] { return false; }, ms);
}

} // namespace

int main(int argc, char *argv[])
{
    Q_INIT_RESOURCE(resources);
    QApplication app(argc, argv);
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath();
    QDir().mkpath(folder);

    const std::shared_ptr<VirtualBus> bus = VirtualBusPortProvider::installProcessBus();
    std::shared_ptr<VirtualServo> wheel;
    for (const auto &servo : bus->servos()) {
        if (servo->id() == wheelServoId)
            wheel = servo;
    }
    wheel->setValue(ServoRegister::ControlEnable, 1, 1);
    wheel->setValue(ServoRegister::TargetVelocity, 2, clockwiseTarget);

    MainWindow window;
    window.resize(1200, 1000);
    window.show();
    SettingsDialog *settings = SettingsDialog::instance();
    settings->findChild<QComboBox *>("serialPortInfoListBox")
        ->setCurrentText(VirtualBusPortProvider::PortName);
    settings->findChild<QComboBox *>("baudRateBox")->setCurrentText("1000000");
    settings->findChild<QAbstractButton *>("okButton")->click();
    window.findChild<QToolBar *>()->findChild<QSpinBox *>("pollingIntervalSpinBox")->setValue(50);
    window.findChild<QToolBar *>()->findChild<QSpinBox *>("idSpinBox")->setValue(wheelServoId);
    window.findChild<QAction *>("actionConnect")->trigger();

    auto *group = window.findChild<QGroupBox *>("volatileParamsGroupBox");
    auto *edit = window.findChild<QAbstractButton *>("vParamsEditSaveToolButton");
    auto *direction = window.findChild<QComboBox *>("targetAngularVelocityDirectionComboBox");
    auto *gain = window.findChild<QDoubleSpinBox *>("velocityProportionalTermDoubleSpinBox");
    if (!waitFor([edit] { return edit->isEnabled(); })) {
        std::fprintf(stderr, "no values from the virtual bus\n");
        return 1;
    }
    settle(300);

    const auto shoot = [&](const char *name) {
        const QString path = folder + '/' + name;
        group->grab().save(path);
        std::printf("%-40s register 48 = %u, register 82 = 0x%04x, direction box \"%s\"\n",
                    qPrintable(path), wheel->value(ServoRegister::ControlEnable, 1),
                    wheel->value(ServoRegister::TargetVelocity, 2),
                    qPrintable(direction->currentText()));
    };
    shoot("direction-before-apply.png");

    edit->click();
    gain->setValue(gain->value() + gain->singleStep());
    edit->click();
    settle(500);
    shoot("direction-after-apply.png");
    return wheel->value(ServoRegister::TargetVelocity, 2) == clockwiseTarget ? 0 : 1;
}
