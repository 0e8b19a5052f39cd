// Renders the "Unit fields" tab in three states into PNG files, for a look at clipping
// and overlap: disconnected; connected with a servo's values in degrees, rpm and degF;
// and with both parameter groups in edit mode. Prints each file, how long it took and
// every caption, spin box or combo box whose text does not fit its room.
//
//   bench_editviewscreenshots [output folder]

#include "app/mainwindow.h"
#include "device/devicehelper.h"
#include "link/serialhelper.h"
#include "link/uischeduler.h"
#include "settings/settings.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionComboBox>
#include <QTemporaryDir>

#include <cstdio>

namespace {

struct RegisterValue
{
    uint8_t address;
    uint8_t size;
    int64_t value;
};

// A servo in joint mode with its motor on, slightly warm, overheating and angle limit
// bits set. Negative values show whether a minus sign finds room.
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
    {20, 4, -4096}, // home offset, a turn back
    {24, 2, 50},    // moving threshold
    {26, 1, 1},     // position input
    {27, 2, 800},   // default control terms
    {29, 2, 100},   {31, 2, 200},   {33, 2, 1500}, {35, 2, 2500}, {37, 2, 1000},
    {39, 2, 24000}, {48, 1, 1},                                                  // motor on
    {54, 2, 800},   {56, 2, 100},   {58, 2, 200},  {60, 2, 1500}, {62, 2, 2500}, // control terms
    {68, 2, 1000},  {70, 2, 24000},                                              // profiles
    {78, 4, -1024}, // target position, a quarter turn back
    {82, 2, 500},   // target velocity
    {84, 2, 1200},  // target torque
    {86, 4, 2041},  // actual position
    {90, 2, 300},   // actual velocity
    {92, 2, 1250},  // actual torque
    {94, 1, 121},   // 12.1 V
    {95, 2, 42},    // phase current
    {97, 1, 38},    // temperature
    {99, 1, 1},     // moving
    {107, 1, 0x14}, // overheating, angle limit
};

QByteArray servoReply(bool motorOn = true)
{
    QByteArray reply(118 + 11, '\0');
    for (const RegisterValue &row : servoValues) {
        for (int i = 0; i < row.size; ++i)
            reply[9 + row.address + i] = char((row.value >> (8 * i)) & 0xFF);
    }
    reply[8] = char(0x80); // the alert bit, as a servo sends it while an error bit is set
    reply[9 + 48] = char(motorOn);
    return reply;
}

// A read reply, handed on as a poll's is.
void deliver(const QByteArray &reply)
{
    static UiScheduler scheduler(1, std::make_shared<SerialHelper>());
    scheduler.groupCallback(reply);
}

void chooseUnits()
{
    Settings units(QStringLiteral("units settings"));
    units.setValue(QStringLiteral("angle"), 1);
    units.setValue(QStringLiteral("angularVelocity"), 1);
    units.setValue(QStringLiteral("temperature"), 1);
}

// Whether the text needs more width than the control gives it.
bool clipped(const QWidget *widget)
{
    const QFontMetrics metrics = widget->fontMetrics();
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        return metrics.horizontalAdvance(label->text()) > label->contentsRect().width();
    if (const auto *spinBox = qobject_cast<const QAbstractSpinBox *>(widget)) {
        // The editor has no frame, and keeps two pixels each side for the cursor.
        const QLineEdit *editor = spinBox->findChild<QLineEdit *>();
        return metrics.horizontalAdvance(editor->text()) > editor->contentsRect().width() - 4;
    }
    if (const auto *comboBox = qobject_cast<const QComboBox *>(widget)) {
        QStyleOptionComboBox option;
        option.initFrom(comboBox);
        option.currentText = comboBox->currentText();
        const QRect room = comboBox->style()->subControlRect(
            QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, comboBox);
        return metrics.horizontalAdvance(option.currentText) > room.width();
    }
    return false;
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
    QStringList names;
    for (const QWidget *widget : window->findChildren<QWidget *>()) {
        if (widget->isVisible() && clipped(widget))
            names << widget->objectName();
    }
    std::printf("  clipped: %s\n", names.isEmpty() ? "none" : qPrintable(names.join(", ")));
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
    folder.mkpath(QStringLiteral("."));
    chooseUnits();

    MainWindow window;
    window.resize(1180, 1060);
    window.show();
    save(&window, folder, QStringLiteral("editview-disconnected.png"));

    // The connection itself is the main window's; here only what it tells the view.
    const auto deviceHelper = DeviceHelper::instance(nullptr, [] {});
    window.findChild<QAction *>(QStringLiteral("actionConnect"))->trigger();
    deviceHelper->onModelNumberRead(QByteArray());
    // The first poll comes a timer tick later, after the new ranges have been laid out.
    QApplication::processEvents();
    const QByteArray reply = servoReply();
    // The mode locks follow one reply late; the second poll shows the steady state.
    deliver(reply);
    deliver(reply);
    save(&window, folder, QStringLiteral("editview-connected.png"));

    // The non-volatile group is edited only while the motor is off; the volatile group
    // then switches it on again, which its edit shows.
    const auto click = [&window](const char *button) {
        window.findChild<QAbstractButton *>(QString::fromLatin1(button))->click();
    };
    deliver(servoReply(false));
    click("nvParamsEditSaveToolButton");
    deliver(reply);
    click("vParamsEditSaveToolButton");
    window.findChild<QDoubleSpinBox *>(QStringLiteral("targetPositionDoubleSpinBox"))
        ->setValue(-135.5);
    deliver(reply); // held back from the groups being edited
    save(&window, folder, QStringLiteral("editview-editing.png"));
    return 0;
}
