#pragma once

#include <QPointer>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>

namespace Ui {
class EditView;
}

// Shows the servo's status bits in the edit view: the hardware error register and the
// error byte of every status packet. One per process; without a form it ignores updates.
class StatusHelper
{
public:
    // Indexed like the status-packet boxes: process, instruction, checksum, range, data
    // length, data limit, access, alert.
    using PacketFlags = std::array<bool, 8>;

    explicit StatusHelper(Ui::EditView *form);

    // The shared instance, made without a form if nothing made it before.
    static std::shared_ptr<StatusHelper> instance();
    // Makes the shared instance from the edit view's form unless one exists already.
    static std::shared_ptr<StatusHelper> create(Ui::EditView *form);
    static bool exists();

    // Hands each shown bit's masked value (not reduced to 0 or 1) and its check box to
    // show, bit 0 first; bits 5 and 6 are shown nowhere and bit 7 is not examined.
    static void decodeHardwareStatus(uint8_t status,
                                     const std::function<void(const QString &, int)> &show);
    static PacketFlags decodeStatusPacket(int8_t error);

    // Sets all eight status-packet boxes from a reply's error byte.
    void updateStatusPacket(int8_t error);

private:
    bool hasForm() const;

    Ui::EditView *form = nullptr;
    // The form's widgets die with their view while this helper lives on; this tells.
    QPointer<QObject> formAlive;
};
