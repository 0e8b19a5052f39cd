#include "ui_editview.h"

#include "datacolumns.h"
#include "editformfixture.h"

#include <QtTest>

class TestBoundWidgets : public QObject
{
    Q_OBJECT

    template<typename Widget>
    Widget *add(const char *name, int items = 0)
    {
        auto *widget = new Widget(group.get());
        widget->setObjectName(QLatin1String(name));
        if constexpr (std::is_base_of_v<QComboBox, Widget>) {
            for (int i = 0; i < items; ++i)
                widget->addItem(QString::number(i));
        }
        return widget;
    }
    void goOnline(bool dynamixelAx12 = false)
    {
        group->connected();
        loadDevice(dynamixelAx12);
    }

    std::unique_ptr<ZelvarParametersGroupBox> group;

private slots:
    void initTestCase()
    {
        QLocale::setDefault(QLocale::c());
        deviceHelper();
    }
    void init()
    {
        group = std::make_unique<ZelvarParametersGroupBox>();
        group->resize(381, 400);
    }

    // Groups and controllers find the controls only through these casts from QObject.
    void comboDirtyMarks_data()
    {
        addColumns<bool, QList<int>, QList<bool>>({"baudRate", "choices", "marks"});
        // clang-format off
        QTest::newRow("change and back") << false << QList<int>{3, 2} << QList<bool>{true, false};
        QTest::newRow("two changes, one mark") << false << QList<int>{3, 4} << QList<bool>{true};
        QTest::newRow("index 10 counts as clean") << false << QList<int>{10} << QList<bool>{false};
        QTest::newRow("placeholder of the baud rate") << true << QList<int>{11} << QList<bool>{false};
        QTest::newRow("index 10 is a baud rate") << true << QList<int>{10} << QList<bool>{true};
        // clang-format on
    }
    void comboDirtyMarks()
    {
        QFETCH(bool, baudRate);
        QFETCH(QList<int>, choices);
        QFETCH(QList<bool>, marks);
        ZelvarComboBox *box = baudRate ? add<ZelvarBaudRateComboBox>("baudRateComboBox", 12)
                                       : add<ZelvarComboBox>("operatingModeComboBox", 12);
        goOnline();
        box->setValue(baudRate ? 51 : 2);
        QCOMPARE(box->currentIndex(), 2);
        group->editMode = true;
        box->setEditable(true);

        QSignalSpy spy(box, SIGNAL(setIsDirty(bool)));
        for (int choice : choices)
            box->setCurrentIndex(choice);
        QList<bool> shown;
        for (const QList<QVariant> &arguments : spy)
            shown << arguments.at(0).toBool();
        QCOMPARE(shown, marks);
    }

    // Locked and disconnected are covered with the groups; here the states before them.
    void blankUntilConnectedAndValued()
    {
        auto *spin = add<ZelvarDoubleSpinBox>("temperatureLimitDoubleSpinBox");
        auto *box = add<ZelvarComboBox>("operatingModeComboBox", 6);
        loadDevice();
        box->setValue(1);
        QCOMPARE(box->displayedText(), QString());
        goOnline();
        QCOMPARE(spin->text(), QString());
        QCOMPARE(box->displayedText(), QString());
        spin->setValue(80);
        box->setValue(1);
        QCOMPARE(spin->text(), QStringLiteral("80"));
        QCOMPARE(box->displayedText(), QStringLiteral("1"));
    }

    // The mode controllers set every lock again on each poll, also while the user types.
    void typingSurvivesTheModeControllers()
    {
        auto *spin = add<ZelvarDoubleSpinBox>("clockwiseLimitDoubleSpinBox");
        goOnline();
        spin->setValue(10);
        group->editMode = true;
        spin->setEditable(true);
        auto *editor = spin->findChild<QLineEdit *>();
        editor->selectAll();
        QTest::keyClicks(editor, QStringLiteral("-"));
        spin->setLocked(false);
        QCOMPARE(editor->text(), QStringLiteral("-"));
        QCOMPARE(editor->cursorPosition(), 1);
    }

    // setValue and value take raw counts, the Qt base classes the shown number. The double
    // spin box maps rawMin to physicalMin, in radians with 3 decimals. The integer one has no
    // offset: 254 raw counts span 508 us, so 7 us is 3.5 counts, sent as 3.
    void spinBoxConversions()
    {
        auto *angle = add<ZelvarDoubleSpinBox>("clockwiseLimitDoubleSpinBox");
        auto *time = add<ZelvarSpinBox>("ackResponseTimeSpinBox");
        goOnline();
        angle->setValue(-2047);
        time->setValue(10);
        QCOMPARE(angle->QDoubleSpinBox::value(), -3.142);
        QCOMPARE(time->QSpinBox::value(), 20);
        QCOMPARE(angle->value(), -2047);
        QCOMPARE(time->value(), 10);
        angle->QDoubleSpinBox::setValue(1.0);
        time->QSpinBox::setValue(7);
        QCOMPARE(angle->value(), 651);
        QCOMPARE(time->value(), 3);
        angle->QDoubleSpinBox::setValue(0.0019);
        QCOMPARE(angle->value(), 1);
    }

    void lineEditFormats_data()
    {
        addColumns<QString, int, QString>({"name", "raw", "text"});
        QTest::newRow("model number") << "modelNumberLineEdit" << 0x0A05 << "10.5";
        QTest::newRow("firmware as integer") << "firmwareVersionLineEdit" << 22 << "22";
        QTest::newRow("position in radians") << "actualPositionLineEdit" << 4096 << "6.283";
    }
    void lineEditFormats()
    {
        QFETCH(QString, name);
        QFETCH(int, raw);
        QFETCH(QString, text);
        auto *edit = add<ZelvarLineEdit>(qPrintable(name));
        goOnline();
        edit->setValue(raw);
        QCOMPARE(edit->text(), text);
        group->disconnected();
        QCOMPARE(edit->text(), QString());
    }

    // The caption sets the style; a value or the link must not replace it, or a checked box
    // would lose the image that shows it checked.
    void checkBoxStyle()
    {
        auto *box = add<ZelvarCheckBox>("enableMotorCheckBox");
        box->setText(QStringLiteral("Enable motor"));
        const QString style = box->styleSheet();
        QVERIFY(style.contains(QLatin1String("checkbox_checked.png")));
        goOnline();
        box->setValue(1);
        QCOMPARE(box->styleSheet(), style);

        // The second lock of a locked box picks the paler caption colour.
        box->setLocked(true);
        QVERIFY(box->styleSheet().contains(QLatin1String("color:#51514F;")));
        box->setLocked(true);
        QVERIFY(box->styleSheet().contains(QLatin1String("color:#9F9E9E;")));
    }

    void unitLabelCaptions()
    {
        add<ZelvarUnitLabel>("idLabel")->setText(QStringLiteral("ID"));
        QCOMPARE(group->findChild<QLabel *>("idLabel")->text(), QStringLiteral("ID:"));
        auto *temperature = add<ZelvarUnitLabel>("upperTemperatureLimitLabel");
        temperature->setText(QStringLiteral("Temperature limit"));
        temperature->setText(QStringLiteral("ignored"));
        QCOMPARE(temperature->text(), QStringLiteral("Temperature limit (°C):"));
    }

    // The AX-12 model lacks most fields; those stay on their placeholder.
    void fieldUnknownToDeviceKeepsPlaceholder()
    {
        auto *target = add<ZelvarDoubleSpinBox>("targetPositionDoubleSpinBox");
        auto *limit = add<ZelvarDoubleSpinBox>("clockwiseLimitDoubleSpinBox");
        auto *mode = add<ZelvarComboBox>("operatingModeComboBox", 6);
        goOnline(true);
        target->setValue(1000);
        mode->applyDependency();
        mode->setValue(1);
        limit->setValue(2047);
        QCOMPARE(target->text(), QString());
        QCOMPARE(mode->displayedText(), QString());
        QCOMPARE(limit->value(), 2047);
        loadDevice();
    }
};

QTEST_MAIN(TestBoundWidgets)
#include "tst_boundwidgets.moc"
