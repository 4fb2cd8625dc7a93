// How failures travel: an exception that carries an id, a text for people and a detailed text for the log.
#ifndef TAVRIN_UTILS_ERROR_MESSAGE_H
#define TAVRIN_UTILS_ERROR_MESSAGE_H

#include "utils/errorIds.h"
#include "utils/messageFormat.h"

#include <tavrin/status.h>

#include <array>
#include <string>

namespace Color
{

using Tavrin::ErrorId;

// The parts of an error id: bits 20 and up, and bits 16 and up.
enum class Component : unsigned int
{
    Utilities = 0x100000,
    Transform = 0x200000,
    Files = 0x400000,
    Renderer = 0x800000,
    Template = 0x1000000,
    Library = 0x2000000
};
using Feature = unsigned int;

namespace Utils
{

struct ErrorFormat
{
    ErrorId id;
    char const* format;
};

// All failures in the order of look-up, up to a row with id 0 and an empty format.
extern ErrorFormat const allMsgs[];

} // namespace Utils

// An error id with its message, filled in.
class ErrorMessage
{
public:
    // A copy of noErrorMsg().
    ErrorMessage();
    ErrorMessage(std::string const& moduleTag, Component component, Feature feature, ErrorId id, char const* text);
    virtual ~ErrorMessage() = default;
    ErrorMessage(ErrorMessage const&) = default;
    ErrorMessage& operator=(ErrorMessage const&) = default;

    // Id 0, "No Error".
    static ErrorMessage const& noErrorMsg();

    // Fills in the format as formatMessage does; the text is cut at 1023 characters.
    template <class... Arguments>
    static ErrorMessage buildMessage(std::string const& moduleTag, Component component, Feature feature, ErrorId id,
                                     char const* format, Arguments const&... arguments)
    {
        return _build(moduleTag, component, feature, id, format,
                      std::array<MessageArgument, sizeof...(Arguments)>{MessageArgument(arguments)...});
    }

    // The format of an id: the first row of Utils::allMsgs that has it. An id without a format is reported on standard error; the
    // result is then null, or the empty format that the row has.
    static char const* getFormatStr(ErrorId id);

    ErrorId getId() const { return m_id; }
    // The text alone; what a status carries.
    std::string const& getMessage() const { return m_message; }
    // Source position, module tag and text; what the log gets.
    std::string const& getDetailedMessage() const { return m_detailedMessage; }
    void setDetailedMsg(std::string const& text) { m_detailedMessage = text; }

    // Appends ": " and the other's texts; the id stays.
    ErrorMessage& operator+=(ErrorMessage const& other);

private:
    struct NoError
    {
    };
    explicit ErrorMessage(NoError);
    static ErrorMessage _build(std::string const& moduleTag, Component component, Feature feature, ErrorId id, char const* format,
                               std::span<MessageArgument const> arguments);
    void _setDetailedMsg(std::string const& moduleTag, Component component, Feature feature, std::string const& text);

    ErrorId m_id;
    std::string m_message;
    std::string m_detailedMessage;
};

// Thrown by value, caught by const reference, turned into a status at the public boundary.
class Exception
{
public:
    // Holds noErrorMsg().
    Exception() = default;
    // Puts the source position before the detailed text and logs it at LOG_DEBUG.
    Exception(char const* file, int line, ErrorMessage const& message);
    // The first failure with more context: id of the first, texts joined.
    Exception(Exception const& first, ErrorMessage const& context);
    virtual ~Exception() = default;
    Exception(Exception const&) = default;
    Exception& operator=(Exception const&) = default;

    ErrorMessage const& getErrorMessage() const { return m_message; }
    ErrorId getId() const { return m_message.getId(); }
    std::string const& getMessage() const { return m_message.getMessage(); }

private:
    ErrorMessage m_message;
};

// An error id together with the place in the source that names it.
struct ErrorSite
{
    ErrorSite(ErrorId id_, char const* file_ = __builtin_FILE(), int line_ = __builtin_LINE()) : id(id_), file(file_), line(line_)
    {
    }

    ErrorId id;
    char const* file;
    int line;
};

// The message of an id, with the arguments of its format. Component and feature follow from the id.
template <class... Arguments>
ErrorMessage errorMessage(ErrorId id, char const* moduleTag, Arguments const&... arguments)
{
    return ErrorMessage::buildMessage(moduleTag, static_cast<Component>(id & 0xfff00000U), id & 0xffff0000U, id,
                                      ErrorMessage::getFormatStr(id), arguments...);
}

// What a throw site throws: throw failure(ErrorIds::kEmptyTransform, Module::kTransformAll);
template <class... Arguments>
Exception failure(ErrorSite site, char const* moduleTag, Arguments const&... arguments)
{
    return Exception(site.file, site.line, errorMessage(site.id, moduleTag, arguments...));
}

// A failure that adds its context to one that was caught; keeps the id of the one that was caught.
template <class... Arguments>
Exception failure(Exception const& cause, ErrorId id, char const* moduleTag, Arguments const&... arguments)
{
    return Exception(cause, errorMessage(id, moduleTag, arguments...));
}

// The status of a public call.
class StatusImpl : public Tavrin::TavStatus
{
public:
    ~StatusImpl() override = default;
    // Id and short text.
    void set(Exception const& exception);
};

// Runs the body of a public call; a Color::Exception becomes the status, everything else passes through.
template <class Body>
Tavrin::TavStatus statusOf(Body&& body)
{
    StatusImpl status;
    try
    {
        body();
    }
    catch (Exception const& exception)
    {
        status.set(exception);
    }
    return status;
}

} // namespace Color

#endif
