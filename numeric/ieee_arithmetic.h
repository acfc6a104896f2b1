/// @file ieee_arithmetic.h
/// Refuses compilers that were told to treat floating-point numbers as real ones. The library tells
/// NaN and infinity apart, and equal sums must cancel exactly: a solid and the same hole.
#ifndef HALVORN_NUMERIC_IEEE_ARITHMETIC_H
#define HALVORN_NUMERIC_IEEE_ARITHMETIC_H

// GCC defines __ASSOCIATIVE_MATH__ and __RECIPROCAL_MATH__ when these parts of -ffast-math are
// given alone; Clang defines nothing then.
#if defined(__FAST_MATH__) || defined(_M_FP_FAST) || defined(__ASSOCIATIVE_MATH__) || \
    defined(__RECIPROCAL_MATH__) || (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__ != 0)
#error "HalvornSectionTools needs IEEE arithmetic: compile it without -ffast-math, -Ofast, /fp:fast"
#endif

#endif  // HALVORN_NUMERIC_IEEE_ARITHMETIC_H
