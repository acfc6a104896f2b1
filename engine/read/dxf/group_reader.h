/// @file group_reader.h
/// The pairs of group code and value that an ASCII DXF text consists of.
#ifndef HALVORN_ENGINE_READ_DXF_GROUP_READER_H
#define HALVORN_ENGINE_READ_DXF_GROUP_READER_H

#include <string>
#include <string_view>

namespace halvorn::engine::dxf {

/// The remedy for a file that is damaged or no DXF text.
inline constexpr const char* kExportAnew = "export the drawing anew as ASCII DXF";

/// One pair. `value` is a part of the text that was read, without blanks at its ends.
struct Group {
    int code = 0;
    std::string_view value;
    int line = 0;  ///< of the value, counted from 1
};

/// Walks over the pairs of a text, which must outlive it. Lines end with LF or CR LF; comments
/// (code 999) are passed over.
class GroupReader {
public:
    /// @param line number of the text's first line
    GroupReader(std::string_view text, const std::string& source, int line = 1)
        : rest_(text), source_(&source), line_(line) {}

    /// Reads the next pair; returns false at the end of the text.
    /// @throws InputError for a line that is no group code and for a code without a value
    bool Next(Group& group);

    /// What follows the pairs read so far, and the number of its first line.
    std::string_view Rest() const { return rest_; }
    int Line() const { return line_; }

private:
    std::string_view TakeLine();

    std::string_view rest_;
    const std::string* source_;
    int line_;
};

/// Ends the reading: `source`: line `line`: problem; remedy.
[[noreturn]] void Refuse(const std::string& source, int line, const std::string& problem,
                         const std::string& remedy);

/// Returns the value as a finite number.
/// @throws InputError
double RealValue(const Group& group, const std::string& source);

/// Returns the value as a whole number.
/// @throws InputError
int WholeValue(const Group& group, const std::string& source);

/// Returns a coordinate or length for a message, in at most nine significant digits.
std::string Shown(double value);

/// Returns "(x, y)".
std::string ShownPoint(double x, double y);

}  // namespace halvorn::engine::dxf

#endif
