#pragma once

// Behaviour that follows a field's value, such as the controls a mode locks.
class IFieldDependency
{
public:
    virtual ~IFieldDependency() = default;
    virtual void apply() = 0;
};
