// Transform files that catalogs find and connect, written in tests.
#ifndef TAVRIN_TESTS_SUPPORT_CATALOG_TRANSFORMS_H
#define TAVRIN_TESTS_SUPPORT_CATALOG_TRANSFORMS_H

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace CatalogTest
{

inline std::string escaped(std::string const& text)
{
    std::string result;
    for (char const c : text)
        result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : c == '\'' ? "&apos;" : std::string(1, c);
    return result;
}

inline std::string element(std::string const& tag, std::string const& content)
{
    std::string text = "<";
    text.append(tag).append(">").append(content).append("</").append(tag).append(">\n");
    return text;
}

struct Space
{
    std::string id;
    std::string name;
    std::string state;
};

inline Space const kAces{"1", "ACES2065-1", "scene"};
inline Space const kCieXyz{"2", "CIE-XYZ", "output"};

// What catalogs read of a transform. An element without a text is not there.
struct Information
{
    Space input;
    Space output;
    std::vector<std::string> tags;
    std::string viewName;
};

inline std::string spaceElement(std::string const& tag, Space const& space)
{
    std::string content;
    content += space.id.empty() ? "" : element("ID", escaped(space.id));
    content += space.name.empty() ? "" : element("ShortName", escaped(space.name));
    content += space.state.empty() ? "" : element("ImageState", escaped(space.state));
    return content.empty() ? "" : element(tag, "\n" + content);
}

inline std::string infoElement(Information const& information)
{
    std::string tags;
    for (std::string const& tag : information.tags)
        tags += "<" + tag + "/>";
    std::string const name = information.viewName.empty() ? "" : " name=\"" + escaped(information.viewName) + "\"";
    return "<Info" + name + ">\n" + spaceElement("InputSpace", information.input) +
           spaceElement("OutputSpace", information.output) + element("Category", element("Tags", tags)) + "</Info>\n";
}

// Multiplies red, green and blue by the factor.
inline std::string scaling(double factor)
{
    std::string const f = std::to_string(factor);
    return "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n<Array dim=\"3 3 3\">\n" + f + " 0 0\n0 " + f + " 0\n0 0 " + f +
           "\n</Array>\n</Matrix>\n";
}

inline std::string processList(std::string const& content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ProcessList version=\"1.3\" id=\"id\">\n" + content + "</ProcessList>\n";
}

inline std::string transformFile(Information const& information, double factor = 1.0)
{
    return processList(element("InputDescriptor", escaped(information.input.name)) +
                       element("OutputDescriptor", escaped(information.output.name)) + infoElement(information) + scaling(factor));
}

// The file's folders are made as well. Returns its path.
inline std::string writeFile(std::filesystem::path const& path, std::string const& content)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}

} // namespace CatalogTest

#endif
