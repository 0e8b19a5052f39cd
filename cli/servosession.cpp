#include "cli/servosession.h"

#include "device/devicehelper.h"
#include "device/idevice.h"
#include "device/physicalquantities.h"
#include "device/statushelper.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

namespace {

// The model number and the firmware version.
constexpr quint8 identityLength = 2;

// In the order of StatusHelper::PacketFlags, worded as the edit view's status boxes.
const char *const packetErrorNames[] = {
    "Process failure",   "Instruction error", "Checksum error", "Data range error",
    "Data length error", "Data limit error",  "Access error",
};

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
    const quint8 number = error & 0x7F;
    if (number == 0)
        return {};
    const StatusHelper::PacketFlags flags = StatusHelper::decodeStatusPacket(int8_t(number));
    for (size_t i = 0; i < flags.size(); ++i) {
        if (flags[i])
            return QStringLiteral("the servo answered: %1").arg(QLatin1String(packetErrorNames[i]));
    }
    return QStringLiteral("the servo answered with error %1").arg(number);
}
