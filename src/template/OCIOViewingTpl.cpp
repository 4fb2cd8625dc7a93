// The template from the colour spaces of an OpenColorIO configuration to its views.
#include "template/OCIOViewingTpl.h"

#include "utils/errorMessage.h"
#include "utils/utils.h"
#include "xml/ocioReader.h"

#include <boost/filesystem.hpp>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <sstream>
#include <utility>

namespace TemplateNS
{

namespace
{

namespace fs = boost::filesystem;
namespace ErrorIds = Color::ErrorIds;
namespace Module = Color::Module;
using Color::OpUtil::Config;

constexpr char const* kExtension = "ocio";
constexpr char const* kRenderingRole = "rendering";

// Around the display in the name of a view.
constexpr char const* kViewTransformSeparatorIn = " (";
constexpr char const* kViewTransformSeparatorOut = ")";

using Names = std::vector<std::string>;

void require(std::string const& name, Color::ErrorSite missing)
{
    if (name.empty())
        throw Color::failure(missing, Module::kOcioTemplate);
}

std::string textOf(char const* text)
{
    return text == nullptr ? std::string() : std::string(text);
}

void requireConfigFile(std::string const& path)
{
    boost::system::error_code ignored;
    fs::file_status const status = fs::status(path, ignored);
    if (!fs::exists(status))
        throw Color::failure(ErrorIds::kOcioConfigMissing, Module::kOcioTemplate, path);
    bool const hasExtension = Foundation::Utils::strcasecmp(Color::Utils::getFileExtension(path).c_str(), kExtension) == 0;
    if (!fs::is_regular_file(status) || !hasExtension)
        throw Color::failure(ErrorIds::kOcioConfigNot, Module::kOcioTemplate, path);
}

std::shared_ptr<Config const> loadConfig(std::string const& path)
{
    requireConfigFile(path);
    try
    {
        std::shared_ptr<Config const> config = Config::CreateFromFile(path);
        config->sanityCheck();
        return config;
    }
    catch (Color::OpUtil::Error const& error)
    {
        throw Color::failure(ErrorIds::kOcioConfigProblem, Module::kOcioTemplate, error.what());
    }
}

// The names of a list with commas between.
Names extractInfo(std::string const& list)
{
    Names names;
    std::istringstream stream(list);
    for (std::string name; std::getline(stream, name, ',');)
    {
        name = Color::Utils::trimString(name);
        if (!name.empty())
            names.push_back(name);
    }
    return names;
}

// Those of the names that fit the first key, then those that fit the second, and so on.
template <class Fits>
Names sortOut(Names const& keys, Names const& names, Fits const& fits)
{
    Names result;
    for (std::string const& key : keys)
        std::copy_if(names.begin(), names.end(), std::back_inserter(result),
                     [&](std::string const& name) { return fits(name, key); });
    return result;
}

bool isOnDisplay(std::string const& viewTransform, std::string const& display)
{
    return viewTransform.find(kViewTransformSeparatorIn + display + kViewTransformSeparatorOut) != std::string::npos;
}

bool isOfView(std::string const& viewTransform, std::string const& view)
{
    return viewTransform.starts_with(view + kViewTransformSeparatorIn);
}

// The view, and the display behind it. A view may have parentheses in its own name; what follows the last of these is a display
// then.
std::pair<std::string, std::string> splitViewTransformName(std::string const& viewTransform, Names const& displays)
{
    auto const splitAt = [&](std::size_t separator)
    {
        std::string display = viewTransform.substr(separator + std::strlen(kViewTransformSeparatorIn));
        if (display.ends_with(kViewTransformSeparatorOut))
            display.pop_back();
        return std::pair(viewTransform.substr(0, separator), display);
    };
    std::size_t const first = viewTransform.find(kViewTransformSeparatorIn);
    if (first == std::string::npos)
        return {viewTransform, std::string()};
    for (std::size_t at = first; at != std::string::npos; at = viewTransform.find(kViewTransformSeparatorIn, at + 1))
    {
        if (std::find(displays.begin(), displays.end(), splitAt(at).second) != displays.end())
            return splitAt(at);
    }
    return splitAt(first);
}

// Every view on every display, whether or not the display has it: the lists are trusted.
Names buildList(Names const& displays, Names const& views)
{
    Names result;
    for (std::string const& display : displays)
        for (std::string const& view : views)
            result.push_back(OCIOViewingTpl::buildViewTransformName(display.c_str(), view.c_str()));
    return result;
}

} // namespace

std::string OCIOViewingTpl::buildViewTransformName(char const* display, char const* view)
{
    std::string const displayName = textOf(display);
    std::string const viewName = textOf(view);
    require(displayName, ErrorIds::kOcioConfigDisplayName);
    require(viewName, ErrorIds::kOcioConfigViewName);
    return viewName + kViewTransformSeparatorIn + displayName + kViewTransformSeparatorOut;
}

OCIOViewingTpl::Builder::Builder(char const* configFile) : m_config(loadConfig(textOf(configFile))) {}

std::shared_ptr<Parameter> OCIOViewingTpl::Builder::buildWorkingSpaces() const
{
    Names names;
    Names const roles = m_config->getRoleNames();
    if (std::find(roles.begin(), roles.end(), kRenderingRole) != roles.end())
        names.push_back(m_config->getColorSpaceName(kRenderingRole));
    Names const spaces = m_config->getColorSpaceNames();
    names.insert(names.end(), spaces.begin(), spaces.end());
    for (std::string const& name : names)
        require(name, ErrorIds::kOcioConfigColorSpaceName);
    return Utils::buildParameter(Utils::getWorkingSpaceParameterName(), names);
}

std::shared_ptr<Parameter> OCIOViewingTpl::Builder::buildViewTransforms() const
{
    Names const names = _activeViewTransforms();
    std::shared_ptr<Parameter> parameter = Utils::buildParameter(Utils::getViewTransformParameterName(), names);
    if (names.empty())
        return parameter;
    parameter->select(0U);
    std::string const display = m_config->getDefaultDisplay();
    std::string const preferred = buildViewTransformName(display.c_str(), m_config->getDefaultView(display).c_str());
    if (std::find(names.begin(), names.end(), preferred) != names.end())
        parameter->select(preferred.c_str());
    return parameter;
}

// All displays with all their views.
std::vector<std::string> OCIOViewingTpl::Builder::_collectViewTransforms() const
{
    Names names;
    for (std::string const& display : m_config->getDisplays())
        for (std::string const& view : m_config->getViews(display))
            names.push_back(buildViewTransformName(display.c_str(), view.c_str()));
    return names;
}

std::vector<std::string> OCIOViewingTpl::Builder::_activeViewTransforms() const
{
    Names all = _collectViewTransforms();
    Names const displays = extractInfo(m_config->getActiveDisplays());
    Names const views = extractInfo(m_config->getActiveViews());
    if (!displays.empty() && !views.empty())
        return buildList(displays, views);
    if (!displays.empty())
        return sortOut(displays, all, isOnDisplay);
    if (!views.empty())
        return sortOut(views, all, isOfView);
    return all;
}

std::shared_ptr<Color::Transform> OCIOViewingTpl::Builder::createTransform(std::string const& workingSpace,
                                                                           std::string const& viewTransform) const
{
    auto const [view, display] = splitViewTransformName(viewTransform, m_config->getDisplays());
    Color::OCIOReader const reader;
    try
    {
        reader.parse(m_config->getProcessor(workingSpace, m_config->getDisplayColorSpaceName(display, view)));
    }
    catch (Color::OpUtil::Error const& error)
    {
        throw Color::failure(ErrorIds::kOcioConfigCombination, Module::kOcioTemplate, error.what());
    }
    return reader.getTransform();
}

OCIOViewingTpl::OCIOViewingTpl(char const* configFile) : m_builder(configFile)
{
    std::shared_ptr<Parameter> const workingSpaces = m_builder.buildWorkingSpaces();
    if (workingSpaces->getNumValues() == 0)
        throw Color::failure(ErrorIds::kOcioConfigNoColorSpaces, Module::kOcioTemplate);
    _addParameter(workingSpaces);
    std::shared_ptr<Parameter> const viewTransforms = m_builder.buildViewTransforms();
    if (viewTransforms->getNumValues() == 0)
        throw Color::failure(ErrorIds::kOcioConfigNoViews, Module::kOcioTemplate);
    _addParameter(viewTransforms);
}

std::shared_ptr<Color::Transform> OCIOViewingTpl::_createTransform() const
{
    return m_builder.createTransform(getWorkingSpaces()->getSelectedValue(), getViewTransforms()->getSelectedValue());
}

} // namespace TemplateNS
