// Drives expat over one document: the frame of all readers that build something from elements.
#include "xml/xmlDocumentReader.h"

#include "utils/utils.h"
#include "xml/xmlReaderLimits.h"
#include "xml/xmlReaderNumbers.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <new>
#include <utility>
#include <vector>

namespace Color::Xml::Reader
{

namespace
{

constexpr std::size_t kPieceSize = std::size_t{1} << 16;

XML_Parser createParser()
{
    auto* const parser = XML_ParserCreate(nullptr);
    if (!parser)
    {
        throw std::bad_alloc();
    }
    return parser;
}

constexpr char kBlanks[] = " \t\r";

// Whether a line holds characters of decimal numbers and blanks alone. They mean themselves in all encodings that a document can
// have and are no part of any markup.
bool isNumbersAlone(std::string_view line)
{
    static constexpr auto kIsPlain = []
    {
        std::array<bool, 256> isPlain{};
        for (char const c : std::string_view("0123456789+-.,eE \t\r"))
        {
            isPlain[static_cast<unsigned char>(c)] = true;
        }
        return isPlain;
    }();
    return std::all_of(line.begin(), line.end(), [](char c) { return kIsPlain[static_cast<unsigned char>(c)]; });
}

DocumentReader& readerOf(void* userData)
{
    return *static_cast<DocumentReader*>(userData);
}

Exception internalError(unsigned int line, std::string const& file)
{
    return failure(ErrorIds::kXmlParsing, Module::kXmlReader, "Internal error", line, file);
}

// A handler without a reader, or without the name of a tag.
void requireArguments(void* userData, char const* name)
{
    if (!userData || !name || *name == '\0')
    {
        throw userData ? internalError(readerOf(userData).getLineNumber(), readerOf(userData).getXmlFilename())
                       : internalError(0, std::string());
    }
}

} // namespace

struct DocumentReader::Callbacks
{
    template <class Body>
    static void guard(void* userData, Body&& body) noexcept
    {
        DocumentReader& reader = readerOf(userData);
        if (reader.m_failure)
        {
            return; // A parser that was stopped may have some calls left.
        }
        try
        {
            body();
        }
        catch (...)
        {
            reader.m_failure = std::current_exception();
            XML_StopParser(reader.m_parser.get(), XML_FALSE);
        }
    }

    static void XMLCALL startElement(void* userData, char const* name, char const** attributes)
    {
        guard(userData, [&] { _startElementHandler(userData, name, attributes); });
    }

    static void XMLCALL endElement(void* userData, char const* name)
    {
        guard(userData, [&] { _endElementHandler(userData, name); });
    }

    static void XMLCALL characterData(void* userData, char const* text, int length)
    {
        guard(userData, [&] { _characterDataHandler(userData, text, length); });
    }

    // What a document declares for itself can multiply its size. Transforms have no use for it.
    static void XMLCALL startDoctype(void* userData, char const*, char const*, char const*, int hasInternalSubset)
    {
        guard(userData,
              [&]
              {
                  if (hasInternalSubset)
                  {
                      throw readerOf(userData).failureHere(ErrorIds::kXmlParsing, "declarations within the document not supported");
                  }
              });
    }
};

DocumentReader::DocumentReader() : m_parser(createParser(), &XML_ParserFree)
{
    auto* const parser = m_parser.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, &Callbacks::startElement, &Callbacks::endElement);
    XML_SetCharacterDataHandler(parser, &Callbacks::characterData);
    XML_SetStartDoctypeDeclHandler(parser, &Callbacks::startDoctype);
#ifdef TAVRIN_EXPAT_DEFERS_REPARSING
    // Every line is to be parsed when it is handed over, else elements would get the numbers of later lines.
    XML_SetReparseDeferralEnabled(parser, XML_FALSE);
#endif
}

DocumentReader::~DocumentReader() = default;

void DocumentReader::_reset()
{
    m_elementStack.clear();
    m_lineNumber = 0;
    m_xmlFilename.clear();
    m_text.clear();
}

void DocumentReader::readFile(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open())
    {
        throw failure(ErrorIds::kFileOpenFailed, Module::kXmlReader, path);
    }
    readStream(file, path);
}

void DocumentReader::readStream(std::istream& stream, std::string const& name)
{
    _reset();
    m_xmlFilename = name;
    m_splitsAtLineBreaks = false;
    _readLines(stream);
    _finish();
}

void DocumentReader::readBuffer(std::string_view text)
{
    _reset();
    m_splitsAtLineBreaks = true;
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), kPieceSize)))
    {
        _readPiece(text.substr(0, kPieceSize));
    }
    _finish();
}

void DocumentReader::_readLines(std::istream& stream)
{
    std::vector<char> block(kPieceSize);
    bool isInLine = false;
    while (stream.read(block.data(), static_cast<std::streamsize>(block.size())), stream.gcount() > 0)
    {
        std::string_view rest(block.data(), static_cast<std::size_t>(stream.gcount()));
        while (!rest.empty())
        {
            bool const isNewLine = !isInLine;
            m_lineNumber += isNewLine ? 1 : 0;
            std::size_t const lineFeed = rest.find('\n');
            isInLine = lineFeed == std::string_view::npos;
            if (isNewLine && !isInLine && _takeNumbers(rest.substr(0, lineFeed)))
            {
                rest.remove_prefix(lineFeed + 1);
                continue;
            }
            _readPiece(rest.substr(0, lineFeed));
            rest.remove_prefix(isInLine ? rest.size() : lineFeed + 1);
            if (!isInLine)
            {
                _endLine();
            }
        }
    }
}

bool DocumentReader::_takeNumbers(std::string_view line)
{
    Element* const top = m_elementStack.back();
    if (!top || top->isDummy() || !m_pendingMarkup.isNone() || !isNumbersAlone(line))
    {
        return false;
    }
    std::size_t const first = line.find_first_not_of(kBlanks);
    if (first != std::string_view::npos)
    {
        m_numbers = line.substr(first, line.find_last_not_of(kBlanks) + 1 - first);
        top->setRawData(m_numbers, m_lineNumber);
    }
    return true;
}

void DocumentReader::_endLine()
{
    // Brackets at the end of a line would wait in the parser for the next line, and become its text. White space ends them.
    if (m_pendingMarkup.isBrackets())
    {
        _parseBuffer("\n");
    }
    _handOnText();
}

void DocumentReader::_readPiece(std::string_view piece)
{
    if (piece.empty() || m_pendingMarkup.keep(piece))
    {
        return;
    }
    std::string const kept = m_pendingMarkup.take();
    if (kept.empty())
    {
        _parseBuffer(piece);
    }
    else
    {
        _parseBuffer(kept + std::string(piece));
    }
}

void DocumentReader::_parseBuffer(std::string_view chunk)
{
    XML_Status const status = XML_Parse(m_parser.get(), chunk.data(), static_cast<int>(chunk.size()), XML_FALSE);
    if (m_failure)
    {
        std::rethrow_exception(std::exchange(m_failure, nullptr));
    }
    if (status != XML_STATUS_OK)
    {
        _handOnText();
        throw _parsingFailure();
    }
    m_parsedBytes += chunk.size();
    XML_Index const used = XML_GetCurrentByteIndex(m_parser.get());
    m_pendingMarkup.update(chunk, used < 0 ? 0 : static_cast<std::size_t>(m_parsedBytes - static_cast<std::uint64_t>(used)));
    if (m_pendingMarkup.isTooCostly())
    {
        throw failureHere(ErrorIds::kXmlParsing, "markup too long");
    }
}

void DocumentReader::_finish()
{
    std::string const kept = m_pendingMarkup.take();
    if (!kept.empty())
    {
        _parseBuffer(kept);
    }
    _handOnText();
    if (!m_elementStack.empty())
    {
        throw failureHere(ErrorIds::kXmlNoClosingTag, m_elementStack.back()->getName());
    }
}

Exception DocumentReader::_parsingFailure() const
{
    XML_Error const error = XML_GetErrorCode(m_parser.get());
    if (error != XML_ERROR_TAG_MISMATCH)
    {
        return failureHere(ErrorIds::kXmlParsing, XML_ErrorString(error));
    }
    return m_elementStack.empty() ? failureHere(ErrorIds::kXmlTagsUnbalanced)
                                  : failureHere(ErrorIds::kXmlNoClosingTag, m_elementStack.back()->getName());
}

void DocumentReader::_startElementHandler(void* userData, char const* name, char const** attributes)
{
    requireArguments(userData, name);
    readerOf(userData)._startElement(name, attributes);
}

void DocumentReader::_startElement(char const* name, char const** attributes)
{
    _handOnText();
    if (m_elementStack.size() >= Limits::kNesting)
    {
        throw failureHere(ErrorIds::kXmlParsing, "elements nested too deeply");
    }
    m_elementStack.push_back(createElement(name));
    m_elementStack.back()->start(attributes);
}

void DocumentReader::_endElementHandler(void* userData, char const* name)
{
    requireArguments(userData, name);
    readerOf(userData)._endElement(name);
}

void DocumentReader::_endElement(char const* name)
{
    _handOnText();
    if (m_elementStack.empty() || m_elementStack.back()->getName() != name)
    {
        throw failureHere(ErrorIds::kXmlTagMissing, name);
    }
    std::unique_ptr<Element> const element = m_elementStack.pop_back();
    if (!element->isDummy() && !element->isContainer())
    {
        auto const* const plain = dynamic_cast<PlainElt const*>(element.get());
        if (!plain)
        {
            throw failureHere(ErrorIds::kXmlAttributeEnd, name);
        }
        if (m_elementStack.back() != plain->getParent())
        {
            throw failureHere(ErrorIds::kXmlParsing, name);
        }
    }
    element->end();
}

void DocumentReader::_characterDataHandler(void* userData, char const* text, int length)
{
    if (!userData)
    {
        throw internalError(0, std::string());
    }
    if (length == 0)
    {
        return;
    }
    if (!text || length < 0 || *text == '\0')
    {
        throw failure(ErrorIds::kXmlTextIllegal, Module::kXmlReader, "");
    }
    readerOf(userData)._addText(std::string_view(text, static_cast<std::size_t>(length)));
}

void DocumentReader::_addText(std::string_view text)
{
    Element const* const top = m_elementStack.back();
    if (!top)
    {
        throw failureHere(ErrorIds::kXmlNoClosingTag, std::string(text));
    }
    if (m_splitsAtLineBreaks && text == "\n")
    {
        _handOnText();
        return;
    }
    if (top->isDummy())
    {
        return; // Nobody would read it.
    }
    if (m_text.size() + text.size() > Limits::kLineText)
    {
        throw failure(ErrorIds::kXmlTextIllegal, Module::kXmlReader, truncateString(m_text));
    }
    m_text += text;
}

void DocumentReader::_handOnText()
{
    if (m_text.empty())
    {
        return;
    }
    std::string const text = Utils::trimString(m_text);
    m_text.clear();
    if (!text.empty())
    {
        m_elementStack.back()->setRawData(text, m_lineNumber);
    }
}

} // namespace Color::Xml::Reader
