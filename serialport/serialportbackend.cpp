#include "serialportbackend.h"

namespace {

constexpr int EventLoopMarginUs = 2000;

} // namespace

SerialPortBackend::~SerialPortBackend() = default;

int SerialPortBackend::adapterMarginUs() const
{
    return EventLoopMarginUs;
}

int SerialPortBackend::adapterLatencyUs() const
{
    return 0;
}

bool SerialPortBackend::keepsWireTime() const
{
    return true;
}
