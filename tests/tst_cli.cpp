#include "bridgefolder.h"
#include "datacolumns.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>
#include <set>

namespace {

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

Run runTool(const QStringList &arguments)
{
    QProcess tool;
    tool.start(ZELVAR_SERVO_PATH, arguments);
    Run run;
    if (!tool.waitForFinished(60000)) {
        tool.kill();
        tool.waitForFinished();
        return run;
    }
    run.exitCode = tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1;
    run.out = QString::fromUtf8(tool.readAllStandardOutput());
    run.err = QString::fromUtf8(tool.readAllStandardError());
    return run;
}

} // namespace

// The tool as a script sees it: arguments in, output and exit status out, against servos
// behind the pseudo-terminal bridge.
class TestCli : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Two servos share id 5, and the first answer of servo 7 is spoilt: the broadcast
        // at their rates is ambiguous.
        bridge.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        bridge.start(ZELVAR_VIRTUAL_BUS_PATH,
                     {"--name",  bridgeName, "--servo", "0@1000000",  "--servo", "1@1000000",
                      "--servo", "3@57600",  "--servo", "100@9600",   "--servo", "253@115200",
                      "--servo", "5@200000", "--servo", "5@200000",   "--servo", "6@200000",
                      "--servo", "7@400000", "--fault", "7:corrupt:1"});
        QVERIFY(bridge.waitForStarted(10000) && bridge.waitForReadyRead(10000));
        QVERIFY(bridge.readLine().startsWith("/dev/"));
    }

    void cleanupTestCase()
    {
        bridge.kill();
        bridge.waitForFinished(10000);
        QFile::remove(BridgeFolder::path() + '/' + bridgeName);
        QFile::remove(BridgeFolder::path() + '/' + bridgeName + ".pid");
    }

    void commands_data()
    {
        addColumns<QStringList, int, QString, QString>({"arguments", "exitCode", "out", "err"});
        const QStringList bus{"--port", bridgeName};
        const QString noAnswer =
            QString("servo 2 at 1000000 baud on %1: no answer").arg(bridgeName);

        QTest::newRow("help") << QStringList{"--help"} << 0 << "^Usage: zelvar-servo .*monitor ID"
                              << "^$";
        QTest::newRow("version") << QStringList{"--version"} << 0 << "^zelvar-servo \\d+\\.\\d+"
                                 << "^$";
        QTest::newRow("no command") << QStringList{} << 2 << "^$"
                                    << "no command given";
        QTest::newRow("unknown command") << QStringList{"frob"} << 2 << "^$"
                                         << "unknown command 'frob'";
        QTest::newRow("option of another command")
            << bus + QStringList{"ping", "1", "--keep", "id"} << 2 << "^$"
            << "ping has no option --keep";
        QTest::newRow("missing argument") << bus + QStringList{"read", "1", "0"} << 2 << "^$"
                                          << "usage: zelvar-servo read ID ADDR LEN";
        QTest::newRow("id out of range") << bus + QStringList{"ping", "254"} << 2 << "^$"
                                         << "ID must be a whole number from 0 to 253";
        QTest::newRow("no port") << QStringList{"ping", "1"} << 2 << "^$"
                                 << "no port given";
        QTest::newRow("unknown port")
            << QStringList{"--port", "no-such-port", "ping", "1"} << 1 << "^$"
            << "no-such-port";
        QTest::newRow("bad scan rates") << bus + QStringList{"scan", "--baud", "fast"} << 2 << "^$"
                                        << "--baud takes 'all'";
        QTest::newRow("bad scan ids") << bus + QStringList{"scan", "--ids", "9-3"} << 2 << "^$"
                                      << "--ids takes A-B";

        QTest::newRow("ports")
            << QStringList{"ports"} << 0
            << QString("(?m)^Virtual bus +Simulated Zelvar servos$.*^%1").arg(bridgeName) << "^$";
        QTest::newRow("ping") << bus + QStringList{"ping", "1"} << 0
                              << "^id 1: model 261, firmware 16\n$"
                              << "^$";
        QTest::newRow("ping at the servo's rate")
            << bus + QStringList{"--baud", "57600", "ping", "3"} << 0 << "^id 3: model 261"
            << "^$";
        QTest::newRow("ping id 253")
            << bus + QStringList{"--baud", "115200", "ping", "253"} << 0 << "^id 253: model 261"
            << "^$";
        QTest::newRow("ping absent servo")
            << bus + QStringList{"ping", "2"} << 1 << "^$" << noAnswer;
        QTest::newRow("ping json")
            << bus + QStringList{"--json", "ping", "0"} << 0 << "\"id\": 0,\\s+\"model\": 261"
            << "^$";
        QTest::newRow("read") << bus + QStringList{"read", "1", "0", "0x4"} << 0
                              << "^05 01 10 01\n$"
                              << "^$";
        QTest::newRow("read json") << bus + QStringList{"--json", "read", "1", "3", "1"} << 0
                                   << "\"bytes\": \\[\\s+1\\s+\\]"
                                   << "^$";
        QTest::newRow("read absent servo")
            << bus + QStringList{"read", "2", "0", "4"} << 1 << "^$" << noAnswer;
        QTest::newRow("get by description and control name")
            << bus + QStringList{"get", "1", "model number", "idSpinBox", "Actual voltage"} << 0
            << "^Model number: 261\nID: 1\nActual voltage: \\d+\\.\\d V\n$"
            << "^$";
        QTest::newRow("get unknown register")
            << bus + QStringList{"get", "1", "colour"} << 2 << "^$"
            << "no register 'colour'";
        QTest::newRow("set read-only")
            << bus + QStringList{"set", "1", "Actual voltage", "12"} << 2 << "^$"
            << "Actual voltage is read-only; nothing was written";
        QTest::newRow("set out of range")
            << bus + QStringList{"set", "1", "ID", "7", "target position", "100000deg"} << 2 << "^$"
            << "Target position takes -91799.91 to 91799.91 degrees; nothing was written";
        QTest::newRow("set without value")
            << bus + QStringList{"set", "1", "ID", "2", "Baud rate"} << 2 << "^$"
            << "'Baud rate' has no value";
        QTest::newRow("set absent servo")
            << bus + QStringList{"set", "2", "ID", "4"} << 1 << "^$" << noAnswer;
        QTest::newRow("dump")
            << bus + QStringList{"--baud", "57600", "dump", "3"} << 0
            << "(?m)^  3  ID +03 +3$.*^  9  CCW angle limit +FF 07 +3.142 radians$"
            << "^$";
        QTest::newRow("monitor") << bus + QStringList{"monitor", "1", "--csv", "--count", "2"} << 0
                                 << "^time \\[s\\],position \\[radians\\],velocity \\[rad/s\\].*\n"
                                    "0\\.\\d{3},[-\\d.]+,.*\n\\d\\.\\d{3},.*\n$"
                                 << "^$";
        QTest::newRow("reboot") << bus + QStringList{"reboot", "0"} << 0 << "^servo 0 rebooted\n$"
                                << "^$";
        QTest::newRow("reboot absent servo")
            << bus + QStringList{"reboot", "2"} << 1 << "^$" << noAnswer;
        QTest::newRow("reset keeping what it is told")
            << bus + QStringList{"reset", "0", "--keep", "id,baud"} << 0
            << "^servo 0 reset to its factory settings, keeping its id and baud rate\n$"
            << "^$";
        QTest::newRow("reset with a bad keep")
            << bus + QStringList{"reset", "0", "--keep", "all"} << 2 << "^$"
            << "--keep takes id,baud, id or none";
        QTest::newRow("scan of the in-process bus")
            << QStringList{"--port", "Virtual bus", "scan", "--ids", "0-3"} << 0
            << "^ ID     BAUD  MODEL  FIRMWARE\n  3    57600    261        16\n"
               "  0  1000000    261        16\n  1  1000000    261        16\n3 found in "
            << "^$";
        QTest::newRow("scan finding nothing")
            << bus + QStringList{"scan", "--baud", "19200", "--ids", "0-3"} << 1 << "^0 found in"
            << "^$";
    }

    void commands()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, out);
        QFETCH(QString, err);

        const Run run = runTool(arguments);
        QCOMPARE(run.exitCode, exitCode);
        const QRegularExpression::PatternOption dotAll =
            QRegularExpression::DotMatchesEverythingOption;
        QVERIFY2(QRegularExpression(out, dotAll).match(run.out).hasMatch(), qPrintable(run.out));
        QVERIFY2(QRegularExpression(err, dotAll).match(run.err).hasMatch(), qPrintable(run.err));
    }

    // Only the chosen registers change; a dry run changes nothing. Read-only registers
    // (voltage, temperature) change on their own and are left out.
    void setWritesOnlyWhatWasChosen_data()
    {
        addColumns<QStringList, QList<int>>({"changes", "changedAddresses"});
        QTest::newRow("dry run") << QStringList{"target position", "45deg", "--dry-run"}
                                 << QList<int>{};
        QTest::newRow("a 4-byte register in degrees")
            << QStringList{"target position", "45deg"} << QList<int>{78};
        QTest::newRow("two registers, one by control name")
            << QStringList{"Acknowledge response time", "100us",
                           "targetAngularVelocityDoubleSpinBox", "-10rpm"}
            << QList<int>{5, 82};
    }

    void setWritesOnlyWhatWasChosen()
    {
        QFETCH(QStringList, changes);
        QFETCH(QList<int>, changedAddresses);

        const QStringList bus{"--port", bridgeName};
        const QMap<int, QString> before = writableRegisters();
        const Run run = runTool(bus + QStringList{"set", "1"} + changes);
        QCOMPARE(run.exitCode, 0);
        const QMap<int, QString> after = writableRegisters();
        QCOMPARE(after.keys(), before.keys());
        QList<int> changed;
        for (auto it = before.begin(); it != before.end(); ++it) {
            if (after.value(it.key()) != it.value())
                changed << it.key();
        }
        QCOMPARE(changed, changedAddresses);
    }

    // Servos at ids 0, 1, 3, 100 and 253 over several rates; at 200000 two servos share
    // id 5, at 400000 the broadcast answer of 7 is damaged.
    void scanFindsEveryServo()
    {
        const Run run = runTool({"--port", bridgeName, "--json", "scan", "--baud",
                                 "9600,57600,115200,200000,400000,1000000"});
        QCOMPARE(run.exitCode, 0);
        const QJsonObject result = QJsonDocument::fromJson(run.out.toUtf8()).object();
        std::set<std::pair<int, int>> found;
        for (const QJsonValue &servo : result.value("servos").toArray())
            found.emplace(servo["id"].toInt(), servo["baud"].toInt());
        const std::set<std::pair<int, int>> expected{{0, 1000000}, {1, 1000000},  {3, 57600},
                                                     {100, 9600},  {253, 115200}, {6, 200000},
                                                     {7, 400000}};
        QCOMPARE(found, expected);
        const QJsonArray damaged = result.value("damaged").toArray();
        QCOMPARE(damaged.size(), 1);
        QCOMPARE(damaged.at(0)["id"].toInt(), 5);
        QVERIFY(run.err.contains("id 5 at 200000 baud: only damaged answers"));
        // Ids 0 to 5 at 200000 and every id at 400000, where no clean answer follows.
        QCOMPARE(result.value("singlePings").toInt(), 6 + 254);
    }

    // Save, change, load: the servo holds the saved values again. A dry run, a file of
    // another model and a damaged file write nothing.
    void parameterFileRoundTrip_data()
    {
        addColumns<QStringList, QString, int, bool>({"load", "file", "exitCode", "restored"});
        QTest::newRow("dry run") << QStringList{"--dry-run"} << "" << 0 << false;
        QTest::newRow("another model")
            << QStringList{} << "{\"formatVersion\": 1, \"modelNumber\": 999}" << 2 << false;
        QTest::newRow("damaged file")
            << QStringList{} << "{\"formatVersion\": 1, \"regis" << 2 << false;
        QTest::newRow("load") << QStringList{} << "" << 0 << true;
    }

    void parameterFileRoundTrip()
    {
        QFETCH(QStringList, load);
        QFETCH(QString, file);
        QFETCH(int, exitCode);
        QFETCH(bool, restored);

        const QStringList bus{"--port", bridgeName};
        QTemporaryDir folder;
        const QString saved = folder.filePath("servo1.json");
        QCOMPARE(runTool(bus + QStringList{"save", "1", saved}).exitCode, 0);
        const QMap<int, QString> original = writableRegisters();
        QCOMPARE(runTool(bus + QStringList{"set", "1", "Acknowledge response time", "100us",
                                           "Angular velocity limit", "1.5"})
                     .exitCode,
                 0);
        const QMap<int, QString> changed = writableRegisters();
        QVERIFY(changed != original);

        QString loaded = saved;
        if (!file.isEmpty()) {
            loaded = folder.filePath("other.json");
            QFile other(loaded);
            QVERIFY(other.open(QIODevice::WriteOnly));
            other.write(file.toUtf8());
        }
        const Run run = runTool(bus + QStringList{"load", "1", loaded} + load);
        QCOMPARE(run.exitCode, exitCode);
        QCOMPARE(writableRegisters(), restored ? original : changed);
        if (!restored)
            QCOMPARE(runTool(bus + QStringList{"load", "1", saved}).exitCode, 0);
    }

private:
    // Address to bytes, as dump shows them.
    QMap<int, QString> writableRegisters() const
    {
        // A machine under load may keep the bridge from answering in time; a comparison
        // needs the table itself.
        Run run;
        for (int attempt = 0; attempt < 3 && run.exitCode != 0; ++attempt)
            run = runTool({"--port", bridgeName, "--json", "dump", "1"});
        QMap<int, QString> registers;
        for (const QJsonValue &row : QJsonDocument::fromJson(run.out.toUtf8()).array()) {
            if (row["writable"].toBool())
                registers.insert(row["address"].toInt(), row["hex"].toString());
        }
        return registers;
    }

    const QString bridgeName = QString("cli-under-test-%1").arg(QCoreApplication::applicationPid());
    QProcess bridge;
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
