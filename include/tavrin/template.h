// Templates: recipes for transforms, with parameters whose values a user chooses from menus.
#ifndef TAVRIN_TEMPLATE_H
#define TAVRIN_TEMPLATE_H

#include <tavrin/export.h>
#include <tavrin/handle.h>
#include <tavrin/status.h>
#include <tavrin/transform.h>

namespace Tavrin
{

class TemplatePtr;
class TemplateParameterPtr;

enum TemplateType : unsigned int
{
    // From a working space to what a view shows: the parameters "working_space" and "view_transform".
    TEMPLATE_VIEWING = 0,
    // From an input space to a working space: the parameters "input_space" and "working_space".
    TEMPLATE_INPUT = 1
};

// Templates that come with the library and need no installation; each stands for the stock transform of the same number.
enum StockTemplate : unsigned int
{
    STOCK_TEMPLATE_RAW = 0
};

// One menu of a template. Its values are fixed when the template is loaded; nothing is selected at first, save in stock templates
// and among the views of a configuration. Texts live as long as the template or any handle to one of its parameters.
class TAVRIN_API TemplateParameter
{
public:
    virtual ~TemplateParameter();

    virtual char const* getName() const = 0;
    virtual unsigned int getNumValues() const = 0;
    // Null for an index beyond the values.
    virtual char const* getValue(unsigned int index) const = 0;

    // A value is compared exactly. On failure the selection stays.
    virtual TavStatus select(unsigned int index) = 0;
    virtual TavStatus select(char const* value) = 0;
    virtual void deselect() = 0;
    // -1 and null where nothing is selected.
    virtual int getSelectedIndex() const = 0;
    virtual char const* getSelectedValue() const = 0;
};

// A template belongs to one thread at a time.
class TAVRIN_API Template
{
public:
    virtual ~Template();

    // All handles to a parameter see the same selection.
    virtual TavStatus getParameter(char const* name, TemplateParameterPtr& parameter) const = 0;
    // A new transform for what is selected; on failure the handle stays as it was. A transform for viewing has no references, and
    // its exposure and contrast are dynamic: where it is finalized with OPTIMIZER_KEEP_DYNAMIC they can change at any time, else up
    // to finalize. Where nothing is known to lead from an input space to a working space, because the latter does not say where it
    // begins, the handle becomes empty.
    virtual TavStatus createTransform(TransformPtr& transform) const = 0;
};

class TAVRIN_API TemplateParameterPtr : public Handle<TemplateParameter>
{
public:
    using Handle::Handle;
};

class TAVRIN_API TemplatePtr : public Handle<Template>
{
public:
    using Handle::Handle;
};

// The template of that type over all installed and shared transforms that bear the product's name as a tag ("Tavrin" for those that
// come with the library). The first one loads the catalogs of these transforms. On failure the handle stays as it was.
TAVRIN_API TavStatus loadNativeTemplate(TemplateType type, char const* product, TemplatePtr& result);

// On failure the handle stays as it was.
TAVRIN_API TavStatus loadStockTemplate(StockTemplate type, TemplatePtr& result);

// The template over an OpenColorIO configuration file (".ocio"), for viewing: the working spaces are its colour spaces, the views
// are named "view (display)". Its default view is selected. The file is read once, here; tables that it names are read when a
// transform is made. On failure, such as in a build without OpenColorIO, the handle stays as it was.
TAVRIN_API TavStatus loadOCIOTemplate(char const* configFile, TemplatePtr& result);

// Loads the catalogs of installed and shared transforms anew; the latter's is built anew where its folder has changed. Templates
// that are loaded already stay as they are. Nothing else may use templates meanwhile.
TAVRIN_API TavStatus reloadCatalogs();

} // namespace Tavrin

#endif
