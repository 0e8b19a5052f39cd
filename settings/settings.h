#pragma once

#include <QString>
#include <QVariant>
#include <memory>

class QSettings;

// The program's persistent store, confined to one group. Nothing else touches QSettings.
class Settings
{
public:
    explicit Settings(const QString &group);

    QVariant value(const QString &key, const QVariant &defaultValue) const;
    void setValue(const QString &key, const QVariant &value);

private:
    std::shared_ptr<QSettings> store;
    QString group;
};
