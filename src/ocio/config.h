// A configuration of OpenColorIO: colour spaces, displays with their views, and what leads from one colour space to another.
#ifndef TAVRIN_OCIO_CONFIG_H
#define TAVRIN_OCIO_CONFIG_H

#include "ocio/opUtil.h"

#include <memory>
#include <string>
#include <vector>

namespace Color::OpUtil
{

// Everything throws an Error when OpenColorIO refuses. A name that there is none of is empty.
class Config
{
public:
    // The tables of its transforms are read when a processor asks for them.
    static std::shared_ptr<Config const> CreateFromFile(std::string const& path);
    virtual ~Config() = default;

    // Throws where something is told that does not exist. The lists of active displays and views are not looked at: configurations
    // in use name displays there that they do not have.
    virtual void sanityCheck() const = 0;

    virtual std::vector<std::string> getRoleNames() const = 0;
    // Of a colour space or of a role.
    virtual std::string getColorSpaceName(std::string const& nameOrRole) const = 0;
    virtual std::vector<std::string> getColorSpaceNames() const = 0;

    virtual std::vector<std::string> getDisplays() const = 0;
    virtual std::vector<std::string> getViews(std::string const& display) const = 0;
    // Names with commas between.
    virtual std::string getActiveDisplays() const = 0;
    virtual std::string getActiveViews() const = 0;
    virtual std::string getDefaultDisplay() const = 0;
    virtual std::string getDefaultView(std::string const& display) const = 0;
    virtual std::string getDisplayColorSpaceName(std::string const& display, std::string const& view) const = 0;

    virtual std::shared_ptr<Processor const> getProcessor(std::string const& fromSpace, std::string const& toSpace) const = 0;
};

} // namespace Color::OpUtil

#endif
