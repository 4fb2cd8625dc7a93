// OpenColorIO operator by operator: a processor as a list of plain numbers, to be read, and to be built and run.
#ifndef TAVRIN_OCIO_OP_UTIL_H
#define TAVRIN_OCIO_OP_UTIL_H

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace Color::OpUtil
{

// What OpenColorIO says is wrong, in its own words.
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

enum class OpType : unsigned int
{
    Lut1D = 1,
    Lut3D = 2,
    Matrix = 3,
    Log = 4,
    Exponent = 5,
    NoOp = 6,
    Moncurve = 7,
    Range = 8,
    Cdl = 9,
    ExposureContrast = 10,
    Unknown = 11
};

enum class Direction : unsigned int
{
    Forward = 1,
    Inverse = 2
};

enum class Interpolation : unsigned int
{
    Unknown = 0,
    Linear = 2,
    Tetrahedral = 3,
    Best = 255
};

using Triple = std::array<float, 3>;

// The operators. An inverse direction asks for the inverse of what the numbers say.

// Values from "from" to "to" select the rows, the same number for red, green and blue.
struct Lut1D
{
    static constexpr OpType kType = OpType::Lut1D;

    std::array<std::vector<float>, 3> luts;
    Triple from{0.0F, 0.0F, 0.0F};
    Triple to{1.0F, 1.0F, 1.0F};
    Interpolation interpolation = Interpolation::Linear;
    Direction direction = Direction::Forward;
    bool hasHalfDomain = false; // A row for every half float; from and to do not count.
    bool adjustsHue = false;    // The middle channel keeps its place between the other two.
};

// Red varies fastest.
struct Lut3D
{
    static constexpr OpType kType = OpType::Lut3D;

    std::array<unsigned int, 3> sizes{};
    std::vector<float> lut;
    Triple from{0.0F, 0.0F, 0.0F};
    Triple to{1.0F, 1.0F, 1.0F};
    Interpolation interpolation = Interpolation::Linear;
    Direction direction = Direction::Forward;
};

// Row by row: the first four coefficients make the red output.
struct Matrix
{
    static constexpr OpType kType = OpType::Matrix;

    std::array<float, 16> matrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::array<float, 4> offsets{};
    Direction direction = Direction::Forward;
};

// k * log(m * x + b, base) + kb on red, green and blue. Where it is read the base is 10, or 2 if the logarithm is plain.
struct Log
{
    static constexpr OpType kType = OpType::Log;

    Triple k{1.0F, 1.0F, 1.0F};
    Triple m{1.0F, 1.0F, 1.0F};
    Triple b{0.0F, 0.0F, 0.0F};
    float base = 10.0F;
    Triple kb{0.0F, 0.0F, 0.0F};
    Direction direction = Direction::Forward;
};

// Powers of red, green, blue and alpha; what is below 0 becomes 0.
struct Exponent
{
    static constexpr OpType kType = OpType::Exponent;

    std::array<float, 4> exponents{1.0F, 1.0F, 1.0F, 1.0F};
    Direction direction = Direction::Forward;
};

struct NoOp
{
    static constexpr OpType kType = OpType::NoOp;
};

// A power with a straight toe that goes on below 0: pow((x + offset) / (1 + offset), gamma) above offset / (gamma - 1).
struct Moncurve
{
    static constexpr OpType kType = OpType::Moncurve;

    std::array<double, 4> gamma{};
    std::array<double, 4> offset{};
    Direction direction = Direction::Forward;
};

// Maps an interval onto another and clamps to it; a limit that is not there is NaN.
struct Range
{
    static constexpr OpType kType = OpType::Range;

    double minIn;
    double maxIn;
    double minOut;
    double maxOut;
};

struct Cdl
{
    static constexpr OpType kType = OpType::Cdl;

    std::array<double, 3> slope{1.0, 1.0, 1.0};
    std::array<double, 3> offset{0.0, 0.0, 0.0};
    std::array<double, 3> power{1.0, 1.0, 1.0};
    double saturation = 1.0;
    bool clamps = true; // To the range 0 to 1, before the power and at the end.
    Direction direction = Direction::Forward;
};

// In linear light: pow(x * 2 ^ exposure / pivot, contrast) * pivot. For video, exposure and pivot are those of linear light.
struct ExposureContrast
{
    static constexpr OpType kType = OpType::ExposureContrast;

    bool isVideo = false;
    double exposure = 0.0;
    double contrast = 1.0;
    double pivot = 0.18;
};

// One that can't be told in the numbers above.
struct Unknown
{
    static constexpr OpType kType = OpType::Unknown;
};

using Operation = std::variant<Lut1D, Lut3D, Matrix, Log, Exponent, NoOp, Moncurve, Range, Cdl, ExposureContrast, Unknown>;

// Building and finalizing are for one thread, everything else for any number of them.
class Processor
{
public:
    std::vector<Operation> const& getOperations() const { return m_operations; }
    void append(Operation operation) { m_operations.push_back(std::move(operation)); }

    // Makes ready for apply. Throws an Error when OpenColorIO refuses an operator.
    void finalize();
    // In place, on rows of floats without gaps; 3 or 4 channels. After finalize alone.
    void apply(float* pixels, unsigned int width, unsigned int height, unsigned int channels) const;

private:
    class Program;

    std::vector<Operation> m_operations;
    std::shared_ptr<Program const> m_program;
};

// Whether this build has OpenColorIO. Without it there are no formats, and all else that needs it throws an Error that says so.
bool isAvailable();

// Extensions without the dot and names of formats, in OpenColorIO's order; both may repeat.
std::vector<std::pair<std::string, std::string>> getFileFormats();

// What a file says now, whatever was read from it before, in OpenColorIO's linear interpolation.
std::shared_ptr<Processor const> getFileProcessor(std::string const& path, Direction direction);

// The colour decision with this id in a file; the first one for an empty id.
Cdl getCDLFromFile(std::string const& path, std::string const& id);

// Reading. A query gives null for an operator of another type and for one whose parameters are not finite; what it points at lives
// as long as the processor.
unsigned int getOperationsCount(Processor const& processor);
OpType getOpType(Processor const& processor, unsigned int index);
Lut1D const* getLut1DOpProperties(Processor const& processor, unsigned int index);
Lut3D const* getLut3DOpProperties(Processor const& processor, unsigned int index);
Matrix const* getMatrixOpProperties(Processor const& processor, unsigned int index);
Log const* getLogOpProperties(Processor const& processor, unsigned int index);
Exponent const* getExponentOpProperties(Processor const& processor, unsigned int index);
Moncurve const* getMoncurveOpProperties(Processor const& processor, unsigned int index);
Range const* getRangeOpProperties(Processor const& processor, unsigned int index);
Cdl const* getCDLOpProperties(Processor const& processor, unsigned int index);
ExposureContrast const* getExposureContrastOpProperties(Processor const& processor, unsigned int index);

// Building. Each appends to the processor.
void createScaleOp(Processor& processor, std::array<float, 4> const& scale);
void createMatrixOffsetOp(Processor& processor, Matrix const& matrix);
void createExponentOp(Processor& processor, Exponent const& exponent);
void createLogOp(Processor& processor, Log const& log);
void createLut1DOp(Processor& processor, Lut1D lut);
void createLut3DOp(Processor& processor, Lut3D lut);
void buildCDLOp(Processor& processor, Cdl const& cdl);

} // namespace Color::OpUtil

#endif
