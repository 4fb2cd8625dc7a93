// A value of a running transform that may change without a new finalize.
#ifndef TAVRIN_DYNAMIC_PROPERTY_H
#define TAVRIN_DYNAMIC_PROPERTY_H

#include <tavrin/export.h>

namespace Tavrin
{

// Names a dynamic property and carries its value: a number for exposure (in stops) and contrast, a switch for bypass.
struct DynamicProperty
{
    enum Ids : unsigned int
    {
        EXPOSURE = 0,
        CONTRAST = 1,
        BYPASS = 2
    };

    // Takes a double or a bool and converts to either: a bool reads as 0 or 1, a double as being non-zero.
    class Value
    {
    public:
        Value() : m_number(0.0) {}
        Value(double number) : m_number(number) {}
        Value(int number) : m_number(number) {}
        Value(bool flag) : m_number(flag ? 1.0 : 0.0) {}

        operator double() const { return m_number; }
        operator bool() const { return m_number != 0.0; }

    private:
        double m_number;
    };

    // Exposure 0.
    DynamicProperty() : id(EXPOSURE) {}
    DynamicProperty(Ids id_, Value value_) : id(id_), value(value_) {}

    // "Exposure", "Contrast" or "Bypass"; "invalid property" for any other id.
    TAVRIN_API static char const* getName(Ids id);

    Ids id;
    Value value;
};

} // namespace Tavrin

#endif
