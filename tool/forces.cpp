#include "tool/forces.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "values/stress_values.h"

namespace halvorn::tool {

using namespace engine;

namespace {

[[noreturn]] void Refuse(const std::string& problem, const std::string& mend) {
    throw InputError("command line", "--forces: " + problem, mend);
}

}  // namespace

SectionForces ForcesIn(const std::string& text) {
    constexpr const char* kHow = "give any of N, Mx, My, Vx, Vy and T, as in N=-250e3,My=4e6";
    SectionForces forces;
    std::array<bool, kForces.size()> isGiven{};
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        const std::string entry = Trimmed(std::string_view(text).substr(start, end - start));
        start = end + 1;
        const std::size_t equals = std::min(entry.find('='), entry.size());
        const std::string name = Trimmed(std::string_view(entry).substr(0, equals));
        const auto* const force =
            std::find_if(kForces.begin(), kForces.end(),
                         [&](const ForceDescription& each) { return each.name == name; });
        if (equals == entry.size() || force == kForces.end()) {
            Refuse('"' + Excerpt(entry) + "\" is no force", kHow);
        }
        const std::string digits = Trimmed(std::string_view(entry).substr(equals + 1));
        const std::optional<double> number = FiniteNumberIn(digits);
        if (!number) {
            Refuse(name + " is \"" + Excerpt(digits) + '"', "give a finite number, such as 2.5e3");
        }
        bool& given = isGiven.at(static_cast<std::size_t>(force - kForces.begin()));
        if (given) Refuse(name + " comes twice", "give it once");
        given = true;
        forces.*(force->force) = *number;
    }
    return forces;
}

}  // namespace halvorn::tool
