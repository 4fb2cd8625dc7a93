// An ICC profile in a file: what is checked of it, its header and its tags.
#ifndef TAVRIN_XML_ICC_PROFILE_H
#define TAVRIN_XML_ICC_PROFILE_H

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <lcms2.h>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Color
{

// Bytes of a profile, of which nothing is interpreted but numbers, big end first. Offsets have to lie within.
class ICCData
{
public:
    ICCData() = default;
    explicit ICCData(std::vector<unsigned char> bytes) : m_bytes(std::move(bytes)) {}

    std::size_t size() const { return m_bytes.size(); }
    std::uint16_t get16(std::size_t offset) const;
    std::uint32_t get32(std::size_t offset) const;
    // Whether these are the bytes of a tag of this type: with it and four reserved bytes each tag begins.
    bool isOfType(std::uint32_t type) const { return size() >= 8 && get32(0) == type; }

private:
    std::vector<unsigned char> m_bytes;
};

// Little CMS opens the profile and finds its tags. It drops tags that lie beyond the end of the file without a word, and presents
// different kinds of curves alike, so header, directory and tags are looked at as they lie in the file.
class ICCProfile
{
public:
    enum class ValidateStatus : unsigned int
    {
        Ok = 0,
        Warning = 1,
        NonCompliant = 2,
        CriticalError = 3
    };

    // Throws when the file can't be opened.
    explicit ICCProfile(std::string const& path);
    ICCProfile(ICCProfile const&) = delete;
    ICCProfile& operator=(ICCProfile const&) = delete;

    // Reads the header and the directory of tags; false when they make no profile. What follows is to be called after a true.
    bool ReadValidate(std::string& report);
    // Looks at what header and tags say.
    ValidateStatus Validate(std::string& report) const;

    std::uint32_t getDeviceSpace() const { return m_header.get32(16); }
    std::uint32_t getConnectionSpace() const { return m_header.get32(20); }
    bool hasTag(cmsTagSignature tag) const { return cmsIsTag(m_profile.get(), tag) != 0; }
    // In bytes; 0 for a tag that is not there.
    std::size_t getTagSize(cmsTagSignature tag) const;
    // The first bytes of a tag, at most so many; none of a tag that is not there.
    ICCData readTag(cmsTagSignature tag, std::size_t most) const;

private:
    template <auto kClose>
    struct Closer
    {
        template <class Handle>
        void operator()(Handle* handle) const
        {
            kClose(handle);
        }
    };

    // These tell a reason to refuse the profile; empty when there is none.
    std::string _readHeader();
    std::string _readDirectory();
    std::string _open();

    ICCData _readBytes(std::size_t count);

    std::string m_path;
    std::ifstream m_file;
    std::uint64_t m_fileSize = 0;
    ICCData m_header;         // With the number of tags behind it.
    std::string m_complaints; // Of Little CMS.
    std::unique_ptr<std::remove_pointer_t<cmsContext>, Closer<&cmsDeleteContext>> m_context;
    std::unique_ptr<std::remove_pointer_t<cmsHPROFILE>, Closer<&cmsCloseProfile>> m_profile;
};

// The four characters of a signature, without blanks behind them; a question mark for what can't be printed.
std::string getSignatureName(std::uint32_t signature);

} // namespace Color

#endif
