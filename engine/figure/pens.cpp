#include "figure/pens.h"

namespace halvorn::engine::figure {

Pen PenOf(LineKind kind) {
    switch (kind) {
        case LineKind::Outline:
            return {1.1, {}, 0, true};
        case LineKind::Rim:
            return {0.25, {}, 0, true};
        case LineKind::Elastic:
            return {0.7, {9.0, 3.0}, 2};
        case LineKind::Plastic:
            return {0.9, {2.2, 2.2}, 2};
        case LineKind::Principal:
            return {0.7, {12.0, 2.5, 1.8, 2.5}, 4};
        case LineKind::Arrow:
            return {1.0};
        case LineKind::Hatch:
        case LineKind::Leader:
            return {0.4};
        case LineKind::Dimension:
        case LineKind::Rule:
            break;
    }
    return {0.5};
}

}  // namespace halvorn::engine::figure
