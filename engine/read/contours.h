/// @file contours.h
/// Sections of outlines that the caller has.
#ifndef HALVORN_ENGINE_READ_CONTOURS_H
#define HALVORN_ENGINE_READ_CONTOURS_H

#include <string>
#include <vector>

#include "HalvornEngine.h"
#include "model/section_model.h"

namespace halvorn::engine {

/// As `Section::OfContours`.
SectionModel SectionOfContours(const std::vector<Contour>& contours, const std::string& unit,
                               const std::string& name, const std::string& source);

}  // namespace halvorn::engine

#endif
