// DXF texts made in tests, and what becomes of them.
#ifndef HALVORN_TESTS_ENGINE_DXF_TEXT_H
#define HALVORN_TESTS_ENGINE_DXF_TEXT_H

#include <sstream>
#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "read/dxf/read_drawing.h"

namespace halvorn::engine {

// One token a line.
inline std::string Lines(const std::string& tokens) {
    std::istringstream stream(tokens);
    std::string text;
    for (std::string token; stream >> token;) text += token + '\n';
    return text;
}

inline std::string File(const std::string& entities, const std::string& before = "") {
    return Lines("0 SECTION 2 HEADER 9 $INSUNITS 70 4 0 ENDSEC " + before +
                 " 0 SECTION 2 ENTITIES " + entities + " 0 ENDSEC 0 EOF");
}

inline std::string Line(double x1, double y1, double x2, double y2) {
    std::ostringstream text;
    text.precision(17);
    text << " 0 LINE 10 " << x1 << " 20 " << y1 << " 11 " << x2 << " 21 " << y2;
    return text.str();
}

inline SectionModel Read(const std::string& text, const InputOptions& options = {}) {
    return ReadDrawing(text, "test", options);
}

inline std::string ErrorOf(const std::string& text, const InputOptions& options = {}) {
    try {
        Read(text, options);
    } catch (const InputError& error) {
        return error.what();
    }
    return "no error";
}

inline std::string Joined(const std::vector<std::string>& remarks) {
    std::string all;
    for (const std::string& remark : remarks) all += remark + "\n";
    return all;
}

}  // namespace halvorn::engine

#endif
