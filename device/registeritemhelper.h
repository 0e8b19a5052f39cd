#pragma once

#include <cstdint>
#include <functional>

// One item of the poll map: how many bytes the register spans, and where its value goes.
struct RegisterItemHelper
{
    uint8_t size = 0;
    // Takes the bytes put together little-endian; narrows them to the register's type.
    std::function<void(int32_t)> callback;
};
