#pragma once

#include <QWidget>
#include <array>

class QTableWidget;
class QTableWidgetItem;

namespace Ui {
class RegisterView;
}

// The "Register fields" tab: the servo's raw register table, one byte per row, in one
// read-only table per register bank. Read replies are pushed into it by the scheduler.
class RegisterView : public QWidget
{
    Q_OBJECT

public:
    explicit RegisterView(QWidget *parent = nullptr);
    ~RegisterView() override;

    // The view of this process; null before it is built and once it is gone.
    static RegisterView *instance();

    // The link is up: the next device announcement sizes the tables.
    void connectDevice();
    // The link is down: drops every receiver of the device announcement and empties the tables.
    void disconnectDevice();

    // Shows the value's bytes little-endian, from address upwards.
    void updateRegister(quint16 address, quint8 size, quint32 value);
    void setRegisterByte(quint16 address, quint8 value);

    QTableWidget *bankTable(unsigned bank) const;

public slots:
    void on_deviceLoaded();

private:
    // Where a register's byte was last put and what it showed, so that a poll repeating it
    // costs no lookup, no text and no allocation. Only this view creates value items, so an
    // item still in its cell is one it recorded here.
    struct ShownByte
    {
        QTableWidget *table = nullptr;
        int row = 0;
        const QTableWidgetItem *valueItem = nullptr;
        quint8 value = 0;
        bool decimal = false;
    };

    void applyTableStyle();

    Ui::RegisterView *ui;
    std::array<ShownByte, 256> shownBytes{};
};
