// The base of the elements that give an operator its parameters as attributes, for all channels or one of them.
#ifndef TAVRIN_XML_PARAMS_ELT_H
#define TAVRIN_XML_PARAMS_ELT_H

#include "xml/xmlReaderElements.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace Color::Xml::Reader
{

class AttributeReader;

// Which numbers have to stand in the element, and which must not, is up to the style of the operator. A derived class tells that,
// and receives the numbers once they are all right.
class ParamsElt : public PlainElt
{
public:
    using PlainElt::PlainElt;

    void start(char const** attributes) override;

protected:
    // A number that an element may hold: needed, or forbidden.
    struct Param
    {
        char const* attribute;
        bool isNeeded = true;
    };
    using Values = std::vector<double>;
    // A list of numbers all of which are needed.
    static std::vector<Param> needed(std::span<char const* const> attributes);

    // Attributes beside the numbers and the channel.
    virtual void addRules(AttributeReader&) {}

    // All numbers of the element, in the order in which faults are told.
    virtual std::vector<Param> getParams() const = 0;
    // How messages cite the style.
    virtual std::string getStyleName() const = 0;
    // A letter for each channel that the attribute "channel" may name, "RGB" or "RGBA"; empty for an element without channels.
    virtual char const* getChannels() const { return ""; }
    // The needed numbers in the order of the list. The channel is the index of its letter; without one they hold for all.
    virtual void setParams(std::optional<unsigned int> channel, Values const& values) = 0;

private:
    unsigned int _getChannelNumber(char const* name) const;
    Values _takeNeeded(std::vector<Param> const& params, Values const& found) const;
};

} // namespace Color::Xml::Reader

#endif
