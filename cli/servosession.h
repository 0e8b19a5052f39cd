#pragma once

#include "cli/busclient.h"

#include <QString>
#include <memory>

class IDevice;
class RegisterCatalogue;
class TelemetryDecoder;

// One servo on an open bus: which model it is, its registers and their units.
class ServoSession
{
public:
    ServoSession(BusClient &client, quint8 id);
    ~ServoSession();

    // Reads the model number and takes the matching model; empty on success, otherwise
    // what went wrong.
    QString identify();

    quint8 id() const { return servoId; }
    BusClient &bus() const { return client; }
    const IDevice &device() const { return *model; }
    const RegisterCatalogue &catalogue() const { return *registers; }
    const std::shared_ptr<const RegisterCatalogue> &sharedCatalogue() const { return registers; }
    const TelemetryDecoder &decoder() const { return *units; }
    const std::shared_ptr<const TelemetryDecoder> &sharedDecoder() const { return units; }

    // The whole control table, or the problem in `answer`.
    BusAnswer readTable() const;
    // The error number of a servo's error byte in words, empty when there is none.
    static QString errorText(quint8 error);

private:
    BusClient &client;
    quint8 servoId;
    std::shared_ptr<IDevice> model;
    std::shared_ptr<const RegisterCatalogue> registers;
    std::shared_ptr<const TelemetryDecoder> units;
};
