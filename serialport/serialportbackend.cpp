#include "serialportbackend.h"

SerialPortBackend::~SerialPortBackend() = default;
