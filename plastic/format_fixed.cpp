#include "plastic/format_fixed.h"

#include <charconv>
#include <cstddef>

#include "numeric/ieee_arithmetic.h"

namespace halvorn {

std::string FormatFixed(double value, int precision) {
    const int digits = precision > 0 ? precision : 0;
    // The largest double has 309 digits before the point; sign and point make two more.
    std::string text(static_cast<std::size_t>(digits) + 311, '\0');
    const std::to_chars_result end = std::to_chars(text.data(), text.data() + text.size(), value,
                                                   std::chars_format::fixed, digits);
    text.resize(static_cast<std::size_t>(end.ptr - text.data()));
    return text;
}

}  // namespace halvorn
