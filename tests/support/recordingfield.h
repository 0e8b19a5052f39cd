#pragma once

#include "widgets/iunitdatafield.h"

#include <QList>
#include <QWidget>

// A bound field that only records what the register map hands it.
class RecordingField : public QWidget, public IUnitDataField
{
public:
    explicit RecordingField(const QString &name) { QObject::setObjectName(name); }
    QString objectName() const override { return QObject::objectName(); }
    void setLocked(bool) override {}
    int32_t fieldId() const override { return 0; }
    void setValue(int raw) override { values.append(raw); }
    int value() override { return values.isEmpty() ? 0 : values.last(); }
    void setObjectName(const QString &name) override { QObject::setObjectName(name); }
    void applyDependency() override { ++dependencyRuns; }

    QList<int> values;
    int dependencyRuns = 0;
};
