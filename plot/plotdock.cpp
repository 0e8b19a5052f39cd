#include "plot/plotdock.h"

#include "app/repaintpacer.h"
#include "plot/cachedgrid.h"
#include "plot/plotcanvas.h"
#include "plot/plotcursor.h"
#include "plot/samplecurve.h"
#include "plot/sampleseries.h"
#include "trace/tracecatalogue.h"

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_magnifier.h>
#include <qwt_plot_panner.h>
#include <qwt_plot_renderer.h>

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

namespace {
struct WindowChoice
{
    const char *text;
    int seconds;
};
// clang-format off
const WindowChoice windowChoices[] = {
    {QT_TRANSLATE_NOOP("PlotDock", "1 s"), 1},      {QT_TRANSLATE_NOOP("PlotDock", "2 s"), 2},
    {QT_TRANSLATE_NOOP("PlotDock", "5 s"), 5},      {QT_TRANSLATE_NOOP("PlotDock", "10 s"), 10},
    {QT_TRANSLATE_NOOP("PlotDock", "30 s"), 30},    {QT_TRANSLATE_NOOP("PlotDock", "1 min"), 60},
    {QT_TRANSLATE_NOOP("PlotDock", "2 min"), 120},  {QT_TRANSLATE_NOOP("PlotDock", "5 min"), 300},
    {QT_TRANSLATE_NOOP("PlotDock", "10 min"), 600},
};
// clang-format on
constexpr int defaultWindowSeconds = 10;
// Enough frames for a benchmark's percentiles; older ones are dropped.
constexpr size_t frameTimesKept = 100'000;

const QLatin1String targetPrefix("target-");

bool isTarget(const QString &key)
{
    return key.startsWith(targetPrefix);
}

// A channel keeps its colour whatever else is plotted; a target shares the colour of
// what it commands and is drawn dashed.
QColor channelColour(const QString &key)
{
    static const QColor palette[] = {QColor(0x1f, 0x77, 0xb4), QColor(0xd6, 0x27, 0x28),
                                     QColor(0x2c, 0xa0, 0x2c), QColor(0xff, 0x7f, 0x0e),
                                     QColor(0x94, 0x67, 0xbd), QColor(0x8c, 0x56, 0x4b),
                                     QColor(0xe3, 0x77, 0xc2), QColor(0x7f, 0x7f, 0x7f),
                                     QColor(0xbc, 0xbd, 0x22), QColor(0x17, 0xbe, 0xcf)};
    static const char *const quantities[] = {"position", "velocity",    "torque", "current",
                                             "voltage",  "temperature", "moving"};
    const QString base = isTarget(key) ? key.mid(targetPrefix.size()) : key;
    for (size_t i = 0; i < std::size(quantities); ++i) {
        if (base == QLatin1String(quantities[i]))
            return palette[i];
    }
    return palette[qHash(key) % std::size(palette)];
}

} // namespace

PlotDock::PlotDock(QWidget *parent)
    : QDockWidget(tr("Plot"), parent)
    , plotWidget(new QwtPlot)
{
    setObjectName(QStringLiteral("plotDock"));
    auto *content = new QWidget;
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    auto *canvas = new PlotCanvas([this](qint64 paintUs) { framePainted(paintUs); });
    plotWidget->setCanvas(canvas);
    plotWidget->setCanvasBackground(Qt::white);
    plotWidget->setAutoReplot(false);
    plotWidget->setAxisTitle(QwtPlot::xBottom, tr("Time before the latest reply (s)"));
    plotWidget->insertLegend(new QwtLegend, QwtPlot::BottomLegend);
    auto *grid = new CachedGrid;
    grid->setMajorPen(QColor(0xe0, 0xe0, 0xe0), 0.0, Qt::SolidLine);
    grid->attach(plotWidget);

    picker = new PlotCursor(canvas, [this](double t) { return readout(t); });
    panner = new QwtPlotPanner(canvas);
    magnifier = new QwtPlotMagnifier(canvas);
    panner->setEnabled(false);
    magnifier->setEnabled(false);

    buildToolBar();
    layout->addWidget(toolBar);
    layout->addWidget(plotWidget, 1);
    setWidget(content);

    samples.setWindow(qint64(defaultWindowSeconds) * 1'000'000);
    setAxisRanges(leftRange, rightRange);
    followLatest();

    frameTimer = new QTimer(this);
    frameTimer->setTimerType(Qt::PreciseTimer);
    frameTimer->setInterval(RepaintPacer::frameIntervalMs());
    connect(frameTimer, SIGNAL(timeout()), this, SLOT(on_frame()));
    connect(this, SIGNAL(visibilityChanged(bool)), this, SLOT(on_visibilityChanged(bool)));
}

// A hidden plot only gathers samples; it wakes nobody up at the screen's rate.
void PlotDock::on_visibilityChanged(bool visible)
{
    if (visible)
        frameTimer->start();
    else
        frameTimer->stop();
}

PlotDock::~PlotDock() = default;

void PlotDock::buildToolBar()
{
    auto *bar = new QToolBar;
    bar->setObjectName(QStringLiteral("plotToolBar"));
    bar->setIconSize(QSize(16, 16));
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    toolBar = bar;

    channelsMenu = new QMenu(tr("Channels"), this);
    channelsMenu->setObjectName(QStringLiteral("channelsMenu"));
    rightAxisMenu = new QMenu(tr("Right axis"), this);
    rightAxisMenu->setObjectName(QStringLiteral("rightAxisMenu"));
    connect(channelsMenu, SIGNAL(triggered(QAction *)), this,
            SLOT(on_channelsMenu_triggered(QAction *)));
    connect(rightAxisMenu, SIGNAL(triggered(QAction *)), this,
            SLOT(on_rightAxisMenu_triggered(QAction *)));
    auto *channelsButton = new QToolButton;
    channelsButton->setObjectName(QStringLiteral("channelsToolButton"));
    channelsButton->setText(tr("Channels"));
    channelsButton->setMenu(channelsMenu);
    channelsButton->setPopupMode(QToolButton::InstantPopup);
    bar->addWidget(channelsButton);
    fillChannelsMenu();

    QAction *actionAxes = bar->addAction(tr("Axes…"));
    actionAxes->setObjectName(QStringLiteral("actionAxes"));
    connect(actionAxes, SIGNAL(triggered()), this, SLOT(on_actionAxes_triggered()));

    bar->addSeparator();
    bar->addWidget(new QLabel(tr("Window: ")));
    windowComboBox = new QComboBox;
    windowComboBox->setObjectName(QStringLiteral("windowComboBox"));
    for (const WindowChoice &choice : windowChoices)
        windowComboBox->addItem(tr(choice.text), choice.seconds);
    windowComboBox->setCurrentIndex(windowComboBox->findData(defaultWindowSeconds));
    connect(windowComboBox, SIGNAL(activated(int)), this, SLOT(on_windowComboBox_activated(int)));
    bar->addWidget(windowComboBox);

    actionPause = bar->addAction(tr("Pause"));
    actionPause->setObjectName(QStringLiteral("actionPause"));
    actionPause->setCheckable(true);
    actionPause->setToolTip(tr("Pause to zoom (wheel) and pan (drag)"));
    connect(actionPause, SIGNAL(toggled(bool)), this, SLOT(setPaused(bool)));

    QAction *actionExport = bar->addAction(tr("Export…"));
    actionExport->setObjectName(QStringLiteral("actionExport"));
    connect(actionExport, SIGNAL(triggered()), this, SLOT(on_actionExport_triggered()));
    bar->addSeparator();
}

void PlotDock::addToolBarAction(QAction *action)
{
    static_cast<QToolBar *>(toolBar)->addAction(action);
}

void PlotDock::setAvailableChannels(const QVector<TraceChannel> &channels)
{
    available = channels;
    QStringList kept;
    for (const QString &key : qAsConst(selectedKeys)) {
        for (const TraceChannel &channel : channels) {
            if (channel.key == key)
                kept.append(key);
        }
    }
    if (kept == selectedKeys) {
        // Same channels, maybe other units: the samples stay, the curves convert anew.
        selected.clear();
        for (const QString &key : qAsConst(selectedKeys)) {
            for (const TraceChannel &channel : channels) {
                if (channel.key == key)
                    selected.append(channel);
            }
        }
        for (int channel = 0; channel < selected.size(); ++channel)
            samples.setConversion(channel, selected.at(channel).toDisplay);
        fillChannelsMenu();
        rebuildCurves();
    } else {
        setSelectedChannels(kept);
    }
}

void PlotDock::setSelectedChannels(const QStringList &keys)
{
    selected.clear();
    selectedKeys.clear();
    for (const QString &key : keys) {
        for (const TraceChannel &channel : qAsConst(available)) {
            if (channel.key == key && !selectedKeys.contains(key) &&
                selected.size() < SampleBuffer::maxChannels) {
                selected.append(channel);
                selectedKeys.append(key);
            }
        }
    }
    samples.setChannelCount(selected.size());
    for (int channel = 0; channel < selected.size(); ++channel)
        samples.setConversion(channel, selected.at(channel).toDisplay);
    row.assign(size_t(selected.size()), 0.0);
    fillChannelsMenu();
    rebuildCurves();
}

void PlotDock::setRightAxisChannels(const QStringList &keys)
{
    rightAxisKeys = keys;
    fillChannelsMenu();
    rebuildCurves();
}

void PlotDock::setAxisRanges(const AxisRangeDialog::Range &left,
                             const AxisRangeDialog::Range &right)
{
    leftRange = left;
    rightRange = right;
    applyAxisRange(QwtPlot::yLeft, leftRange);
    applyAxisRange(QwtPlot::yRight, rightRange);
    layoutChanged = true;
}

void PlotDock::applyAxisRange(int axis, const AxisRangeDialog::Range &range)
{
    if (range.autoscale)
        plotWidget->setAxisAutoScale(axis, true);
    else
        plotWidget->setAxisScale(axis, range.minimum, range.maximum);
}

void PlotDock::setWindowSeconds(int seconds)
{
    samples.setWindow(qint64(seconds) * 1'000'000);
    const int index = windowComboBox->findData(seconds);
    if (index >= 0)
        windowComboBox->setCurrentIndex(index);
    layoutChanged = true;
}

void PlotDock::rebuildCurves()
{
    for (SampleCurve *curve : curves)
        delete curve;
    curves.clear();
    bool rightUsed = false;
    for (int channel = 0; channel < selected.size(); ++channel) {
        const TraceChannel &trace = selected.at(channel);
        auto *curve = new SampleCurve(trace.title());
        // A cosmetic one-pixel pen: the raster engine draws it several times faster.
        QPen pen(channelColour(trace.key), 0.0);
        if (isTarget(trace.key))
            pen.setStyle(Qt::DashLine);
        curve->setPen(pen);
        curve->setData(new SampleSeries(samples, channel, timeOrigin));
        if (rightAxisKeys.contains(trace.key)) {
            curve->setYAxis(QwtPlot::yRight);
            rightUsed = true;
        }
        curve->attach(plotWidget);
        curves.push_back(curve);
    }
    plotWidget->enableAxis(QwtPlot::yRight, rightUsed);
    QStringList leftUnits, rightUnits;
    for (const TraceChannel &trace : qAsConst(selected)) {
        QStringList &units = rightAxisKeys.contains(trace.key) ? rightUnits : leftUnits;
        if (!trace.unit.isEmpty() && !units.contains(trace.unit))
            units.append(trace.unit);
    }
    plotWidget->setAxisTitle(QwtPlot::yLeft, leftUnits.join(QStringLiteral(", ")));
    plotWidget->setAxisTitle(QwtPlot::yRight, rightUnits.join(QStringLiteral(", ")));
    layoutChanged = true;
}

void PlotDock::fillChannelsMenu()
{
    channelsMenu->clear();
    rightAxisMenu->clear();
    QMenu *registers = nullptr;
    const bool full = selected.size() >= SampleBuffer::maxChannels;
    for (const TraceChannel &channel : qAsConst(available)) {
        const bool isRegister = channel.key.startsWith(TraceCatalogue::registerKeyPrefix);
        if (isRegister && !registers) {
            channelsMenu->addSeparator();
            registers = channelsMenu->addMenu(tr("Registers"));
        }
        QAction *action = (isRegister ? registers : channelsMenu)->addAction(channel.title());
        action->setData(channel.key);
        action->setCheckable(true);
        action->setChecked(selectedKeys.contains(channel.key));
        action->setEnabled(action->isChecked() || !full);
    }
    if (registers)
        connect(registers, SIGNAL(triggered(QAction *)), this,
                SLOT(on_channelsMenu_triggered(QAction *)));
    channelsMenu->addSeparator();
    channelsMenu->addMenu(rightAxisMenu);
    for (const TraceChannel &channel : qAsConst(selected)) {
        QAction *action = rightAxisMenu->addAction(channel.title());
        action->setData(channel.key);
        action->setCheckable(true);
        action->setChecked(rightAxisKeys.contains(channel.key));
    }
    rightAxisMenu->setEnabled(!selected.isEmpty());
}

void PlotDock::on_channelsMenu_triggered(QAction *action)
{
    const QString key = action->data().toString();
    // A submenu's action reaches its parent menu too; only the first call counts.
    if (action->parent() == rightAxisMenu || key.isEmpty() ||
        action->isChecked() == selectedKeys.contains(key))
        return;
    QStringList keys = selectedKeys;
    if (action->isChecked())
        keys.append(key);
    else
        keys.removeAll(key);
    // The menu is rebuilt under the action that was triggered.
    QTimer::singleShot(0, this, [this, keys] { setSelectedChannels(keys); });
}

void PlotDock::on_rightAxisMenu_triggered(QAction *action)
{
    QStringList keys = rightAxisKeys;
    const QString key = action->data().toString();
    if (action->isChecked())
        keys.append(key);
    else
        keys.removeAll(key);
    QTimer::singleShot(0, this, [this, keys] { setRightAxisChannels(keys); });
}

void PlotDock::on_windowComboBox_activated(int index)
{
    setWindowSeconds(windowComboBox->itemData(index).toInt());
}

void PlotDock::on_actionAxes_triggered()
{
    AxisRangeDialog dialog(this);
    dialog.setRanges(leftRange, rightRange);
    if (dialog.exec() == QDialog::Accepted)
        setAxisRanges(dialog.left(), dialog.right());
}

void PlotDock::on_actionExport_triggered()
{
    const QString fileName = QFileDialog::getSaveFileName(
        this, tr("Export plot"), QString(), tr("PNG image (*.png);;SVG drawing (*.svg)"));
    if (fileName.isEmpty())
        return;
    if (!exportTo(fileName))
        QMessageBox::critical(this, tr("Error"), tr("Cannot write the plot to %1").arg(fileName));
}

bool PlotDock::exportTo(const QString &fileName)
{
    const QString format = QFileInfo(fileName).suffix().toLower();
    QwtPlotRenderer renderer;
    if (format == QLatin1String("png")) {
        QImage image(plotWidget->size(), QImage::Format_ARGB32);
        image.fill(Qt::white);
        renderer.renderTo(plotWidget, image);
        return image.save(fileName, "PNG");
    }
    if (format != QLatin1String("svg"))
        return false;
    QFile::remove(fileName);
    // Millimetres at the renderer's 85 dpi, so the drawing has the widget's proportions.
    const QSizeF sizeMM = QSizeF(plotWidget->size()) * 25.4 / 85.0;
    renderer.renderDocument(plotWidget, fileName, QStringLiteral("svg"), sizeMM, 85);
    return QFileInfo(fileName).size() > 0;
}

void PlotDock::clear()
{
    samples.clear();
    actionPause->setChecked(false);
    layoutChanged = true;
}

void PlotDock::freeze()
{
    samples.freeze();
    layoutChanged = true;
}

void PlotDock::addTableReply(qint64 timeUs, const QByteArray &reply)
{
    if (selected.isEmpty() || samples.isPaused() || samples.isFrozen())
        return;
    for (int channel = 0; channel < selected.size(); ++channel)
        row[size_t(channel)] = selected.at(channel).raw(reply);
    samples.append(timeUs, row.data());
}

void PlotDock::setPaused(bool paused)
{
    if (actionPause->isChecked() != paused) {
        actionPause->setChecked(paused);
        return;
    }
    samples.setPaused(paused);
    actionPause->setText(paused ? tr("Resume") : tr("Pause"));
    panner->setEnabled(paused);
    magnifier->setEnabled(paused);
    if (!paused)
        setAxisRanges(leftRange, rightRange);
    layoutChanged = true;
}

void PlotDock::followLatest()
{
    timeOrigin = samples.size() > 0 ? samples.time(samples.size() - 1) : 0.0;
    plotWidget->setAxisScale(QwtPlot::xBottom, -double(samples.window()) / 1e6, 0.0);
}

void PlotDock::on_frame()
{
    if (!isVisible())
        return;
    const bool changed = samples.takeChanged();
    if (!changed && !layoutChanged)
        return;
    // While paused the axes are the user's to zoom and pan.
    if (!samples.isPaused() || layoutChanged)
        followLatest();
    layoutChanged = false;
    QElapsedTimer clock;
    clock.start();
    plotWidget->replot();
    pendingFrameUs = clock.nsecsElapsed() / 1000;
}

// A frame costs its replot (scales, axes) and the canvas's paint that follows it.
void PlotDock::framePainted(qint64 paintUs)
{
    if (pendingFrameUs < 0)
        return;
    if (frameTimes.size() < frameTimesKept)
        frameTimes.push_back(pendingFrameUs + paintUs);
    pendingFrameUs = -1;
}

std::vector<qint64> PlotDock::takeFrameTimes()
{
    return std::exchange(frameTimes, {});
}

QString PlotDock::readout(double t) const
{
    QString text = tr("<b>%1 s</b>").arg(t, 0, 'f', 3);
    for (int channel = 0; channel < selected.size(); ++channel) {
        const TraceChannel &trace = selected.at(channel);
        const double shown = samples.valueAt(channel, t + timeOrigin);
        const QString value = std::isnan(shown) ? tr("no reply") : QString::number(shown, 'g', 6);
        text += QStringLiteral("<br><font color=\"%1\">%2: %3</font>")
                    .arg(channelColour(trace.key).name(), trace.title().toHtmlEscaped(), value);
    }
    return text;
}
