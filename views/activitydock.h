#pragma once

#include <QDockWidget>
#include <QTimer>

class LinkMonitor;
class QCheckBox;
class QLabel;
class QSortFilterProxyModel;
class QTableView;
class TransactionTableModel;

// The "Activity" dock: every transaction on the link, newest last, with the bytes of the
// one picked. It follows the monitor only while it is on screen.
class ActivityDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit ActivityDock(const LinkMonitor *monitor, QWidget *parent = nullptr);

    // The selected rows (every column, bytes too) as text, one per line.
    QString selectedText() const;
    bool saveTo(const QString &fileName) const;

public slots:
    void copySelection();
    void save();
    void setRoutinePollsHidden(bool hidden);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void on_visibilityChanged(bool visible);
    void on_refresh();
    void on_currentRowChanged();

private:
    const LinkMonitor *monitor;
    TransactionTableModel *model;
    QSortFilterProxyModel *filter;
    QTableView *table;
    QCheckBox *hidePollsCheckBox;
    QLabel *bytesLabel;
    QTimer refreshTimer;
};
