// Many sections to one table: what stands for what, in which order, and what becomes of bad ones.
#include "tool/batch.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "HalvornEngine.h"
#include "write/csv.h"

namespace {

using namespace halvorn::engine;
using namespace halvorn::tool;
namespace fs = std::filesystem;

class Batch : public testing::Test {
protected:
    // Its own in every run, so that two runs on one machine leave each other alone.
    fs::path folder =
        fs::temp_directory_path() / ("halvorn-batch-" + std::to_string(std::random_device{}()));

    void SetUp() override {
        ASSERT_TRUE(fs::create_directory(folder)) << folder;
        fs::create_directories(folder / "sections");
        fs::create_directories(folder / "empty");
    }
    void TearDown() override { fs::remove_all(folder); }

    std::string Write(const std::string& name, const std::string& text) const {
        std::ofstream(folder / name) << text;
        return (folder / name).string();
    }
    static std::vector<std::string> Expanded(const std::vector<std::string>& paths,
                                             std::size_t wantedComplaints) {
        std::vector<std::string> arguments;
        const BatchInputs inputs = ExpandBatch(paths);
        for (const BatchEntry& entry : inputs.entries) arguments.push_back(entry.argument);
        EXPECT_EQ(inputs.complaints.size(), wantedComplaints);
        return arguments;
    }
    static std::string Square(double side) {
        const std::string s = std::to_string(side);
        return "# unit: mm\n0,0\n" + s + ",0\n" + s + "," + s + "\n0," + s + "\n";
    }
};

struct Table {
    std::vector<std::string> lines;
    std::vector<std::string> complaints;
    std::size_t leftOut = 0;
};

Table RunAll(const std::vector<BatchEntry>& arguments, const BatchOptions& options) {
    Table table;
    table.leftOut = RunBatch(
        arguments, options, [&](const std::string& line) { table.lines.push_back(line); },
        [&](const std::string& message) { table.complaints.push_back(message); });
    return table;
}

TEST_F(Batch, FoldersListsAndTablesStandForTheirEntries) {
    const std::string b = Write("sections/b.csv", Square(2)),
                      a = Write("sections/a.CSV", Square(1));
    Write("sections/readme.md", "no section");
    const std::string list =
        Write("list.txt", "# profiles\nIPE 300\n\n  sections/b.csv  # a file\n");
    const std::string table =
        Write("table.csv", "\xEF\xBB\xBFname;mark\r\nHEB200;1\r\n\"SHS100x5\";2\r\n\r\n");
    const std::string points = Write("points.csv", Square(3));
    const std::vector<std::string> expanded =
        Expanded({(folder / "sections").string(), list, table, points, "UPE200"}, 0);
    // As paths: a folder's entries have the separators of the platform.
    EXPECT_EQ(std::vector<fs::path>(expanded.begin(), expanded.end()),
              (std::vector<fs::path>{a, b, "IPE 300", b, "HEB200", "SHS100x5", points, "UPE200"}));
    const std::string gap = Write("gap.csv", "a,Name\n1,\n2,IPE200\n");
    EXPECT_EQ(Expanded({(folder / "empty").string(), Write("empty.txt", "# nothing\n"),
                        Write("empty.csv", "name\n"), gap, "IPE300"},
                       4),
              (std::vector<std::string>{"IPE200", "IPE300"}));
}

TEST_F(Batch, KeepsTheOrderOnAnyNumberOfThreadsAndGoesOnAfterABadSection) {
    std::vector<BatchEntry> arguments;
    for (int i = 0; i < 60; ++i) {
        arguments.push_back(
            {Write("s" + std::to_string(i) + ".csv", i % 20 == 7 ? "0,0\n1\n" : Square(1 + i)),
             i == 7 ? "list.csv: line 8" : ""});
    }
    BatchOptions options;
    options.section.values.wantsWarping = false;
    for (const BatchFormat format : {BatchFormat::Csv, BatchFormat::JsonLines}) {
        options.format = format;
        options.threads = 1;
        const Table alone = RunAll(arguments, options);
        const std::size_t headers = format == BatchFormat::Csv ? 1 : 0;
        ASSERT_EQ(alone.lines.size(), 57 + headers);
        EXPECT_EQ(alone.leftOut, 3U);
        ASSERT_EQ(alone.complaints.size(), 3U);
        EXPECT_TRUE(alone.complaints[0].starts_with("list.csv: line 8: " + arguments[7].argument));
        EXPECT_TRUE(alone.complaints[1].starts_with(arguments[27].argument));
        EXPECT_NE(alone.complaints[1].find("s27.csv: line 2: expected"), std::string::npos);
        if (headers > 0) {
            EXPECT_EQ(alone.lines[0], CsvHeader());
        }
        EXPECT_NE(alone.lines[headers].find("s0.csv"), std::string::npos);
        for (const std::string& line : alone.lines) {
            EXPECT_EQ(line.find('\n'), line.size() - 1);
        }
        for (const unsigned threads : {2U, 7U, 100U}) {
            options.threads = threads;
            const Table together = RunAll(arguments, options);
            EXPECT_EQ(together.lines, alone.lines);
            EXPECT_EQ(together.complaints, alone.complaints);
        }
    }
}

TEST_F(Batch, StopsWhenTheTableCannotBeWritten) {
    const std::vector<BatchEntry> arguments(50, {Write("s.csv", Square(1)), ""});
    EXPECT_THROW(RunBatch(
                     arguments, {}, [](const std::string&) { throw std::runtime_error("full"); },
                     [](const std::string&) {}),
                 std::runtime_error);
}

}  // namespace
