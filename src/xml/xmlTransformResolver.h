// Follows references to other transform files.
#ifndef TAVRIN_XML_XML_TRANSFORM_RESOLVER_H
#define TAVRIN_XML_XML_TRANSFORM_RESOLVER_H

#include "transform/referenceOp.h"
#include "transform/transform.h"
#include "utils/preferences.h"

#include <tavrin/vocabulary.h>

#include <memory>
#include <string>

namespace Color
{

// For one thread. It takes lockPreferences() whenever it looks at the preferences.
class XMLTransformResolver
{
public:
    explicit XMLTransformResolver(Preferences const& preferences);
    ~XMLTransformResolver();

    // Gives every reference of the transform the operators of the file that it stands for, in which all references are followed
    // too. The file is the one that the transform was read from; empty for a transform that was not. A file is read anew for each
    // reference to it. A failure leaves the references before it resolved and those after it as they were.
    void resolve(std::string const& file, Tavrin::ResolveFlags flags, std::shared_ptr<Transform> const& transform);

    // The path of the file that a reference stands for. A reference for the current monitor takes the alias of these flags.
    std::string resolvePath(ReferenceOp* reference, std::string const& file, Tavrin::ResolveFlags flags) const;

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

namespace TransformUtils
{

// These use the preferences of the process.
void resolve(std::string const& file, Tavrin::ResolveFlags flags, std::shared_ptr<Transform> const& transform);
// Where a reference leads that does not depend on the flags.
std::string resolvePath(ReferenceOp const& reference, std::string const& file);

} // namespace TransformUtils

} // namespace Color

#endif
