/// @file byte_program.h
/// Turns the bytes of one input into a program: choices, coordinates and rings.
#ifndef HALVORN_FUZZ_BYTE_PROGRAM_H
#define HALVORN_FUZZ_BYTE_PROGRAM_H

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "kernel/classify_polygon.h"
#include "kernel/kernel.h"
#include "numeric/constants.h"

namespace fuzz {

using Ring = std::vector<halvorn::KPoint>;

/// Stops the program when a property does not hold.
inline void Require(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "Does not hold: %s\n", property);
    std::abort();
}

/// Equal to the last bit, so that a NaN equals itself.
inline bool SameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// Reads a program from bytes; beyond their end every byte is 0.
class ByteProgram {
public:
    ByteProgram(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

    bool IsAtEnd() const { return at_ == end_; }
    unsigned Byte() { return at_ < end_ ? *at_++ : 0; }
    int Choose(unsigned count) { return static_cast<int>(Byte() % count); }

    /// A byte below 128 gives an integer or a half: '@' is 0, 'B' is 1, '>' is -1. From 128 it is
    /// the last of these, or just beside it; from 160 an odd number; from 248 any double.
    double Coordinate() {
        const unsigned byte = Byte();
        if (byte < 128) return previous_ = 0.5 * (static_cast<int>(byte) - 64);
        if (byte < 160) {
            const double offsets[] = {0, 1e-9, -1e-9, 1e-10, -1e-11, 1e-12, 5e-8, -1e-7};
            return previous_ + offsets[byte % 8];
        }
        if (byte >= 248) {
            std::uint8_t bytes[sizeof(double)];
            for (std::uint8_t& b : bytes) b = static_cast<std::uint8_t>(Byte());
            double any = 0;
            std::memcpy(&any, bytes, sizeof any);
            return any;
        }
        using Limits = std::numeric_limits<double>;
        const double odd[] = {Limits::quiet_NaN(),
                              Limits::infinity(),
                              -Limits::infinity(),
                              Limits::denorm_min(),
                              Limits::min(),
                              Limits::max(),
                              -Limits::max(),
                              1e300,
                              -1e154,
                              1e100,
                              1e-100,
                              1e50,
                              1e16,
                              -0.0,
                              1e-8,
                              1.0 / 3};
        return odd[byte % 16];
    }

    halvorn::KPoint Point() {
        const double x = Coordinate();
        return {x, Coordinate()};  // in this order for every compiler
    }

    /// At most 64 vertices: anything, a star about a point, or a row of columns of differing height
    /// on a base. The last two are simple, but for repeated heights valid, and are turned, scaled
    /// or moved.
    Ring Polygon() {
        const int kind = Choose(4);
        const int n = Choose(kind == 0 ? 65 : 31);
        Ring ring;
        if (kind == 0) {
            for (int i = 0; i < n; ++i) ring.push_back(Point());
            return ring;
        }
        const double turn = kind == 3 ? 0.1 * Choose(64) : 0.0;
        const double scale = kind == 3 ? std::pow(10.0, Choose(7) - 3) : 1.0;
        const halvorn::KPoint middle{static_cast<double>(Choose(32)), 0.5 * Choose(32)};
        for (int i = 0; i < n; ++i) {
            const double size = 0.5 * (1 + Choose(32));
            const double angle = 2 * halvorn::kPi * i / n;
            if (kind == 1) ring.push_back({size * std::cos(angle), size * std::sin(angle)});
            if (kind != 1) ring.push_back({static_cast<double>(i), size});
            if (kind != 1) ring.push_back({i + 1.0, size});
        }
        if (kind != 1) ring.insert(ring.end(), {{static_cast<double>(n), 0.0}, {0.0, 0.0}});
        for (auto& [x, y] : ring) {
            const double c = scale * std::cos(turn), s = scale * std::sin(turn);
            const halvorn::KPoint old{x, y};
            x = c * old.x - s * old.y + scale * middle.x;
            y = s * old.x + c * old.y + scale * middle.y;
        }
        return ring;
    }

private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
    double previous_ = 0;
};

/// Largest magnitude of a coordinate.
inline double Extent(const Ring& ring) {
    double extent = 0;
    for (const auto& [x, y] : ring) extent = std::max({extent, std::abs(x), std::abs(y)});
    return extent;
}

/// Whether the geometric properties must hold: a ring that is simple by a margin of 1e-7, hundreds
/// of times the tolerances it is used with, and of the size of a section. Far larger coordinates
/// round by more than a tolerance; far smaller shapes lie within one.
inline bool IsSound(const Ring& ring) {
    for (const auto& [x, y] : ring) {
        if (!(std::abs(x) <= 1e4 && std::abs(y) <= 1e4)) return false;
    }
    const int n = static_cast<int>(ring.size());
    return n >= 3 && halvorn::KClassifyPolygon(ring.data(), n, 1e-7) >= halvorn::kSimplePolygon;
}

/// Bound of the rounding in an integral over the ring of a polynomial whose terms have `degree`
/// factors of length: some 30 operations an edge, each within one unit in the last place of a term
/// that is at most (4 extent)^degree / 4.
inline double Rounding(const Ring& ring, int degree, double extent) {
    const double epsilon = std::numeric_limits<double>::epsilon();
    return 30 * static_cast<double>(ring.size()) * epsilon * std::pow(4 * extent, degree) / 4;
}
inline double Rounding(const Ring& ring, int degree) {
    return Rounding(ring, degree, Extent(ring));
}

}  // namespace fuzz

/// Runs one input; returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

#endif
