// What Find Next File does with a window's criteria and file find record.
#include <gtest/gtest.h>

#include "find/FindNextFile.h"

using namespace tav;

namespace {

std::string criteria(const std::string& text) {
    FindCriteria c;
    c.text = text;
    return buildFindCriteria(c);
}

std::string record(FindSearchMode mode, int64_t minSize = 0, int64_t maxBytes = 0) {
    FileFindRecord r;
    r.mode = mode;
    r.minSize = minSize;
    r.options.maxBytes = maxBytes;
    r.options.includeSubdirs = true;
    return buildFileFindRecord(r);
}

TEST(FindNextFile, WhatFindNextDoesWithTheWindowsValues) {
    const struct {
        const char* name;
        std::string a, b;
        bool afterDialog;
        FindNextStep step;
    } cases[] = {
        {"no earlier search", criteria("x"), "", false, FindNextStep::OpenDialog},
        {"directories", criteria("x"), record(FindSearchMode::Directories), false, FindNextStep::ListDirectories},
        {"current list", criteria("x"), record(FindSearchMode::CurrentListAll), false,
         FindNextStep::SearchCurrentList},
        {"named files of the list", criteria("x"), record(FindSearchMode::CurrentListNamed), false,
         FindNextStep::SearchCurrentList},
        {"no text: the dialog", criteria(""), record(FindSearchMode::Directories, 5), false,
         FindNextStep::OpenDialog},
        {"no text after the dialog: by size", criteria(""), record(FindSearchMode::Directories, 5), true,
         FindNextStep::ListDirectories},
        {"no text nor sizes after the dialog", criteria(""), record(FindSearchMode::Directories), true,
         FindNextStep::OpenDialog},
        {"no text for a current list", criteria(""), record(FindSearchMode::CurrentListAll, 5), true,
         FindNextStep::OpenDialog},
    };
    for (const auto& c : cases) EXPECT_EQ(planFindNext(c.a, c.b, c.afterDialog).step, c.step) << c.name;
}

TEST(FindNextFile, ADirectorySearchHandsTheListMakerItsValuesAndLeavesModeOne) {
    const std::string a = criteria("needle");
    const std::string b = record(FindSearchMode::Directories, 7, 25000);
    const FindNextPlan plan = planFindNext(a, b);
    EXPECT_EQ(plan.listSearchValue, "25000|" + a);
    EXPECT_EQ(plan.listFileFind, b);
    FileFindRecord after = parseFileFindRecord(plan.windowRecord);
    EXPECT_EQ(after.mode, FindSearchMode::CurrentListAll);
    after.mode = FindSearchMode::Directories;
    EXPECT_EQ(buildFileFindRecord(after), b);

    std::unique_ptr<FindFileTest> test = fileTestFromWindow(plan.listSearchValue, plan.listFileFind, 0);
    ASSERT_TRUE(test);
    EXPECT_TRUE(test->testsContent());
    EXPECT_EQ(test->maxBytes(), 30000);
    FoundItem small;
    small.name = "a.txt";
    small.size = 6;
    EXPECT_FALSE(test->passesEntry(small));
    small.size = 7;
    EXPECT_TRUE(test->passesEntry(small));
    EXPECT_FALSE(fileTestFromWindow("", b, 0));
}

}  // namespace
