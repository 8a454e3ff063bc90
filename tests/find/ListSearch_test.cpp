// Find Next File over the current list: which rows are searched, from
// where, the size and date test on listed files, the stop, and LastFound;
// and the check of "remove blank" before a search.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "find/ComplexCriteria.h"
#include "find/ListSearch.h"
#include "find/RemoveBlankCheck.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

// A list of rows as the grid holds them; a name ending in "/" is a directory row.
struct Listed {
    tavtest::TempDir dir;
    RowTable table;

    explicit Listed(const std::vector<std::pair<std::string, std::string>>& files) {
        table.begin({});
        for (const auto& [name, bytes] : files) {
            Row r;
            if (!name.empty() && name.back() == '/') {
                r.isDirectory = true;
                r.path = dir.str() + "/" + name;
            } else {
                r.path = dir.write(name, bytes).string();
            }
            table.row(std::move(r));
        }
    }
};

ListSearchRequest searchFor(const std::string& text, FindSearchMode mode = FindSearchMode::CurrentListAll) {
    ListSearchRequest r;
    r.criteria.text = text;
    r.record.mode = mode;
    return r;
}

TEST(ListSearch, TheFirstRowIsTheCurrentOneUnlessItsFileWasShownLast) {
    EXPECT_EQ(firstRowToSearch(3, std::nullopt), 3u);
    EXPECT_EQ(firstRowToSearch(3, 2), 3u);
    EXPECT_EQ(firstRowToSearch(3, 3), 4u);
}

TEST(ListSearch, HiddenRowsDirectoriesAndInModeTwoOtherNamesArePassedOver) {
    Listed l({{"a.txt", "x"}, {"sub/", ""}, {"b.htm", "x"}, {"c.txt", "x"}, {"d.TXT", "x"}});
    ListSearchRequest all = searchFor("x");
    l.table.rows()[3].hidden = true;
    std::vector<size_t> rows;
    for (const ListSearchRow& r : rowsToSearch(l.table, all, 0)) rows.push_back(r.row);
    EXPECT_EQ(rows, (std::vector<size_t>{0, 2, 4}));
    l.table.rows()[3].hidden = false;
    all.rowHidden = [](size_t row) { return row == 4; };
    rows.clear();
    for (const ListSearchRow& r : rowsToSearch(l.table, all, 0)) rows.push_back(r.row);
    EXPECT_EQ(rows, (std::vector<size_t>{0, 2, 3}));

    ListSearchRequest named = searchFor("x", FindSearchMode::CurrentListNamed);
    named.namePattern = "*.txt";
    rows.clear();
    for (const ListSearchRow& r : rowsToSearch(l.table, named, 1)) rows.push_back(r.row);
    EXPECT_EQ(rows, (std::vector<size_t>{3, 4}));  // case ignored; from row 1 on
}

TEST(ListSearch, FindNextFileWalksOnFromTheFileShownLast) {
    Listed l({{"a.txt", "no"}, {"b.txt", "one needle"}, {"c.txt", "none"}, {"d.txt", "needle two"}});
    ListSearchRequest r = searchFor("needle");
    ListSearchResult first = findNextListedFile(l.table, r);
    ASSERT_TRUE(first.found);
    EXPECT_EQ(first.row, 1u);
    EXPECT_TRUE(first.startedAtTop);
    EXPECT_EQ(first.lastFound, (LastFound{"needle", 5}));
    EXPECT_EQ(first.hit.text, "one needle");

    // OT: the current row is that of the file shown, so the search goes on behind it.
    r.currentRow = first.row;
    r.lastShownRow = first.row;
    ListSearchResult next = findNextListedFile(l.table, r);
    ASSERT_TRUE(next.found);
    EXPECT_EQ(next.row, 3u);
    EXPECT_FALSE(next.startedAtTop);
    EXPECT_EQ(next.lastFound, (LastFound{"needle", 1}));

    r.currentRow = r.lastShownRow.emplace(3);
    ListSearchResult end = findNextListedFile(l.table, r);
    EXPECT_FALSE(end.found);
    EXPECT_FALSE(end.startedAtTop);  // the caller offers to start again from the top
    EXPECT_TRUE(end.lastFound.empty());
}

TEST(ListSearch, ACurrentListIsSearchedByTextOnly) {
    Listed l({{"a.txt", "x"}, {"b.txt", "y"}});
    ListSearchRequest r = searchFor("");
    r.record.minSize = 1;
    EXPECT_TRUE(findNextListedFile(l.table, r).refused);
}

TEST(ListSearch, SizeAndDateTestAndMaximumBytesApplyToListedFiles) {
    Listed l({{"small.txt", "needle"}, {"big.txt", "needle" + std::string(20, '-')},
              {"far.txt", std::string(10000, '-') + "needle" + std::string(20, '-')}});
    ListSearchRequest r = searchFor("needle");
    r.record.minSize = 20;
    ListSearchResult found = findNextListedFile(l.table, r);
    EXPECT_EQ(found.row, 1u);
    EXPECT_EQ(found.filesSearched, 1u);

    r.currentRow = r.lastShownRow.emplace(1);
    r.record.options.maxBytes = 10000;
    EXPECT_FALSE(findNextListedFile(l.table, r).found);  // far.txt's hit lies past the first 10,000 bytes

    r.record.options.maxBytes = 0;
    r.record.modifiedToday = true;
    r.today = 0;  // 30 December 1899: no file was modified that day
    EXPECT_FALSE(findNextListedFile(l.table, r).found);
}

TEST(ListSearch, AStopEndsTheSearchAndRejectsGoToTheList) {
    Listed l({{"a.txt", "Peter Smith"}, {"b.txt", "Smith"}});
    ListSearchRequest r = searchFor("Smith");
    r.criteria.exclude = "Peter Smith";
    RejectedList rejected;
    r.rejected = &rejected;
    ListSearchResult found = findNextListedFile(l.table, r);
    EXPECT_EQ(found.row, 1u);
    ASSERT_EQ(rejected.lines().size(), 2u);
    EXPECT_EQ(rejected.lines()[0], "^^ File: " + l.table.rows()[0].path + " ^^");

    r.stopRequested = [] { return true; };
    ListSearchResult stopped = findNextListedFile(l.table, r);
    EXPECT_TRUE(stopped.stopped);
    EXPECT_FALSE(stopped.found);
}

TEST(ListSearch, LastFoundAndTheTextsOfTheRun) {
    EXPECT_EQ(buildLastFound({"a|b", 12}), "a|b|12");
    EXPECT_EQ(parseLastFound("a|b|12"), (LastFound{"a|b", 12}));
    EXPECT_EQ(buildLastFound({}), "");
    EXPECT_TRUE(parseLastFound("").empty());

    FindCriteria c;
    c.text = "Smith";
    c.wholeWord = true;
    EXPECT_EQ(listSearchCaption(c, FindSearchMode::CurrentListAll),
              "Find File in Current List (All Files Listed) Containing >>(Smith) WW<<");
    EXPECT_EQ(listSearchCaption(c, FindSearchMode::CurrentListNamed),
              "Find File in Current List (Only Files Named ...) Containing >>(Smith) WW<<");
    EXPECT_EQ(foundStatusText("a.txt", {"Smith", 40}), "Found in File: a.txt // Smith // Byte: 40");
    EXPECT_EQ(stoppedStatusText("Look In: x"),
              "Stopped. Find Files Containing Text. Search Criteria: Look In: x // not found");
}

struct BlankCase {
    const char* name;
    std::string text;
    std::vector<std::string> further;
    std::vector<std::string> sameLine;
    bool section;
    std::vector<std::string> problems;
};

TEST(RemoveBlankCheck, ValuesWithLineBreaksOrTrailingSpacesAreNamed) {
    const BlankCase cases[] = {
        {"plain values", "Smith", {"Jones"}, {}, false, {}},
        {"a line feed, shown as its code", "a\nb", {}, {}, false,
         {"Search value >>a&#10b<< includes CR or LF [Carriage Return or Line Feed]."}},
        {"spaces at the end of a further value", "Smith", {"Jones  "}, {}, false,
         {"Search value >>Jones  << has spaces at end."}},
        {"line lists only in a section search", "Smith", {}, {"REM", "x"}, false, {}},
        {"the first value of a line list", "Smith ", {}, {"REM", "x"}, true,
         {"Search value >>Smith << has spaces at end.",
          "Complex criteria includes criteria \"Only Find When one of following on Same line as text to find [s]: "
          ">>REM<< ... \""}},
    };
    for (const BlankCase& c : cases) {
        SCOPED_TRACE(c.name);
        FindCriteria criteria;
        criteria.text = c.text;
        ComplexCriteria complex;
        complex.values = c.further;
        complex.includeSameLine = c.sameLine;
        if (!complex.empty()) criteria.complex = buildComplexCriteria(complex);
        EXPECT_EQ(removeBlankProblems(criteria, c.section), c.problems);
    }
}

TEST(RemoveBlankCheck, OkSwitchesTheOptionOffAndCancelStops) {
    FindCriteria c;
    c.text = "end ";
    tavtest::ScriptedHost host;
    EXPECT_TRUE(checkRemoveBlank(c, false, false, host).goOn);  // option off: no prompt
    EXPECT_TRUE(host.asked().empty());

    host.answer(1);
    RemoveBlankOutcome ok = checkRemoveBlank(c, true, false, host);
    EXPECT_TRUE(ok.goOn);
    EXPECT_TRUE(ok.switchOff);
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].buttons, "1");
    EXPECT_EQ(host.asked()[0].message.rfind("Search value >>end << has spaces at end.\rOption to remove blank", 0),
              0u);

    host.answer(2);
    RemoveBlankOutcome cancel = checkRemoveBlank(c, true, false, host);
    EXPECT_FALSE(cancel.goOn);
    EXPECT_FALSE(cancel.switchOff);
}

}  // namespace
