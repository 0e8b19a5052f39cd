#include "device/statushelper.h"
#include "ui_editview.h"

#include <QtTest>

class TestStatusHelper : public QObject
{
    Q_OBJECT

    QWidget view;
    Ui::EditView form;
    std::unique_ptr<StatusHelper> helper;

private slots:
    void initTestCase()
    {
        form.setupUi(&view);
        helper = std::make_unique<StatusHelper>(&form);
    }

    // The rows share one form, so each also shows that the previous reply's box is cleared.
    void statusPacketSetsAllEightBoxes_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("checked"); // process, instruction, checksum, range, length,
                                              // limit, access, alert

        for (int number = 1; number <= 7; ++number)
            QTest::addRow("%d", number) << number << QString(8, '-').replace(number - 1, 1, 'x');
        QTest::newRow("0x80 alert") << 0x80 << "-------x";
        QTest::newRow("0x82 alert only, not instruction") << 0x82 << "-------x";
        QTest::newRow("0 clears all") << 0x00 << "--------";
    }
    void statusPacketSetsAllEightBoxes()
    {
        QFETCH(int, error);
        QFETCH(QString, checked);

        helper->updateStatusPacket(int8_t(error));
        QString actual;
        for (QCheckBox *box :
             {form.processStatusCheckBox, form.instructionStatusCheckBox,
              form.checksumStatusCheckBox, form.rangeStatusCheckBox, form.dataLengthStatusCheckBox,
              form.dataLimitStatusCheckBox, form.accessStatusCheckBox, form.alertStatusCheckBox})
            actual += box->isChecked() ? 'x' : '-';
        QCOMPARE(actual, checked);
    }

    void helperThatOutlivesItsViewIgnoresUpdates()
    {
        Ui::EditView gone;
        auto goneView = std::make_unique<QWidget>();
        gone.setupUi(goneView.get());
        StatusHelper orphan(&gone);
        goneView.reset();
        orphan.updateStatusPacket(int8_t(0x80));
    }

    void sharedInstanceIsMadeOnce()
    {
        QVERIFY(!StatusHelper::exists());
        const auto formless = StatusHelper::instance();
        QCOMPARE(StatusHelper::create(&form), formless);
        QCOMPARE(StatusHelper::instance(), formless);
        // The helper made first, without a form, stays the one and keeps ignoring updates.
        formless->updateStatusPacket(int8_t(0x80));
        QVERIFY(!form.alertStatusCheckBox->isChecked());
    }
};

QTEST_MAIN(TestStatusHelper)
#include "tst_statushelper.moc"
