// The popups of a directory search: the choices steer the run.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "filelist/JobContext.h"
#include "filelist/ListJob.h"
#include "filelist/RowTable.h"
#include "find/FindFileTest.h"
#include "find/FoundPopupRun.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

struct PopupSearch {
    tavtest::TempDir root;
    FindCriteria criteria;
    tavtest::ScriptedHost host;
    RowTable table;
    std::vector<std::string> statuses;
    bool ranToEnd = false;

    PopupSearch() {
        criteria.text = "needle";
        // a.txt comes first: the files of a directory come before those of its subdirectories.
        root.write("a.txt", "needle one, needle two");
        root.write("sub/b.txt", "only one needle");
        root.write("sub/c.txt", "needle");
    }

    FoundPopupRun run() {
        FoundPopupRun popups(criteria, "Look In: " + root.str(), host);
        popups.status = [this](const std::string& s) { statuses.push_back(s); };
        FindFileTest test(criteria, FileFindRecord{}, 0);
        test.onHit = [&](const FoundItem& item, const FileVerdict& v) { return popups.atHit(item, v); };
        ListJobSpec spec;
        spec.listSpec = root.str() + "/";
        spec.subdirsByDefault = true;
        spec.listDirs = false;
        ColumnRequest request;
        request.colTypes = {1, 2};
        spec.layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
        spec.fileTest = &test;
        JobContext job;
        ranToEnd = FindAndListFiles(spec, job, table);
        return popups;
    }
};

TEST(FoundPopupRun, NextValueLegendAndListAll) {
    PopupSearch s;
    // With a next value: 1 next file, 2 next value, 3 list all, 4 edit criteria, 5 legend, 6 stop;
    // without one the numbers from 3 move up by one.
    s.host.answer(2);  // the second needle of a.txt
    s.host.answer(2);  // no third one
    s.host.answer(4);  // legend
    s.host.answer(1);  // (the legend's OK)
    s.host.answer(2);  // list all files
    FoundPopupRun popups = s.run();
    EXPECT_TRUE(s.ranToEnd);
    EXPECT_EQ(s.table.rows().size(), 3u);
    EXPECT_TRUE(popups.listingAll());
    EXPECT_FALSE(popups.stopped());
    const std::vector<MessageRequest>& asked = s.host.asked();
    ASSERT_EQ(asked.size(), 5u);  // no popup after "List All Files"
    EXPECT_NE(asked[0].message.find("(Bytes shown: 1 to 22)"), std::string::npos);
    EXPECT_EQ(s.statuses[0], "Found in File: a.txt // needle // Byte: 1");
    EXPECT_EQ(s.statuses[1], "Found in File: a.txt // needle // Byte: 13");
    EXPECT_EQ(asked[2].values.back().rfind("** Only One Value found in this document **", 0), 0u);
    // The legend box between two popups of one file.
    EXPECT_EQ(asked[3].message.rfind("The search criteria used for find is shown in format", 0), 0u);
    EXPECT_EQ(asked[4].message, asked[2].message);
    EXPECT_EQ(asked[4].buttons, asked[2].buttons);
}

TEST(FoundPopupRun, OnlyOneValueThenStopKeepsTheListSoFar) {
    PopupSearch s;
    s.criteria.text = "only one";  // one file, one hit
    s.host.answer(2);              // next value: there is none
    s.run();
    const std::vector<MessageRequest>& asked = s.host.asked();
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[1].buttons.find("Select Nex&t Value"), std::string::npos);
    EXPECT_EQ(asked[1].values.back().rfind("** Only One Value found in this document **", 0), 0u);
    EXPECT_EQ(s.statuses.front(), "Found in File: b.txt // only one // Byte: 1");
    EXPECT_TRUE(s.ranToEnd);  // the fallback answer 1: find next file

    PopupSearch t;
    t.host.answer(6);  // Sto&p at the first file
    FoundPopupRun stopped = t.run();
    EXPECT_TRUE(stopped.stopped());
    EXPECT_FALSE(t.ranToEnd);
    EXPECT_EQ(t.table.rows().size(), 1u);

    PopupSearch e;
    e.host.answer(4);  // Edit Criteria: the run ends, the dialog comes after it
    FoundPopupRun edit = e.run();
    EXPECT_TRUE(edit.editCriteria());
    EXPECT_EQ(e.table.rows().size(), 1u);
}

}  // namespace
