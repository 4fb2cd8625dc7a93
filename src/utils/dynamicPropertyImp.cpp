// Dynamic properties: names, and the way values go in and out.
#include "utils/dynamicPropertyImp.h"

#include "utils/errorMessage.h"
#include "utils/utils.h"

#include <iterator>

namespace Tavrin
{

namespace
{

// In the order of the ids.
constexpr char const* kNames[] = {"Exposure", "Contrast", "Bypass"};

} // namespace

char const* DynamicProperty::getName(Ids id)
{
    return id < std::size(kNames) ? kNames[id] : "invalid property";
}

} // namespace Tavrin

namespace Color
{

bool isValidId(DynamicProperty::Ids id)
{
    return id <= DynamicProperty::BYPASS;
}

void BaseDynamicProperty::validate() const
{
    if (!isValidId(m_identifier))
    {
        throw failure(ErrorIds::kInvalidPropertyId, Module::kDynamicProperty);
    }
}

template <class T>
void DynamicPropertyImp<T>::setContent(DynamicProperty const& property)
{
    if (property.id != this->m_identifier || !m_isDynamic)
    {
        throw failure(ErrorIds::kInvalidProperty, Module::kDynamicProperty, DynamicProperty::getName(property.id));
    }
    this->setValue(property.value);
}

template <class T>
void DynamicPropertyImp<T>::getContent(DynamicProperty& property) const
{
    property.id = this->m_identifier;
    property.value = this->getValue();
}

template <class T>
bool DynamicPropertyImp<T>::operator==(DynamicPropertyImp const& other) const
{
    return this->m_identifier == other.m_identifier && this->getValue() == other.getValue() && m_isDynamic == other.m_isDynamic;
}

template <class Base, DynamicProperty::Ids kIdentifier>
std::string NamedDynamicProperty<Base, kIdentifier>::getValueString() const
{
    return Utils::valueString(this->getValue());
}

template class DynamicPropertyImp<DynamicPropertyDouble>;
template class DynamicPropertyImp<DynamicPropertyBool>;
template class NamedDynamicProperty<DynamicPropertyDouble, DynamicProperty::EXPOSURE>;
template class NamedDynamicProperty<DynamicPropertyDouble, DynamicProperty::CONTRAST>;
template class NamedDynamicProperty<DynamicPropertyBool, DynamicProperty::BYPASS>;

} // namespace Color
