#include "app/mainwindow.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarparametersgroupbox.h"
#include "widgets/zelvarstatuscheckbox.h"

#include <QAction>
#include <QtTest>

// The edit view as the main window builds it: the view is made while its tab page is not
// yet part of the window, and must still reach the window's connect actions.
class TestEditViewWiring : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void actionsReachTheGroups_data();
    void actionsReachTheGroups();
    void actionsReachTheEditSaveButtons_data();
    void actionsReachTheEditSaveButtons();
    void statusBoxesShowRedOnlyWhileConnected();

private:
    std::unique_ptr<MainWindow> window;
};

void TestEditViewWiring::initTestCase()
{
    window = std::make_unique<MainWindow>();
}

void TestEditViewWiring::cleanupTestCase()
{
    window.reset();
}

void TestEditViewWiring::actionsReachTheGroups_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QByteArray>("slot");

    const char *const groups[] = {"realtimeInformationGroupBox", "versionInfoGroupBox",
                                  "nonVolatileParamsGroupBox",   "volatileParamsGroupBox",
                                  "zelvarHardwareErrorGroupBox", "zelvarPacketStatusGroupBox"};
    for (const char *group : groups) {
        QTest::addRow("connect %s", group)
            << "actionConnect" << group << QByteArray(SLOT(connected()));
        QTest::addRow("disconnect %s", group)
            << "actionDisconnect" << group << QByteArray(SLOT(disconnected()));
    }
}

// A disconnect succeeds only where a connection was made, and triggering the action
// would start a real connection attempt.
void TestEditViewWiring::actionsReachTheGroups()
{
    QFETCH(QString, action);
    QFETCH(QString, group);
    QFETCH(QByteArray, slot);

    auto *sender = window->findChild<QAction *>(action);
    auto *receiver = window->findChild<ZelvarParametersGroupBox *>(group);
    QVERIFY(sender && receiver);
    QVERIFY(QObject::disconnect(sender, SIGNAL(triggered()), receiver, slot.constData()));
}

void TestEditViewWiring::actionsReachTheEditSaveButtons_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("slot");

    for (const char *button : {"nvParamsEditSaveToolButton", "vParamsEditSaveToolButton"}) {
        QTest::addRow("connect %s", button)
            << "actionConnect" << button << QByteArray(SLOT(connected()));
        QTest::addRow("disconnect %s", button)
            << "actionDisconnect" << button << QByteArray(SLOT(disconnected()));
    }
}

void TestEditViewWiring::actionsReachTheEditSaveButtons()
{
    QFETCH(QString, action);
    QFETCH(QString, button);
    QFETCH(QByteArray, slot);

    auto *sender = window->findChild<QAction *>(action);
    auto *receiver = window->findChild<ZelvarGroupToolButton *>(button);
    QVERIFY(sender && receiver);
    QVERIFY(QObject::disconnect(sender, SIGNAL(triggered()), receiver, slot.constData()));
}

void TestEditViewWiring::statusBoxesShowRedOnlyWhileConnected()
{
    auto *group = window->findChild<ZelvarParametersGroupBox *>("zelvarPacketStatusGroupBox");
    auto *alert = window->findChild<ZelvarStatusCheckBox *>("alertStatusCheckBox");
    QVERIFY(group && alert);

    group->connected();
    alert->setStatus(true);
    QVERIFY(alert->styleSheet().contains("#ff461d"));

    group->disconnected();
    QVERIFY(!alert->isChecked());
    QVERIFY(!alert->styleSheet().contains("#ff461d"));
}

QTEST_MAIN(TestEditViewWiring)
#include "tst_editviewwiring.moc"
