// Tables of profiles that users add to the catalogue, and the names that they are found by.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <numbers>

#include "HalvornEngine.h"
#include "base/text.h"

namespace {

using namespace halvorn::engine;

Section Open(const std::string& name, const Catalogue& catalogue) {
    InputOptions options;
    options.catalogue = catalogue;
    return Section::Open(name, options);
}

SectionReport ReportOf(const std::string& name, const Catalogue& catalogue) {
    EvaluateOptions options;
    options.wantsWarping = false;
    return Open(name, catalogue).Evaluate(options);
}

double Number(const SectionReport& report, const char* key) {
    const Value* const value = report.Find(key);
    return value != nullptr ? value->number : NAN;
}

std::string FindingsOf(const std::string& text) {
    const std::vector<Finding> findings = Catalogue().WithText(text, "own.csv").findings;
    return findings.empty() ? "" : FindingsText(findings);
}

Catalogue With(const std::string& text) {
    EXPECT_EQ(FindingsOf(text), "");
    return Catalogue().WithText(text, "own.csv").catalogue;
}

// Area between two tangents that meet at a turn and the arc that rounds them.
double Spandrel(double radius, double turn) {
    return radius * radius * (std::tan(turn / 2.0) - turn / 2.0);
}

constexpr double kRight = std::numbers::pi / 2.0;

TEST(OwnCatalogue, ReadsATeeAsAnySpreadsheetSavesIt) {
    const double area = 80.0 * 8.5 + 91.5 * 6.0 + 2.0 * Spandrel(5.0, kRight);
    const char* const quoted =
        "\"name\",\"price, per m\",\"type\",\"h\",\"b\",\"tw\",\"tf\",\"r_root\",\"unit\"\n"
        "\"Tee 1\",\"1,\"\"20\n\"\"\",\"tee\",\"100\",\"80\",\"6\",\"8.5\",\"5\",\"\"\n";
    const char* const texts[] = {
        quoted,
        "name,type,h,b,tw,tf,r\nTee 1,tee,100,80,6,8.5,5\n",
        "name;type;h;b;tw;tf;r\nTee 1;tee;100;80;6;8,5;5\n",
        "name\ttype\th\tb\ttw\ttf\tr\nTee 1\ttee\t100\t80\t6\t8,5\t5\n",
        "\xEF\xBB\xBFname;type;h;b;tw;tf;r\r\nTee 1;tee;100;80;6;8.5;5\r\n;;;;;;\r\n",
        "sep=;\nName;Type;H;B;tw;tf;R root\n# extruded\nTee 1;Tee;100;80;6;8,5;5\n",
        "type,name,r,tf,tw,b,h,unit\ntee,Tee 1,5,8.5,6,80,100,mm",
    };
    for (const char* const text : texts) {
        const SectionReport report = ReportOf("TEE1", With(text));
        EXPECT_NEAR(Number(report, "area"), area, 1e-9 * area) << text;
        EXPECT_GT(Number(report, "centroid_y"), 50.0) << "the flange is on top: " << text;
    }
}

TEST(OwnCatalogue, DrawsATaperedTeeInInchesUnlessAnotherUnitIsAsked) {
    const Catalogue catalogue = With(
        "name,type,unit,h,b,tw,tf,r_root,r_toe,slope,tf_at_from_toe,t_nom\n"
        "ST 5,taper_tee,in,5,4,0.4,0.5,0.3,0.1,0.1666,0.9,0.5\n");
    const double turn = kRight - std::atan(0.1666);
    const double area = 5.0 * 0.4 + 2.0 * (1.8 * 0.5 + Spandrel(0.3, turn) - Spandrel(0.1, turn));
    EXPECT_NEAR(Number(ReportOf("st5", catalogue), "area"), area, 1e-9);
    EXPECT_EQ(Open("st5", catalogue).LengthUnit(), "in");
    InputOptions options;
    options.catalogue = catalogue;
    options.unit = "mm";
    const double height = 5.0 * 25.4;
    const SectionReport metric = Section::Open("ST5", options).Evaluate();
    EXPECT_NEAR(Number(metric, "area"), area * 25.4 * 25.4, 1e-6);
    options.unit.reset();
    const char* const file =
        R"({"version":1,"unit":"mm","parts":[{"profile":"ST 5"},{"profile":"st5","move":[0,200]}]})";
    const SectionReport twice =
        Section::Parse(file, TextFormat::Json, "twice.json", options).Evaluate();
    EXPECT_NEAR(Number(twice, "area"), 2.0 * Number(metric, "area"), 1e-6);
    EXPECT_NEAR(Number(twice, "centroid_y"), Number(metric, "centroid_y") + 100.0, 1e-9 * height);
    const std::optional<CatalogueProfile> data = catalogue.Find("ST5");
    ASSERT_TRUE(data);
    EXPECT_EQ(data->unit + data->type + data->source + data->family, "intaper_teeown.csvST");
    EXPECT_EQ(data->dimensions.back().key, "t_nom");
    EXPECT_EQ(data->dimensions.back().number, 0.5);
}

TEST(OwnCatalogue, ReadsFractionsAndUnitsAsTablesInInchesHaveThem) {
    const std::string header = "name;type;unit;h;b;tw;tf;r;area\n";
    const double area = 2.0 * 4.5 * 0.375 + (10.0 - 0.75) * 0.125;
    for (const char* const unit : {"in", "In.", "inch", "INCHES", "\"\"\"\"", "\u2033"}) {
        const Catalogue catalogue = With(header + "A;i;" + unit + ";10;4 1/2;1/8;3/8;0;\nB;i;" +
                                         unit + ";10;4-1/2;0,125;0,375;0/8;\n");
        for (const char* const name : {"A", "B"}) {
            EXPECT_EQ(Open(name, catalogue).LengthUnit(), "in") << unit;
            EXPECT_NEAR(Number(ReportOf(name, catalogue), "area"), area, 1e-12) << unit;
        }
    }
    for (const char* const unit : {"", "MM.", "millimetres"}) {
        EXPECT_EQ(Open("A", With(header + "A;i;" + unit + ";10;9/2;1/8;3/8;0;\n")).LengthUnit(),
                  "mm");
    }
    // Neither a date nor a published value is a fraction.
    for (const char* const row :
         {"A;i;in;10;4;3/8/24;3/8;0;", "A;i;in;10;4;1/8;3/8;0;9/2", "A;i;in;10;4;1/0;3/8;0;"}) {
        const auto findings = Catalogue().WithText(header + row, "own.csv").findings;
        ASSERT_EQ(findings.size(), 1U) << row;
        EXPECT_NE(findings[0].problem.find("is not a finite number"), std::string::npos) << row;
    }
    const auto empty = Catalogue().WithText(header + ";;;\n# none\n", "own.csv").findings;
    EXPECT_EQ(FindingsText(empty),
              "remark: own.csv: the table names its columns and has no rows; write one profile a "
              "line below them\n");
}

TEST(OwnCatalogue, LeavesOutBadRowsWithPlaceAndMendAndKeepsTheOthers) {
    const std::string header = "name,type,unit,h,b,t,tw,tf,r,r_out,r_in,area,r_toe,slope\n";
    const std::string good = "Good,i,mm,100,50,,5,8,7,,,\n";
    const std::pair<const char*, const char*> rows[] = {
        {",i,mm,100,50,,5,8,7,,,", "line 2, column name: the cell is empty; name the profile"},
        {"--,i,mm,100,50,,5,8,7,,,", "column name: the name has no letter or digit"},
        {"A,z,mm,100,50,,5,8,7,,,", "line 2, column type: \"z\" is no type; write i, channel"},
        {"A,,mm,100,50,,5,8,7,,,", "column type: the cell is empty"},
        {"A,i,ft,100,50,,5,8,7,,,",
         "column unit: \"ft\" is no unit of a catalogue; write mm or in"},
        {"A,i,mm,1OO,50,,5,8,7,,,",
         "column h: \"1OO\" is not a finite number; write plain numbers"},
        {"A,i,mm,100,50,,,8,7,,,", "column tw: the cell is empty; fill it in"},
        {"A,i,mm,100,50,,5,8,,,,", "column r: the cell is empty; fill it in; a sharp corner has 0"},
        {"A,i,mm,100,-50,,5,8,7,,,", "column b: I section: the width (-50) must be a positive"},
        {"A,i,mm,100,50,,5,60,7,,,", "column tf: I section: the thickness of both flanges"},
        {"A,i,mm,100,50,,60,8,7,,,", "make tw smaller or b larger"},
        {"A,i,mm,100,50,,5,8,70,,,", "column r: "},
        {"A,rhs,mm,100,50,4,,,,8,4,-1", "column area: it is not above 0; correct it, or leave"},
        {"A,chs,mm,100,50,4,,,,,,", "column b: a round tube has one diameter"},
        {"A,i,mm,100,50,,5,8,7,,,,,,,x", "found 16 cells under a header of 14; put a text"},
        {"A,i,mm,100,5,50,,5,0,8,0,7,0,,,,1", "with decimal commas separate the cells by semicol"},
        {"A,i,mm,\"100,5\",50,,5,8,7,,,", "\"100,5\" has a comma, and commas separate the cells"},
        {"\"A,i,mm,100,50,,5,8,7,,,", "line 2: a quote opens in this line and is never closed"},
        {"\"A,i,mm,100\nB,i\",mm,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1",
         "line 2: found 18 cells under a header of 14; look for a quote that opens in this line "
         "and closes in line 3"},
        {"A,channel,mm,100,50,,5,8,7,,,,3,",
         "column r_toe: the type channel has no r_toe; it is "
         "drawn from h, b, tw, tf and r; leave the cell empty, or choose the type taper_channel"},
        {"A,tee,mm,100,50,,5,8,7,,,,,.1", "column slope: the type tee has no slope"},
        {"A,channel,mm,100,50,6,5,8,7,,,,,", "column t: the type channel has no t"},
        {"A,rhs,mm,100,50,4,,,8,8,4,,,",
         "column r: the type rhs has no r; it is drawn from h, b, t, r_out and r_in; leave the "
         "cell empty"},
        {"good,i,mm,100,50,,5,8,7,,,\nGOOD,i,mm,90,50,,5,8,7,,,",
         "line 3, column name: \"GOOD\" stands in line 2 already, as \"good\"; rename one"},
    };
    for (const auto& [row, expected] : rows) {
        const ExtendedCatalogue extended = Catalogue().WithText(
            header + row + '\n' + (std::string(row).starts_with("good") ? "" : good), "own.csv");
        ASSERT_EQ(extended.findings.size(), 1U) << row;
        EXPECT_EQ(extended.findings[0].severity, Severity::Error);
        const std::string line = FindingText(extended.findings[0]);
        EXPECT_NE(line.find(expected), std::string::npos) << line;
        EXPECT_TRUE(line.starts_with("own.csv: line ")) << line;
        const double area = 2.0 * 50.0 * 8.0 + 84.0 * 5.0 + 4.0 * Spandrel(7.0, kRight);
        EXPECT_NEAR(Number(ReportOf("Good", extended.catalogue), "area"), area, 1e-9 * area);
    }
    const std::pair<const char*, const char*> tables[] = {
        {"", "the table is empty"},
        {"h,b\n1,2\n", "own.csv: line 1: no column is called name"},
        {"name,h\nA,2\n", "no column is called type"},
        {"name,type,\"h\nA,i,2\n", "line 1: a quote opens in this line and is never closed"},
        {"name,type,h\nA;i;2\n", "line 2: the cells are separated by semicolons, those of the "},
        {"name;type;h\nA,i,2\n", "separated by commas, those of the titles by semicolons"},
        {"name,type,h\nTr\xE4ger,i,2\n", "line 2: the text is not UTF-8; save it as UTF-8"},
        {"name,type,h,H\nA,i,2,3\n", "two columns are called h"},
        {"\xFF\xFEn\0a", "UTF-16"},
    };
    for (const auto& [text, expected] : tables) {
        try {
            Catalogue().WithText(text, "own.csv");
            ADD_FAILURE() << text;
        } catch (const InputError& error) {
            EXPECT_NE(std::string(error.what()).find(expected), std::string::npos) << error.what();
        }
    }
    const std::string tapered = "name,type,h,b,tw,tf,r,slope,tf_at_from_toe,r_toe,area (cm2)\n";
    EXPECT_EQ(
        FindingsOf(tapered + "A,taper_i,100,50,5,8,7,0.14,12,3,1\nB,i,100,50,5,8,7,0,,0,\n"
                             "C,taper_i,100,50,5,8,7,14,12,3,1\n"),
        "remark: own.csv: line 1: the column \"area (cm2)\" is not read: titles state no unit; "
        "write area with every number in mm, mm^2 and so on, or in inches with a column unit\n"
        "error: own.csv: line 4, column slope: 14 looks like percent or degrees; write the "
        "rise per unit of width, 0.14 for 14 %\n");
    EXPECT_NE(FindingsOf("name;type;h;b;t\nA;angle;1.5;2;0,1\n").find("decimal comma, numbers"),
              std::string::npos);
    EXPECT_THROW((void)Catalogue().With("no/such/table.csv"), InputError);
}

TEST(OwnCatalogue, GoesBeforeTheBuiltInOneAndTheFirstOfTwoBeforeTheSecond) {
    const std::string header = "name,type,h,b,tw,tf,r\n";
    const ExtendedCatalogue first =
        Catalogue().WithText(header + "ipe 300,i,100,50,5,8,0\nMine,i,100,50,5,8,0\n", "first.csv");
    EXPECT_EQ(FindingsText(first.findings),
              "remark: first.csv: ipe 300 goes before the built-in profile of that name\n");
    const ExtendedCatalogue second =
        first.catalogue.WithText(header + "IPE300,i,90,50,5,8,0\nOther,i,90,50,5,8,0\n", "b.csv");
    EXPECT_EQ(FindingsText(second.findings),
              "error: b.csv: line 2, column name: \"IPE300\" stands in first.csv, line 2, already, "
              "as \"ipe 300\"; rename one of them, or remove this row\n");
    const double area = 2.0 * 50.0 * 8.0 + 84.0 * 5.0;
    EXPECT_NEAR(Number(ReportOf("IPE 300", second.catalogue), "area"), area, 1e-9);
    EXPECT_NEAR(Number(ReportOf("IPE 300", Catalogue()), "area"), 5381.2, 0.1);
    const std::vector<std::string> names = second.catalogue.Names();
    EXPECT_EQ(names.size(), CatalogueNames().size() + 2U);
    EXPECT_EQ(names[names.size() - 3], "ipe 300");
    EXPECT_EQ(names.back(), "Other");
    EXPECT_EQ(second.catalogue.Similar("Othr").front(), "Other");
    EXPECT_EQ(second.catalogue.Similar("IPE331").front(), "IPE330");
    EXPECT_EQ(second.catalogue.Find("IPE300")->source, "first.csv");
    EXPECT_FALSE(Catalogue().Find("Mine"));
}

TEST(OwnCatalogue, FindsNamesAsEngineersTypeThem) {
    const std::string rows[] = {"W12X26",      "HSS4X4X1/4",   "HSS4X4X5/16", "L4X3-1/2X5/16",
                                "HSS10X0.500", "Pipe1-1/4STD", "WT13.5X184"};
    std::string text = "name,type,h,b,tw,tf,r\n";
    for (const std::string& name : rows) text += name + ",i,100,50,5,8,0\n";
    const Catalogue catalogue = With(text);
    const std::pair<const char*, const char*> spellings[] = {
        {"w12x26", "W12X26"},
        {"W 12 \xC3\x97 26", "W12X26"},
        {"hss 4x4x1/4", "HSS4X4X1/4"},
        {"HSS4X4X.250", "HSS4X4X1/4"},
        {"HSS4.000X4.000X0.25", "HSS4X4X1/4"},
        {"HSS4x4x.313", "HSS4X4X5/16"},
        {"HSS4x4x.312", "HSS4X4X5/16"},
        {"HSS4x4x0,3125", "HSS4X4X5/16"},
        {"L4x3 1/2x5/16", "L4X3-1/2X5/16"},
        {"L 4 x 3.5 x 5/16", "L4X3-1/2X5/16"},
        {"L4x7/2x.3125", "L4X3-1/2X5/16"},
        {"HSS10.000X.5", "HSS10X0.500"},
        {"pipe 1 1/4 std", "Pipe1-1/4STD"},
        {"PIPE1.25STD", "Pipe1-1/4STD"},
        {"wt13-1/2x184", "WT13.5X184"},
    };
    for (const auto& [spelling, name] : spellings) {
        const std::optional<CatalogueProfile> found = catalogue.Find(spelling);
        ASSERT_TRUE(found) << spelling;
        EXPECT_EQ(found->name, name) << spelling;
        EXPECT_EQ(Open(spelling, catalogue).Name(), name) << "and its slash is no folder";
    }
    for (const char* const foreign : {"2L4x3-1/2x5/16", "HSS4X4X.3", "W12X2/6", "L4x3-1/0x1/4",
                                      "W1226", "L4x3-1/2x5/", "/", "1/", "HSS4X4X.314"}) {
        EXPECT_FALSE(catalogue.Find(foreign)) << foreign;
    }
    for (const char* const near : {"HSS4x4x3/8", "HSS4x4/3/8"}) {
        EXPECT_EQ(catalogue.Similar(near), (std::vector<std::string>{"HSS4X4X5/16", "HSS4X4X1/4"}));
    }
    for (const char* const near : {"W12", "W12/26", "W12x29", "W14x26", "WX12x26"}) {
        EXPECT_EQ(catalogue.Similar(near).front(), "W12X26") << near;
    }
    EXPECT_EQ(catalogue.Names("hss").size(), 3U);
    EXPECT_EQ(catalogue.Names("Pipe").size(), 1U);
}

TEST(OwnCatalogue, KeepsNamesThatDifferAndTakesTheOneThatIsWrittenSo) {
    std::string text = "name,type,h,b,tw,tf,r\n";
    for (const char* const name : {"AL 1.1", "AL 1.10", "D 100-1", "D 1001", "100 200", "100200",
                                   "IPE-300", "ALX C", "ALXC 2", "\u00C4B 5"}) {
        text += std::string(name) + ",i,100,50,5,8,0\n";
    }
    const Catalogue catalogue = With(text);
    const std::pair<const char*, const char*> spellings[] = {
        {"al1.1", "AL 1.1"},    {"AL 1.10", "AL 1.10"},  {"d100-1", "D 100-1"},
        {"D1001", "D 1001"},    {"100  200", "100 200"}, {"100200", "100200"},
        {"ipe-300", "IPE-300"}, {"ipe 300", "IPE300"},   {"ipe_300", "IPE-300"}};
    for (const auto& known : spellings) {
        ASSERT_TRUE(catalogue.Find(known.first)) << known.first;
        EXPECT_EQ(catalogue.Find(known.first)->name, known.second) << known.first;
        EXPECT_EQ(Open(known.first, catalogue).Name(), known.second);
    }
    InputOptions options;
    options.catalogue = catalogue;
    const std::pair<std::string, const char*> several[] = {
        {"al-1.100", "several profiles can be meant: AL 1.1, AL 1.10; write the name as its table"},
        {"d_1001", "several profiles can be meant: D 100-1, D 1001"}};
    for (const auto& [name, expected] : several) {
        EXPECT_FALSE(catalogue.Find(name));
        const std::string file =
            R"({"version":1,"unit":"mm","parts":[{"profile":")" + name + "\"}]}";
        for (const bool isFile : {false, true}) {
            try {
                (void)(isFile ? Section::Parse(file, TextFormat::Json, "s", options)
                              : Section::Open(name, options));
                ADD_FAILURE() << name;
            } catch (const InputError& error) {
                EXPECT_NE(std::string(error.what()).find(expected), std::string::npos)
                    << error.what();
            }
        }
    }
    using Names = std::vector<std::string>;
    EXPECT_EQ(catalogue.Names("alx"), (Names{"ALX C"}));
    EXPECT_EQ(catalogue.Names("alxc"), (Names{"ALX C", "ALXC 2"}));
    EXPECT_EQ(catalogue.Names("i"), (Names{"100 200", "100200"})) << "no letters: the type";
    EXPECT_TRUE(catalogue.Names("").empty());
    for (const CatalogueFamily& family : catalogue.Families()) EXPECT_NE(family.name, "");
    EXPECT_EQ(catalogue.Families().back().name, "\u00C4B");
    EXPECT_EQ(catalogue.Names().size(), CatalogueNames().size() + 10U);
}

TEST(OwnCatalogue, ListsFamiliesByTheirNamesTheirPartsAndTheirSeries) {
    const Catalogue catalogue = With(
        "name,family,type,h,b,tw,tf,r\nW1,AISC-W,i,100,50,5,8,0\nW2,AISC-W,i,90,50,5,8,0\n"
        "Q1,,i,90,50,5,8,0\nKQ Z1,X-Y-Z,i,90,50,5,8,0\n");
    const std::pair<const char*, std::size_t> sizes[] = {
        {"aisc-w", 2}, {"w", 2},   {"AISC", 2}, {"Q", 1},     {"y-z", 1}, {"y", 1}, {"kq", 1},
        {"IPE", 18},   {"HE", 72}, {"hea", 24}, {"RHS", 312}, {"L", 95},  {"V", 0}};
    for (const auto& [family, size] : sizes) {
        EXPECT_EQ(catalogue.Names(family).size(), size) << family;
    }
    const std::vector<CatalogueFamily> families = catalogue.Families();
    EXPECT_EQ(families[families.size() - 3].name + families[families.size() - 3].series[0],
              "AISC-WW");
    const auto he = std::find_if(families.begin(), families.end(),
                                 [](const CatalogueFamily& family) { return family.name == "HE"; });
    EXPECT_EQ(he->series, (std::vector<std::string>{"HEA", "HEB", "HEM"}));
    EXPECT_EQ(he->profiles, 72U);
}

// The class gets what is published, and the outline's values for the rest.
TEST(OwnCatalogue, PublishedValuesMayBeSomeOrNone) {
    const Catalogue catalogue = With(
        "name,type,unit,h,b,t,tw,tf,r,area,Ix,Zy_min\nA,i,in,10,5,,0.3,0.5,0,8,140,4\n"
        "B,i,in,10,5,,0.3,0.5,0,,,\n");
    InputOptions options;
    options.catalogue = catalogue;
    options.wantsPublishedValues = true;
    const SectionReport report = Section::Open("A", options).Evaluate({.wantsClassValues = true});
    EXPECT_EQ(FindValue(report.Published(), "area")->number, 8.0);
    EXPECT_EQ(FindValue(report.Published(), "area")->unit, "in^2");
    EXPECT_NEAR(FindValue(report.ClassValues(), "area")->number, 8.0, 1e-12);
    EXPECT_NEAR(FindValue(report.ClassValues(), "inertia_x")->number, 140.0, 1e-10);
    EXPECT_NEAR(FindValue(report.ClassValues(), "inertia_y")->number, 4.0 * 2.5, 1e-10);
    EXPECT_THROW((void)Section::Open("B", options), InputError);
}

TEST(OwnCatalogue, SaysWhichPublishedValuesLookLikeCentimetres) {
    // A = 1220 mm^2, Ix = 2029880 mm^4 and a bit; Wel,x = 2 Ix / h.
    const Catalogue catalogue = With(
        "name,type,h,b,tw,tf,r,area,Ix,Zx_min\nA,i,100,50,5,8,0,12.5,203,40.0\n"
        "B,i,100,50,5,8,0,1300,2029880,\n");
    const std::vector<Finding> findings = ReportOf("A", catalogue).Findings();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_TRUE(findings[0].mend.starts_with(
        "the published A looks like cm^2, Ix looks like cm^4, Wel,bottom looks like cm^3"))
        << findings[0].mend;
    EXPECT_EQ(ReportOf("B", catalogue).Findings()[0].mend.find("cm"), std::string::npos);
}

// All 1,620 rows of a table by other hands, and printed values of a few of its profiles.
TEST(OwnCatalogue, DrawsEveryRowOfAForeignTable) {
    const char* const folder = std::getenv("HALVORN_FOREIGN_DATA");
    const std::string path =
        std::string(folder != nullptr ? folder : "../shared/data") + "/profiles_us.csv";
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << path << " is not there; HALVORN_FOREIGN_DATA names its folder";
    }
    const ExtendedCatalogue extended = Catalogue().With(path);
    EXPECT_EQ(extended.findings.size(), 0U) << FindingsText(extended.findings);
    const Catalogue& catalogue = extended.catalogue;
    EXPECT_EQ(catalogue.Names().size(), CatalogueNames().size() + 1620U);
    for (const std::string& name : catalogue.Names("AISC")) {
        EXPECT_GT(Number(ReportOf(name, catalogue), "area"), 0.0) << name;
    }
    const struct {
        const char* name;
        double area, inertia;  // as printed [in^2, in^4]
    } printed[] = {{"W12X26", 7.65, 204.0},     {"w14x90", 26.5, 999.0},
                   {"HSS4X4X.250", 3.37, 7.80}, {"HSS6.000X0.250", 4.22, 17.6},
                   {"L4x4x1/2", 3.75, 5.52},    {"WT6X25", 7.30, 18.7},
                   {"S12X31.8", 9.31, 217.0},   {"C10X15.3", 4.48, 67.3},
                   {"HP12X53", 15.5, 393.0},    {"Pipe4STD", 2.96, 6.82}};
    for (const auto& [name, area, inertia] : printed) {
        const SectionReport report = ReportOf(name, catalogue);
        EXPECT_NEAR(Number(report, "area"), area, 0.01 * area) << name;
        EXPECT_NEAR(Number(report, "inertia_x"), inertia, 0.015 * inertia) << name;
    }
}

}  // namespace
