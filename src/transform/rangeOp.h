// Maps an input interval onto an output interval and clamps; without limits it only changes the depth.
#ifndef TAVRIN_TRANSFORM_RANGE_OP_H
#define TAVRIN_TRANSFORM_RANGE_OP_H

#include "transform/op.h"

#include <string>

namespace Color
{

// Limits are in the code-value scale of the input and output depths; an absent limit is NaN.
class RangeOp : public TypedOp<RangeOp, Op::OpType::RangeOp>
{
public:
    // 32f to 32f, no limits; the derived fields are zero until validate.
    RangeOp();
    // These validate, and so throw on limits that do not fit together.
    RangeOp(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut);
    RangeOp(BitDepth in, BitDepth out, double minIn, double maxIn, double minOut, double maxOut, std::string const& id,
            std::string const& name, Descriptions const& descriptions);

    void setInputBitDepth(BitDepth depth) override;
    void setOutputBitDepth(BitDepth depth) override;
    // Also derives scale, offset and bounds.
    void validate() const override;
    bool isIdentity() const override;
    bool operator==(Op const& other) const override;

    static double emptyValue();

    // Plain stores; validate afterwards.
    void setMinInValue(double value) { m_minIn = value; }
    void setMaxInValue(double value) { m_maxIn = value; }
    void setMinOutValue(double value) { m_minOut = value; }
    void setMaxOutValue(double value) { m_maxOut = value; }

    double getMinInValue() const { return m_minIn; }
    double getMaxInValue() const { return m_maxIn; }
    double getMinOutValue() const { return m_minOut; }
    double getMaxOutValue() const { return m_maxOut; }

    bool minIsEmpty() const;
    bool maxIsEmpty() const;
    bool minClips() const;
    bool maxClips() const;

    // The limits as texts for files.
    std::string getMinInString() const;
    std::string getMaxInString() const;
    std::string getMinOutString() const;
    std::string getMaxOutString() const;

    // out = in * scale + offset, then the bounds; a bound that is NaN does not clamp. Alpha is only ever scaled.
    double getScale() const { return m_derived.scale; }
    double getOffset() const { return m_derived.offset; }
    double getLowerBound() const { return m_derived.lowerBound; }
    double getUpperBound() const { return m_derived.upperBound; }
    double getAlphaScale() const { return m_derived.alphaScale; }

    // Whether anything but clamping is done; depthAware takes a mere change of depth for nothing.
    bool scales(bool depthAware) const;
    // Whether the clamp is at least as wide as what a table clamps to anyway. Compares input limits with the output depth.
    bool clampsToLutDomain() const;
    // Whether an input value would meet a limit, or the end of an integer output depth.
    bool wouldClip(double value) const;

private:
    struct Derived
    {
        double scale = 0.0;
        double offset = 0.0;
        double lowerBound = 0.0;
        double upperBound = 0.0;
        double alphaScale = 0.0;
    };

    double _depthScale() const;
    void _fillScaleOffset() const;
    void _fillBounds() const;
    double _clipOverride(bool lower) const;

    double m_minIn;
    double m_maxIn;
    double m_minOut;
    double m_maxOut;
    mutable Derived m_derived; // Follows from the limits and depths; validate, which is const, brings it up to date.
};

} // namespace Color

#endif
