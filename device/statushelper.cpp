#include "device/statushelper.h"

#include "ui_editview.h"

namespace {

std::shared_ptr<StatusHelper> sharedInstance;

// One bit of the hardware error register and the check box that shows it.
struct HardwareErrorBit
{
    uint8_t mask;
    const char *checkBox; // null: the bit is shown nowhere
};

const HardwareErrorBit hardwareErrors[] = {
    {1, "inputVoltageStatusCheckBox"},
    {2, "hallStatusCheckBox"},
    {4, "overheatingStatusCheckBox"},
    {8, "encoderStatusCheckBox"},
    {16, "angleLimitStatusCheckBox"},
    {32, nullptr},
    {64, nullptr},
};

} // namespace

StatusHelper::StatusHelper(Ui::EditView *form)
    : form(form)
    , formAlive(form ? form->zelvarPacketStatusGroupBox : nullptr)
{}

std::shared_ptr<StatusHelper> StatusHelper::instance()
{
    if (!sharedInstance)
        sharedInstance = std::make_shared<StatusHelper>(nullptr);
    return sharedInstance;
}

std::shared_ptr<StatusHelper> StatusHelper::create(Ui::EditView *form)
{
    if (!sharedInstance)
        sharedInstance = std::make_shared<StatusHelper>(form);
    return sharedInstance;
}

bool StatusHelper::exists()
{
    return sharedInstance != nullptr;
}

void StatusHelper::decodeHardwareStatus(uint8_t status,
                                        const std::function<void(const QString &, int)> &show)
{
    for (const HardwareErrorBit &bit : hardwareErrors) {
        if (bit.checkBox)
            show(QString::fromLatin1(bit.checkBox), status & bit.mask);
    }
}

StatusHelper::PacketFlags StatusHelper::decodeStatusPacket(int8_t error)
{
    // Whole-byte comparisons, not bit tests: an alert together with an error number
    // shows the alert alone.
    PacketFlags flags{};
    for (int number = 1; number <= 7; ++number)
        flags[number - 1] = error == number;
    flags[7] = error < 0;
    return flags;
}

void StatusHelper::updateStatusPacket(int8_t error)
{
    if (!hasForm())
        return;
    const PacketFlags flags = decodeStatusPacket(error);
    ZelvarStatusCheckBox *const boxes[] = {
        form->processStatusCheckBox, form->instructionStatusCheckBox, form->checksumStatusCheckBox,
        form->rangeStatusCheckBox,   form->dataLengthStatusCheckBox,  form->dataLimitStatusCheckBox,
        form->accessStatusCheckBox,  form->alertStatusCheckBox,
    };
    for (size_t i = 0; i < flags.size(); ++i)
        boxes[i]->setStatus(flags[i]);
}

bool StatusHelper::hasForm() const
{
    return form && formAlive;
}
