// Runs the built zrboard tool and checks its output and exit codes.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "tool_run.h"

namespace {

// One row of the params table: cells are separated by runs of two or more blanks.
std::vector<std::string> cells(const std::string& row) {
    std::vector<std::string> result;
    static const std::regex sep(" {2,}");
    for (std::sregex_token_iterator it(row.begin(), row.end(), sep, -1), end; it != end; ++it)
        result.push_back(*it);
    return result;
}

// Rows of the params table below its header, keyed by position.
std::vector<std::vector<std::string>> tableRows(const std::string& out) {
    std::vector<std::vector<std::string>> rows;
    const std::vector<std::string> all = lines(out);
    for (std::size_t i = 1; i < all.size(); ++i)
        rows.push_back(cells(all[i]));
    return rows;
}

// The host's own parameter comes first: the store registers it when it is made.
const std::vector<std::string> kVisible = {
    "project.enableBITabFlow", "board.enableSchemaV2",    "board.validateXML",         "board.enableBoardIntegratorSupport",
    "board.enableFMCDaughterBoardSupport", "board.repoPaths", "board.enableDiffCommand",
    "project.boardPartRepoPaths"};
const std::vector<std::string> kHidden = {"board.enable2020Checks", "board.usePre2019Dot2Mode",
                                          "board.dataProps.stubData", "board.dataProps.enableTclProps",
                                          "board.debugMemory", "board.debugBoardRepo"};

std::string valueOf(const std::string& out, const std::string& name) {
    for (const auto& row : tableRows(out))
        if (!row.empty() && row[0] == name && row.size() > 3)
            return row[3];
    return "<missing>";
}

}  // namespace

TEST(ZrboardCli, HelpGoesToStandardOutput) {
    for (const char* opt : {"--help", "-h"}) {
        const ToolRun r = zrboardRun({opt});
        EXPECT_EQ(r.status, 0) << opt;
        EXPECT_EQ(r.err, "") << opt;
        EXPECT_EQ(r.out.rfind("Usage: zrboard", 0), 0u) << r.out;
        for (const char* word : {"params", "--param NAME=VALUE", "--version", "ZR_DATA_DIRS", "ZR_APP_ROOT",
                                 "ZR_DEBUG"})
            EXPECT_NE(r.out.find(word), std::string::npos) << word;
    }
}

TEST(ZrboardCli, VersionPrintsNameAndVersion) {
    const ToolRun r = zrboardRun({"--version"});
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(std::regex_match(r.out, std::regex("zrboard [0-9]+\\.[0-9]+\\.[0-9]+\n"))) << r.out;
}

TEST(ZrboardCli, MissingOrUnknownCommandsAndOptionsAreUsageErrors) {
    const std::vector<std::vector<std::string>> cases = {
        {}, {"frobnicate"}, {"--bogus"}, {"--bogus", "params"}, {"params", "--bogus"}, {"params", "extra"},
        {"--param"}, {"--param", "novalue"}, {"--param", "=1"}};
    for (const auto& args : cases) {
        const ToolRun r = zrboardRun(args);
        std::string shown;
        for (const auto& a : args)
            shown += a + " ";
        EXPECT_EQ(r.status, 2) << shown;
        EXPECT_EQ(r.out, "") << shown;
        EXPECT_NE(r.err.find("Usage: zrboard"), std::string::npos) << shown << r.err;
    }
    EXPECT_NE(zrboardRun({"frobnicate"}).err.find("frobnicate"), std::string::npos);
    EXPECT_NE(zrboardRun({"--bogus"}).err.find("--bogus"), std::string::npos);
}

TEST(ZrboardCli, ParamsListsVisibleParametersInRegistrationOrder) {
    const ToolRun r = zrboardRun({"params"});
    ASSERT_EQ(r.status, 0) << r.err;
    const std::vector<std::string> all = lines(r.out);
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(cells(all[0]),
              (std::vector<std::string>{"NAME", "KIND", "DEFAULT", "VALUE", "HIDDEN", "DESCRIPTION"}));

    std::vector<std::string> names;
    for (const auto& row : tableRows(r.out)) {
        ASSERT_EQ(row.size(), 6u);
        names.push_back(row[0]);
        EXPECT_EQ(row[4], "no");
    }
    EXPECT_EQ(names, kVisible);

    const auto rows = tableRows(r.out);
    EXPECT_EQ(rows[1], (std::vector<std::string>{"board.enableSchemaV2", "bool", "true", "true", "no",
                                                 "Allows board data model to work on board schema 2.0"}));
    EXPECT_EQ(rows[5][1], "string");
}

TEST(ZrboardCli, ParamsAllAddsHiddenParametersInAnAlignedTable) {
    const ToolRun r = zrboardRun({"params", "--all"});
    ASSERT_EQ(r.status, 0) << r.err;
    std::vector<std::string> expected = kVisible;
    expected.insert(expected.end(), kHidden.begin(), kHidden.end());

    std::vector<std::string> names;
    for (const auto& row : tableRows(r.out)) {
        ASSERT_EQ(row.size(), 6u);
        names.push_back(row[0]);
        const bool hidden = std::find(kHidden.begin(), kHidden.end(), row[0]) != kHidden.end();
        EXPECT_EQ(row[4], hidden ? "yes" : "no") << row[0];
    }
    EXPECT_EQ(names, expected);

    // Every column starts at the same offset as its header.
    const std::vector<std::string> all = lines(r.out);
    for (const char* header : {"KIND", "DEFAULT", "VALUE", "HIDDEN", "DESCRIPTION"}) {
        const std::size_t col = all[0].find(header);
        ASSERT_NE(col, std::string::npos);
        for (std::size_t i = 1; i < all.size(); ++i) {
            ASSERT_GT(all[i].size(), col) << all[i];
            EXPECT_EQ(all[i][col - 1], ' ') << header << " in: " << all[i];
            EXPECT_NE(all[i][col], ' ') << header << " in: " << all[i];
        }
    }
}

TEST(ZrboardCli, ParamOptionSetsValuesBeforeTheCommandRuns) {
    const ToolRun r = zrboardRun({"--param", "board.validateXML=true", "--param=board.repoPaths=/repo/a",
                           "--param", "board.debugBoardRepo=true", "params", "--all"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(valueOf(r.out, "board.validateXML"), "true");
    EXPECT_EQ(valueOf(r.out, "board.repoPaths"), "/repo/a");
    EXPECT_EQ(valueOf(r.out, "board.debugBoardRepo"), "true");
    // Untouched parameters keep their defaults.
    EXPECT_EQ(valueOf(r.out, "board.enableSchemaV2"), "true");
}

TEST(ZrboardCli, ParamOptionRejectsUnknownNamesAndNonBooleanWords) {
    ToolRun r = zrboardRun({"--param", "board.noSuchThing=1", "params"});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_NE(r.err.find("board.noSuchThing"), std::string::npos) << r.err;

    r = zrboardRun({"--param", "board.validateXML=maybe", "params"});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_NE(r.err.find("maybe"), std::string::npos) << r.err;

    // A bad parameter is reported even when only help was asked for.
    EXPECT_EQ(zrboardRun({"--param", "board.noSuchThing=1", "--help"}).status, 2);
}

TEST(ZrboardCli, CommandHelpShowsItsOptions) {
    const ToolRun r = zrboardRun({"params", "--help"});
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("--all"), std::string::npos) << r.out;
}
