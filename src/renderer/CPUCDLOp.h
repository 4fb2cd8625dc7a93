// Parameters of the colour decision, for pixels and shaders.
#ifndef TAVRIN_RENDERER_CPU_CDL_OP_H
#define TAVRIN_RENDERER_CPU_CDL_OP_H

#include "transform/CDLOp.h"

namespace Rendering
{

namespace CDLOpUtil
{

// What the arithmetic of both directions takes: of a reverse style, the numbers are turned round already.
class RenderParams
{
public:
    // Reads the operator. Slope, power and saturation below 0.01 count as 0.01 where they are divided by.
    void update(Color::CDLOp const* op);

    void setSlope(float red, float green, float blue, float alpha);
    void setOffset(float red, float green, float blue, float alpha);
    void setPower(float red, float green, float blue, float alpha);
    void setSaturation(float saturation) { m_saturation = saturation; }

    // Four values: red, green, blue, alpha.
    float const* getSlope() const { return m_slope; }
    float const* getOffset() const { return m_offset; }
    float const* getPower() const { return m_power; }
    float getSaturation() const { return m_saturation; }
    bool isReverse() const { return m_isReverse; }
    bool isNoClamp() const { return m_isNoClamp; }

private:
    float m_slope[4] = {1.0F, 1.0F, 1.0F, 1.0F};
    float m_offset[4] = {0.0F, 0.0F, 0.0F, 0.0F};
    float m_power[4] = {1.0F, 1.0F, 1.0F, 1.0F};
    float m_saturation = 1.0F;
    bool m_isReverse = false;
    bool m_isNoClamp = false;
};

} // namespace CDLOpUtil

// Arrays hold red, green and blue; alpha is only scaled.
struct CDLParameters
{
    float inScale;
    float slope[3];
    float offset[3];
    float power[3];
    float saturation;
    float outScale;
    float alphaScale;

    bool keepsAlpha() const { return alphaScale == 1.0F; }
};

} // namespace Rendering

#endif
