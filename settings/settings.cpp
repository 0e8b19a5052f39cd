#include "settings/settings.h"

#include <QSettings>
#include <algorithm>

namespace {

// The whole numbers each stored value may take. Anything else in the file (a value
// edited by hand, or written by another version) reads as the reader's default, so
// that no setting the program cannot use ever reaches a spin box, a port or a unit.
struct ValidRange
{
    const char *group;
    const char *key;
    int lowest;
    int highest;
};

// clang-format off
const ValidRange validRanges[] = {
    {"main window settings", "pollingInterval",     10, 5000},
    {"main window settings", "servoId",             0,  253},
    {"port settings",        "baudRate",            1,  4000000},
    {"units settings",       "angularVelocity",     0,  1},
    {"units settings",       "angle",               0,  1},
    {"units settings",       "angularAcceleration", 0,  0},
    {"units settings",       "torque",              0,  1},
    {"units settings",       "voltage",             0,  0},
    {"units settings",       "current",             0,  1},
    {"units settings",       "temperature",         0,  1},
    {"units settings",       "returnDelay",         0,  0},
    {"units settings",       "servoData",           0,  1},
};
// clang-format on

bool isUsable(const QString &group, const QString &key, const QVariant &value)
{
    const auto range =
        std::find_if(std::begin(validRanges), std::end(validRanges), [&](const ValidRange &r) {
            return group == QLatin1String(r.group) && key == QLatin1String(r.key);
        });
    if (range == std::end(validRanges))
        return true;
    // Strict: "500.5", "1e6" or a list do not count as numbers.
    bool isNumber = false;
    const int number = value.toString().toInt(&isNumber);
    return isNumber && number >= range->lowest && number <= range->highest;
}

} // namespace

Settings::Settings(const QString &group)
    : store(std::make_shared<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                        QStringLiteral("Ostravel"),
                                        QStringLiteral("Zelvar Servo Manager")))
    , group(group)
{}

QVariant Settings::value(const QString &key, const QVariant &defaultValue) const
{
    store->beginGroup(group);
    const QVariant result = store->value(key, defaultValue);
    store->endGroup();
    return isUsable(group, key, result) ? result : defaultValue;
}

void Settings::setValue(const QString &key, const QVariant &value)
{
    store->beginGroup(group);
    store->setValue(key, value);
    store->endGroup();
}
