#pragma once

// Told when the servo link comes up and goes down.
class IConnectInfo
{
public:
    virtual ~IConnectInfo() = default;
    virtual void connected() = 0;
    virtual void disconnected() = 0;
};
