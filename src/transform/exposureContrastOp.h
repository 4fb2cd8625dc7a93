// Exposure and contrast around a pivot; both can change while a transform runs.
#ifndef TAVRIN_TRANSFORM_EXPOSURE_CONTRAST_OP_H
#define TAVRIN_TRANSFORM_EXPOSURE_CONTRAST_OP_H

#include "transform/op.h"

#include <memory>
#include <string>

namespace Color
{

// Exposure counts in stops; contrast is an exponent in linear light. Parameters are free of depths.
class ExposureContrastOp : public TypedOp<ExposureContrastOp, Op::OpType::ExposureContrastOp>
{
public:
    // What the values are: gamma-corrected video, logarithmic or linear light.
    enum class Style : unsigned int
    {
        Video = 0,
        Log = 1,
        Linear = 2
    };

    // 32f to 32f, video, at rest.
    ExposureContrastOp();
    ExposureContrastOp(BitDepth in, BitDepth out, Style style);
    // Copies share the properties that are dynamic and own the others.
    ExposureContrastOp(ExposureContrastOp const& other);
    ExposureContrastOp& operator=(ExposureContrastOp const& other);

    void validate() const override;
    // Whatever the depths: at rest the operator folds away even between two of them.
    bool isNoop() const override { return isIdentity(); }
    bool isIdentity() const override;
    bool isDynamic() const override;
    bool hasDynamicProperty(DynamicProperty::Ids id) const override;
    void setDynamicProperty(DynamicProperty const& property) override;
    void getDynamicProperty(DynamicProperty& property) const override;
    bool operator==(Op const& other) const override;

    // Names are compared without regard to case; throws on others and on null.
    static Style getECStyle(char const* name);
    // Empty for a value that is no style.
    static char const* getStyleName(Style style);

    Style getStyle() const { return m_style; }
    void setStyle(Style style) { m_style = style; }

    // Never null.
    std::shared_ptr<ExposureDynamicProperty> const& getExposure() const { return m_exposure; }
    std::shared_ptr<ContrastDynamicProperty> const& getContrast() const { return m_contrast; }

    // The linear value that contrast leaves alone.
    double getPivot() const { return m_pivot; }
    void setPivot(double pivot) { m_pivot = pivot; }
    std::string getPivotString() const;

private:
    Style m_style;
    std::shared_ptr<ExposureDynamicProperty> m_exposure;
    std::shared_ptr<ContrastDynamicProperty> m_contrast;
    double m_pivot;
};

} // namespace Color

#endif
