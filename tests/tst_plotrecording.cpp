#include "app/mainwindow.h"
#include "plot/plotdock.h"
#include "plot/recordingcontroller.h"
#include "settings/settingsdialog.h"
#include "simulator/virtualbusportprovider.h"

#include <QtTest>
#include <QtWidgets>
#include <memory>

namespace {

constexpr quint8 wheelServoId = 1;
constexpr int baudRate = 1000000;
constexpr int patienceMs = 20000;

QStringList lines(const QString &fileName)
{
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

} // namespace

// The plot and the recorder through the whole window, fed by the link monitor on the
// in-process virtual bus.
class TestPlotRecording : public QObject
{
    Q_OBJECT

    std::unique_ptr<MainWindow> window;
    QTemporaryDir folder;

    QAction *action(const char *name) const
    {
        return window->findChild<QAction *>(QLatin1String(name));
    }
    bool connected() const { return window->statusBar()->currentMessage() == "Connected"; }

private slots:
    void initTestCase()
    {
        VirtualBusPortProvider::installProcessBus();
        SettingsDialog::instance();
        window = std::make_unique<MainWindow>();
        window->show();
        SettingsDialog::instance()->on_updatePortName(VirtualBusPortProvider::PortName);
        SettingsDialog::instance()->on_updateBaudRate(baudRate);
        auto *toolBar = window->findChild<QToolBar *>("toolBar");
        toolBar->findChild<QSpinBox *>("idSpinBox")->setValue(wheelServoId);
        toolBar->findChild<QSpinBox *>("pollingIntervalSpinBox")->setValue(20);
    }

    void inTheViewMenu()
    {
        const auto *menu = window->findChild<QMenu *>("menuView");
        QVERIFY(menu->actions().contains(action("actionPlot")));
        QVERIFY(menu->actions().contains(action("actionRecord")));
        QCOMPARE(action("actionPlot")->shortcut(), QKeySequence("Ctrl+Shift+P"));
        QCOMPARE(action("actionRecord")->shortcut(), QKeySequence("Ctrl+Shift+R"));
        // Nothing to record before a link is up.
        QVERIFY(!action("actionRecord")->isEnabled());
    }

    void recordsUntilTheLinkOrTheUserEndsIt_data()
    {
        QTest::addColumn<QString>("cause");
        QTest::newRow("stop recording") << "stop";
        QTest::newRow("disconnect") << "disconnect";
    }
    void recordsUntilTheLinkOrTheUserEndsIt()
    {
        QFETCH(QString, cause);
        action("actionConnect")->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(connected(), patienceMs);
        PlotDock *plot = window->plotDock();
        // Cleared on Connect, then filled by the replies.
        QTRY_VERIFY_WITH_TIMEOUT(plot->buffer().size() >= 5, patienceMs);
        QVERIFY(plot->buffer().time(0) < 1.0);

        const QString file = folder.filePath(cause + ".csv");
        QVERIFY(window->recordingController()->startRecording(file));
        QCOMPARE(action("actionRecord")->text(), QString("Stop recording"));
        auto *indicator = window->findChild<QLabel *>("recordingIndicator");
        QTRY_VERIFY(indicator->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(window->recordingController()->recorder().rowCount() >= 10,
                                 patienceMs);

        if (cause == "stop")
            action("actionRecord")->trigger();
        else
            action("actionDisconnect")->trigger();
        QVERIFY(!window->recordingController()->recorder().isRecording());
        QTRY_VERIFY(!indicator->isVisible());
        QCOMPARE(action("actionRecord")->text(), QString("Record…"));

        const QStringList written = lines(file);
        QVERIFY(written.at(0).contains("port Virtual bus, 1000000 baud, servo id 1"));
        const int columns = written.at(1).count(',');
        QVERIFY(written.at(1).startsWith("time [s],Actual position ["));
        QCOMPARE(written.size() - 2, int(window->recordingController()->recorder().rowCount()));
        for (const QString &row : written.mid(2))
            QCOMPARE(row.count(','), columns);

        if (cause == "disconnect") {
            // Frozen, not cleared: the last seconds stay on screen.
            const int kept = plot->buffer().size();
            QTest::qWait(200);
            QCOMPARE(plot->buffer().size(), kept);
            QVERIFY(kept > 0);
        } else {
            action("actionDisconnect")->trigger();
        }
        QTest::qWait(150);
    }
};

QTEST_MAIN(TestPlotRecording)
#include "tst_plotrecording.moc"
