// Drives expat over one document: the frame of all readers that build something from elements.
#ifndef TAVRIN_XML_DOCUMENT_READER_H
#define TAVRIN_XML_DOCUMENT_READER_H

#include "xml/pendingMarkup.h"
#include "xml/xmlReaderElements.h"

#include <exception>
#include <expat.h>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

namespace Color::Xml::Reader
{

// Keeps the stack of open elements and hands texts to them; which element a tag becomes is up to the derived class. One object
// reads one document.
//
// A file goes to the parser line by line without the line feeds. So messages tell the line, an element's text arrives line by line,
// and an attribute's value that runs over two lines is joined without the break. From a buffer all lines are 0, and the text is
// split at line breaks as well. The document is never closed towards the parser: what is still open is seen on the stack.
class DocumentReader
{
public:
    DocumentReader();
    virtual ~DocumentReader();
    DocumentReader(DocumentReader const&) = delete;
    DocumentReader& operator=(DocumentReader const&) = delete;

    // These throw a Color::Exception for everything that is wrong with the document, also when an element is left open.
    void readFile(std::string const& path);
    // The name is for messages.
    void readStream(std::istream& stream, std::string const& name);
    void readBuffer(std::string_view text);

    std::string const& getXmlFilename() const { return m_xmlFilename; }
    // Counts the lines handed to the parser.
    unsigned int getLineNumber() const { return m_lineNumber; }

protected:
    ElementStack& getElementStack() { return m_elementStack; }

    // The element for a start tag, which the frame pushes on the stack and starts.
    virtual std::unique_ptr<Element> createElement(char const* name) = 0;
    // A failure whose message ends in the line and the file of the moment.
    template <class... Arguments>
    Exception failureHere(ErrorSite site, Arguments const&... arguments) const
    {
        return failure(site, Module::kXmlReader, arguments..., m_lineNumber, m_xmlFilename);
    }

    // What happens at a start tag, an end tag and a piece of text. The user data is the reader.
    static void _startElementHandler(void* userData, char const* name, char const** attributes);
    static void _endElementHandler(void* userData, char const* name);
    static void _characterDataHandler(void* userData, char const* text, int length);

private:
    // What expat calls. Nothing is thrown through its frames: a failure is kept and the parser stopped, and the failure is thrown
    // again when the parser has returned.
    struct Callbacks;

    void _startElement(char const* name, char const** attributes);
    void _endElement(char const* name);
    void _addText(std::string_view text);
    void _handOnText();

    void _reset();
    void _readLines(std::istream& stream);
    void _endLine();
    // Hands on a line that is text for certain without the parser's help, which most of a large table is. False for another line.
    bool _takeNumbers(std::string_view line);
    // A line or a buffer, or a part of one.
    void _readPiece(std::string_view piece);
    void _parseBuffer(std::string_view chunk);
    void _finish();
    Exception _parsingFailure() const;

    std::unique_ptr<std::remove_pointer_t<XML_Parser>, void (*)(XML_Parser)> m_parser;
    ElementStack m_elementStack;
    unsigned int m_lineNumber = 0;
    std::string m_xmlFilename;
    bool m_splitsAtLineBreaks = false; // The text has line breaks that split it, as a buffer has.
    std::string m_numbers;             // A line of numbers, kept for its memory.
    std::string m_text;                // What the parser gave of one line so far.
    std::uint64_t m_parsedBytes = 0;
    PendingMarkup m_pendingMarkup;
    std::exception_ptr m_failure; // Waits for the parser to return.
};

} // namespace Color::Xml::Reader

#endif
