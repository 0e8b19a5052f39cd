#include "cli/servosession.h"

#include "device/devicehelper.h"
#include "device/idevice.h"
#include "device/physicalquantities.h"
#include "monitor/transactiontext.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

namespace {

// The model number and the firmware version.
constexpr quint8 identityLength = 2;

constexpr quint8 alertBit = 0x80;

} // namespace

ServoSession::ServoSession(BusClient &client, quint8 id)
    : client(client)
    , servoId(id)
{}

ServoSession::~ServoSession() = default;

QString ServoSession::identify()
{
    const BusAnswer answer = client.read(servoId, 0, identityLength);
    if (!answer.answered)
        return QStringLiteral("servo %1 at %2 baud on %3: %4")
            .arg(servoId)
            .arg(client.baudRate())
            .arg(client.portName(), answer.problem);
    if (const QString error = errorText(answer.error); !error.isEmpty())
        return QStringLiteral("servo %1: %2").arg(servoId).arg(error);
    // The same choice of model as on connecting in the window.
    DeviceHelper identification(nullptr, [] {});
    identification.onModelNumberRead(answer.packet);
    model = identification.device();
    // Values are shown in the first unit the settings offer for each quantity.
    registers = std::make_shared<RegisterCatalogue>(*model);
    units = std::make_shared<TelemetryDecoder>(registers, std::make_shared<PhysicalQuantities>());
    return {};
}

BusAnswer ServoSession::readTable() const
{
    return client.read(servoId, 0, quint8(model->controlTableSize()));
}

QString ServoSession::errorText(quint8 error)
{
    // The alert bit only says that the hardware error register has something to say;
    // the instruction itself went through.
    const QString words = TransactionText::servoError(error & ~alertBit, 0, 0);
    return words.isEmpty() ? words : QStringLiteral("the servo answered: %1").arg(words);
}
