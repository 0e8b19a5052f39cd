#include "app/mainwindow.h"
#include "search/searchdialog.h"
#include "settings/settings.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>

namespace {

const QStringList baudRates = {"9600",   "19200",  "38400",  "57600",  "115200",
                               "200000", "250000", "400000", "500000", "1000000"};

} // namespace

class TestSearchDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void idGuards_data();
    void idGuards();
    void selectBoxFollowsBaudRates_data();
    void selectBoxFollowsBaudRates();
    void selectBoxClickTogglesAllOrNone_data();
    void selectBoxClickTogglesAllOrNone();
    void scanEnabledOnlyWithPortAndBaudRate_data();
    void scanEnabledOnlyWithPortAndBaudRate();
    void showRestoresPortAndResets();
    void selectHandsOverBaudRateAndId();
    void selectingBaudRateRowIsHarmless();
    void portListShowsVirtualBus();
    void scanFindsServosUnderTheirBaudRates();
    void abortStopsBetweenBaudRates();
    void portThatCannotOpenStopsScan();
    void mainWindowTakesOverSelection();

private:
    template<typename T>
    T *child(const char *name) const
    {
        T *widget = dialog->findChild<T *>(QLatin1String(name));
        Q_ASSERT_X(widget, "child", name);
        return widget;
    }
    QCheckBox *baudRateBox(const QString &rate) const
    {
        return child<QCheckBox>(qPrintable("baudRate" + rate + "CheckBox"));
    }
    void usePorts(const QStringList &names);
    void checkBaudRates(const QStringList &rates);
    QStringList treeLines() const;
    QStringList checkedBaudRates() const;

    SearchDialog *dialog = nullptr;
};

void TestSearchDialog::initTestCase()
{
    // Besides the standard servos (0 and 1 at 1,000,000 baud, 3 at 57,600):
    const std::shared_ptr<VirtualBus> bus = VirtualBusPortProvider::installProcessBus();
    // too slow to answer within the probe's wait,
    bus->addServo(5, 9600);
    // a model byte above 127,
    bus->addServo(7, 57600)->setValue(0, 2, 0x8105);
    // and a twin of servo 3 that shows whether 3 is probed again at a higher rate.
    bus->addServo(3, 1000000);
}

void TestSearchDialog::init()
{
    dialog = new SearchDialog;
    QCOMPARE(SearchDialog::instance(), dialog);
    // A known port list, whatever ports this machine has.
    usePorts({"ttyTEST0", "ttyTEST1"});
}

void TestSearchDialog::cleanup()
{
    delete dialog;
    dialog = nullptr;
    QCOMPARE(SearchDialog::instance(), nullptr);
}

void TestSearchDialog::usePorts(const QStringList &names)
{
    auto *ports = child<QComboBox>("serialPortInfoListBox");
    ports->clear();
    ports->addItems(names);
}

QStringList TestSearchDialog::treeLines() const
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

void TestSearchDialog::checkBaudRates(const QStringList &rates)
{
    for (const QString &rate : rates)
        baudRateBox(rate)->setChecked(true);
}

QStringList TestSearchDialog::checkedBaudRates() const
{
    QStringList checked;
    for (const QString &rate : baudRates)
        if (baudRateBox(rate)->isChecked())
            checked << rate;
    return checked;
}

void TestSearchDialog::idGuards_data()
{
    QTest::addColumn<bool>("changeLower");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expectedLower");
    QTest::addColumn<int>("expectedUpper");

    // The dialog starts with the range 1 to 10.
    QTest::newRow("lower below upper") << true << 5 << 5 << 10;
    QTest::newRow("lower equal to upper") << true << 10 << 10 << 10;
    QTest::newRow("lower above upper") << true << 11 << 1 << 10;
    QTest::newRow("lower to zero") << true << 0 << 0 << 10;
    QTest::newRow("upper above lower") << false << 253 << 1 << 253;
    QTest::newRow("upper equal to lower") << false << 1 << 1 << 1;
    QTest::newRow("upper below lower") << false << 0 << 1 << 10;
}

void TestSearchDialog::idGuards()
{
    QFETCH(bool, changeLower);
    QFETCH(int, value);
    QFETCH(int, expectedLower);
    QFETCH(int, expectedUpper);

    dialog->show();
    auto *lower = child<QSpinBox>("lowerSearchRangeSpinBox");
    auto *upper = child<QSpinBox>("upperSearchRangeSpinBox");
    (changeLower ? lower : upper)->setValue(value);

    QCOMPARE(lower->value(), expectedLower);
    QCOMPARE(upper->value(), expectedUpper);
}

void TestSearchDialog::selectBoxFollowsBaudRates_data()
{
    QTest::addColumn<QStringList>("checked");
    QTest::addColumn<int>("expectedState");

    QTest::newRow("none") << QStringList() << int(Qt::Unchecked);
    QTest::newRow("one") << QStringList{"57600"} << int(Qt::PartiallyChecked);
    QTest::newRow("nine") << QStringList(baudRates.mid(1)) << int(Qt::PartiallyChecked);
    QTest::newRow("all") << baudRates << int(Qt::Checked);
}

void TestSearchDialog::selectBoxFollowsBaudRates()
{
    QFETCH(QStringList, checked);
    QFETCH(int, expectedState);

    checkBaudRates(checked);

    QCOMPARE(int(child<QCheckBox>("selectCheckBox")->checkState()), expectedState);
    QCOMPARE(checkedBaudRates(), checked);
}

void TestSearchDialog::selectBoxClickTogglesAllOrNone_data()
{
    QTest::addColumn<QStringList>("checked");
    QTest::addColumn<QStringList>("expectedAfterClick");
    QTest::addColumn<int>("expectedState");

    QTest::newRow("none to all") << QStringList() << baudRates << int(Qt::Checked);
    QTest::newRow("some to none") << QStringList{"9600", "1000000"} << QStringList()
                                  << int(Qt::Unchecked);
    QTest::newRow("all to none") << baudRates << QStringList() << int(Qt::Unchecked);
}

void TestSearchDialog::selectBoxClickTogglesAllOrNone()
{
    QFETCH(QStringList, checked);
    QFETCH(QStringList, expectedAfterClick);
    QFETCH(int, expectedState);

    checkBaudRates(checked);
    auto *selectBox = child<QCheckBox>("selectCheckBox");
    QTest::mouseClick(selectBox, Qt::LeftButton, {}, QPoint(8, selectBox->height() / 2));

    QCOMPARE(checkedBaudRates(), expectedAfterClick);
    QCOMPARE(int(selectBox->checkState()), expectedState);
}

void TestSearchDialog::scanEnabledOnlyWithPortAndBaudRate_data()
{
    QTest::addColumn<bool>("withPort");
    QTest::addColumn<QStringList>("checked");
    QTest::addColumn<bool>("expectedEnabled");

    QTest::newRow("port, no baud rate") << true << QStringList() << false;
    QTest::newRow("port, one baud rate") << true << QStringList{"9600"} << true;
    QTest::newRow("port, all baud rates") << true << baudRates << true;
    QTest::newRow("no port, one baud rate") << false << QStringList{"9600"} << false;
    QTest::newRow("no port, no baud rate") << false << QStringList() << false;
}

void TestSearchDialog::scanEnabledOnlyWithPortAndBaudRate()
{
    QFETCH(bool, withPort);
    QFETCH(QStringList, checked);
    QFETCH(bool, expectedEnabled);

    auto *scanButton = child<QPushButton>("scanPushButton");
    QVERIFY(!scanButton->isEnabled());
    if (!withPort)
        child<QComboBox>("serialPortInfoListBox")->clear();
    checkBaudRates(checked);
    QCOMPARE(scanButton->isEnabled(), expectedEnabled);

    // The order of the two choices does not matter.
    if (withPort) {
        child<QComboBox>("serialPortInfoListBox")->clear();
        QVERIFY(!scanButton->isEnabled());
        child<QComboBox>("serialPortInfoListBox")->addItem("ttyTEST0");
        QCOMPARE(scanButton->isEnabled(), expectedEnabled);
    }
}

void TestSearchDialog::showRestoresPortAndResets()
{
    Settings("port settings").setValue("serialPortName", "ttyTEST1");
    checkBaudRates({"19200", "500000"});
    child<QSpinBox>("upperSearchRangeSpinBox")->setValue(40);
    child<QSpinBox>("lowerSearchRangeSpinBox")->setValue(30);
    dialog->addTreeRoot("19200");

    dialog->show();

    QCOMPARE(child<QComboBox>("serialPortInfoListBox")->currentText(), QString("ttyTEST1"));
    QCOMPARE(checkedBaudRates(), QStringList());
    QCOMPARE(child<QSpinBox>("lowerSearchRangeSpinBox")->value(), 1);
    QCOMPARE(child<QSpinBox>("upperSearchRangeSpinBox")->value(), 10);
    QCOMPARE(child<QTreeWidget>("servoTreeWidget")->topLevelItemCount(), 0);
    QVERIFY(!child<QPushButton>("scanPushButton")->isEnabled());

    // The remembered values are the reset ones: a refused value falls back to them.
    child<QSpinBox>("lowerSearchRangeSpinBox")->setValue(20);
    QCOMPARE(child<QSpinBox>("lowerSearchRangeSpinBox")->value(), 1);
}

void TestSearchDialog::selectHandsOverBaudRateAndId()
{
    dialog->show();
    QTreeWidgetItem *slow = dialog->addTreeRoot("57600");
    dialog->addTreeChild(slow, "3", "1");
    QTreeWidgetItem *fast = dialog->addTreeRoot("1000000");
    dialog->addTreeChild(fast, "1", "1");
    dialog->addTreeChild(fast, "253", "-3");
    QCOMPARE(fast->child(1)->text(2), QString("Zelvar M-3"));

    auto *tree = child<QTreeWidget>("servoTreeWidget");
    auto *selectButton = child<QPushButton>("selectPushButton");
    QVERIFY(!selectButton->isEnabled());
    tree->setCurrentItem(fast->child(1));
    QVERIFY(selectButton->isEnabled());

    QSignalSpy baudRateSpy(dialog, SIGNAL(updateBaudRate(int)));
    QSignalSpy idSpy(dialog, SIGNAL(updateId(int)));
    QTest::mouseClick(selectButton, Qt::LeftButton);

    QCOMPARE(baudRateSpy.count(), 1);
    QCOMPARE(baudRateSpy.first().first().toInt(), 1000000);
    QCOMPARE(idSpy.count(), 1);
    QCOMPARE(idSpy.first().first().toInt(), 253);
    QVERIFY(!dialog->isVisible());
}

void TestSearchDialog::selectingBaudRateRowIsHarmless()
{
    dialog->show();
    QTreeWidgetItem *root = dialog->addTreeRoot("57600");
    dialog->addTreeChild(root, "3", "1");
    auto *tree = child<QTreeWidget>("servoTreeWidget");
    auto *selectButton = child<QPushButton>("selectPushButton");
    QSignalSpy baudRateSpy(dialog, SIGNAL(updateBaudRate(int)));
    QSignalSpy idSpy(dialog, SIGNAL(updateId(int)));

    QVERIFY(QTest::qWaitForWindowExposed(dialog));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(root).center());
    QVERIFY(tree->selectedItems().isEmpty());
    QVERIFY(!selectButton->isEnabled());

    // Even a baud-rate row that somehow got selected names no servo.
    root->setFlags(root->flags() | Qt::ItemIsSelectable);
    tree->setCurrentItem(root);
    QCOMPARE(tree->selectedItems().size(), 1);
    QVERIFY(!selectButton->isEnabled());
    dialog->select();

    QCOMPARE(baudRateSpy.count(), 0);
    QCOMPARE(idSpy.count(), 0);
    QVERIFY(dialog->isVisible());
}

void TestSearchDialog::portListShowsVirtualBus()
{
    SearchDialog fresh;
    auto *ports = fresh.findChild<QComboBox *>("serialPortInfoListBox");
    const int index = ports->findText(VirtualBusPortProvider::PortName);
    QVERIFY(index >= 0);
    QCOMPARE(ports->itemData(index).toStringList(),
             QStringList({VirtualBusPortProvider::PortName, VirtualBusPortProvider::Description,
                          "N/A", "", "N/A", "N/A"}));
}

void TestSearchDialog::scanFindsServosUnderTheirBaudRates()
{
    dialog->show();
    usePorts({VirtualBusPortProvider::PortName});
    checkBaudRates(baudRates);
    auto *scanButton = child<QPushButton>("scanPushButton");
    auto *abortButton = child<QPushButton>("abortScanPushButton");
    QVERIFY(scanButton->isEnabled());

    QList<QPair<int, int>> probes;
    bool buttonsWhileScanning = true;
    connect(dialog, &SearchDialog::doScanServo, this, [&](int id, int baudRate) {
        probes.append({id, baudRate});
        buttonsWhileScanning &= !scanButton->isEnabled() && abortButton->isEnabled();
    });
    QTest::mouseClick(scanButton, Qt::LeftButton);

    QCOMPARE(treeLines(), QStringList({"57600", "  3 Zelvar M1", "  7 Zelvar M-127", "1000000",
                                       "  1 Zelvar M1"}));
    QVERIFY(buttonsWhileScanning);
    QVERIFY(scanButton->isEnabled());
    QVERIFY(!abortButton->isEnabled());

    // Ids 3 and 7 answered at 57600 and are left out of the six higher rates; the
    // 9600-baud servo 5 is asked at every rate, in ascending order.
    QCOMPARE(probes.size(), 10 * 10 - 2 * 6);
    for (const auto &probe : probes)
        QVERIFY2(
            !((probe.first == 3 || probe.first == 7) && probe.second > 57600),
            qPrintable(QString("id %1 probed again at %2").arg(probe.first).arg(probe.second)));
    QCOMPARE(probes.first(), qMakePair(1, 9600));
    QCOMPARE(probes.last(), qMakePair(10, 1000000));
    QCOMPARE(std::count_if(probes.cbegin(), probes.cend(), [](auto p) { return p.first == 5; }),
             10);
}

void TestSearchDialog::abortStopsBetweenBaudRates()
{
    dialog->show();
    usePorts({VirtualBusPortProvider::PortName});
    checkBaudRates(baudRates);
    QSignalSpy probeSpy(dialog, SIGNAL(doScanServo(int, int)));

    // Seen when the scan looks at the first baud rate; that rate is still swept.
    QMetaObject::invokeMethod(dialog, "abortScan", Qt::QueuedConnection);
    dialog->scan();

    QCOMPARE(probeSpy.count(), 10);
    for (const QList<QVariant> &probe : qAsConst(probeSpy))
        QCOMPARE(probe.at(1).toInt(), 9600);
    QCOMPARE(treeLines(), QStringList());
    QVERIFY(child<QPushButton>("scanPushButton")->isEnabled());
    QVERIFY(!child<QPushButton>("abortScanPushButton")->isEnabled());
}

void TestSearchDialog::portThatCannotOpenStopsScan()
{
    dialog->show();
    usePorts({"/dev/zelvar-no-such-port"});
    checkBaudRates(baudRates);
    QSignalSpy probeSpy(dialog, SIGNAL(doScanServo(int, int)));
    // The box comes up inside the scan; close it from its own event loop.
    QString shownError;
    QTimer closer;
    closer.setInterval(10);
    connect(&closer, &QTimer::timeout, this, [&] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            shownError = box->windowTitle() + ": " + box->text();
            box->accept();
            closer.stop();
        }
    });
    closer.start();

    dialog->scan();

    QCOMPARE(probeSpy.count(), 1);
    QVERIFY2(shownError.startsWith("Error: ") && shownError.contains("zelvar-no-such-port"),
             qPrintable(shownError));
    QVERIFY(child<QPushButton>("scanPushButton")->isEnabled());
}

void TestSearchDialog::mainWindowTakesOverSelection()
{
    Settings mainWindowSettings("main window settings");
    mainWindowSettings.setValue("servoId", 0);
    Settings portSettings("port settings");
    portSettings.setValue("baudRate", 1000000);
    auto window = std::make_unique<MainWindow>();
    SearchDialog *windowDialog = SearchDialog::instance();
    QVERIFY(windowDialog && windowDialog != dialog);

    window->findChild<QAction *>("actionSearch")->trigger();
    QVERIFY(windowDialog->isVisible());
    QTreeWidgetItem *root = windowDialog->addTreeRoot("57600");
    windowDialog->addTreeChild(root, "3", "1");
    windowDialog->findChild<QTreeWidget *>()->setCurrentItem(root->child(0));
    windowDialog->select();

    QVERIFY(!windowDialog->isVisible());
    // The tool bar's servo address, not the edit view's spin box of the same name.
    const auto *toolBar = window->findChild<QToolBar *>("toolBar");
    QCOMPARE(toolBar->findChild<QSpinBox *>("idSpinBox")->value(), 3);
    QCOMPARE(mainWindowSettings.value("servoId", -1).toInt(), 3);
    QCOMPARE(portSettings.value("baudRate", -1).toInt(), 57600);
    window.reset();
    QCOMPARE(SearchDialog::instance(), nullptr);
}

QTEST_MAIN(TestSearchDialog)
#include "tst_searchdialog.moc"
