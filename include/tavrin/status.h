// The outcome of a call: an error id and a short text for people.
#ifndef TAVRIN_STATUS_H
#define TAVRIN_STATUS_H

#include <tavrin/export.h>

namespace Tavrin
{

// Which failure: component, feature and serial number added up; 0 is success.
typedef unsigned int ErrorId;

// What a call reports. A status owns its message; copies are deep. It converts to true on success.
class TAVRIN_API TavStatus
{
public:
    // Success: code 0, no message.
    TavStatus();
    TavStatus(TavStatus const& other);
    TavStatus& operator=(TavStatus const& other);
    virtual ~TavStatus();

    void setErrorCode(ErrorId code);
    ErrorId getErrorCode() const;

    // Keeps a copy of the text; null or empty leaves no message.
    void setErrorMessage(char const* message);

    // The text, null when there is none (never an empty string). It lives as long as the status.
    char const* getErrorMessage() const;

    // True when the code is 0.
    operator bool() const;

private:
    ErrorId m_code;
    char* m_message;
};

} // namespace Tavrin

#endif
