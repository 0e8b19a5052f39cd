// Renders the "Unit fields" tab in three states into PNG files, for a look at clipping
// and overlap: disconnected; connected with a servo's values in degrees, rpm and degF;
// and with both parameter groups in edit mode. Prints each file and how long it took.
//
//   bench_editviewscreenshots [output folder]

#include "app/mainwindow.h"
#include "device/devicehelper.h"
#include "device/statushelper.h"
#include "device/uiregisterhelper.h"
#include "settings/settings.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>

namespace {

struct RegisterValue
{
    uint8_t address;
    uint8_t size;
    int64_t value;
};

// A servo at rest in joint mode with its motor off, slightly warm, overheating bit set.
const RegisterValue servoValues[] = {
    {0, 2, 0x0A05}, // model number 10.5
    {2, 1, 7},      // firmware
    {3, 1, 1},      // id
    {4, 1, 3},      // baud-rate code
    {5, 1, 250},    // return delay
    {6, 1, 2},      // joint mode
    {7, 2, 0xF801}, // clockwise limit, -2047
    {9, 2, 2047},   // counter-clockwise limit
    {11, 1, 80},    // temperature limit
    {12, 1, 60},    // 6.0 V
    {13, 1, 160},   // 16.0 V
    {14, 2, 3000},  // current limit
    {16, 2, 2000},  // velocity limit
    {18, 2, 20000}, // acceleration limit
    {24, 2, 50},    // moving threshold
    {26, 1, 1},     // position input
    {27, 2, 800},   // default control terms
    {29, 2, 100},   {31, 2, 200},  {33, 2, 1500}, {35, 2, 2500}, {37, 2, 1000},
    {39, 2, 24000}, {54, 2, 800},                                               // control terms
    {56, 2, 100},   {58, 2, 200},  {60, 2, 1500}, {62, 2, 2500}, {68, 2, 1000}, // profiles
    {70, 2, 24000}, {78, 4, 2048}, // target position, half a turn
    {82, 2, 500},                  // target velocity
    {84, 2, 1200},                 // target torque
    {86, 4, 2041},                 // actual position
    {90, 2, 300},                  // actual velocity
    {92, 2, 1250},                 // actual torque
    {94, 1, 121},                  // 12.1 V
    {95, 2, 42},                   // phase current
    {97, 1, 38},                   // temperature
    {99, 1, 1},                    // moving
    {107, 1, 0x04},                // overheating
};

QByteArray servoReply()
{
    QByteArray reply(118 + 11, '\0');
    for (const RegisterValue &row : servoValues) {
        for (int i = 0; i < row.size; ++i)
            reply[9 + row.address + i] = char((row.value >> (8 * i)) & 0xFF);
    }
    reply[8] = char(0x80); // the alert bit, as a servo sends it while an error bit is set
    return reply;
}

// What the scheduler does with a read reply.
void deliver(const QByteArray &reply)
{
    for (const auto &[address, item] : UiRegisterHelper::instance()->pollMap()) {
        uint32_t value = 0;
        for (int i = 0; i < item->size && 9 + address + i < reply.size(); ++i)
            value |= uint32_t(uint8_t(reply[9 + address + i])) << (8 * i);
        item->callback(int32_t(value));
    }
    StatusHelper::instance()->updateStatusPacket(int8_t(reply[8]));
}

void chooseUnits()
{
    Settings units(QStringLiteral("units settings"));
    units.setValue(QStringLiteral("angle"), 1);
    units.setValue(QStringLiteral("angularVelocity"), 1);
    units.setValue(QStringLiteral("temperature"), 1);
}

void save(QWidget *window, const QDir &folder, const QString &name)
{
    QElapsedTimer timer;
    timer.start();
    QApplication::processEvents();
    const QString path = folder.filePath(name);
    const bool saved = window->grab().save(path);
    std::printf("%s %s, %lld ms\n", saved ? "wrote" : "FAILED to write", qPrintable(path),
                static_cast<long long>(timer.elapsed()));
}

} // namespace

int main(int argc, char *argv[])
{
    // Keep the user's own settings out of this.
    QTemporaryDir config;
    qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
    Q_INIT_RESOURCE(resources);
    QApplication app(argc, argv);
    const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath());
    chooseUnits();

    MainWindow window;
    window.resize(1180, 1060);
    window.show();
    save(&window, folder, QStringLiteral("editview-disconnected.png"));

    // The connection itself is the main window's; here only what it tells the view.
    const auto deviceHelper = DeviceHelper::instance(nullptr, [] {});
    window.findChild<QAction *>(QStringLiteral("actionConnect"))->trigger();
    deviceHelper->onModelNumberRead(QByteArray());
    const QByteArray reply = servoReply();
    // The mode locks follow one reply late; the second poll shows the steady state.
    deliver(reply);
    deliver(reply);
    save(&window, folder, QStringLiteral("editview-connected.png"));

    for (const char *button : {"vParamsEditSaveToolButton", "nvParamsEditSaveToolButton"})
        window.findChild<QAbstractButton *>(QString::fromLatin1(button))->click();
    window.findChild<QDoubleSpinBox *>(QStringLiteral("targetPositionDoubleSpinBox"))
        ->setValue(90.0);
    deliver(reply); // held back from the groups being edited
    save(&window, folder, QStringLiteral("editview-editing.png"));
    return 0;
}
