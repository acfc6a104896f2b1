/// @file sine.h
/// Sine and cosine from IEEE arithmetic alone, so that an arc has the same points on every
/// platform: each C library rounds its own in another way.
#ifndef HALVORN_ENGINE_GEOMETRY_SINE_H
#define HALVORN_ENGINE_GEOMETRY_SINE_H

namespace halvorn::engine {

/// Sine and cosine of one angle.
struct SineAndCosine {
    double sine;
    double cosine;
};

/// Returns both, each rounded to the nearest double but for cases of one in 10^7.
/// @param angle  of at most some turns [rad]; beyond that they are those of the C library
SineAndCosine SineAndCosineOf(double angle);

}  // namespace halvorn::engine

#endif
