// The command-line tool's scan (a broadcast ping per rate) beside the search dialog's
// per-id scan, both over ids 0 to 253 at the dialog's ten rates of the in-process virtual
// bus, with servos at ids 0, 1, 3, 100 and 253 spread over five of them.
#include "cli/busclient.h"
#include "cli/busscan.h"
#include "search/searchdialog.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QSpinBox>
#include <QTreeWidget>
#include <cstdio>

namespace {

QStringList dialogFinds(const QTreeWidget *tree)
{
    QStringList found;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *root = tree->topLevelItem(i);
        for (int j = 0; j < root->childCount(); ++j)
            found << QStringLiteral("%1@%2").arg(root->child(j)->text(1), root->text(0));
    }
    return found;
}

void print(const char *who, double seconds, const QStringList &found)
{
    std::printf("%-28s %8.2f s   %lld found: %s\n", who, seconds,
                static_cast<long long>(found.size()), qPrintable(found.join(' ')));
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const auto bus = VirtualBusPortProvider::installProcessBus();
    bus->addServo(100, 9600);
    bus->addServo(253, 115200);
    const QString port = QString::fromLatin1(VirtualBusPortProvider::PortName);

    std::printf("ids 0-253 at %zu rates on the in-process virtual bus; servos at "
                "0@1000000 1@1000000 3@57600 100@9600 253@115200\n",
                BusScan::searchRates().size());

    BusClient client;
    BusScan scan(client, port);
    QElapsedTimer clock;
    clock.start();
    const std::vector<FoundServo> servos = scan.run(BusScan::searchRates(), 0, 253);
    const double toolSeconds = clock.nsecsElapsed() / 1e9;
    QStringList toolFound;
    for (const FoundServo &servo : servos)
        toolFound << QStringLiteral("%1@%2").arg(servo.id).arg(servo.baudRate);
    print("zelvar-servo scan (broadcast)", toolSeconds, toolFound);

    SearchDialog dialog;
    dialog.show();
    dialog.findChild<QComboBox *>(QStringLiteral("serialPortInfoListBox"))->setCurrentText(port);
    dialog.findChild<QSpinBox *>(QStringLiteral("upperSearchRangeSpinBox"))->setValue(253);
    dialog.findChild<QSpinBox *>(QStringLiteral("lowerSearchRangeSpinBox"))->setValue(0);
    for (QAbstractButton *box : dialog.findChildren<QAbstractButton *>())
        if (box->objectName().startsWith(QLatin1String("baudRate")))
            box->setChecked(true);
    clock.restart();
    dialog.scan();
    const double dialogSeconds = clock.nsecsElapsed() / 1e9;
    print("search dialog (per id)", dialogSeconds, dialogFinds(dialog.findChild<QTreeWidget *>()));

    const double speedUp = dialogSeconds / toolSeconds;
    std::printf("single pings after the broadcasts: %d\n", scan.singlePings());
    std::printf("the tool is %.1f times faster; target at least 3: %s\n", speedUp,
                speedUp >= 3.0 ? "met" : "MISSED");
    return 0;
}
