#pragma once

#include "plot/axisrangedialog.h"
#include "trace/samplebuffer.h"
#include "trace/tracechannel.h"

#include <QDockWidget>
#include <QStringList>
#include <QVector>
#include <vector>

class QAction;
class QActionGroup;
class QComboBox;
class QTimer;
class QMenu;
class QwtPlot;
class QwtPlotMagnifier;
class QwtPlotPanner;
class QwtPlotPicker;
class SampleCurve;

// The "Plot" dock: the chosen channels of every polled table against time. Replies only
// fill the sample buffer; the plot is drawn at most once per screen frame, and only when
// something changed and the dock is visible.
class PlotDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit PlotDock(QWidget *parent = nullptr);
    ~PlotDock() override;

    // What the connected model offers; the chosen channels are kept by key where they
    // still exist, so a change of units rescales the plot instead of emptying it.
    void setAvailableChannels(const QVector<TraceChannel> &channels);
    // Up to SampleBuffer::maxChannels; a new choice starts the plot afresh.
    void setSelectedChannels(const QStringList &keys);
    QStringList selectedChannels() const { return selectedKeys; }
    QVector<TraceChannel> selectedChannelList() const { return selected; }
    void setRightAxisChannels(const QStringList &keys);
    void setAxisRanges(const AxisRangeDialog::Range &left, const AxisRangeDialog::Range &right);
    // Seconds shown, 1 to 600.
    void setWindowSeconds(int seconds);

    // Placed on the plot's tool bar, after its own actions.
    void addToolBarAction(QAction *action);

    const SampleBuffer &buffer() const { return samples; }
    QwtPlot *plot() const { return plotWidget; }
    // How long each drawn frame took, in microseconds, since the last call.
    std::vector<qint64> takeFrameTimes();
    // Line-by-line readout of every channel at time t, in seconds from the latest reply
    // drawn (negative before it).
    QString readout(double t) const;

public slots:
    void clear();
    void freeze();
    void addTableReply(qint64 timeUs, const QByteArray &reply);
    void setPaused(bool paused);
    // PNG or SVG by the file's suffix; false when the file could not be written.
    bool exportTo(const QString &fileName);

private slots:
    void on_frame();
    void on_visibilityChanged(bool visible);
    void on_channelsMenu_triggered(QAction *action);
    void on_rightAxisMenu_triggered(QAction *action);
    void on_windowComboBox_activated(int index);
    void on_actionAxes_triggered();
    void on_actionExport_triggered();

private:
    void buildToolBar();
    void rebuildCurves();
    void fillChannelsMenu();
    void applyAxisRange(int axis, const AxisRangeDialog::Range &range);
    void followLatest();
    void framePainted(qint64 paintUs);

    QVector<TraceChannel> available;
    QVector<TraceChannel> selected;
    QStringList selectedKeys;
    QStringList rightAxisKeys;
    SampleBuffer samples;
    std::vector<SampleCurve *> curves;
    std::vector<double> row;
    QwtPlot *plotWidget;
    QwtPlotPicker *picker;
    QwtPlotPanner *panner;
    QwtPlotMagnifier *magnifier;
    QWidget *toolBar;
    QMenu *channelsMenu;
    QMenu *rightAxisMenu;
    QComboBox *windowComboBox;
    QAction *actionPause;
    QTimer *frameTimer;
    AxisRangeDialog::Range leftRange;
    AxisRangeDialog::Range rightRange;
    bool layoutChanged = true;
    // The time axis counts back from the latest reply, so it keeps its scale while the
    // curves move: a scrolling scale would be laid out and its labels drawn anew each frame.
    double timeOrigin = 0.0;
    std::vector<qint64> frameTimes;
    // The replot's share of a frame whose canvas is yet to be painted; -1 when none is.
    qint64 pendingFrameUs = -1;
};
