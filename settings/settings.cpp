#include "settings/settings.h"

#include <QSettings>

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
    return result;
}

void Settings::setValue(const QString &key, const QVariant &value)
{
    store->beginGroup(group);
    store->setValue(key, value);
    store->endGroup();
}
