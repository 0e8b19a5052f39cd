#include "app/mainwindow.h"
#include "datacolumns.h"
#include "widgets/zelvarparametersgroupbox.h"
#include "widgets/zelvarstatuscheckbox.h"

#include <QAction>
#include <QtTest>

// The edit view as the main window builds it: the view is made while its tab page is not
// yet part of the window, and must still reach the window's connect actions.
class TestEditViewWiring : public QObject
{
    Q_OBJECT

    std::unique_ptr<MainWindow> window;

private slots:
    void initTestCase() { window = std::make_unique<MainWindow>(); }

    void actionsReachTheGroupsAndButtons_data()
    {
        addColumns<QString, QString, QByteArray>({"action", "receiver", "slot"});

        for (const char *receiver :
             {"realtimeInformationGroupBox", "versionInfoGroupBox", "nonVolatileParamsGroupBox",
              "volatileParamsGroupBox", "zelvarHardwareErrorGroupBox", "zelvarPacketStatusGroupBox",
              "nvParamsEditSaveToolButton", "vParamsEditSaveToolButton"}) {
            QTest::addRow("connect %s", receiver)
                << "actionConnect" << receiver << QByteArray(SLOT(connected()));
            QTest::addRow("disconnect %s", receiver)
                << "actionDisconnect" << receiver << QByteArray(SLOT(disconnected()));
        }
    }
    // A disconnect succeeds only where a connection was made; triggering the action would
    // start a real connection attempt.
    void actionsReachTheGroupsAndButtons()
    {
        QFETCH(QString, action);
        QFETCH(QString, receiver);
        QFETCH(QByteArray, slot);

        auto *sender = window->findChild<QAction *>(action);
        auto *target = window->findChild<QWidget *>(receiver);
        QVERIFY(sender && target);
        QVERIFY(QObject::disconnect(sender, SIGNAL(triggered()), target, slot.constData()));
    }

    void statusBoxesShowRedOnlyWhileConnected()
    {
        auto *group = window->findChild<ZelvarParametersGroupBox *>("zelvarPacketStatusGroupBox");
        auto *alert = window->findChild<ZelvarStatusCheckBox *>("alertStatusCheckBox");
        QVERIFY(group && alert);
        // Laid out like the others before any status came.
        QVERIFY(alert->styleSheet().contains("spacing"));

        group->connected();
        alert->setStatus(true);
        QVERIFY(alert->styleSheet().contains("#ff461d"));

        group->disconnected();
        QVERIFY(!alert->isChecked());
        QVERIFY(!alert->styleSheet().contains("#ff461d"));
    }
};

QTEST_MAIN(TestEditViewWiring)
#include "tst_editviewwiring.moc"
