// Points in CSV as people and spreadsheets write them.
#include <gtest/gtest.h>

#include "base/input_error.h"
#include "read/points_csv.h"
#include "values/evaluate.h"

namespace {

using namespace halvorn::engine;

double Number(const Report& report, const char* key) {
    return report.Find(key)->number;
}

SectionModel Csv(const std::string& text) {
    return ReadPointsCsv(text, "points.csv", {});
}

// A square of 10 with a hole of 2 x 3, written in several ways.
TEST(PointsCsv, ReadsRingsSeparatorsUnitsAndKinds) {
    const char* const texts[] = {
        "0,0\n10,0\n10,10\n0,10\n\n1,1\n3,1\n3,4\n1,4\n",
        "# drawn by hand\nx,y\n0,0\n10,0\n10,10\n0,10\n0,0\n\n\n1,1\n1,4\n3,4\n3,1\n1,1\n",
        "x;y;contour\n0;0;a\n10;0;a\n10;10;a\n0,0;1e1;a\n1,0;1;b\n3;1;b\n3;4;b\n1;4;b\n",
        // As spreadsheets write it: marked, decimal commas, an empty row.
        "\xEF\xBB\xBF# one, two; three\r\nX;Y\r\n0,0;0\r\n10;0\r\n10;10,0\r\n0;10\r\n;\r\n"
        "1;1\r\n3;1\r\n3;4\r\n1;4\r\n",
        // With point numbers, zeros for z, separators behind and before, and in other orders.
        "\xEF\xBB\xBF\"Nr.\";\"X\";\"Y\";\"Z\";;\r\n1;0,0;0,0;0,000;;\r\n2;10;0;0;;\r\n3;\"10,0\";"
        "10;0;;\r\n"
        "4;0;10;-0,0;;\r\n;;;;;\r\n1;1;1;0;;\r\n2;3;1;0;;\r\n3;3;4;0;;\r\n4;1;4;0;;\r\n",
        ",x,y,contour\n0,0,0,a\n1,10,0,a\n2,10,10,a\n3,0,10,a\n4,1,1,b\n5,3,1,b\n6,3,4,b\n7,1,4,"
        "b\n",
        "#;x;y\n1;0;0\n2;10;0\n3;10;10\n4;0;10\n\n5;1;1\n6;3;1\n7;3;4\n8;1;4\n",
        "1,0,0\n2,10,0\n3,10,10\n4,0,10\n\n1,1,1\n2,3,1\n3,3,4\n4,1,4\n",
        "1;0;0;0\n2;10;0;0\n3;10;10;0\n4;0;10;0\n\n1;1;1;0\n2;3;1;0\n3;3;4;0\n4;1;4;0\n",
        "0,0,0\n10,0,0\n10,10,0.0\n0,10,0\n\n1,1,0\n3,1,0\n3,4,0\n1,4,0\n",
        "sep=;\n;;\n;0;0;;;;;\n;10;0;\n;10;10;\n;0;10;\n;;\n;1;1;\n;3;1;\n;3;4;;;;;\n;1;4;\n",
        "# X, Y\n0,0\n10,0\n10,10\n0,10\n, ,\" \",\n1,1\n3,1\n3,4\n1,4\n",
        "\t#"
        "\tnext\r\tKind\ty\tx\t\r\tSolid\t0\t0\t\r\tSOLID\t0\t10\r\tsolid\t10\t10\r\tsolid\t10\t0\r"
        "\t\t\r"
        "\thole\t1\t1\r\thole\t1\t3\r\thole\t4\t3\r\thole\t4\t1\r",
        "0\t0\n10\t0\n10\t10\n0\t+10\r\n\r\n1\t1\n3\t1\n3\t4\n1\t4",
        "x,y,contour,kind\n1,1,b,hole\n3,1,b,hole\n3,4,b,hole\n1,4,b,hole\n0,0,a,solid\n"
        "10,0,a,solid\n10,10,a,solid\n0,10,a,solid\n"};
    for (const char* text : texts) {
        SCOPED_TRACE(text);
        const SectionModel section = Csv(text);
        ASSERT_EQ(section.elements.size(), 2U);
        EXPECT_EQ(section.elements[0].ring.size(), 4U);
        EXPECT_NE(section.elements[0].isSolid, section.elements[1].isSolid);
        EXPECT_DOUBLE_EQ(Number(Evaluate(section, {}), "area"), 94.0);
        EXPECT_EQ(section.remarks.size(), 1U) << "that mm are assumed";
    }
}

TEST(PointsCsv, ReadsTheUnitThatItStates) {
    const std::pair<const char*, const char*> cases[] = {
        {"# unit: m\n", "m"},
        {"# units: cm\n", "cm"},
        {"# Unit: CM\n", "cm"},
        {"#unit:cm\n", "cm"},
        {"## UNITS = In.\n", "in"},
        {"\"# unit: m\",,\n", "m"},
        {"# unit:,cm,\n", "cm"},
        {"# unit [m]\n", "m"},
        {"# unit of length: cm; forces in kN\n", "cm"},
        {"# unity, community: m\n# units\tcm\n", "cm"},
        {"x [cm],y [cm]\n", "cm"},
        {"X (CM) , Y\n", "cm"},
        {"x,y\n[m],(M)\n", "m"},
        {"x/in,y / in,z in\n", "in"},
        {"# x [m], y [m]\n", "m"},
        {"# Unit: m\nx [m],y [m]\n", "m"},
        {"# x, y of units in mm\n", ""},
        {"# the communities: m\n", ""},
        {"# units in mm\n", ""}};
    for (const auto& [head, unit] : cases) {
        const SectionModel section = Csv(std::string(head) + "0,0\n1,0\n0,1\n");
        EXPECT_EQ(section.unit, *unit == '\0' ? "mm" : unit) << head;
        EXPECT_EQ(section.remarks.size(), *unit == '\0' ? 1U : 0U) << head;
    }
}

TEST(PointsCsv, RefusesWhatItCannotReadAndSaysWhere) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "there are no points"},
        {"0,0\n1,0\n", "line 1: a contour needs at least 3 points, found 2"},
        {"0,0\n1,0\n1,nan\n", "line 3: \"nan\" is not a finite number"},
        {"0,0\n1,0\n1,1e999\n", "line 3: \"1e999\" is not a finite number"},
        {"0,0\n1\n", "line 2: expected x and y, found 1 cell"},
        {"0;0\n1;0\n1,5;0,5,5\n", "line 3: \"0,5,5\" is not a finite number"},
        {"\xFF\xFE,1,2\n", "UTF-16 text or no text at all; save it as UTF-8"},
        {"\xFE\xFF,1,2\n", "save it as UTF-8"},
        {std::string("1\0,\0002\0", 6), "save it as UTF-8"},
        {"x;y\n0;0\n1,000;2.5\n", "line 3: \"2.5\" has a decimal point, numbers above have"},
        {"0,0\n+-1,0\n", "line 2: \"+-1\" is not a finite number"},
        {"0,0,a,solid\n1,0,a\n", "line 2: the contour is a solid above and nothing here"},
        {"0,0\n9,0\n0,9\n\n1,1\n9,1\n1,9\n", "line 5: crosses the outline of line 1"},
        {"0,0\n9,0\n0,9\n\n9,0\n0,9\n0,0\n", "line 5: lies on the outline of line 1"},
        {"width,height\n0,0\n", "line 1: neither a point nor a header"},
        {"# unit: feet\n0,0\n", "line 1: unknown unit \"feet\""},
        {"# unit:\n0,0\n", "line 1: unknown unit \"\""},
        {"# unit: in mm\n0,0\n", "line 1: unknown unit \"in mm\""},
        {"x [ft],y\n0,0\n", "line 1: unknown unit \"ft\""},
        {"# unit: mm\n0,0\n# Units: CM\n1,0\n", "line 3: the unit is cm here and mm in line 1"},
        {"# unit: mm\nx (m),y (m)\n", "line 2: the unit is m here and mm in line 1"},
        {"x [mm],y [cm]\n", "line 1: the unit is cm here and mm in line 1"},
        {"x,y,z\n0,0,0\n1,0,2.5\n", "line 3: z is 2.5, a section lies in the plane z = 0"},
        {"1,0,7\n2,5,7\n3,0,7\n4,9,8\n5,7,8\n6,9,8\n",
         "line 1: the first column may be point numbers"},
        {"1,0,0,0,0\n", "line 1: nothing says which of 5 columns are x and y"},
        {"x,y,radius\n0,0,1\n", "line 1: the header names an unknown column: \"radius\""},
        {"x,y,x\n0,0,1\n", "line 1: the header names a column twice"},
        {",x,y\n5,0,0\n9,1,0\n7,1,1\n", "line 1: column 1 has no name"},
        {"x,y\n0,0,solid\n", "line 2: found 3 cells under a header of 2"},
        {"x,y,contour\n0,0,a\n1,0,b\n0,1,a\n", "line 4: contour a is continued"},
        {"0,0,a,wood\n", "line 1: unknown kind \"wood\""},
        {"0,0,a,solid\n1,0,a,hole\n", "line 2: the contour is a solid above and a hole here"},
        {"0,0,a,solid\n1,0,a,solid\n0,1,a,solid\n5,5,b\n6,5,b\n5,6,b\n",
         "line 4: this contour has no kind"}};
    for (const auto& [text, expected] : cases) {
        SCOPED_TRACE(text);
        try {
            Csv(text);
            ADD_FAILURE() << "was read";
        } catch (const InputError& error) {
            EXPECT_NE(std::string(error.what()).find(expected), std::string::npos) << error.what();
        }
    }
}

}  // namespace
