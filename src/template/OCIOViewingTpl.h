// The template from the colour spaces of an OpenColorIO configuration to its views.
#ifndef TAVRIN_TEMPLATE_OCIO_VIEWING_TPL_H
#define TAVRIN_TEMPLATE_OCIO_VIEWING_TPL_H

#include "ocio/config.h"
#include "template/viewingBaseTpl.h"

#include <memory>
#include <string>
#include <vector>

namespace TemplateNS
{

// The configuration is read once, when the template is made.
class OCIOViewingTpl : public ViewingBaseTpl
{
public:
    // What a view is called in the menu: the view, and the display in parentheses. Refuses null and empty names.
    static std::string buildViewTransformName(char const* display, char const* view);

    class Builder
    {
    public:
        // Refuses what is no configuration file, and a configuration that is not sound.
        explicit Builder(char const* configFile);

        // The colour space of the role "rendering", if there is one, then all colour spaces. Nothing is selected.
        std::shared_ptr<Parameter> buildWorkingSpaces() const;
        // Those that the lists of active displays and views name, or all. The default view of the default display is selected, if
        // it is among them, else the first one.
        std::shared_ptr<Parameter> buildViewTransforms() const;
        std::shared_ptr<Color::Transform> createTransform(std::string const& workingSpace, std::string const& viewTransform) const;

    private:
        std::vector<std::string> _collectViewTransforms() const;
        std::vector<std::string> _activeViewTransforms() const;

        std::shared_ptr<Color::OpUtil::Config const> m_config;
    };

    explicit OCIOViewingTpl(char const* configFile);

private:
    std::shared_ptr<Color::Transform> _createTransform() const override;

    Builder m_builder;
};

} // namespace TemplateNS

#endif
