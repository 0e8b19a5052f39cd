#include "device/statushelper.h"
#include "ui_editview.h"

#include <QtTest>

#include <map>

class TestStatusHelper : public QObject
{
    Q_OBJECT

private slots:
    void hardwareStatusPassesMaskedValues_data();
    void hardwareStatusPassesMaskedValues();
    void statusPacketFlags_data();
    void statusPacketFlags();
    void updateSetsAllEightBoxes();
    void helperWithoutFormIgnoresUpdates();
    void helperOutlivingItsViewIgnoresUpdates();
    void sharedInstanceIsMadeOnce();
};

using MaskedValues = std::map<QString, int>;
Q_DECLARE_METATYPE(MaskedValues)

void TestStatusHelper::hardwareStatusPassesMaskedValues_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<MaskedValues>("expected");

    const MaskedValues allClear = {{"inputVoltageStatusCheckBox", 0},
                                   {"hallStatusCheckBox", 0},
                                   {"overheatingStatusCheckBox", 0},
                                   {"encoderStatusCheckBox", 0},
                                   {"angleLimitStatusCheckBox", 0}};
    const MaskedValues allSet = {{"inputVoltageStatusCheckBox", 1},
                                 {"hallStatusCheckBox", 2},
                                 {"overheatingStatusCheckBox", 4},
                                 {"encoderStatusCheckBox", 8},
                                 {"angleLimitStatusCheckBox", 16}};
    MaskedValues overheating = allClear;
    overheating["overheatingStatusCheckBox"] = 4;

    QTest::newRow("0x00") << 0x00 << allClear;
    QTest::newRow("0x1F: every shown bit") << 0x1F << allSet;
    QTest::newRow("0x60: bits shown nowhere") << 0x60 << allClear;
    QTest::newRow("0x80: bit 7 not examined") << 0x80 << allClear;
    QTest::newRow("0xFF") << 0xFF << allSet;
    QTest::newRow("0x64") << 0x64 << overheating;
}

void TestStatusHelper::hardwareStatusPassesMaskedValues()
{
    QFETCH(int, status);
    QFETCH(MaskedValues, expected);

    MaskedValues seen;
    QStringList order;
    StatusHelper::decodeHardwareStatus(uint8_t(status), [&](const QString &box, int masked) {
        QVERIFY2(!seen.count(box), qPrintable(box + " shown twice"));
        seen[box] = masked;
        order << box;
    });
    QCOMPARE(seen, expected);
    QCOMPARE(order, QStringList({"inputVoltageStatusCheckBox", "hallStatusCheckBox",
                                 "overheatingStatusCheckBox", "encoderStatusCheckBox",
                                 "angleLimitStatusCheckBox"}));
}

void TestStatusHelper::statusPacketFlags_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("checked"); // one letter per box, in the order of PacketFlags

    QTest::newRow("0 clears all") << 0x00 << "--------";
    QTest::newRow("1 process") << 0x01 << "x-------";
    QTest::newRow("2 instruction") << 0x02 << "-x------";
    QTest::newRow("3 checksum") << 0x03 << "--x-----";
    QTest::newRow("4 range") << 0x04 << "---x----";
    QTest::newRow("5 data length") << 0x05 << "----x---";
    QTest::newRow("6 data limit") << 0x06 << "-----x--";
    QTest::newRow("7 access") << 0x07 << "------x-";
    QTest::newRow("8 is no error number") << 0x08 << "--------";
    QTest::newRow("0x7F") << 0x7F << "--------";
    QTest::newRow("0x80 alert") << 0x80 << "-------x";
    QTest::newRow("0x82 alert only, not instruction") << 0x82 << "-------x";
    QTest::newRow("0xFF alert") << 0xFF << "-------x";
}

void TestStatusHelper::statusPacketFlags()
{
    QFETCH(int, error);
    QFETCH(QString, checked);

    const StatusHelper::PacketFlags flags = StatusHelper::decodeStatusPacket(int8_t(error));
    QString actual;
    for (bool flag : flags)
        actual += flag ? 'x' : '-';
    QCOMPARE(actual, checked);
}

void TestStatusHelper::updateSetsAllEightBoxes()
{
    QWidget view;
    Ui::EditView form;
    form.setupUi(&view);
    StatusHelper helper(&form);

    helper.updateStatusPacket(3);
    QVERIFY(form.checksumStatusCheckBox->isChecked());

    helper.updateStatusPacket(int8_t(0x82));
    QVERIFY(form.alertStatusCheckBox->isChecked());
    QVERIFY(!form.instructionStatusCheckBox->isChecked());
    QVERIFY2(!form.checksumStatusCheckBox->isChecked(), "only the current reply shows");

    helper.updateStatusPacket(0);
    const QList<QCheckBox *> boxes = form.zelvarPacketStatusGroupBox->findChildren<QCheckBox *>();
    QCOMPARE(boxes.size(), 8);
    for (QCheckBox *box : boxes)
        QVERIFY2(!box->isChecked(), qPrintable(box->objectName()));
}

void TestStatusHelper::helperWithoutFormIgnoresUpdates()
{
    StatusHelper helper(nullptr);
    helper.updateStatusPacket(int8_t(0x80));
    helper.updateStatusPacket(1);
}

void TestStatusHelper::helperOutlivingItsViewIgnoresUpdates()
{
    Ui::EditView form;
    auto view = std::make_unique<QWidget>();
    form.setupUi(view.get());
    StatusHelper helper(&form);
    view.reset();
    helper.updateStatusPacket(int8_t(0x80));
}

void TestStatusHelper::sharedInstanceIsMadeOnce()
{
    QVERIFY(!StatusHelper::exists());
    const auto formless = StatusHelper::instance();
    QVERIFY(StatusHelper::exists());

    QWidget view;
    Ui::EditView form;
    form.setupUi(&view);
    QCOMPARE(StatusHelper::create(&form), formless);
    QCOMPARE(StatusHelper::instance(), formless);

    // The helper made first, without a form, stays the one and keeps ignoring updates.
    formless->updateStatusPacket(int8_t(0x80));
    QVERIFY(!form.alertStatusCheckBox->isChecked());
}

QTEST_MAIN(TestStatusHelper)
#include "tst_statushelper.moc"
