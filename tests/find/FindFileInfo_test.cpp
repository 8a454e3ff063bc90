// The texts a window shows of a Find Files Containing Text search.
#include <gtest/gtest.h>

#include "find/FindFileInfo.h"

using namespace tav;

namespace {

FindCriteria smith() {
    FindCriteria c;
    c.text = "Smith";
    c.matchCase = true;
    return c;
}

TEST(FindFileInfo, TheRejectedListPanelStartsWithTheSearchDescription) {
    FileFindRecord r;
    r.pattern = "*.txt";
    const std::vector<std::string> lines = searchDescriptionLines(smith(), r, "/a|/b");
    const std::vector<std::string> expected = {
        "Search Criteria:", std::string(80, '='), "Find: >>(Smith) MC<<", "Files Named: *.txt",
        "Look In: /a, /b", "", "NB:", "Files will be listed here only when",
        "a. satisfy Named (e.g. *.txt), Size and Date criteria", "b. are rejected due to complex criteria.", "",
        "Files processed before Show Detail was pressed are not listed."};
    EXPECT_EQ(lines, expected);
}

TEST(FindFileInfo, TheCriteriaOfTheCurrentListWithOrWithoutRejectedValues) {
    FileFindRecord r = recordAfterDirectorySearch(FileFindRecord{});
    EXPECT_EQ(r.mode, FindSearchMode::CurrentListAll);
    RejectedList none;
    FindFileInfo plain = findFileInfo(smith(), r, "", none);
    EXPECT_EQ(plain.request.message, "Find: >>(Smith) MC<<\rLook In: Current List (All Files Listed)");
    EXPECT_EQ(plain.request.title, "- Criteria For Current List");
    EXPECT_EQ(plain.showDetailButton, 0);
    EXPECT_EQ(plain.request.buttons, "&OK");

    RejectedList rejected;
    rejected.add("File: /a", "Peter Smith   -(Peter Smith)", false);
    FindFileInfo detail = findFileInfo(smith(), r, "", rejected);
    EXPECT_EQ(detail.showDetailButton, 2);
    EXPECT_EQ(detail.request.buttons, "&OK|S&how Detail");
    EXPECT_NE(detail.request.message.find("\rFound Values Rejected due to Complex Criteria:"), std::string::npos);
    ASSERT_GE(detail.request.lists.size(), 2u);
    EXPECT_EQ(detail.request.lists[1], (std::vector<std::string>{"", "^^ File: /a ^^", "Peter Smith   -(Peter Smith)"}));
    // Only the last file's values are kept without "save detail of all": the box says so.
    ASSERT_EQ(detail.request.values.size(), 3u);
    EXPECT_EQ(detail.request.values[2].rfind("!!! List includes ONLY rejected items", 0), 0u);
    r.options.keepAllRejected = true;
    EXPECT_EQ(findFileInfo(smith(), r, "", rejected).request.values.size(), 2u);
}

}  // namespace
