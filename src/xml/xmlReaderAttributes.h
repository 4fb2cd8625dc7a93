// Reads the attributes of an element by rules: what an attribute may hold, whether it has to be there, and what the messages
// call it.
#ifndef TAVRIN_XML_READER_ATTRIBUTES_H
#define TAVRIN_XML_READER_ATTRIBUTES_H

#include "xml/xmlReaderElements.h"

#include <tavrin/vocabulary.h>

#include <functional>
#include <vector>

namespace Color::Xml::Reader
{

// Rules are added first, then read() goes once through the attributes in the order of the file, so that of two faults the first in
// the file is told; after the last attribute those that are missing are told in the order of the rules. Names match without regard
// to case, and unknown attributes are passed over. Labels and names live as long as the reader; so does the element, whose type,
// line and file the messages tell.
class AttributeReader
{
public:
    using TakeText = std::function<void(char const* value)>;
    using TakeDepth = std::function<void(Tavrin::BitDepth depth)>;

    explicit AttributeReader(Element const& element) : m_element(element) {}

    // Any text; what is wrong with it is the taker's affair.
    AttributeReader& text(char const* name, TakeText take);
    // A text that must not be empty.
    AttributeReader& filledText(char const* name, char const* label, TakeText take);
    // The name of a bit depth.
    AttributeReader& depth(char const* name, char const* label, TakeDepth take);
    // A number at double precision.
    AttributeReader& number(char const* name, double& value);
    // This word in any case and nothing else; anything else is the failure, which tells the type and the value.
    AttributeReader& word(char const* name, char const* word, ErrorSite illegal, std::function<void()> take);
    // The same with white space around the word.
    AttributeReader& trimmedWord(char const* name, char const* word, ErrorSite illegal, std::function<void()> take);
    // A name that the parser knows. Of one that it does not know (the parser gives a zero value) the log is told, and reading
    // goes on without it.
    template <class Parse, class Take>
    AttributeReader& knownName(char const* name, char const* label, Parse parse, Take take)
    {
        return text(name,
                    [this, label, parse, take](char const* value)
                    {
                        auto const parsed = parse(value);
                        if (parsed == decltype(parsed){})
                        {
                            _logIllegal(label, value);
                        }
                        else
                        {
                            take(parsed);
                        }
                    });
    }

    // The attribute of the last rule has to be there.
    AttributeReader& required(char const* label);

    void read(char const** attributes);

private:
    struct Rule
    {
        char const* name;
        TakeText take;
        char const* requiredAs = nullptr; // What the message calls it, null for an attribute that may be missing.
        bool seen = false;
    };

    void _take(char const* name, char const* value);
    void _logIllegal(char const* label, char const* value) const;

    Element const& m_element;
    std::vector<Rule> m_rules;
};

} // namespace Color::Xml::Reader

#endif
