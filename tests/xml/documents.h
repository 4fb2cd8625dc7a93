// Documents written in tests, and what their reading comes to.
#ifndef TAVRIN_TESTS_XML_DOCUMENTS_H
#define TAVRIN_TESTS_XML_DOCUMENTS_H

#include "support/failure.h"
#include "support/temporaryFolder.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "transform/transform.h"
#include "xml/xmlTransformReader.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace XmlTest
{

// In the words of a failure the file is called so.
inline constexpr char kFile[] = "<file>";

inline std::string withShortFileName(std::string words, std::string const& path)
{
    for (std::size_t at = words.find(path); at != std::string::npos; at = words.find(path))
        words.replace(at, path.size(), kFile);
    return words;
}

struct Reading
{
    std::shared_ptr<Color::Transform> transform; // Null after a failure.
    Failure failure;
};

template <class Reader = Color::XMLTransformReader>
Reading readFile(std::string_view document, std::string const& name = "transform.ctf")
{
    TemporaryFolder const folder;
    std::string const path = folder.write(name, document);
    Reader const reader;
    Failure failure = failureOf([&] { reader.parseFile(path); });
    failure.words = withShortFileName(failure.words, path);
    return {failure.id == 0 ? reader.getTransform() : nullptr, failure};
}

template <class Reader = Color::XMLTransformReader>
Reading readBuffer(std::string const& document)
{
    Reader const reader;
    Failure const failure = failureOf([&] { reader.parseBuffer(document); });
    return {failure.id == 0 ? reader.getTransform() : nullptr, failure};
}

// The transform of a document that has to be right.
inline std::shared_ptr<Color::Transform> transformOf(std::string_view document)
{
    Reading const reading = readFile(document);
    if (!reading.transform)
        throw std::runtime_error(reading.failure.words);
    return reading.transform;
}

// The failure of a document that has to be wrong; lines count from its first character.
inline Failure failureOfFile(std::string_view document)
{
    return readFile(document).failure;
}

// A root of this version, on line 1 with everything in it, unless the content has line breaks.
inline std::string inRoot(std::string const& content, std::string const& version = "1.5")
{
    return "<ProcessList id='a' version='" + version + "'>" + content + "</ProcessList>";
}

inline std::string element(std::string const& tag, std::string const& content)
{
    std::string text = "<";
    text.append(tag).append(">").append(content).append("</").append(tag).append(">");
    return text;
}

inline std::string const kIdentityRange = "<Range inBitDepth='32f' outBitDepth='32f'/>";

// The only operator of a root that holds this content.
template <class Operator>
Operator const& onlyOp(Color::Transform const& transform)
{
    if (transform.getOps().size() != 1)
        throw std::runtime_error("not one operator");
    return dynamic_cast<Operator const&>(transform.getOps().get(0));
}

} // namespace XmlTest

#endif
