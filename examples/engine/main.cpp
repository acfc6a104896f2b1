// Reports on sections: section_reports IPE300 drawing.dxf section.json
#include <HalvornEngine.h>

#include <cstdio>

using namespace halvorn::engine;

static void Print(const SectionReport& report) {
    std::printf("%s, lengths in %s\n", report.Source().c_str(), report.LengthUnit().c_str());
    for (const char* const key :
         {"area", "inertia_x", "plastic_modulus_x", "principal_inertia_2", "torsion_constant"}) {
        const Value* const value = report.Find(key);  // null: not computed, the table says why
        if (value == nullptr) continue;
        std::printf("  %-5s %12.6g %s", value->symbol.c_str(), value->number, value->unit.c_str());
        if (value->lower) std::printf(", from %.7g to %.7g", *value->lower, *value->upper);
        std::printf("\n");
    }
    for (const Finding& finding : report.Findings()) {
        std::printf("  %s: %s\n", SeverityName(finding.severity), FindingText(finding).c_str());
    }
}

int main(int argc, char** argv) {
    try {
        for (int i = 1; i < argc; ++i) Print(Section::Open(argv[i]).Evaluate());
    } catch (const InputError& error) {  // one line: what is wrong, where, and how to mend it
        std::fprintf(stderr, "section_reports: %s\n", error.what());
        return 1;
    }
}
