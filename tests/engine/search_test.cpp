// The search for profiles that suit.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "HalvornEngine.h"

namespace {

using namespace halvorn::engine;

std::vector<std::string> NamesOf(const ProfileSearch& search) {
    std::vector<std::string> names;
    for (const FoundProfile& profile : search.profiles) names.push_back(profile.name);
    return names;
}

// Published areas: HEA260 86.8, HEB220 91.0 cm^2; Wpl: IPE270 484, IPE300 628 cm^3; HEA240 745,
// HEA260 920, HEB200 643, HEB220 827; It of IPE270 15.9, IPE300 20.1.
TEST(ProfileSearch, GivesTheLightestFirstWhateverTheUnitAndTheSpelling) {
    const std::vector<std::string> beams = {"IPE300", "IPE330", "IPE360"};
    for (const char* const query :
         {"family=IPE Wplx>=500cm^3 limit=3", "Wplx>=500000 family=ipe limit=3",
          "limit=3 family=IPE plastic_modulus_x >= 30.5 in^3 order=area",
          "family=IPE Wpl,x>500cm\u00B3 order=A limit=3", "family=IPE wplx=>5e5 mm3 limit=3",
          "family=IPE Wplx>=500cm^3 h<10m limit=3 It>=17cm4",
          "family=IPE Wplx>=500cm^3 Wplx<200in^3 limit=3"}) {
        const ProfileSearch search = FindProfiles(query);
        EXPECT_EQ(NamesOf(search), beams) << query;
        EXPECT_TRUE(search.isLimited) << query;
        EXPECT_EQ(search.profiles[0].values[0].key, "area") << query;
        EXPECT_EQ(search.profiles[0].values[1].key, "plastic_modulus_x") << query;
        const double centimetres = std::cbrt(628.4);
        const std::string& unit = search.profiles[0].values[1].unit;
        const double perUnit = unit == "cm^3" ? 1.0 : unit == "mm^3" ? 10.0 : 1.0 / 2.54;
        EXPECT_NEAR(std::cbrt(search.profiles[0].values[1].number), centimetres * perUnit,
                    1e-3 * centimetres * perUnit)
            << query;
    }
    EXPECT_EQ(NamesOf(FindProfiles("family=HEA,HEB Wplx>=800cm^3 limit=2 order=A")),
              (std::vector<std::string>{"HEA260", "HEB220"}));
    EXPECT_EQ(NamesOf(FindProfiles("family=IPE order=-h limit=2")),
              (std::vector<std::string>{"IPE600", "IPE550"}));
    EXPECT_EQ(NamesOf(FindProfiles("family=IPE h=300mm")), (std::vector<std::string>{"IPE300"}));
    EXPECT_EQ(NamesOf(FindProfiles("family=IPE order=-It limit=1")),
              (std::vector<std::string>{"IPE600"}));
    // The smaller of both fibres, published: UPE180 28.6, UPE200 34.4 cm^3.
    for (const char* const name : {"Wely", "Wel,y", "Zy_min", "zy_min", "elastic_modulus_y_min"}) {
        const std::string query = std::string("family=UPE limit=1 ") + name + ">=34cm^3";
        EXPECT_EQ(NamesOf(FindProfiles(query)), (std::vector<std::string>{"UPE200"})) << name;
    }
    FindOptions options;
    std::size_t solved = 0, most = 0;
    options.progress = [&](std::size_t now, std::size_t all) {
        EXPECT_EQ(now, ++solved);
        most = all;
    };
    (void)FindProfiles("family=IPE It>0mm^4 limit=2", {}, options);
    EXPECT_EQ(solved, 2U);
    EXPECT_EQ(most, 18U);
    EXPECT_TRUE(FindProfiles("family=IPE A<1mm^2").profiles.empty());
}

// Published: A of IPE300 53.81 cm^2, drawn 5381.2 mm^2; IPE270 is 10.63 in high.
TEST(ProfileSearch, TakesValuesAsEqualThatAreWhenRounded) {
    const std::pair<const char*, std::vector<std::string>> queries[] = {
        {"family=IPE A=53.81cm^2", {"IPE300"}}, {"family=IPE A=5381.2", {"IPE300"}},
        {"family=IPE A=538.1e1", {"IPE300"}},   {"family=IPE A=5.4e3", {"IPE300"}},
        {"family=IPE A=53.82cm^2", {}},         {"family=IPE A=5381.0", {}},
        {"family=IPE h=10.63in", {"IPE270"}},   {"family=IPE h=10.6in", {"IPE270"}},
        {"family=IPE h=10.62in", {}},           {"family=IPE tw=7", {}},
        {"family=IPE tw=7.1 h=300", {"IPE300"}}};
    for (const auto& [query, names] : queries)
        EXPECT_EQ(NamesOf(FindProfiles(query)), names) << query;
}

TEST(ProfileSearch, FindsWhatEvaluatingEveryProfileFinds) {
    const Catalogue catalogue;
    std::vector<std::pair<double, std::string>> expected;
    EvaluateOptions options;
    options.wantsWarping = false;
    for (const std::string& name : catalogue.Names("RHS")) {
        const SectionReport report = Section::Open(name).Evaluate(options);
        const double x = std::min(report.Find("elastic_modulus_top")->number,
                                  report.Find("elastic_modulus_bottom")->number);
        if (x >= 2e5 && report.Find("inertia_y")->number < 2e7) {
            expected.emplace_back(report.Find("radius_of_gyration_y")->number, name);
        }
    }
    std::stable_sort(expected.begin(), expected.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    const ProfileSearch search =
        FindProfiles("family=RHS-hot Welx>=200cm^3 Iy<2e7 order=-iy limit=1000", catalogue);
    ASSERT_EQ(search.profiles.size(), expected.size());
    EXPECT_GT(expected.size(), 5U);
    EXPECT_FALSE(search.isLimited);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(search.profiles[i].name, expected[i].second);
        EXPECT_EQ(search.profiles[i].values[0].number, expected[i].first);
    }
}

TEST(ProfileSearch, KnowsOwnProfilesTheirUnitsAndTheMass) {
    const Catalogue catalogue =
        Catalogue()
            .WithText(
                "name,type,unit,h,b,tw,tf,r,t_nom\nA,i,in,10,5,0.3,0.5,0,1\n"
                "B,i,in,10,5,0.3,0.4,0,2\n",
                "own.csv")
            .catalogue;
    EXPECT_EQ(NamesOf(FindProfiles("family=A,B h<=254mm tw=0.3in", catalogue)),
              (std::vector<std::string>{"B", "A"}));
    EXPECT_EQ(NamesOf(FindProfiles("family=A,B t_nom>1", catalogue)),
              (std::vector<std::string>{"B"}));
    FindOptions options;
    options.unit = "mm";
    options.values.density = 1000.0;
    const ProfileSearch search = FindProfiles("family=A h=254 m>0.1kg/m", catalogue, options);
    ASSERT_EQ(search.profiles.size(), 1U);
    EXPECT_EQ(search.profiles[0].values[0].unit, "mm^2");
    const double area = (5.0 + 9.0 * 0.3) * 25.4 * 25.4;
    EXPECT_NEAR(search.profiles[0].values[0].number, area, 1e-6);
    EXPECT_NEAR(search.profiles[0].values[2].number, area * 1e-6 * 1000.0, 1e-9);
    EXPECT_THROW((void)FindProfiles("h>=300", catalogue), InputError);
    EXPECT_FALSE(FindProfiles("h>=300mm limit=1", catalogue).profiles.empty());
}

TEST(ProfileSearch, NamesTheTermThatCannotBeUnderstood) {
    const std::pair<const char*, const char*> queries[] = {
        {"", "it is empty"},
        {"  ", "it is empty"},
        {"IPE", "\"IPE\": it compares nothing"},
        {"Wqlx>=40", "\"Wqlx>=40\": nothing is called \"Wqlx\"; take Wpl,x (plastic_modulus_x), "},
        {"IX>=40", "several values are called \"IX\"; take one of Ix (inertia_x), ix (radius_of"},
        {"Sx>=40in^3",
         "\"Sx\" is the static moment, the plastic or the elastic modulus; write static_moment_x, "
         "Wplx for the plastic modulus, Welx for the smaller elastic one or Wel,bottom "
         "(elastic_modulus_bottom) for that of one side"},
        {"order=-sy", "write static_moment_y, Wply for the plastic modulus, Wely"},
        {"Zx>1", "\"Zx\" is the plastic or the elastic modulus by country; write Wplx"},
        {"zy>1", "Wel,left (elastic_modulus_left)"},
        {"family= Ix>5", "\"family=\": a family has no name"},
        {"family=IPE Wplx>=", "\"Wplx>=\": \"\" is no number"},
        {"Wplx>=4,5", "\"4,5\" is no number; write one with a decimal point"},
        {"Wplx>=many", "\"many\" is no number"},
        {"Wplx>=1e999", "no number"},
        {"Wplx>=40in^2", "\"in^2\" is no unit of plastic_modulus_x; write mm^3 or in^3"},
        {"h>=40ft", "\"ft\" is no unit of h; write mm or in"},
        {"slope>=1mm", "no unit of slope; leave it out"},
        {"h=<>3", "\"=<>\" is no comparison"},
        {"order=weight", "called \"weight\"; write m (mass_per_metre) and give --density, or area"},
        {"mass<=40kg/m", "\"mass<=40kg/m\": nothing is called \"mass\"; write m (mass_per_metre)"},
        {"W>=5cm^3",
         "called \"W\"; write Welx or Wely for the smaller elastic modulus, Wplx or Wply for the"},
        {"wy>1", "write Wely for the smaller elastic modulus, Wply for the plastic one"},
        {"order>area", "order is not compared; write order="},
        {"limit=0", "\"0\" is no number of profiles"},
        {"limit=2.5", "is no number of profiles"},
        {"limit=1 limit=2", "limit comes twice"},
        {"family=QQ", "\"family=QQ\": the catalogue has no such family; take one of UPE, L-EN"},
        {"family=", "a family has no name"},
        {"m>=5", "the mass follows from a density"},
        {">=5", "called \"\""},
    };
    for (const auto& [query, expected] : queries) {
        try {
            (void)FindProfiles(query);
            ADD_FAILURE() << query;
        } catch (const InputError& error) {
            EXPECT_NE(std::string(error.what()).find(expected), std::string::npos) << error.what();
        }
    }
}

}  // namespace
