// The list maker's walk: entries of the list spec, the order of items,
// hidden and system items, type patterns, unreadable directories, links.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "filelist/ListJob.h"
#include "filelist/ListSpec.h"
#include "filelist/RowTable.h"
#include "filelist/WalkDirectory.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

namespace fs = std::filesystem;
using namespace tav;

namespace {

// Every item of a walk, as a path below `root`.
std::vector<std::string> walked(const tavtest::TempDir& root, const WalkOptions& options, WalkHooks hooks = {}) {
    std::vector<std::string> seen;
    const std::string base = root.str() + "/";
    hooks.found = [&](const FoundItem& item) {
        seen.push_back(item.path().substr(base.size()));
        return true;
    };
    DirectoryWalk(root.str(), options, hooks);
    return seen;
}

// The order the walk must give, worked out the plain way: a directory's
// items as the file system enumerates them, then each subdirectory's.
void expectedOrder(const fs::path& dir, const std::string& prefix, std::vector<std::string>& out) {
    std::vector<std::string> subdirs;
    for (const fs::directory_entry& e : fs::directory_iterator(dir)) {
        const std::string name = e.path().filename().string();
        out.push_back(prefix + name);
        if (e.is_directory()) subdirs.push_back(name);
    }
    for (const std::string& s : subdirs) expectedOrder(dir / s, prefix + s + "/", out);
}

ListJobSpec specFor(const std::string& listSpec, std::vector<int> colTypes = {1, 2}) {
    ListJobSpec spec;
    spec.listSpec = listSpec;
    ColumnRequest request;
    request.colTypes = std::move(colTypes);
    spec.layout = SetUpListColumns(request, factoryColumnSpecs(), WindowFormats{});
    return spec;
}

std::vector<std::string> names(const RowTable& table) {
    std::vector<std::string> out;
    const int name = table.columnOf(1), type = table.columnOf(2);
    for (const Row& r : table.rows()) {
        const std::string& t = r.cells[static_cast<std::size_t>(type)];
        out.push_back(r.cells[static_cast<std::size_t>(name)] + (t.empty() || t == "<DIR>" ? "" : "." + t));
    }
    return out;
}

class ListWalk : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* f : {"one.txt", "two.htm", "three.HTML", "sub1/a.txt", "sub1/deep/b.htm", "sub2/c.txt",
                              "sub2/d.htm", "four.txt"})
            dir.write(f, "x");
    }
    tavtest::TempDir dir;
};

}  // namespace

// ---- list spec entries ----

TEST(ListSpecEntry, DirectoryTypeAndMarkAreReadFromTheEntry) {
    ListEntry e = parseListEntry("/data/site/ <*.htm+>", "*", false);
    EXPECT_EQ(e.directory, "/data/site/");
    EXPECT_EQ(e.type, "*.htm");
    EXPECT_TRUE(e.subdirs);
    EXPECT_FALSE(e.namedFiles);

    e = parseListEntry("/data/site/ <*.txt->", "*", true);
    EXPECT_FALSE(e.subdirs) << "a '-' mark wins over the default";
    EXPECT_EQ(e.type, "*.txt");
}

TEST(ListSpecEntry, DefaultsFillWhatTheEntryLeavesOut) {
    ListEntry e = parseListEntry("/data/site/", "*.htm", true);
    EXPECT_EQ(e.directory, "/data/site/");
    EXPECT_EQ(e.type, "*.htm");
    EXPECT_TRUE(e.subdirs);

    e = parseListEntry("/data/site/", "", false);
    EXPECT_EQ(e.type, "*");
}

TEST(ListSpecEntry, LastComponentNamesFiles) {
    ListEntry e = parseListEntry("/data/site/*.txt", "*", false);
    EXPECT_EQ(e.directory, "/data/site/");
    EXPECT_EQ(e.type, "*.txt");
    EXPECT_TRUE(e.namedFiles);

    e = parseListEntry("/data/readme", "*", false);
    EXPECT_EQ(e.directory, "/data/");
    EXPECT_EQ(e.type, "readme");
}

TEST(ListSpecEntry, SpecSplitsIntoBracketedEntries) {
    EXPECT_TRUE(parseListSpec("", "*", false).empty());
    EXPECT_TRUE(parseListSpec("{}", "*", false).empty());
    const std::vector<ListEntry> entries = parseListSpec("{/a/}|{/b/ <*.htm|*.txt+>}", "*", false);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].directory, "/a/");
    EXPECT_EQ(entries[1].directory, "/b/");
    EXPECT_EQ(entries[1].type, "*.htm|*.txt");
    EXPECT_TRUE(entries[1].subdirs);
}

// ---- type test ----

TEST(ListTypeTest, WildCardsIgnoreCase) {
    EXPECT_TRUE(wildMatch("*.htm", "INDEX.HTM"));
    EXPECT_FALSE(wildMatch("*.htm", "index.html"));
    EXPECT_TRUE(wildMatch("*.htm*", "index.html"));
    EXPECT_TRUE(wildMatch("a?c", "abc"));
    EXPECT_FALSE(wildMatch("a?c", "ac"));
    EXPECT_TRUE(wildMatch("v#.txt", "v7.txt"));
    EXPECT_FALSE(wildMatch("v#.txt", "vx.txt"));
    EXPECT_TRUE(wildMatch("[a-c]*", "Beta"));
    EXPECT_FALSE(wildMatch("[!a-c]*", "beta"));
    EXPECT_TRUE(wildMatch("*a*b*", "xxaxxbxx"));
    EXPECT_FALSE(wildMatch("*.*", "noext"));
}

TEST(ListTypeTest, WithoutStarAPatternIsASubstring) {
    TypeFilter htm("htm");
    EXPECT_TRUE(htm.passes("index.html"));
    EXPECT_TRUE(htm.passes("HTMfile"));
    EXPECT_FALSE(htm.passes("a.txt"));

    TypeFilter list("*.htm|*.TXT");
    EXPECT_TRUE(list.passes("a.txt"));
    EXPECT_TRUE(list.passes("b.htm"));
    EXPECT_FALSE(list.passes("c.html")) << "one pattern with '*' makes all of them wild card patterns";

    TypeFilter mixed("*.htm|txt");
    EXPECT_FALSE(mixed.passes("a.txt")) << "'txt' is then a whole name, not a substring";
    EXPECT_TRUE(TypeFilter("*").passesAll());
}

// ---- order of the walk ----

TEST_F(ListWalk, ItemsOfADirectoryComeBeforeItsSubdirectoriesDepthFirst) {
    WalkOptions options;
    options.subdirs = true;
    std::vector<std::string> want;
    expectedOrder(dir.path(), "", want);
    EXPECT_EQ(walked(dir, options), want);
}

TEST_F(ListWalk, WithoutSubdirectoriesOnlyTheTopLevelIsListed) {
    WalkOptions options;
    for (const std::string& p : walked(dir, options)) EXPECT_EQ(p.find('/'), std::string::npos) << p;
    EXPECT_EQ(walked(dir, options).size(), 6u);
}

TEST_F(ListWalk, TypeTestPicksItemsButSubdirectoriesAreStillEntered) {
    WalkOptions options;
    options.subdirs = true;
    options.typeList = "*.htm";
    std::vector<std::string> got = walked(dir, options);
    std::sort(got.begin(), got.end());
    EXPECT_EQ(got, (std::vector<std::string>{"sub1/deep/b.htm", "sub2/d.htm", "two.htm"}));
}

TEST_F(ListWalk, RowsFollowTheWalkAndDirectoriesGetRows) {
    RowTable table;
    ListJobSpec spec = specFor("{" + dir.str() + "/ <*+>}");
    EXPECT_TRUE(FindAndListFiles(spec, *std::make_unique<JobContext>(), table));
    std::vector<std::string> want;
    expectedOrder(dir.path(), "", want);
    ASSERT_EQ(table.rows().size(), want.size());
    for (std::size_t i = 0; i < want.size(); ++i) EXPECT_EQ(table.rows()[i].path, dir.str() + "/" + want[i]);
    EXPECT_TRUE(table.totals().complete);

    spec.listDirs = false;
    FindAndListFiles(spec, *std::make_unique<JobContext>(), table);
    EXPECT_EQ(table.rows().size(), 8u) << "no rows for directories, but they are still walked";
}

TEST_F(ListWalk, EntriesAreListedInTheirOrder) {
    RowTable table;
    JobContext job;
    ListJobSpec spec = specFor("{" + dir.str() + "/sub2/*.htm}|{" + dir.str() + "/sub1/}");
    spec.listDirs = false;
    EXPECT_TRUE(FindAndListFiles(spec, job, table));
    EXPECT_EQ(names(table), (std::vector<std::string>{"d.htm", "a.txt"}));
}

// ---- hidden and system items ----

TEST(ListHidden, DotNamesAreHiddenAndTheSavedPairingIsCrossed) {
    tavtest::TempDir dir;
    dir.write("seen.txt", "x");
    dir.write(".secret", "x");
    dir.write(".cache/inside.txt", "x");
    ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0600), 0);
    WalkOptions options;
    options.subdirs = true;
    auto sorted = [&](WalkOptions o) {
        std::vector<std::string> v = walked(dir, o);
        std::sort(v.begin(), v.end());
        return v;
    };
    EXPECT_EQ(sorted(options), (std::vector<std::string>{"seen.txt"}));
    options.showHidden = true;
    EXPECT_EQ(sorted(options), (std::vector<std::string>{".cache", ".cache/inside.txt", ".secret", "seen.txt"}));
    options.showHidden = false;
    options.showSystem = true;
    EXPECT_EQ(sorted(options), (std::vector<std::string>{"pipe", "seen.txt"}));

    // Through the job: `Include system` shows hidden items, `Include Hidden` system ones.
    RowTable table;
    JobContext job;
    ListJobSpec spec = specFor("{" + dir.str() + "/}");
    spec.includeHiddenEntry = true;
    FindAndListFiles(spec, job, table);
    EXPECT_EQ(table.rows().size(), 2u);
    spec.includeHiddenEntry = false;
    spec.includeSystemEntry = true;
    FindAndListFiles(spec, job, table);
    EXPECT_EQ(table.rows().size(), 3u);
}

// ---- failures ----

TEST(ListFailures, AnUnreadableDirectoryCountsAsEmpty) {
    tavtest::TempDir dir;
    dir.write("a/one.txt", "x");
    dir.write("b/two.txt", "x");
    dir.write("c/three.txt", "x");
    WalkOptions options;
    options.subdirs = true;
    WalkHooks hooks;
    hooks.lister = [&](const std::string& d, std::vector<FoundItem>& items) {
        if (d == dir.str() + "/b/") return false;
        return listDirectory(d, items);
    };
    std::vector<std::string> got = walked(dir, options, hooks);
    std::sort(got.begin(), got.end());
    EXPECT_EQ(got, (std::vector<std::string>{"a", "a/one.txt", "b", "c", "c/three.txt"}));
}

TEST(ListFailures, ADirectoryWithoutPermissionIsSkippedQuietly) {
    if (::geteuid() == 0) GTEST_SKIP() << "permissions do not bind the super-user";
    tavtest::TempDir dir;
    dir.write("locked/hidden.txt", "x");
    dir.write("open.txt", "x");
    fs::permissions(dir / "locked", fs::perms::none);
    WalkOptions options;
    options.subdirs = true;
    std::vector<std::string> got = walked(dir, options);
    fs::permissions(dir / "locked", fs::perms::owner_all);
    std::sort(got.begin(), got.end());
    EXPECT_EQ(got, (std::vector<std::string>{"locked", "open.txt"}));
}

TEST(ListFailures, ALinkLoopIsWalkedOnce) {
    tavtest::TempDir dir;
    dir.write("a/file.txt", "x");
    fs::create_directory_symlink(dir.path(), dir / "a" / "up");
    fs::create_directory_symlink(dir / "a", dir / "a" / "self");
    WalkOptions options;
    options.subdirs = true;
    std::vector<std::string> got = walked(dir, options);
    std::sort(got.begin(), got.end());
    EXPECT_EQ(got, (std::vector<std::string>{"a", "a/file.txt", "a/self", "a/up"}));
}

TEST(ListFailures, NothingToListIsNoRun) {
    RowTable table;
    JobContext job;
    EXPECT_FALSE(FindAndListFiles(specFor("{}"), job, table));
    EXPECT_TRUE(table.finished());
    EXPECT_TRUE(table.rows().empty());
}

TEST(ListFailures, AnEmptyListSpecAsksForADirectory) {
    tavtest::ScriptedHost host;
    JobContext job(&host);
    RowTable table;
    EXPECT_FALSE(FindAndListFiles(specFor(""), job, table));
    ASSERT_EQ(host.messages().size(), 1u);
    EXPECT_EQ(host.messages()[0], "Select a directory to list and press F5 again to make file list.");
}

TEST_F(ListWalk, DirectoriesToTheTopKeepTheirFoundOrder) {
    RowTable plain, top;
    top.setDirsToTop(true);
    ListJobSpec spec = specFor("{" + dir.str() + "/ <*+>}");
    JobContext job;
    FindAndListFiles(spec, job, plain);
    FindAndListFiles(spec, job, top);
    std::vector<std::string> dirs, files;
    for (const Row& r : plain.rows()) (r.isDirectory ? dirs : files).push_back(r.path);
    std::vector<std::string> got;
    for (const Row& r : top.rows()) got.push_back(r.path);
    std::vector<std::string> want = dirs;
    want.insert(want.end(), files.begin(), files.end());
    EXPECT_EQ(got, want);
    EXPECT_EQ(dirs.size(), 3u);
}
