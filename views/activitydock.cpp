#include "views/activitydock.h"

#include "monitor/linkmonitor.h"
#include "monitor/transactiontablemodel.h"
#include "monitor/transactiontext.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QTextStream>
#include <QVBoxLayout>
#include <algorithm>

namespace {
// Fast enough to feel live, slow enough that a 10 ms poll does not redraw the table per reply.
constexpr int refreshIntervalMs = 250;
} // namespace

ActivityDock::ActivityDock(const LinkMonitor *monitor, QWidget *parent)
    : QDockWidget(tr("Activity"), parent)
    , monitor(monitor)
    , model(new TransactionTableModel(monitor, this))
    , filter(new QSortFilterProxyModel(this))
{
    setObjectName(QStringLiteral("activityDock"));
    filter->setSourceModel(model);
    filter->setFilterRole(TransactionTableModel::RoutineRole);

    auto *content = new QWidget(this);
    auto *layout = new QVBoxLayout(content);
    layout->setContentsMargins(4, 4, 4, 4);

    auto *bar = new QHBoxLayout;
    hidePollsCheckBox = new QCheckBox(tr("Hide routine polls"), content);
    hidePollsCheckBox->setObjectName(QStringLiteral("hidePollsCheckBox"));
    auto *copyButton = new QPushButton(tr("Copy"), content);
    copyButton->setObjectName(QStringLiteral("copyButton"));
    auto *saveButton = new QPushButton(tr("Save..."), content);
    saveButton->setObjectName(QStringLiteral("saveButton"));
    bar->addWidget(hidePollsCheckBox);
    bar->addStretch();
    bar->addWidget(copyButton);
    bar->addWidget(saveButton);
    layout->addLayout(bar);

    table = new QTableView(content);
    table->setObjectName(QStringLiteral("activityTableView"));
    table->setModel(filter);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setWordWrap(false);
    // Fixed row heights and column widths: nothing is measured per row, 10,000 rows stay cheap.
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 4);
    QHeaderView *header = table->horizontalHeader();
    for (int column = 0; column < TransactionTableModel::ColumnCount; ++column)
        header->resizeSection(column, header->fontMetrics().horizontalAdvance(
                                          model->headerData(column, Qt::Horizontal).toString()) +
                                          24);
    header->setSectionResizeMode(TransactionTableModel::Outcome, QHeaderView::Stretch);
    table->installEventFilter(this);
    layout->addWidget(table);

    bytesLabel = new QLabel(content);
    bytesLabel->setObjectName(QStringLiteral("bytesLabel"));
    bytesLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    bytesLabel->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    bytesLabel->setWordWrap(true);
    layout->addWidget(bytesLabel);
    setWidget(content);

    refreshTimer.setInterval(refreshIntervalMs);
    connect(&refreshTimer, SIGNAL(timeout()), this, SLOT(on_refresh()));
    connect(this, SIGNAL(visibilityChanged(bool)), this, SLOT(on_visibilityChanged(bool)));
    connect(hidePollsCheckBox, SIGNAL(toggled(bool)), this, SLOT(setRoutinePollsHidden(bool)));
    connect(copyButton, SIGNAL(clicked()), this, SLOT(copySelection()));
    connect(saveButton, SIGNAL(clicked()), this, SLOT(save()));
    connect(table->selectionModel(), SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), this,
            SLOT(on_currentRowChanged()));
    hide();
}

void ActivityDock::setRoutinePollsHidden(bool hidden)
{
    hidePollsCheckBox->setChecked(hidden);
    filter->setFilterRegExp(hidden ? QStringLiteral("^$") : QString());
}

void ActivityDock::on_visibilityChanged(bool visible)
{
    if (visible) {
        on_refresh();
        refreshTimer.start();
    } else {
        refreshTimer.stop();
    }
}

void ActivityDock::on_refresh()
{
    QScrollBar *scroll = table->verticalScrollBar();
    const bool following = scroll->value() == scroll->maximum();
    model->refresh();
    if (following)
        table->scrollToBottom();
}

void ActivityDock::on_currentRowChanged()
{
    const QModelIndex current = filter->mapToSource(table->currentIndex());
    bytesLabel->setText(current.isValid()
                            ? model->data(current, TransactionTableModel::BytesRole).toString()
                            : QString());
}

QString ActivityDock::selectedText() const
{
    QModelIndexList rows = table->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex &row : rows) {
        if (const auto record = model->record(filter->mapToSource(row).row()))
            lines << TransactionText::line(*record);
    }
    return lines.join(QLatin1Char('\n'));
}

void ActivityDock::copySelection()
{
    const QString text = selectedText();
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

bool ActivityDock::saveTo(const QString &fileName) const
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    QTextStream out(&file);
    out << TransactionText::header() << '\n';
    const TransactionRing &ring = monitor->ring();
    for (int i = 0; i < ring.size(); ++i)
        out << TransactionText::line(ring.at(i)) << '\n';
    out.flush();
    return file.commit();
}

void ActivityDock::save()
{
    const QString fileName = QFileDialog::getSaveFileName(
        this, tr("Save activity"), QStringLiteral("activity.txt"), tr("Text files (*.txt)"));
    if (fileName.isEmpty())
        return;
    if (!saveTo(fileName))
        QMessageBox::critical(this, tr("Error"), tr("Cannot write %1.").arg(fileName));
}

// Ctrl+C is also the window's Quit; in the log it copies the rows instead.
bool ActivityDock::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == table &&
        (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        if (event->type() == QEvent::KeyPress)
            copySelection();
        return true;
    }
    return QDockWidget::eventFilter(watched, event);
}
