// The check of pointers that callers may not leave null.
#ifndef TAVRIN_TAVRIN_REQUIRE_PARAMETER_H
#define TAVRIN_TAVRIN_REQUIRE_PARAMETER_H

#include "utils/errorMessage.h"

namespace Tavrin
{

// The name is the parameter's in the message.
inline void requireParameter(void const* pointer, char const* name, char const* module = Color::Module::kLibrary)
{
    if (pointer == nullptr)
        throw Color::failure(Color::ErrorIds::kNullParameter, module, name);
}

} // namespace Tavrin

#endif
