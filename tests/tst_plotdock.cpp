#include "device/physicalquantities.h"
#include "device/zelvarv1.h"
#include "plot/cachedgrid.h"
#include "plot/plotdock.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"
#include "trace/tracecatalogue.h"

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>

#include <QAction>
#include <QMenu>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// The own family's channels with angles in radians (0) or degrees (1).
QVector<TraceChannel> channels(int angleUnit)
{
    PhysicalQuantities units;
    units.angle = angleUnit;
    auto decoder =
        std::make_shared<TelemetryDecoder>(std::make_shared<RegisterCatalogue>(ZelvarV1()),
                                           std::make_shared<PhysicalQuantities>(units));
    return TraceCatalogue(decoder).channels();
}

// A whole-table reply with the actual position (address 86) at the given counts.
QByteArray positionReply(qint32 counts)
{
    QByteArray reply(118 + 11, '\0');
    for (int i = 0; i < 4; ++i)
        reply[9 + 86 + i] = char(quint32(counts) >> (8 * i));
    return reply;
}

void feed(PlotDock &dock, int replies, qint64 fromUs = 0)
{
    for (int i = 0; i < replies; ++i)
        dock.addTableReply(fromUs + i * 10'000, positionReply(1024));
}

} // namespace

class TestPlotDock : public QObject
{
    Q_OBJECT

private slots:
    void unitsSwitchedMidPlotRescaleTheHistory()
    {
        PlotDock dock;
        dock.setAvailableChannels(channels(0));
        dock.setSelectedChannels({"position"});
        feed(dock, 20);
        QCOMPARE(dock.buffer().size(), 20);
        QVERIFY(qAbs(dock.buffer().value(0, 19) - 1.5707963) < 1e-6);

        dock.setAvailableChannels(channels(1));
        QCOMPARE(dock.buffer().size(), 20);
        QVERIFY(qAbs(dock.buffer().value(0, 19) - 90.0) < 1e-6);
        QCOMPARE(dock.plot()->axisTitle(QwtPlot::yLeft).text(), QString("degrees"));
        QVERIFY(dock.readout(0.1).contains("Actual position [degrees]: 90"));
    }

    void keepsAtMostEightChannels()
    {
        PlotDock dock;
        const QVector<TraceChannel> offered = channels(0);
        QStringList keys;
        for (const TraceChannel &channel : offered)
            keys.append(channel.key);
        dock.setAvailableChannels(offered);
        dock.setSelectedChannels(keys);
        QCOMPARE(dock.selectedChannels(), keys.mid(0, SampleBuffer::maxChannels));
        QCOMPARE(dock.buffer().channelCount(), SampleBuffer::maxChannels);
        // With eight chosen, only those can be unticked; nothing more can be added.
        const QMenu *menu = dock.findChild<QMenu *>("channelsMenu");
        const QList<QAction *> actions = menu->actions();
        const QAction *ninth = *std::find_if(actions.begin(), actions.end(), [&](QAction *action) {
            return action->data().toString() == keys.at(SampleBuffer::maxChannels);
        });
        QVERIFY(!ninth->isEnabled());
        QVERIFY(actions.first()->isEnabled() && actions.first()->isChecked());
    }

    void drawsPerFrameNotPerReply()
    {
        PlotDock dock;
        dock.setAvailableChannels(channels(0));
        dock.setSelectedChannels({"position"});
        dock.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dock));
        QTest::qWait(100);
        dock.takeFrameTimes();

        // Replies faster than frames: all of them make one frame, and nothing new none.
        feed(dock, 200);
        size_t frames = 0;
        QTRY_VERIFY((frames += dock.takeFrameTimes().size()) >= 1);
        QTest::qWait(100);
        frames += dock.takeFrameTimes().size();
        QCOMPARE(frames, size_t(1));

        dock.hide();
        feed(dock, 200, 3'000'000);
        QTest::qWait(100);
        QCOMPARE(dock.takeFrameTimes().size(), size_t(0));
    }

    void exportsPngAndSvg()
    {
        PlotDock dock;
        dock.setAvailableChannels(channels(0));
        dock.setSelectedChannels({"position"});
        dock.resize(600, 400);
        feed(dock, 100);
        QTemporaryDir folder;
        QVERIFY(dock.exportTo(folder.filePath("plot.png")));
        QVERIFY(!QImage(folder.filePath("plot.png")).isNull());
        QVERIFY(dock.exportTo(folder.filePath("plot.SVG")));
        QFile svg(folder.filePath("plot.SVG"));
        QVERIFY(svg.open(QIODevice::ReadOnly));
        QVERIFY(svg.readAll().contains("<svg"));
        QVERIFY(!dock.exportTo(folder.filePath("plot.bmp")));
        QVERIFY(!dock.exportTo(folder.filePath("missing/plot.png")));
    }

    // The grid kept as a picture follows a change of scale: it matches a plot drawn with the
    // new scale from the start.
    void gridFollowsTheScale()
    {
        const auto canvasImage = [](QwtPlot &plot) {
            plot.replot();
            return plot.canvas()->grab().toImage();
        };
        const auto makePlot = [](QwtPlot &plot, double top) {
            (new CachedGrid)->attach(&plot);
            plot.setCanvasBackground(Qt::white);
            plot.setAxisScale(QwtPlot::yLeft, 0.0, top);
            plot.resize(400, 300);
            plot.show();
        };
        QwtPlot changed;
        makePlot(changed, 10.0);
        QVERIFY(QTest::qWaitForWindowExposed(&changed));
        const QImage before = canvasImage(changed);
        changed.setAxisScale(QwtPlot::yLeft, 0.0, 3.0);
        const QImage after = canvasImage(changed);

        QwtPlot fresh;
        makePlot(fresh, 3.0);
        QVERIFY(QTest::qWaitForWindowExposed(&fresh));
        QVERIFY(after != before);
        QCOMPARE(after, canvasImage(fresh));
    }
};

QTEST_MAIN(TestPlotDock)
#include "tst_plotdock.moc"
