#pragma once

#include <QByteArray>
#include <cstdint>
#include <functional>

// One write waiting for its turn on the bus.
struct QueueRequest
{
    uint8_t id = 0;
    uint8_t address = 0;
    QByteArray data;
    std::function<void(QByteArray)> callback;
};
