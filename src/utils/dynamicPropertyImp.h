// Values that an operator, its clones and its renderers share, so that a caller can change a running transform.
#ifndef TAVRIN_UTILS_DYNAMIC_PROPERTY_IMP_H
#define TAVRIN_UTILS_DYNAMIC_PROPERTY_IMP_H

#include <tavrin/dynamicProperty.h>

#include <atomic>
#include <memory>
#include <string>

namespace Color
{

using Tavrin::DynamicProperty;

// True for the ids that have a name.
bool isValidId(DynamicProperty::Ids id);

class BaseDynamicProperty
{
public:
    explicit BaseDynamicProperty(DynamicProperty::Ids identifier) : m_identifier(identifier) {}
    virtual ~BaseDynamicProperty() = default;

    // Refuses an id without a name.
    void validate() const;

protected:
    DynamicProperty::Ids m_identifier;
};

// A property with a plain field, whose address a GPU adaptor may hold. It is read and written with relaxed atomic access, since
// a caller may set it while another thread renders.
template <class T>
class DynamicPropertyValue : public BaseDynamicProperty
{
public:
    DynamicPropertyValue(DynamicProperty::Ids identifier, T value) : BaseDynamicProperty(identifier), m_value(value) {}

    T getValue() const { return std::atomic_ref<T>(m_value).load(std::memory_order_relaxed); }
    void setValue(T value) { std::atomic_ref<T>(m_value).store(value, std::memory_order_relaxed); }
    T const* getAddress() const { return &m_value; }

private:
    mutable T m_value; // Mutable for atomic_ref, which takes no const object; reading does not change it.
};

using DynamicPropertyDouble = DynamicPropertyValue<double>;
using DynamicPropertyBool = DynamicPropertyValue<bool>;

// Adds whether a caller may change the value.
template <class T>
class DynamicPropertyImp : public T
{
public:
    template <class Value>
    DynamicPropertyImp(DynamicProperty::Ids identifier, Value value, bool isDynamic) : T(identifier, value), m_isDynamic(isDynamic)
    {
    }

    // The value as a number, a switch as 0 or 1.
    virtual std::string getValueString() const = 0;
    virtual char const* getPropertyName() const = 0;
    virtual DynamicProperty::Ids getIdentifier() const = 0;

    bool isDynamic() const { return m_isDynamic; }
    void setDynamic(bool isDynamic) { m_isDynamic = isDynamic; }

    // Takes the value of a property of the same id; refuses when the id differs or this one is not dynamic.
    void setContent(DynamicProperty const& property);
    // Copies id and value out.
    void getContent(DynamicProperty& property) const;

    // Same id, same value, same dynamic flag.
    bool operator==(DynamicPropertyImp const& other) const;

private:
    bool m_isDynamic;
};

// One class per id; Base says what the value is.
template <class Base, DynamicProperty::Ids kIdentifier>
class NamedDynamicProperty : public DynamicPropertyImp<Base>
{
public:
    template <class Value>
    NamedDynamicProperty(Value value, bool isDynamic) : DynamicPropertyImp<Base>(kIdentifier, value, isDynamic)
    {
    }

    static char const* getName() { return DynamicProperty::getName(kIdentifier); }
    std::string getValueString() const override;
    char const* getPropertyName() const override { return getName(); }
    DynamicProperty::Ids getIdentifier() const override { return kIdentifier; }
};

using ExposureDynamicProperty = NamedDynamicProperty<DynamicPropertyDouble, DynamicProperty::EXPOSURE>;
using ContrastDynamicProperty = NamedDynamicProperty<DynamicPropertyDouble, DynamicProperty::CONTRAST>;
using BypassDynamicProperty = NamedDynamicProperty<DynamicPropertyBool, DynamicProperty::BYPASS>;

// What a copy of an operator holds: the very same object when it is dynamic, a private one with the same value when not.
template <class Property>
std::shared_ptr<Property> shareOrCopy(std::shared_ptr<Property> const& property)
{
    return property->isDynamic() ? property : std::make_shared<Property>(*property);
}

// Same object, or same id, value and flag.
template <class Property>
bool sameProperty(std::shared_ptr<Property> const& a, std::shared_ptr<Property> const& b)
{
    return a == b || *a == *b;
}

} // namespace Color

#endif
