#include "datacolumns.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"
#include "search/searchdialog.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"

#include <QtTest>
#include <QtWidgets>

class TestSearchDialog : public QObject
{
    Q_OBJECT

    template<typename T>
    T *child(const QString &name) const
    {
        T *widget = dialog->findChild<T *>(name);
        Q_ASSERT_X(widget, "child", qPrintable(name));
        return widget;
    }
    QPushButton *button(const char *name) const { return child<QPushButton>(name); }
    QComboBox *ports() const { return child<QComboBox>("serialPortInfoListBox"); }
    void usePorts(const QStringList &names)
    {
        ports()->clear();
        ports()->addItems(names);
    }
    void checkBaudRates(const QStringList &rates)
    {
        for (const QString &rate : rates)
            child<QCheckBox>("baudRate" + rate + "CheckBox")->setChecked(true);
    }
    QStringList treeLines() const
    {
        QStringList lines;
        const auto *tree = child<QTreeWidget>("servoTreeWidget");
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            const QTreeWidgetItem *root = tree->topLevelItem(i);
            lines << root->text(0);
            for (int j = 0; j < root->childCount(); ++j)
                lines << "  " + root->child(j)->text(1) + " " + root->child(j)->text(2);
        }
        return lines;
    }
    void startScanOfEveryRate()
    {
        dialog->show();
        usePorts({VirtualBusPortProvider::PortName});
        checkBaudRates({"9600", "19200", "38400", "57600", "115200", "200000", "250000", "400000",
                        "500000", "1000000"});
    }

    QPointer<SearchDialog> dialog; // the main window's own in the last test
    std::shared_ptr<ScriptedPortProvider> scriptedPorts = std::make_shared<ScriptedPortProvider>();

private slots:
    void initTestCase()
    {
        // Besides the standard servos (0 and 1 at 1,000,000 baud, 3 at 57,600): one too
        // slow to answer within the probe's wait, a model byte above 127, and a twin of
        // servo 3 that shows whether 3 is probed again at a higher rate.
        const std::shared_ptr<VirtualBus> bus = VirtualBusPortProvider::installProcessBus();
        bus->addServo(5, 9600);
        bus->addServo(7, 57600)->setValue(0, 2, 0x8105);
        bus->addServo(3, 1000000);

        // An adapter that cannot do 250,000 baud, with servo 2 at 1,000,000 behind it.
        scriptedPorts->addPort("ttyPICKY", [](ScriptedPortBackend &port) {
            port.refusesRate = [](int rate) { return rate == 250000; };
            auto servo = std::make_shared<ScriptedServo>(2);
            servo->registers[1] = 1;
            port.setResponder([&port, servo](const QByteArray &written) {
                return port.baudRate == 1000000 ? servo->respond(written) : QByteArray();
            });
        });
        PortProvider::install(scriptedPorts);
    }

    void init()
    {
        dialog = new SearchDialog;
        QCOMPARE(SearchDialog::instance(), dialog);
        usePorts({"ttyTEST0", "ttyTEST1"});
    }

    void cleanup()
    {
        delete dialog;
        QCOMPARE(SearchDialog::instance(), nullptr);
    }

    void idGuards_data()
    {
        addColumns<bool, int, int, int, int>({"changeLower", "first", "second", "lower", "upper"});
        // The dialog starts with the range 1 to 10; a refused value falls back to the
        // last accepted one, not to the start.
        QTest::newRow("lower up to upper") << true << 5 << 10 << 10 << 10;
        QTest::newRow("lower above upper") << true << 5 << 11 << 5 << 10;
        QTest::newRow("upper down to lower") << false << 5 << 1 << 1 << 1;
        QTest::newRow("upper below lower") << false << 5 << 0 << 1 << 5;
    }
    void idGuards()
    {
        QFETCH(bool, changeLower);
        QFETCH(int, first);
        QFETCH(int, second);
        dialog->show();
        auto *lowerBox = child<QSpinBox>("lowerSearchRangeSpinBox");
        auto *upperBox = child<QSpinBox>("upperSearchRangeSpinBox");
        QSpinBox *changed = changeLower ? lowerBox : upperBox;
        changed->setValue(first);
        changed->setValue(second);
        QTEST(lowerBox->value(), "lower");
        QTEST(upperBox->value(), "upper");
    }

    void scanEnabledOnlyWithPortAndBaudRate()
    {
        QPushButton *scan = button("scanPushButton");
        QVERIFY(!scan->isEnabled());
        ports()->clear();
        checkBaudRates({"9600"});
        QVERIFY(!scan->isEnabled());
        ports()->addItem("ttyTEST0");
        QVERIFY(scan->isEnabled());
        child<QCheckBox>("baudRate9600CheckBox")->setChecked(false);
        QVERIFY(!scan->isEnabled());
        checkBaudRates({"9600"});
        QVERIFY(scan->isEnabled());
    }

    void selectingBaudRateRowIsHarmless()
    {
        dialog->show();
        QTreeWidgetItem *root = dialog->addTreeRoot("57600");
        dialog->addTreeChild(root, "3", "1");
        auto *tree = child<QTreeWidget>("servoTreeWidget");
        QSignalSpy baudRate(dialog, SIGNAL(updateBaudRate(int)));
        QSignalSpy id(dialog, SIGNAL(updateId(int)));
        QVERIFY(!(root->flags() & Qt::ItemIsSelectable));
        // Even a baud-rate row that somehow got selected names no servo.
        root->setFlags(root->flags() | Qt::ItemIsSelectable);
        tree->setCurrentItem(root);
        QVERIFY(!button("selectPushButton")->isEnabled());
        dialog->select();
        QCOMPARE(baudRate.count() + id.count(), 0);
        QVERIFY(dialog->isVisible());
    }

    void scanFindsServosUnderTheirBaudRates()
    {
        startScanOfEveryRate();
        QPushButton *scan = button("scanPushButton"), *abort = button("abortScanPushButton");
        QList<QPair<int, int>> probes;
        bool buttonsWhileScanning = true;
        connect(dialog, &SearchDialog::doScanServo, this, [&](int id, int baudRate) {
            probes.append({id, baudRate});
            buttonsWhileScanning &= !scan->isEnabled() && abort->isEnabled();
        });
        QTest::mouseClick(scan, Qt::LeftButton);

        QCOMPARE(treeLines(), QStringList({"57600", "  3 Zelvar M1", "  7 Zelvar M-127", "1000000",
                                           "  1 Zelvar M1"}));
        QVERIFY(buttonsWhileScanning);
        QVERIFY(scan->isEnabled() && !abort->isEnabled());
        // Ids 3 and 7 answered at 57600 and are left out of the six higher rates; the
        // 9600-baud servo 5 is asked at every rate, in ascending order.
        QCOMPARE(probes.size(), 10 * 10 - 2 * 6);
        for (const auto &probe : probes)
            QVERIFY2((probe.first != 3 && probe.first != 7) || probe.second <= 57600,
                     qPrintable(QString("id %1 again at %2").arg(probe.first).arg(probe.second)));
    }

    void closingStopsScanAfterItsBaudRate()
    {
        startScanOfEveryRate();
        int probes = 0;
        connect(dialog, &SearchDialog::doScanServo, this, [&] {
            if (++probes == 1)
                dialog->reject();
        });
        dialog->scan();
        QCOMPARE(probes, 10);
    }

    // A rate the port cannot be set to is skipped and the scan goes on; a port that opens
    // at no rate is one box, once.
    void refusedBaudRatesAreSkipped_data()
    {
        addColumns<QString, int, QStringList, QString>({"port", "probes", "tree", "box"});
        QTest::newRow("port opens at no rate")
            << "/dev/zelvar-no-such-port" << 3 << QStringList() << "zelvar-no-such-port";
        QTest::newRow("one rate refused")
            << "ttyPICKY" << 10 + 1 + 10 << QStringList{"1000000", "  2 Zelvar M1"}
            << "ttyPICKY could not be set to 250000 baud";
    }
    void refusedBaudRatesAreSkipped()
    {
        QFETCH(QString, port);
        dialog->show();
        usePorts({port});
        checkBaudRates({"9600", "250000", "1000000"});
        QSignalSpy probes(dialog, SIGNAL(doScanServo(int, int)));
        // The box comes up after the scan; close it from its own event loop.
        QStringList shown;
        QTimer closer;
        connect(&closer, &QTimer::timeout, this, [&] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                shown << box->windowTitle() + ": " + box->text();
                box->accept();
            }
        });
        closer.start(10);
        dialog->scan();

        QTEST(int(probes.count()), "probes");
        QTEST(treeLines(), "tree");
        QCOMPARE(shown.size(), 1);
        QFETCH(QString, box);
        QVERIFY2(shown.first().startsWith("Error: ") && shown.first().contains(box),
                 qPrintable(shown.first()));
        QVERIFY(button("scanPushButton")->isEnabled());
    }
};

QTEST_MAIN(TestSearchDialog)
#include "tst_searchdialog.moc"
