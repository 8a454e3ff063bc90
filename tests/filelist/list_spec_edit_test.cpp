// Adding to and removing from a window's list spec, and the lines of the
// directory selection dialog.
#include <gtest/gtest.h>

#include "filelist/ListSpec.h"
#include "filelist/ListSpecEdit.h"
#include "filelist/MultiDirsToggle.h"

using namespace tav;

namespace {

const std::string CR = "\r";

TEST(AddToListSpec, InsertsInOrderIgnoringCaseAndRefusesDuplicates) {
    std::string spec = "{}";
    EXPECT_TRUE(AddToListSpec(spec, "/home/me/site/").changed);
    EXPECT_TRUE(AddToListSpec(spec, "/home/me/Archive/").changed);
    EXPECT_TRUE(AddToListSpec(spec, "/tmp/").changed);
    EXPECT_TRUE(AddToListSpec(spec, "/home/me/notes/").changed);
    EXPECT_EQ(spec, "{/home/me/Archive/}|{/home/me/notes/}|{/home/me/site/}|{/tmp/}");

    for (const char* again : {"/home/me/site/", "/HOME/ME/SITE/", "/home/me/Site/   "}) {
        std::string before = spec;
        ListSpecChange c = AddToListSpec(spec, again);
        EXPECT_FALSE(c.changed) << again;
        EXPECT_EQ(spec, before);
        EXPECT_TRUE(c.status.empty());
        EXPECT_EQ(c.prompt, selectprompt::alreadyExists(std::string(again).substr(0, 14)));
    }
}

TEST(AddToListSpec, RightTrimsAndTellsTheStatusLine) {
    std::string spec;
    ListSpecChange c = AddToListSpec(spec, "/data/ <*.htm+>  \t");
    EXPECT_TRUE(c.changed);
    EXPECT_EQ(c.status, "Added to list of dirs/files to read: /data/ <*.htm+>");
    EXPECT_EQ(spec, "{/data/ <*.htm+>}");
    // A type list with "|" stays one entry.
    EXPECT_TRUE(AddToListSpec(spec, "/web/ <*.htm|*.html->").changed);
    ASSERT_EQ(listSpecEntries(spec).size(), 2u);
    EXPECT_EQ(listSpecEntries(spec)[1], "/web/ <*.htm|*.html->");
    EXPECT_EQ(parseListSpec(spec, "*", false)[1].type, "*.htm|*.html");
}

TEST(AddToListSpec, BlankEntriesAreRefusedQuietly) {
    std::string spec = "{/a/}";
    ListSpecChange c = AddToListSpec(spec, "   ");
    EXPECT_FALSE(c.changed);
    EXPECT_TRUE(c.prompt.empty());
    EXPECT_EQ(spec, "{/a/}");
}

TEST(RemoveFromListSpec, RemovesIgnoringCaseAndLeavesAnEmptySpec) {
    std::string spec = "{/a/}|{/B/}";
    ListSpecChange c = RemoveFromListSpec(spec, "/b/");
    EXPECT_TRUE(c.changed);
    EXPECT_EQ(c.status, "Removed from list of dirs/files to read: /B/");
    EXPECT_EQ(spec, "{/a/}");
    EXPECT_FALSE(RemoveFromListSpec(spec, "/c/").changed);
    EXPECT_TRUE(RemoveFromListSpec(spec, "/a/").changed);
    EXPECT_TRUE(listSpecEmpty(spec));
    EXPECT_TRUE(listSpecEmpty("{}"));
    EXPECT_TRUE(listSpecEmpty(""));
}

struct LineCase {
    const char* name;
    const char* line;
    bool fileSpec;
    const char* path;
    const char* type;
    bool hasSign;
    bool subdirs;
};

TEST(ListLine, SplitAtTheFirstMarkAndFileSpecificationTest) {
    const LineCase cases[] = {
        {"plain directory", "/home/me/", false, "/home/me/", "", false, false},
        {"root", "/", false, "/", "", false, false},
        {"typed with subdirs", "/home/me/ <*.htm+>", false, "/home/me/", "*.htm", true, true},
        {"typed without subdirs", "/home/me/ <*.txt|*.log->", false, "/home/me/", "*.txt|*.log", true, false},
        {"sign only", "/home/me/ <+>", false, "/home/me/", "", true, true},
        {"pattern", "/home/me/*.txt", true, "/home/me/*.txt", "", false, false},
        {"named file", "/home/me/a.txt", true, "/home/me/a.txt", "", false, false},
        {"named file with mark", "/home/me/a.txt <*.htm->", true, "/home/me/a.txt", "*.htm", true, false},
        {"second mark stays in the first", "/x/ <a <b+>", false, "/x/", "a <b", true, true},
    };
    for (const LineCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(isFileSpecification(c.line), c.fileSpec);
        const ListLine l = splitListLine(c.line);
        EXPECT_EQ(l.path, c.path);
        EXPECT_EQ(l.type, c.type);
        EXPECT_EQ(l.hasSubdirsMark, c.hasSign);
        EXPECT_EQ(l.subdirs, c.subdirs);
    }
    EXPECT_FALSE(isSettableLine(kDuplicateRemoved));
}

TEST(ListLine, SetTypeKeepsTheSignAndSetSubdirsKeepsTheType) {
    EXPECT_EQ(lineWithType("/a/ <*.htm+>", "*.txt", false), "/a/ <*.txt+>");
    EXPECT_EQ(lineWithType("/a/ <*.htm->", "*.txt", true), "/a/ <*.txt->");
    EXPECT_EQ(lineWithType("/a/", "*.txt", true), "/a/ <*.txt+>");
    EXPECT_EQ(lineWithSubdirs("/a/ <*.htm+>", false, "*.txt"), "/a/ <*.htm->");
    EXPECT_EQ(lineWithSubdirs("/a/", true, "*.txt"), "/a/ <*.txt+>");
    // What the list maker reads from the lines made here.
    const ListEntry e = parseListEntry(lineWithType("/a/ <*.htm->", "*.txt", true), "*", true);
    EXPECT_EQ(e.directory, "/a/");
    EXPECT_EQ(e.type, "*.txt");
    EXPECT_FALSE(e.subdirs);  // a "-" mark lists only that directory, whatever the default
}

class DialogLines : public ::testing::Test {
protected:
    ListSpecLines lines{"{/a/}|{/b/ <*.htm+>}|{/c/*.txt}"};
};

TEST_F(DialogLines, AddTwiceInAnyCaseGivesThePromptOnTheSecond) {
    EXPECT_TRUE(lines.add("/dir/").prompt.empty());
    LineEdit second = lines.add("/DIR/");
    EXPECT_FALSE(second.changed);
    EXPECT_EQ(second.prompt, "Already exists in List of Directories and files." + CR + "/DIR/" + CR + " not added.");
    EXPECT_EQ(lines.lines(), (std::vector<std::string>{"/a/", "/b/ <*.htm+>", "/c/*.txt", "/dir/"}));
}

TEST_F(DialogLines, AddAllPromptsForEachRefusedEntry) {
    std::vector<LineEdit> edits = lines.addAll({"/c/*.txt", "/c/d.txt", "/A/"});
    ASSERT_EQ(edits.size(), 3u);
    EXPECT_FALSE(edits[0].prompt.empty());
    EXPECT_TRUE(edits[1].changed);
    EXPECT_FALSE(edits[2].prompt.empty());
    EXPECT_EQ(lines.spec(), "{/a/}|{/b/ <*.htm+>}|{/c/*.txt}|{/c/d.txt}");
}

TEST_F(DialogLines, AddWithNeedsADirectoryAndAType) {
    EXPECT_EQ(lines.addWith("", "*.htm", true).prompt, selectprompt::kNoDirToAddWith);
    EXPECT_EQ(lines.addWith("/d/", " ", true).prompt, selectprompt::kNoTypeChosen);
    LineEdit e = lines.addWith("/d/", "*.htm", false);
    EXPECT_TRUE(e.changed);
    EXPECT_EQ(e.status, "Added to list of dirs/files to read: /d/ <*.htm->");
}

TEST_F(DialogLines, SetButtonsLeaveFileSpecificationsAlone) {
    LineEdit e = lines.setSubdirs({2}, true, "*.htm");
    EXPECT_FALSE(e.changed);
    EXPECT_EQ(e.prompt, "First Select Directories to change and then try again." + CR +
                            "NB. File Specifications will not be changed by this function.");
    EXPECT_EQ(lines.setType({}, "*.htm", false).prompt, selectprompt::nothingToChange());
    EXPECT_EQ(lines.setType({7}, "*.htm", false).prompt, selectprompt::nothingToChange());
    // A mixed selection changes the directories only.
    e = lines.setType({0, 1, 2}, "*.log", false);
    EXPECT_TRUE(e.prompt.empty());
    EXPECT_EQ(lines.spec(), "{/a/ <*.log->}|{/b/ <*.log+>}|{/c/*.txt}");
}

TEST_F(DialogLines, SetButtonsWithoutATypeAsk) {
    EXPECT_EQ(lines.setType({0}, "", false).prompt, selectprompt::kNoTypeChosen);
    EXPECT_EQ(lines.setSubdirs({1}, false, "  ").prompt, selectprompt::kNoTypeChosen);
    EXPECT_EQ(lines.spec(), "{/a/}|{/b/ <*.htm+>}|{/c/*.txt}");
}

TEST_F(DialogLines, AChangeThatMakesADuplicateRemovesTheLine) {
    lines.add("/b/ <*.htm->");
    ASSERT_EQ(lines.lines().size(), 4u);
    LineEdit e = lines.setSubdirs({2}, true, "*.htm");  // "/b/ <*.htm->" becomes the line above it
    EXPECT_TRUE(e.changed);
    EXPECT_EQ(lines.lines()[2], kDuplicateRemoved);
    EXPECT_EQ(lines.spec(), "{/a/}|{/b/ <*.htm+>}|{/c/*.txt}");
    // The placeholder is no line to set, and goes with Remove.
    EXPECT_EQ(lines.setType({2}, "*", false).prompt, selectprompt::nothingToChange());
    e = lines.remove({2});
    EXPECT_TRUE(e.changed);
    EXPECT_TRUE(e.prompt.empty());
    EXPECT_EQ(lines.lines().size(), 3u);
}

TEST_F(DialogLines, PlaceholdersGoWhenTheListIsBuiltAgain) {
    lines.add("/b/ <*.htm->");
    lines.setSubdirs({2}, true, "*.htm");
    lines.add("/e/");
    EXPECT_EQ(lines.lines(), (std::vector<std::string>{"/a/", "/b/ <*.htm+>", "/c/*.txt", "/e/"}));
}

TEST_F(DialogLines, RemoveSeveralAndNewListThenOkIsRefused) {
    LineEdit e = lines.remove({2, 0, 0, 9});
    EXPECT_TRUE(e.changed);
    EXPECT_EQ(e.status, "Removed from list of dirs/files to read: /c/*.txt");
    EXPECT_EQ(lines.spec(), "{/b/ <*.htm+>}");
    EXPECT_TRUE(lines.okPrompt().empty());
    lines.clear();
    EXPECT_TRUE(lines.lines().empty());
    EXPECT_EQ(lines.okPrompt(), "Select a directory or press Cancel to lose all changes here and return.");
    lines.reset("{}");
    EXPECT_EQ(lines.okPrompt(), selectprompt::kEmptyListOnOk);
}

}  // namespace

namespace {

TEST(ToggleMultiDirs, OnStopsTheTreeFromListingByItself) {
    MultiDirsState s;
    s.autoRefresh = true;
    s.listSpec = "{/a/}";
    const MultiDirsToggle t = ToggleMultiDirs(s, true, "/b/");
    EXPECT_TRUE(t.state.multiDirs);
    EXPECT_FALSE(t.state.listSelected);
    EXPECT_FALSE(t.state.autoRefresh);
    EXPECT_EQ(t.state.listSpec, "{/a/}");
    EXPECT_FALSE(t.listSpecChanged);
}

TEST(ToggleMultiDirs, OffMakesTheTreesDirectoryTheListOnlyWhenTheTreeIsActive) {
    MultiDirsState s;
    s.multiDirs = true;
    s.listSelected = false;
    s.listSpec = "{/a/}|{/c/}";
    MultiDirsToggle t = ToggleMultiDirs(s, false, "/b/");
    EXPECT_FALSE(t.state.multiDirs);
    EXPECT_TRUE(t.state.listSelected);
    EXPECT_EQ(t.state.listSpec, "{/a/}|{/c/}");
    EXPECT_FALSE(t.listSpecChanged);
    t = ToggleMultiDirs(s, true, "/b/");
    EXPECT_EQ(t.state.listSpec, "{/b/}");
    EXPECT_TRUE(t.listSpecChanged);
    EXPECT_EQ(ToggleMultiDirs(s, true, "").state.listSpec, "{/a/}|{/c/}");
}

}  // namespace

namespace {

TEST(MultiDirsTree, DirectoriesOfTheListAndTheirRemoval) {
    std::string spec = "{/a/}|{/a/ <*.htm+>}|{/A/ <*.txt->}|{/a/x.txt}|{/b/*.log}|{/c/ <+>}";
    EXPECT_EQ(listSpecDirectories(spec), (std::vector<std::string>{"/a/", "/c/"}));
    const ListSpecChange c = RemoveDirectoryFromListSpec(spec, "/a/");
    EXPECT_TRUE(c.changed);
    EXPECT_EQ(spec, "{/a/x.txt}|{/b/*.log}|{/c/ <+>}");  // named files stay
    EXPECT_FALSE(RemoveDirectoryFromListSpec(spec, "/b/").changed);
    EXPECT_TRUE(listSpecDirectories("{}").empty());
}

}  // namespace
