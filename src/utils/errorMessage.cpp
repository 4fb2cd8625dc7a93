// The table of all failures, and the exception that carries one to the public boundary.
#include "utils/errorMessage.h"

#include "utils/logger.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace Color
{

namespace Utils
{

ErrorFormat const allMsgs[] = {
#define TAVRIN_ERROR(name, id, format) {id, format},
#include "utils/errorIds.def"
#undef TAVRIN_ERROR
    {0, ""}};

} // namespace Utils

namespace
{

constexpr std::size_t kMaxMessageLength = 1023;
constexpr char const* kNoErrorText = "No Error";

// The name below the folder of sources: "renderer/CPURenderer.cpp".
std::string sourceName(char const* file)
{
    std::string const sourceRoot = "/src/";
    std::string const path = std::string("/").append(file); // A build may name files from the folder above.
    std::size_t const root = path.rfind(sourceRoot);
    return root == std::string::npos ? file : path.substr(root + sourceRoot.size());
}

} // namespace

ErrorMessage::ErrorMessage() : ErrorMessage(noErrorMsg()) {}

ErrorMessage::ErrorMessage(NoError) : m_id(0), m_message(kNoErrorText), m_detailedMessage(kNoErrorText) {}

ErrorMessage::ErrorMessage(std::string const& moduleTag, Component component, Feature feature, ErrorId id, char const* text)
    : m_id(id), m_message(text ? text : "")
{
    _setDetailedMsg(moduleTag, component, feature, m_message);
}

ErrorMessage const& ErrorMessage::noErrorMsg()
{
    static ErrorMessage const message{NoError()};
    return message;
}

ErrorMessage ErrorMessage::_build(std::string const& moduleTag, Component component, Feature feature, ErrorId id,
                                  char const* format, std::span<MessageArgument const> arguments)
{
    std::string const text = formatMessage(format, arguments).substr(0, kMaxMessageLength);
    return ErrorMessage(moduleTag, component, feature, id, text.c_str());
}

char const* ErrorMessage::getFormatStr(ErrorId id)
{
    auto const row = std::find_if(std::begin(Utils::allMsgs), std::end(Utils::allMsgs),
                                  [id](Utils::ErrorFormat const& candidate) { return candidate.id == id; });
    char const* const format = row == std::end(Utils::allMsgs) ? nullptr : row->format;
    if (!format || !*format)
    {
        std::fprintf(stderr, "utils/errorMessage(%d): COLOR:UTILS: The error id 0x%x is illegal\n", __LINE__, id);
    }
    return format;
}

ErrorMessage& ErrorMessage::operator+=(ErrorMessage const& other)
{
    m_message += ": " + other.m_message;
    m_detailedMessage += ": " + other.m_detailedMessage;
    return *this;
}

// Component and feature are a part of the id already; only the tag is for people.
void ErrorMessage::_setDetailedMsg(std::string const& moduleTag, Component, Feature, std::string const& text)
{
    m_detailedMessage = moduleTag + ": " + text;
}

Exception::Exception(char const* file, int line, ErrorMessage const& message) : m_message(message)
{
    m_message.setDetailedMsg(sourceName(file) + "(" + std::to_string(line) + "): " + message.getDetailedMessage());
    // Never as the format: paths and texts of files may hold a percent sign.
    Logger::log(LOG_DEBUG, "%s", m_message.getDetailedMessage().c_str());
}

Exception::Exception(Exception const& first, ErrorMessage const& context) : m_message(first.m_message)
{
    m_message += context;
}

void StatusImpl::set(Exception const& exception)
{
    setErrorCode(exception.getId());
    setErrorMessage(exception.getMessage().c_str());
}

} // namespace Color
