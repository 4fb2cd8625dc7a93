// The elements of the configuration file.
#ifndef TAVRIN_XML_PREFERENCES_ELTS_H
#define TAVRIN_XML_PREFERENCES_ELTS_H

#include "utils/preferences.h"
#include "xml/xmlReaderElements.h"

#include <memory>
#include <string>

namespace Color::Xml::Reader
{

// The root. It begins with preferences in which everything is empty.
class PreferencesElt : public ContainerElt
{
public:
    using ContainerElt::ContainerElt;

    void start(char const** attributes) override;
    void end() override {}
    std::string const& getIdentifier() const override { return getName(); }
    std::string const& getTypeName() const override { return getName(); }
    void appendDescription(std::string const&) override {}

    std::shared_ptr<Preferences> const& getPreferences() const { return m_preferences; }

private:
    std::shared_ptr<Preferences> m_preferences = std::make_shared<Preferences>();
};

class AutoConfigureElt : public PlainElt
{
public:
    using PlainElt::PlainElt;

    void start(char const** attributes) override;
};

class PrefSharedHomeElt : public PlainElt
{
public:
    using PlainElt::PlainElt;

    void start(char const** attributes) override;
};

class ReferenceTableElt : public ComplexElt
{
public:
    using ComplexElt::ComplexElt;

    ReferenceTable& getReferenceTable() const;
};

// An alias of the table.
class AliasInfoElt : public PlainElt
{
public:
    using PlainElt::PlainElt;

    void start(char const** attributes) override;
};

} // namespace Color::Xml::Reader

#endif
