#include "input/open_section.h"

#include "input/input_text.h"
#include "input/section_file.h"

namespace halvorn::host {

SectionModel OpenSection(const std::string& argument, const InputOptions& options) {
    return ReadSectionText(ReadInput(argument), SourceName(argument), options);
}

}  // namespace halvorn::host
