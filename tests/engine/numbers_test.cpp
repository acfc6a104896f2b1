// Reading and writing of numbers in texts.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>

#include "base/numbers.h"

namespace halvorn::engine {
namespace {

TEST(Numbers, AreReadFromWholeTexts) {
    for (const char* text :
         {"", "+", "+-1", "++1", " 1", "1 ", "0x10", "1,5", "1e", "1e999", "x"}) {
        EXPECT_FALSE(NumberIn(text)) << '"' << text << '"';
        EXPECT_FALSE(WholeNumberIn(text)) << '"' << text << '"';
    }
    EXPECT_EQ(NumberIn("+.5e1"), 5.0);
    EXPECT_EQ(FiniteNumberIn("-12.5"), -12.5);
    EXPECT_EQ(WholeNumberIn("+70"), 70);
    EXPECT_FALSE(WholeNumberIn("1.5"));
    for (const char* text : {"inf", "-inf", "nan"}) {
        EXPECT_TRUE(NumberIn(text)) << text;
        EXPECT_FALSE(FiniteNumberIn(text)) << text;
    }
}

TEST(Numbers, AreWrittenInEachForm) {
    struct Case {
        double value;
        const char *shortened, *plain, *table, *fixed;  // 6, 4 and 4 digits, 2 decimals
    };
    for (const Case& c : {
             Case{0.0, "0", "0", "0", "0"},
             Case{-0.0, "-0", "0", "0", "0"},
             Case{-0.004, "-0.004", "-0.004", "-0.004", "0"},
             Case{1200.0, "1200", "1200", "1200", "1200"},
             Case{-9.9999999, "-10", "-10", "-10", "-10"},
             Case{1.0 / 3.0, "0.333333", "0.3333", "0.3333", "0.33"},
             Case{1234567.5, "1.23457e+06", "1234568", "1234568", "1234567.5"},
             Case{1e-4, "0.0001", "0.0001", "0.0001", "0"},
             Case{0.99e-4, "9.9e-05", "0.000099", "9.900e-05", "0"},
             Case{1e15, "1e+15", "1000000000000000", "1.000e+15", "1000000000000000"},
         }) {
        EXPECT_EQ(ShortNumber(c.value), c.shortened);
        EXPECT_EQ(PlainNumber(c.value, 4), c.plain);
        EXPECT_EQ(TableNumber(c.value, 4), c.table);
        EXPECT_EQ(FixedNumber(c.value, 2), c.fixed);
    }
    EXPECT_EQ(PlaceText(0.5, -1234567890.0, 9), "(0.5, -1234567890)");
}

TEST(Numbers, AreShownWithTheirBounds) {
    struct Case {
        double value, error;
        const char* text;  // of 7 digits
    };
    for (const Case& c : {
             Case{19.753, 0.0, "19.753"},
             Case{19.7534, 0.0012, "19.753 ± 0.002"},
             Case{19.7534, 0.0018, "19.753 ± 0.003"},  // 19.7552 is beyond 19.755
             Case{19.7534, 6e-6, "19.753400 ± 0.000006"},
             Case{19.7534, 4e-6, "19.7534"},
             Case{-197535.0, 15.0, "-197540 ± 20"},
             Case{197535.0, 95.0, "197500 ± 200"},
             Case{99.96, 0.096, "100.0 ± 0.2"},
             Case{5.0, 5000.0, "0 ± 6000"},
             Case{-1e-6, 0.002, "0.000 ± 0.003"},
             Case{0.0, 0.01, "0.00 ± 0.01"},
             Case{1e-9, 2e-5, "0.00000 ± 0.00003"},
             Case{0.0, 3e-9, "0 ± 3e-09"},
             Case{1.259123e11, 3.7e7, "1.2591e+11 ± 4e+07"},
             Case{9.9999999e11, 3e8, "1.0000e+12 ± 4e+08"},
             Case{1.97531e-5, 1.4e-9, "1.9753e-05 ± 2e-09"},
             Case{2e-5, 0.001, "0.000 ± 0.002"},
             Case{1.5, std::numeric_limits<double>::infinity(), "1.5"},
         }) {
        EXPECT_EQ(NumberWithin(c.value, c.error, 7), c.text) << c.value << ' ' << c.error;
    }
    std::mt19937 random(5);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    for (int i = 0; i < 20000; ++i) {
        const double value = (unit(random) - 0.5) * std::pow(10.0, 40.0 * unit(random) - 20.0);
        const double error = std::fabs(value) * std::pow(10.0, 7.0 * unit(random) - 6.0);
        const std::string text = NumberWithin(value, error, 7);
        const std::size_t mark = text.find(" ± ");
        ASSERT_NE(mark, std::string::npos) << value << ' ' << error;
        const double shown = *NumberIn(text.substr(0, mark)),
                     bound = *NumberIn(text.substr(mark + 4));
        EXPECT_LE(std::fabs(value - shown) + error, bound * (1.0 + 1e-8)) << text;
        EXPECT_LE(bound, 2.4 * error) << text;
    }
}

TEST(Numbers, ReadBackAndAgreeWithTheStandardLibrary) {
    std::mt19937_64 random(12);
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        if (!std::isfinite(value)) continue;
        EXPECT_EQ(NumberIn(EveryDigit(value)), value);
        EXPECT_EQ(NumberIn(PlainNumber(value, 17)), value);
        for (const int digits : {3, 6, 9, 17}) {
            char text[64];
            std::snprintf(text, sizeof text, "%.*g", digits, value);
            EXPECT_EQ(ShortNumber(value, digits), text);
        }
    }
    EXPECT_EQ(PlainNumber(std::numeric_limits<double>::infinity(), 4), "inf");
}

}  // namespace
}  // namespace halvorn::engine
