#pragma once

#include <QDialog>
#include <QThread>
#include <memory>

class QButtonGroup;
class QTreeWidgetItem;
class SearchHelper;
class SerialHelper;
class Settings;

namespace Ui {
class SearchDialog;
}

// Scans a range of servo ids over a set of baud rates and hands the servo the user
// picks to the main window. Each probe runs on the dialog's worker thread while the
// GUI thread waits a fixed time for its answer.
class SearchDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SearchDialog(QWidget *parent = nullptr);
    ~SearchDialog() override;

    static SearchDialog *instance();

    void setVisible(bool visible) override;

    // One probe: the reply of servo `id` at `baudRate`, empty when nothing answered in time.
    QByteArray probe(int id, int baudRate);

signals:
    void doScanServo(int id, int baudRate);
    void updateBaudRate(int baudRate);
    void updateId(int id);
    void updatePortName(const QString &portName);

public slots:
    void select();
    void cancel();
    void scan();
    void abortScan();
    void show();
    void on_lowerIdValueChanged(int value);
    void on_upperIdValueChanged(int value);
    void on_serialPortTextChanged(QString text);
    void on_selectStateChanged(int state);
    void on_baudRateCheckBoxToggled(int id, bool checked);
    void on_itemClicked();
    QTreeWidgetItem *addTreeRoot(QString baudRate);
    void addTreeChild(QTreeWidgetItem *parent, QString id, QString model);

private:
    void fillPortList();
    // False when the port could not be opened and the scan has to stop.
    bool sweepIds(int baudRate, const QList<int> &ids, QList<int> &found);
    void updateScanButton();
    bool anyBaudRateChecked() const;
    QTreeWidgetItem *newRootItem(const QString &baudRate);
    QTreeWidgetItem *newChildItem(QTreeWidgetItem *parent, const QString &id, const QString &model);

    std::unique_ptr<Ui::SearchDialog> ui;
    std::shared_ptr<SerialHelper> serialHelper;
    std::shared_ptr<Settings> settings;
    int rememberedLower = 1;
    int rememberedUpper = 10;
    bool scanning = false;
    bool abortRequested = false;
    std::shared_ptr<QButtonGroup> baudRateGroup;
    bool updatingSelectAll = true;
    std::shared_ptr<SearchHelper> searchHelper;
    QThread thread;
    QString lastOpenError;
};
