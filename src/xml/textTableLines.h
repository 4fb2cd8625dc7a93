// The lines of plain-text tables, and the whole numbers in them.
#ifndef TAVRIN_XML_TEXT_TABLE_LINES_H
#define TAVRIN_XML_TEXT_TABLE_LINES_H

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace Color
{

// Tabs become blanks, and blanks at both ends are cut.
std::string ToolsStripBlank(std::string line);

// The number at the start of a text as "%d" of scanf reads it, with white space and a sign before it; what is out of range becomes
// the nearest int. The text then begins behind it. False when there is no number.
bool scanInteger(std::string_view& text, int& value);

// Reads a file line by line. A line of more than 199 characters comes as several, and a NUL ends one.
class TextTableLines
{
public:
    enum class LineEnd
    {
        LineFeed,
        // A carriage return before the line feed goes too.
        CarriageReturnAndLineFeed
    };

    TextTableLines(std::string const& path, LineEnd lineEnd);

    bool isOpen() const { return m_file != nullptr; }
    // The next line without its end, stripped. False at the end of the file.
    bool read(std::string& line);
    // The next line that is not empty, and no comment if these are passed over.
    bool readFilled(std::string& line);
    bool readContent(std::string& line);
    // How many lines were read.
    int getLineNumber() const { return m_lineNumber; }

private:
    struct Close
    {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Close> m_file;
    LineEnd m_lineEnd;
    int m_lineNumber = 0;
};

} // namespace Color

#endif
