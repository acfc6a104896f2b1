/// @file options.h
/// Sections and options in requests.
#ifndef HALVORN_WEB_OPTIONS_H
#define HALVORN_WEB_OPTIONS_H

#include <HalvornEngine.h>

#include <string>

#include "fields.h"

namespace halvorn::web {

/// Returns the member "section" of a request, without which there is an InputError.
Fields SectionFields(const Fields& request);

/// A text and what it is in.
struct SectionText {
    std::string text;
    engine::TextFormat format = engine::TextFormat::Json;
    std::string source;  ///< how messages call it
};

/// Returns the text of a section that is given by one.
SectionText ReadSectionText(const Fields& section);

/// Returns the section of a text or of a profile's name.
engine::Section ReadSection(const Fields& section);

/// Returns the options of an evaluation, the defaults when the member "options" is missing. Torsion,
/// warping and shear are computed when they are asked for or there are forces.
engine::EvaluateOptions ReadEvaluateOptions(const Fields& request);

/// Returns the member "figure" of a request.
engine::FigureOptions ReadFigureOptions(const Fields& request);

/// Returns the member "table" of a request.
engine::TableOptions ReadTableOptions(const Fields& request);

}  // namespace halvorn::web

#endif
