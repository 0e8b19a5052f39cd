#include "datacolumns.h"
#include "device/devicehelper.h"
#include "settings/settingsdialog.h"
#include "views/registerview.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QtTest>

namespace {

// An identify reply whose model number bytes (5 and 6) say AX-12, or anything else.
QByteArray modelReply(bool ax12)
{
    QByteArray reply(13, '\0');
    reply[5] = ax12 ? 12 : 0x50;
    return reply;
}

struct Cell
{
    int bank, row;
    QString address, value;
};

} // namespace
Q_DECLARE_METATYPE(QVector<Cell>)

class TestRegisterView : public QObject
{
    Q_OBJECT

    std::unique_ptr<SettingsDialog> settingsDialog;
    std::unique_ptr<RegisterView> view;
    std::shared_ptr<DeviceHelper> deviceHelper;

    void loadDevice(bool ax12)
    {
        view->connectDevice();
        deviceHelper->onModelNumberRead(modelReply(ax12));
    }
    void setDecimal(bool decimal)
    {
        settingsDialog
            ->findChild<QRadioButton *>(decimal ? QStringLiteral("decimalRadioButton")
                                                : QStringLiteral("hexRadioButton"))
            ->setChecked(true);
        settingsDialog->findChild<QPushButton *>(QStringLiteral("okButton"))->click();
        QCOMPARE(settingsDialog->units().servoData, decimal ? 1 : 0);
    }
    QTableWidget *table(int bank) const { return view->bankTable(bank); }
    int filledRows() const
    {
        int filled = 0;
        for (int bank = 0; bank < 4; ++bank)
            for (int row = 0; row < table(bank)->rowCount(); ++row)
                filled += table(bank)->item(row, 0) ? 1 : 0;
        return filled;
    }

private slots:
    void initTestCase()
    {
        settingsDialog = std::make_unique<SettingsDialog>();
        deviceHelper = DeviceHelper::instance(nullptr, [] {});
    }
    void init()
    {
        view = std::make_unique<RegisterView>();
        setDecimal(false);
    }

    void rowsPerBank_data()
    {
        addColumns<int, QVector<int>>({"model", "rows"}); // 0: not identified yet
        QTest::newRow("not identified") << 0 << QVector<int>{0, 0, 0, 0};
        QTest::newRow("own family") << 0x50 << QVector<int>{27, 14, 24, 22};
        QTest::newRow("AX-12 has no register map") << 12 << QVector<int>{0, 0, 0, 0};
    }
    void rowsPerBank()
    {
        QFETCH(int, model);
        QFETCH(QVector<int>, rows);
        if (model)
            loadDevice(model == 12);
        for (int bank = 0; bank < 4; ++bank) {
            QCOMPARE(table(bank)->rowCount(), rows[bank]);
            QCOMPARE(table(bank)->selectionMode(), QAbstractItemView::NoSelection);
            QCOMPARE(table(bank)->editTriggers(), QAbstractItemView::NoEditTriggers);
            // The 8 pt style replaces the form's 10 pt one.
            QVERIFY(table(bank)->styleSheet().contains("font-size: 8pt"));
        }
    }

    void disconnectEmptiesTablesAndDropsEveryReceiver()
    {
        QObject bystander;
        int bystanderCalls = 0;
        connect(deviceHelper.get(), &DeviceHelper::loadDeviceMetadata, &bystander,
                [&bystanderCalls] { ++bystanderCalls; });

        loadDevice(false);
        QCOMPARE(bystanderCalls, 1);
        view->updateRegister(3, 1, 7);
        QVERIFY(table(0)->item(3, 1));

        view->disconnectDevice();
        for (int bank = 0; bank < 4; ++bank)
            QCOMPARE(table(bank)->rowCount(), 0);

        deviceHelper->onModelNumberRead(modelReply(false));
        QCOMPARE(bystanderCalls, 1);
        QCOMPARE(table(0)->rowCount(), 0);
    }

    void updateRegister_data()
    {
        addColumns<bool, int, int, uint, QVector<Cell>>(
            {"decimal", "address", "size", "value", "cells"});

        QTest::newRow("2 bytes, hex")
            << false << 10 << 2 << 0x1234u
            << QVector<Cell>{{0, 10, "0x0a", "0x34"}, {0, 11, "0x0b", "0x12"}};
        QTest::newRow("1 byte shows only its own")
            << false << 3 << 1 << 0xABCDu << QVector<Cell>{{0, 3, "0x03", "0xcd"}};
        QTest::newRow("4 bytes, one bank") << false << 86 << 4 << 0x89ABCDEFu
                                           << QVector<Cell>{{3, 0, "0x56", "0xef"},
                                                            {3, 1, "0x57", "0xcd"},
                                                            {3, 2, "0x58", "0xab"},
                                                            {3, 3, "0x59", "0x89"}};
        QTest::newRow("3 bytes show two") << true << 78 << 3 << 0x030201u
                                          << QVector<Cell>{{2, 16, "78", "1"}, {2, 17, "79", "2"}};
        QTest::newRow("across banks")
            << false << 26 << 2 << 0x0201u
            << QVector<Cell>{{0, 26, "0x1a", "0x01"}, {1, 0, "0x1b", "0x02"}};
    }
    void updateRegister()
    {
        QFETCH(bool, decimal);
        QFETCH(int, address);
        QFETCH(int, size);
        QFETCH(uint, value);
        QFETCH(QVector<Cell>, cells);

        loadDevice(false);
        setDecimal(decimal);
        view->updateRegister(quint16(address), quint8(size), value);

        QCOMPARE(filledRows(), cells.size());
        for (const Cell &cell : cells) {
            QTableWidget *bankTable = table(cell.bank);
            QVERIFY(bankTable->item(cell.row, 0));
            QCOMPARE(bankTable->item(cell.row, 0)->text(), cell.address);
            QCOMPARE(bankTable->item(cell.row, 1)->text(), cell.value);
            QVERIFY(!bankTable->item(cell.row, 2)->text().isEmpty());
        }
    }

    void ignoredUpdates()
    {
        view->connectDevice();
        view->updateRegister(3, 1, 1);
        QVERIFY(!table(0)->item(3, 0));

        loadDevice(false);
        // 41 to 47 are gaps of the map; 200 is past the table.
        view->updateRegister(41, 4, 0xFFFFFFFF);
        view->setRegisterByte(200, 1);
        QCOMPARE(filledRows(), 0);
    }

    void readOnlyRowsAreTintedAndFormatReachesOnlyUpdatedCells()
    {
        loadDevice(false);
        view->setRegisterByte(0, 1);
        view->setRegisterByte(3, 255);
        const QColor tint(227, 235, 240, 150);
        for (int column = 0; column < 3; ++column) {
            QCOMPARE(table(0)->item(0, column)->background().color(), tint);
            QCOMPARE(table(0)->item(3, column)->background().style(), Qt::NoBrush);
        }
        QCOMPARE(table(0)->item(0, 2)->text(), QStringLiteral("Model number (lower)"));

        view->setRegisterByte(4, 255);
        setDecimal(true);
        view->setRegisterByte(4, 255);
        QCOMPARE(table(0)->item(3, 1)->text(), QStringLiteral("0xff"));
        QCOMPARE(table(0)->item(4, 1)->text(), QStringLiteral("255"));
    }
};

QTEST_MAIN(TestRegisterView)
#include "tst_registerview.moc"
