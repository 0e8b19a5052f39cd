#include "ui_editview.h"

#include "datacolumns.h"
#include "device/fieldhelper.h"
#include "device/statushelper.h"
#include "device/uiregisterhelper.h"
#include "editformfixture.h"
#include "settings/settings.h"
#include "settings/settingsdialog.h"
#include "views/editview.h"
#include "widgets/uigrouphelper.h"

#include <QtTest>

namespace {

// Brings the widgets up as a connection does, with a servo of our own identified.
void connectAll(const QList<QObject *> &widgets)
{
    for (QObject *widget : widgets)
        dynamic_cast<IConnectInfo *>(widget)->connected();
    loadDevice();
}

// What the scheduler does with one register of a reply.
void deliver(uint8_t address, int32_t value)
{
    UiRegisterHelper::instance()->item(address).callback(value);
}

} // namespace

class TestEditView : public QObject
{
    Q_OBJECT

    std::unique_ptr<SettingsDialog> settingsDialog;
    std::unique_ptr<EditView> view;

private slots:
    void initTestCase()
    {
        Q_INIT_RESOURCE(resources);
        // The longest unit names, so that the captions are measured at their widest.
        Settings units(QStringLiteral("units settings"));
        for (const char *quantity : {"angle", "torque", "current"})
            units.setValue(QString(quantity), 1);
        settingsDialog = std::make_unique<SettingsDialog>();
        deviceHelper();
        view = std::make_unique<EditView>();
    }

    void widgets_data()
    {
        addColumns<QString, QString, QString>({"name", "className", "text"});

        // Per class, name=text entries, only for what the code sets rather than the form: a spin
        // box's limits come from the device model, a tool button's role and icon from its class.
        const std::pair<const char *, const char *> classes[] = {
            {"ZelvarSpinBox", "idSpinBox=max 253;ackResponseTimeSpinBox=max 508"},
            {"ZelvarDoubleSpinBox", "defPositionProportionalTermDoubleSpinBox=max 31.87;"
                                    "defVelocityFeedforwardTermDoubleSpinBox=max 1.02 step 0.01;"
                                    "defVelocityIntegralTermDoubleSpinBox=max 124.5;"
                                    "velocityProportionalTermDoubleSpinBox=max 31.87;"
                                    "currentFeedforwardTermDoubleSpinBox=max 1.02 step 0.01"},
            {"ZelvarGroupToolButton",
             "nvParamsCancelToolButton=Cancel;nvParamsEditSaveToolButton=Edit;"
             "vParamsCancelToolButton=Cancel;vParamsEditSaveToolButton=Edit"},
            {"ZelvarStatusCheckBox",
             "overloadStatusCheckBox;processStatusCheckBox;alertStatusCheckBox"},
        };
        for (const auto &[className, entries] : classes)
            for (const QString &entry : QString(entries).split(';')) {
                const QString name = entry.section('=', 0, 0);
                QTest::newRow(qPrintable(name)) << name << className << entry.section('=', 1);
            }
    }
    void widgets()
    {
        QFETCH(QString, name);
        QFETCH(QString, className);
        QFETCH(QString, text);

        QWidget *found = view->findChild<QWidget *>(name);
        QVERIFY(found);
        QCOMPARE(found->metaObject()->className(), className);
        if (found->inherits("QAbstractSpinBox")) {
            const double step = found->property("singleStep").toDouble();
            QCOMPARE("max " + QString::number(found->property("maximum").toDouble()) +
                         (step == 1 ? "" : " step " + QString::number(step)),
                     text);
        }
        if (auto *button = qobject_cast<ZelvarGroupToolButton *>(found)) {
            QCOMPARE(button->role, text == "Cancel" ? 1 : 0);
            QCOMPARE(button->isCheckable(), text == "Edit");
            QVERIFY(!button->icon().pixmap(16).isNull());
        }
        // Status boxes only show; the user never ticks them.
        if (className == "ZelvarStatusCheckBox")
            QVERIFY(!found->isEnabled());
    }

    // The groups have fixed sizes; the form's own font keeps every caption inside them, units
    // included, whatever the desktop's font. Shown values and the device's ranges widen the
    // spin boxes, leaving captions less room; minus signs must still fit.
    void captionsAreNotClipped()
    {
        view->resize(1120, 860);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        for (const bool loaded : {false, true}) {
            if (loaded) {
                const auto groups = view->findChildren<ZelvarParametersGroupBox *>();
                connectAll(QList<QObject *>(groups.begin(), groups.end()));
                // The new ranges are laid out before the first poll brings values.
                QCoreApplication::processEvents();
                for (const auto &item : UiRegisterHelper::instance()->pollMap())
                    deliver(item.first, 0);
                deliver(7, -2047);  // clockwise limit, -180 degrees
                deliver(20, -4096); // home offset, a turn back
                QCoreApplication::processEvents();
            }
            for (const QLabel *label : view->findChildren<QLabel *>()) {
                const int needed = label->fontMetrics().horizontalAdvance(label->text());
                QVERIFY2(label->contentsRect().width() >= needed, qPrintable(label->objectName()));
            }
            for (const QAbstractSpinBox *spinBox : view->findChildren<QAbstractSpinBox *>()) {
                // The editor keeps two pixels each side for the cursor.
                const auto *editor = spinBox->findChild<QLineEdit *>();
                const int needed = editor->fontMetrics().horizontalAdvance(editor->text());
                QVERIFY2(editor->contentsRect().width() - 4 >= needed,
                         qPrintable(spinBox->objectName()));
            }
        }
        view->hide();
    }

    // Register 107 reaches the bit boxes through the poll map; the decoding itself is the
    // status helper's.
    void hardwareStatusReachesTheBitBoxes()
    {
        auto *overheating = view->findChild<QCheckBox *>("overheatingStatusCheckBox");
        auto *hall = view->findChild<QCheckBox *>("hallStatusCheckBox");
        connectAll({overheating, hall});
        deliver(107, 0x04);
        QVERIFY(overheating->isChecked());
        QVERIFY(!hall->isChecked());
    }

    void secondViewSharesTheHelpers()
    {
        const auto status = StatusHelper::instance();
        auto *firstMoving = view->findChild<QCheckBox *>("isMovingCheckBox");
        connectAll({firstMoving});
        deliver(99, 0);
        {
            EditView second;
            // The second view's fields replace the first's under the same names.
            auto *secondMoving = second.findChild<QCheckBox *>("isMovingCheckBox");
            connectAll({secondMoving});
            deliver(99, 1);
            QVERIFY(secondMoving->isChecked());
            QVERIFY(!firstMoving->isChecked());
        }
        // A value for a field whose view is gone goes nowhere.
        deliver(99, 1);
        QVERIFY(!firstMoving->isChecked());

        // The status helper stays with the first view's form.
        status->updateStatusPacket(int8_t(0x80));
        QVERIFY(view->findChild<QCheckBox *>("alertStatusCheckBox")->isChecked());
    }
};

QTEST_MAIN(TestEditView)
#include "tst_editview.moc"
