// A power function on each channel, plain or with a straight toe.
#ifndef TAVRIN_TRANSFORM_GAMMA_OP_H
#define TAVRIN_TRANSFORM_GAMMA_OP_H

#include "transform/channelParameters.h"
#include "transform/op.h"

#include <string>
#include <vector>

namespace Color
{

// Parameters are free of depths: the curves are of the values 0 to 1 that codes stand for.
class GammaOp : public TypedOp<GammaOp, Op::OpType::GammaOp>
{
public:
    enum class GammaStyle : unsigned int
    {
        BasicFwd = 0,
        BasicRev = 1,
        MoncurveFwd = 2,
        MoncurveRev = 3
    };

    // Of one channel: gamma, and for the moncurve styles an offset after it.
    using Params = std::vector<double>;

    // 32f to 32f, basic forward, without parameters, which does not validate.
    GammaOp();
    // Validates.
    GammaOp(BitDepth in, BitDepth out, std::string const& id, std::string const& name, Descriptions const& descriptions,
            GammaStyle style, Params const& red, Params const& green, Params const& blue, Params const& alpha);

    void validate() const override;
    bool isIdentity() const override;
    bool operator==(Op const& other) const override;

    // Names are compared without regard to case; throws on others and on null.
    static GammaStyle getGammaStyle(char const* name);
    // Empty for a value that is no style.
    static char const* getGammaStyleName(GammaStyle style);

    GammaStyle getGammaStyle() const { return m_style; }
    Params const& getRedParams() const { return m_params[0]; }
    Params const& getGreenParams() const { return m_params[1]; }
    Params const& getBlueParams() const { return m_params[2]; }
    Params const& getAlphaParams() const { return m_params[3]; }

    // Plain stores; validate afterwards.
    void setGammaStyle(GammaStyle style) { m_style = style; }
    void setRedParams(Params const& params) { m_params[0] = params; }
    void setGreenParams(Params const& params) { m_params[1] = params; }
    void setBlueParams(Params const& params) { m_params[2] = params; }
    void setAlphaParams(Params const& params) { m_params[3] = params; }
    // Red, green and blue; alpha becomes the identity of the style, which must be set before.
    void setParams(Params const& params);

    // Exchanges forward and reverse; the parameters stay.
    void invert();

    // Empty for a value that is no style.
    static Params getIdentityParameters(GammaStyle style);
    static bool isIdentityParameters(Params const& params, GammaStyle style);
    bool isAlphaComponentIdentity() const;
    bool areAllComponentsEqual() const;
    // Red, green and blue are equal and alpha is the identity.
    bool isNonChannelDependent() const;

    // For files: one number when all channels are equal, otherwise those of red, green and blue; empty without such a parameter.
    std::string getGammaString() const;
    std::string getOffsetString() const;

    // The constants of the curve with a toe, from gamma and offset of one channel, both kept away from where the curve has no toe.
    // Forward, for x in 0 to 1: pow(x * scale + offset, gamma) above the break, x * slope up to it.
    static double monCurveGammaFwd(Params const& params);
    static double monCurveOffsetFwd(Params const& params);
    static double monCurveScaleFwd(Params const& params);
    static double monCurveBreakFwd(Params const& params);
    static double monCurveSlopeFwd(Params const& params);
    // Reverse: pow(x, gamma) * scale - offset above the break, x * slope up to it.
    static double monCurveGammaRev(Params const& params);
    static double monCurveOffsetRev(Params const& params);
    static double monCurveScaleRev(Params const& params);
    static double monCurveBreakRev(Params const& params);
    static double monCurveSlopeRev(Params const& params);

private:
    GammaStyle m_style = GammaStyle::BasicFwd;
    ChannelParameters<4> m_params;
};

} // namespace Color

#endif
