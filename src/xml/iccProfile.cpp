// An ICC profile in a file: what is checked of it, its header and its tags.
#include "xml/iccProfile.h"

#include "utils/errorMessage.h"

#include <algorithm>
#include <iterator>
#include <new>

namespace Color
{

namespace
{

// The layout of profiles, by the standard of the International Color Consortium: a header, the number of tags, a directory with
// signature, offset and size of each, and the tags.
constexpr std::size_t kHeaderSize = 128;
constexpr std::size_t kDirectoryOffset = kHeaderSize + 4;
constexpr std::size_t kEntrySize = 12;
// More than this Little CMS does not take.
constexpr std::uint32_t kMaxTags = 100;
// Type and reserved bytes, with which every tag begins.
constexpr std::uint32_t kSmallestTag = 8;

// Light of D50 as X, Y and Z with 16 bits behind the point, which every header states.
constexpr std::uint32_t kD50[] = {0x0000f6d6, 0x00010000, 0x0000d32d};

constexpr cmsTagSignature kRequiredTags[] = {cmsSigProfileDescriptionTag, cmsSigCopyrightTag, cmsSigMediaWhitePointTag};
constexpr cmsTagSignature kCurveTags[] = {cmsSigRedTRCTag, cmsSigGreenTRCTag, cmsSigBlueTRCTag};

void keepComplaint(cmsContext context, cmsUInt32Number, char const* text)
{
    auto& complaints = *static_cast<std::string*>(cmsGetContextUserData(context));
    complaints += complaints.empty() ? "" : "; ";
    complaints += text;
}

std::string tagText(std::uint32_t signature, char const* text)
{
    return "tag '" + getSignatureName(signature) + "' " + text;
}

// Collects what is found, and the worst of it.
class Findings
{
public:
    using Status = ICCProfile::ValidateStatus;

    void add(bool isFound, Status status, std::string const& text)
    {
        if (isFound)
        {
            m_status = std::max(m_status, status);
            m_report += (m_report.empty() ? "" : "; ") + text;
        }
    }
    Status getStatus() const { return m_status; }
    std::string const& getReport() const { return m_report; }

private:
    Status m_status = Status::Ok;
    std::string m_report;
};

bool isDate(ICCData const& header)
{
    struct
    {
        std::size_t offset;
        unsigned int least;
        unsigned int most;
    } static constexpr kFields[] = {{26, 1, 12}, {28, 1, 31}, {30, 0, 23}, {32, 0, 59}, {34, 0, 59}};
    return std::all_of(std::begin(kFields), std::end(kFields),
                       [&](auto const& field)
                       {
                           unsigned int const value = header.get16(field.offset);
                           return field.least <= value && value <= field.most;
                       });
}

void checkHeader(ICCData const& header, Findings& findings)
{
    constexpr auto kWarning = Findings::Status::Warning;
    std::uint32_t const version = header.get32(8) >> 24U;
    findings.add(version < 2 || version > 4, kWarning, "unknown version " + std::to_string(version));
    findings.add(!isDate(header), kWarning, "illegal date of creation");
    findings.add(header.get32(64) > INTENT_ABSOLUTE_COLORIMETRIC, kWarning, "unknown rendering intent");
    findings.add(header.get32(68) != kD50[0] || header.get32(72) != kD50[1] || header.get32(76) != kD50[2], kWarning,
                 "illuminant is not D50");
}

// Whether a tag says of itself that it is a curve and has fewer entries than it says.
bool isCutCurve(ICCProfile const& profile, cmsTagSignature tag)
{
    constexpr std::size_t kEntries = 12;
    ICCData const start = profile.readTag(tag, kEntries);
    return start.isOfType(cmsSigCurveType) &&
           (start.size() < kEntries || (profile.getTagSize(tag) - kEntries) / 2 < start.get32(8));
}

} // namespace

std::uint16_t ICCData::get16(std::size_t offset) const
{
    return static_cast<std::uint16_t>(m_bytes.at(offset) << 8U | m_bytes.at(offset + 1));
}

std::uint32_t ICCData::get32(std::size_t offset) const
{
    return static_cast<std::uint32_t>(get16(offset)) << 16U | get16(offset + 2);
}

ICCProfile::ICCProfile(std::string const& path) : m_path(path), m_file(path, std::ios::binary | std::ios::ate)
{
    if (!m_file.is_open())
    {
        throw failure(ErrorIds::kFileOpenFailed, Module::kXmlReader, path);
    }
    m_fileSize = static_cast<std::uint64_t>(std::max<std::streamoff>(m_file.tellg(), 0));
    m_file.seekg(0);
}

bool ICCProfile::ReadValidate(std::string& report)
{
    for (auto const step : {&ICCProfile::_readHeader, &ICCProfile::_readDirectory, &ICCProfile::_open})
    {
        report = (this->*step)();
        if (!report.empty())
        {
            return false;
        }
    }
    return true;
}

std::string ICCProfile::_readHeader()
{
    m_header = _readBytes(kDirectoryOffset);
    if (m_header.size() < kDirectoryOffset)
    {
        return "too short for a profile";
    }
    if (m_header.get32(36) != cmsMagicNumber)
    {
        return "no profile signature";
    }
    return m_header.get32(0) > m_fileSize ? "shorter than its header says" : "";
}

std::string ICCProfile::_readDirectory()
{
    std::uint32_t const count = m_header.get32(kHeaderSize);
    if (count > kMaxTags)
    {
        return "too many tags";
    }
    std::size_t const size = count * kEntrySize;
    std::size_t const profileSize = m_header.get32(0);
    ICCData const directory = _readBytes(size);
    if (directory.size() < size || profileSize < kDirectoryOffset + size)
    {
        return "tag directory cut off";
    }
    std::vector<std::uint32_t> signatures;
    for (std::size_t entry = 0; entry < size; entry += kEntrySize)
    {
        std::uint32_t const signature = directory.get32(entry);
        std::size_t const tagOffset = directory.get32(entry + 4);
        std::size_t const tagSize = directory.get32(entry + 8);
        if (tagSize < kSmallestTag || tagOffset < kDirectoryOffset + size || tagOffset + tagSize > profileSize)
        {
            return tagText(signature, "lies outside of the profile");
        }
        if (std::find(signatures.begin(), signatures.end(), signature) != signatures.end())
        {
            return tagText(signature, "stands twice");
        }
        signatures.push_back(signature);
    }
    return "";
}

std::string ICCProfile::_open()
{
    m_context.reset(cmsCreateContext(nullptr, &m_complaints));
    if (!m_context)
    {
        throw std::bad_alloc();
    }
    cmsSetLogErrorHandlerTHR(m_context.get(), &keepComplaint);
    m_profile.reset(cmsOpenProfileFromFileTHR(m_context.get(), m_path.c_str(), "r"));
    if (m_profile)
    {
        return "";
    }
    return m_complaints.empty() ? "not a profile" : m_complaints;
}

ICCData ICCProfile::_readBytes(std::size_t count)
{
    std::vector<unsigned char> bytes(count);
    m_file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(m_file.gcount()));
    return ICCData(std::move(bytes));
}

ICCProfile::ValidateStatus ICCProfile::Validate(std::string& report) const
{
    Findings findings;
    checkHeader(m_header, findings);
    findings.add(m_header.get32(0) < m_fileSize, ValidateStatus::Warning, "longer than its header says");
    for (cmsTagSignature const tag : kRequiredTags)
    {
        findings.add(!hasTag(tag), ValidateStatus::NonCompliant, tagText(tag, "is missing"));
    }
    for (cmsTagSignature const tag : kCurveTags)
    {
        findings.add(isCutCurve(*this, tag), ValidateStatus::CriticalError, tagText(tag, "is shorter than its curve"));
    }
    report = findings.getReport();
    return findings.getStatus();
}

std::size_t ICCProfile::getTagSize(cmsTagSignature tag) const
{
    return cmsReadRawTag(m_profile.get(), tag, nullptr, 0);
}

ICCData ICCProfile::readTag(cmsTagSignature tag, std::size_t most) const
{
    std::vector<unsigned char> bytes(std::min(getTagSize(tag), most));
    bytes.resize(cmsReadRawTag(m_profile.get(), tag, bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
    return ICCData(std::move(bytes));
}

std::string getSignatureName(std::uint32_t signature)
{
    std::string name;
    for (unsigned int shift = 32; shift > 0; shift -= 8)
    {
        unsigned int const character = signature >> (shift - 8U) & 0xffU;
        name += character >= 0x20 && character < 0x7f ? static_cast<char>(character) : '?';
    }
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

} // namespace Color
