#pragma once

#include <QString>
#include <memory>
#include <optional>

struct CatalogueEntry;
class RegisterCatalogue;

// A value typed on the command line, like "90deg", "-1.5 rad/s" or "512", turned into a
// register's raw number. The unit may be any the settings offer for the register's
// quantity, spelt as shown there or shortened ("deg" for degrees, "C" for °C, "us" for
// μs); without one the value is in the unit the tool shows.
class UnitValue
{
public:
    struct Result
    {
        std::optional<qint64> raw;
        QString error;
    };

    static Result parse(const QString &text, const CatalogueEntry &entry,
                        const std::shared_ptr<const RegisterCatalogue> &catalogue);

private:
    static QString normalized(const QString &unit);
};
