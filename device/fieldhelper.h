#pragma once

#include <QObjectList>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <map>
#include <memory>

class IZelvarField;

// Knows the kind of value (field id) of every bound widget name, and finds the bound
// widgets of the edit view by name for the mode controllers.
class FieldHelper
{
public:
    // The process-wide helper, or null before the edit view has created it.
    static std::shared_ptr<FieldHelper> instance();
    // Creates the process-wide helper from the edit view's children, once; later calls
    // return the existing helper unchanged.
    static std::shared_ptr<FieldHelper> create(const QObjectList &viewChildren);

    // The field id of a widget name; throws std::out_of_range for a name not in the table.
    static int32_t fieldId(const QString &objectName);
    static bool hasFieldId(const QString &objectName);

    explicit FieldHelper(const QObjectList &viewChildren);

    // Throws std::out_of_range for a name that no live bound widget carries.
    IZelvarField *field(const QString &objectName) const;
    bool hasField(const QString &objectName) const;

private:
    struct Binding
    {
        QPointer<QObject> object;
        IZelvarField *field;
    };

    void collect(const QObjectList &objects);

    std::map<QString, Binding> fields;
};
