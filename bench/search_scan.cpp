// Scans ids 1 to 10 over every baud rate of the in-process virtual bus, then probes
// the same way one by one to show what each probe costs beyond its 20 ms wait.
#include "search/searchdialog.h"
#include "simulator/virtualbusportprovider.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QSpinBox>
#include <QTreeWidget>
#include <algorithm>
#include <cstdio>
#include <numeric>
#include <vector>

namespace {

constexpr double waitMs = 20.0;
const int baudRates[] = {9600,   19200,  38400,  57600,  115200,
                         200000, 250000, 400000, 500000, 1000000};

QStringList foundServos(const QTreeWidget *tree)
{
    QStringList found;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *root = tree->topLevelItem(i);
        for (int j = 0; j < root->childCount(); ++j)
            found << QStringLiteral("id %1 at %2 (%3)")
                         .arg(root->child(j)->text(1), root->text(0), root->child(j)->text(2));
    }
    return found;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    VirtualBusPortProvider::installProcessBus();

    SearchDialog dialog;
    dialog.show();
    auto *ports = dialog.findChild<QComboBox *>(QStringLiteral("serialPortInfoListBox"));
    ports->setCurrentText(QString::fromLatin1(VirtualBusPortProvider::PortName));
    if (ports->currentText() != QLatin1String(VirtualBusPortProvider::PortName)) {
        std::fprintf(stderr, "The virtual bus is not in the port list\n");
        return 1;
    }
    dialog.findChild<QSpinBox *>(QStringLiteral("upperSearchRangeSpinBox"))->setValue(10);
    dialog.findChild<QSpinBox *>(QStringLiteral("lowerSearchRangeSpinBox"))->setValue(1);
    for (QAbstractButton *box : dialog.findChildren<QAbstractButton *>())
        if (box->objectName().startsWith(QLatin1String("baudRate")))
            box->setChecked(true);

    int probes = 0;
    QObject::connect(&dialog, &SearchDialog::doScanServo, [&probes] { ++probes; });
    QElapsedTimer clock;
    clock.start();
    dialog.scan();
    const double totalMs = clock.nsecsElapsed() / 1e6;
    const int scanProbes = probes;
    const QStringList found = foundServos(dialog.findChild<QTreeWidget *>());

    std::printf("scan of ids 1-10 over %zu baud rates\n", std::size(baudRates));
    std::printf("  total time        %9.1f ms\n", totalMs);
    std::printf("  probes            %9d\n", scanProbes);
    std::printf("  servos found      %9lld\n", static_cast<long long>(found.size()));
    for (const QString &servo : found)
        std::printf("    %s\n", qPrintable(servo));

    // The same probes one by one, timed: an unanswered probe costs its wait plus the
    // overhead (thread start, port open, thread end, port close).
    std::vector<double> overheads;
    std::vector<double> answered;
    QList<int> foundIds;
    for (int baudRate : baudRates) {
        for (int id = 1; id <= 10; ++id) {
            if (foundIds.contains(id))
                continue;
            clock.restart();
            const bool replied = !dialog.probe(id, baudRate).isEmpty();
            const double ms = clock.nsecsElapsed() / 1e6;
            if (replied) {
                foundIds.append(id);
                answered.push_back(ms);
            } else {
                overheads.push_back(ms - waitMs);
            }
        }
    }
    std::sort(overheads.begin(), overheads.end());
    const double mean = std::accumulate(overheads.begin(), overheads.end(), 0.0) /
                        std::max<size_t>(1, overheads.size());
    std::printf("overhead per probe beyond the %.0f ms wait, over %zu unanswered probes\n", waitMs,
                overheads.size());
    std::printf("  mean              %9.3f ms\n", mean);
    std::printf("  median            %9.3f ms\n",
                overheads.empty() ? 0.0 : overheads[overheads.size() / 2]);
    std::printf("  max               %9.3f ms\n", overheads.empty() ? 0.0 : overheads.back());
    for (double ms : answered)
        std::printf("  answered probe    %9.3f ms\n", ms);
    // The scan as a whole, charging each answered probe's full time as overhead: an upper bound.
    const size_t unanswered = size_t(scanProbes) - answered.size();
    std::printf("  whole scan        %9.3f ms per probe, beyond %zu waits of %.0f ms\n",
                (totalMs - waitMs * double(unanswered)) / std::max(1, scanProbes), unanswered,
                waitMs);
    std::printf("target: mean overhead at most 1 ms per probe: %s\n",
                mean <= 1.0 ? "met" : "MISSED");
    return 0;
}
