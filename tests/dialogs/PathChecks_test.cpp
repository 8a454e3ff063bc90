#include "dialogs/PathChecks.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "dialogs/FileAttrWords.h"
#include "dialogs/FindOnPath.h"
#include "dialogs/NameChars.h"
#include "dialogs/PathSplit.h"
#include "support/TempDir.h"

namespace tav {
namespace {

#ifndef _WIN32

// "@" in a name stands for the test's temporary directory (without its
// final separator). The tree holds the directory "sub" and the file "file.txt".
std::string place(std::string_view pattern, const std::string& root) {
    std::string out;
    for (char c : pattern) {
        if (c == '@')
            out += root;
        else
            out += c;
    }
    return out;
}

class CheckTree : public ::testing::Test {
protected:
    tavtest::TempDir dir;
    std::string root;
    void SetUp() override {
        root = dir.str();
        while (root.size() > 1 && root.back() == '/') root.pop_back();
        dir.write("file.txt", "x");
        dir.write("sub/inner.txt", "y");
    }
};

struct DirCase {
    const char* name;
    const char* dir;
    bool shortNames;
    bool ok;
    const char* message;  // exact, "@" for the temporary directory
    bool exists;
};

class DirChecks : public CheckTree, public ::testing::WithParamInterface<DirCase> {};

TEST_P(DirChecks, Rules) {
    const auto& c = GetParam();
    NameRules rules;
    rules.shortNames = c.shortNames;
    NameCheck check = CheckDirName(place(c.dir, root), false, {}, rules);
    EXPECT_EQ(check.ok, c.ok);
    EXPECT_EQ(check.message, place(c.message, root));
    EXPECT_EQ(check.exists, c.exists);
    if (c.ok) {
        EXPECT_EQ(check.name.back(), '/');
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, DirChecks,
    ::testing::Values(
        DirCase{"ExistingWithSeparator", "@/sub/", false, true, "", true},
        DirCase{"ExistingGetsSeparator", "@/sub", false, true, "", true},
        DirCase{"Root", "/", false, true, "", true},
        DirCase{"MissingIsNoFailure", "@/new dir/deeper", false, true, "", false},
        DirCase{"Relative", "sub/", false, false,
                "Error In Directory name: Dir name must be of format /name where / is the root directory.\r"
                "Action aborted.",
                false},
        DirCase{"Empty", "", false, false,
                "Error In Directory name: Dir name must be of format /name where / is the root directory.\r"
                "Action aborted.",
                false},
        DirCase{"DoubledSeparator", "@//sub", false, false,
                "Error In Directory name:  \"//\" with directory name not allowed. Change to \"/\".\r"
                "Action aborted.",
                false},
        DirCase{"FileName", "@/file.txt", false, false,
                "Error In Directory name: Invalid directory name. Name is used as a file name.", false},
        DirCase{"BelowAFileIsNotThere", "@/file.txt/x", false, true, "", false},
        DirCase{"LongNameWithBlanks", "@/A long directory name/", false, true, "", false},
        DirCase{"ShortNamesRefuseBlanks", "/tmp/a b/", true, false,
                "Error In Directory name: Invalid directory name. Includes spaces which are not allowed in a "
                "filename. Enter a file name in format xxxxxxxx.xxx ",
                false},
        DirCase{"ShortNamesRefuseLongBase", "/abcdefghi/", true, false,
                "Error In Directory name: Invalid subdirectory name: abcdefghi\r Subdirectory name must by in 8.3 "
                "format (xxxx.yyy where xxxx cannot be longer than 8 characters, yyy cannot be longer than 3 "
                "characters).",
                false},
        DirCase{"ShortNamesEightDotThree", "/abcdefgh.txt/x/", true, true, "", false},
        DirCase{"ShortNamesNineLevels", "/1/2/3/4/5/6/7/8/9/", true, true, "", false},
        DirCase{"ShortNamesTenLevels", "/1/2/3/4/5/6/7/8/9/10/", true, false,
                "Error In Directory name: Invalid directory name. This version of Tavelo is written for older "
                "versions of Windows which only allow at most nine subdirectory levels.\r"
                "Reduce number of subdirectory levels and try again.",
                false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(CheckTree, NulInADirectoryLevelIsNamed) {
    std::string name = root + "/a";
    name += '\0';
    name += "b/";
    NameCheck check = CheckDirName(name);
    EXPECT_FALSE(check.ok);
    EXPECT_EQ(check.message,
              "Error In Directory name: Invalid directory name. Includes character(s) chr(0) which are not allowed "
              "in a filename. Enter a file name in format xxxxxxxx.xxx ");
}

TEST_F(CheckTree, SkipChecksOnlyTellsExistence) {
    NameCheck d = CheckDirName(root + "//sub", false, kSkipChecks);
    EXPECT_TRUE(d.ok);
    EXPECT_EQ(d.message, "");
    EXPECT_TRUE(d.exists);
    EXPECT_FALSE(CheckDirName("relative", false, kSkipChecks).exists);
    NameCheck f = CheckFileExists(root + "/file.txt", kSkipChecks);
    EXPECT_TRUE(f.ok);
    EXPECT_TRUE(f.exists);
    NameCheck g = CheckPafnValid(root + "/gone.txt", true, kSkipChecks);
    EXPECT_TRUE(g.ok);
    EXPECT_FALSE(g.exists);
}

TEST_F(CheckTree, MustExist) {
    EXPECT_TRUE(CheckDirExists(root + "/sub").ok);
    NameCheck check = CheckDirExists(root + "/none");
    EXPECT_FALSE(check.ok);
    EXPECT_EQ(check.message, "Error In Directory name: Dir does not exist.");
}

struct PafnCase {
    const char* name;
    const char* pafn;
    bool forbidExisting;
    bool shortNames;
    bool ok;
    const char* message;
    bool exists;
};

class PafnChecks : public CheckTree, public ::testing::WithParamInterface<PafnCase> {};

TEST_P(PafnChecks, Rules) {
    const auto& c = GetParam();
    NameRules rules;
    rules.shortNames = c.shortNames;
    NameCheck check = CheckPafnValid(place(c.pafn, root), c.forbidExisting, {}, rules);
    EXPECT_EQ(check.ok, c.ok);
    EXPECT_EQ(check.message, place(c.message, root));
    EXPECT_EQ(check.exists, c.exists);
}

INSTANTIATE_TEST_SUITE_P(
    Table, PafnChecks,
    ::testing::Values(
        PafnCase{"NewFile", "@/sub/new.txt", true, false, true, "", false},
        PafnCase{"ExistingAllowed", "@/file.txt", false, false, true, "", true},
        PafnCase{"ExistingForbidden", "@/file.txt", true, false, false,
                 "Error In File Name: File already exists. Enter a new file name.", true},
        PafnCase{"EndsInSeparator", "@/sub/", false, false, false,
                 "Must include file name after dir spec.\rAction aborted.", false},
        PafnCase{"IsADirectory", "@/sub", false, false, false,
                 "That file name currently exists as a directory. Action aborted.", false},
        PafnCase{"DirectoryMissing", "@/nowhere/a.txt", false, false, false, "Directory does not exist.", false},
        PafnCase{"BadDirectory", "@//a.txt", false, false, false,
                 "Error In Directory name:  \"//\" with directory name not allowed. Change to \"/\".\r"
                 "Action aborted.",
                 false},
        PafnCase{"RelativeName", "a.txt", false, false, false,
                 "Error In Directory name: Dir name must be of format /name where / is the root directory.\r"
                 "Action aborted.",
                 false},
        PafnCase{"LongNameWithBlanks", "@/sub/A long file name.html", false, false, true, "", false}),
    [](const auto& row) { return std::string(row.param.name); });

// The name part alone: the 8.3 rules of the short-names mode.
struct FileCase {
    const char* name;
    const char* file;
    bool shortNames;
    bool ok;
    const char* message;
    bool exists;
};

class FileNameChecks : public CheckTree, public ::testing::WithParamInterface<FileCase> {};

TEST_P(FileNameChecks, Rules) {
    const auto& c = GetParam();
    NameRules rules;
    rules.shortNames = c.shortNames;
    NameCheck check = CheckFileName(place(c.file, root), false, {}, rules);
    EXPECT_EQ(check.ok, c.ok);
    EXPECT_EQ(check.message, c.message);
    EXPECT_EQ(check.exists, c.exists);
}

INSTANTIATE_TEST_SUITE_P(
    Table, FileNameChecks,
    ::testing::Values(
        FileCase{"ShortBaseTooLong", "@/sub/abcdefghi.txt", true, false,
                 "Error In File Name: Invalid Filename. Max 8 characters allowed before the \".\".", false},
        FileCase{"ShortTypeTooLong", "@/sub/abc.html", true, false,
                 "Error In File Name: Invalid Filename. Max 3 characters allowed after the \".\".", false},
        FileCase{"ShortNoBase", "@/sub/.txt", true, false,
                 "Error In File Name: Invalid Filename. At least 1 character required before the \".\".", false},
        FileCase{"ShortEightDotThree", "@/sub/abcdefgh.txt", true, true, "", false},
        FileCase{"ShortCountsCharactersNotBytes", "@/sub/\xC3\xA9t\xC3\xA9\xC3\xA9t\xC3\xA9s.txt", true, true,
                 "", false},
        FileCase{"ShortExisting", "@/file.txt", true, true, "", true},
        FileCase{"LongNameAllowed", "@/sub/abcdefghi.html", false, true, "", false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(NameChars, OldCharsetAndTypeMessage) {
    NameRules old;
    old.oldCharset = true;
    NameCheck check = CheckFileName("/tmp/ab+c.t=x", false, {}, old);
    EXPECT_EQ(check.message,
              "Error In File Name: Invalid File name. Includes character(s) + which are not allowed in a filename. "
              "Enter a file name in format xxxxxxxx.xxx ");
    check = CheckFileName("/tmp/abc.t=x", false, {}, old);
    EXPECT_EQ(check.message,
              "Error In File Name: Invalid File type.  Includes character(s) = which are not allowed in a "
              "filename. Enter a file name in format xxxxxxxx.xxx ");
    EXPECT_EQ(badNameChars("a*b?c*", true), "* ?");
    EXPECT_EQ(badNameChars("a*b?c", false), "");  // allowed on this system
    EXPECT_EQ(badNameChars("\xC3\xA9", true), "\xC3\xA9");
    EXPECT_TRUE(isAllowedNameChar(0xE9, false));
}

#endif  // !_WIN32

struct SplitCase {
    const char* name;
    const char* pafn;
    const char* drive;
    const char* dir;
    const char* file;
    const char* base;
    const char* type;
    const char* parent;
};

class Splitters : public ::testing::TestWithParam<SplitCase> {};

// The table is written with "/"; on Windows the cases are converted.
// ParentDirOf takes the whole name as a directory name.
std::string native(std::string s) {
#ifdef _WIN32
    for (char& c : s)
        if (c == '/') c = '\\';
    if (!s.empty() && s[0] == '\\') s = "C:" + s;
#endif
    return s;
}

TEST_P(Splitters, Cuts) {
    const auto& c = GetParam();
    std::string p = native(c.pafn);
    EXPECT_EQ(DriveOf(p), native(c.drive));
    EXPECT_EQ(DirOf(p), native(c.dir));
    EXPECT_EQ(FileOf(p), c.file);
    EXPECT_EQ(BaseOf(p), c.base);
    EXPECT_EQ(TypeOf(p), c.type);
    EXPECT_EQ(ParentDirOf(p), native(c.parent));
}

INSTANTIATE_TEST_SUITE_P(
    Table, Splitters,
    ::testing::Values(SplitCase{"Full", "/a/b/name.tar.gz", "/", "/a/b/", "name.tar.gz", "name.tar", "gz", "/a/b/"},
                      SplitCase{"DirectoryName", "/a/b/", "/", "/a/b/", "", "", "", "/a/"},
                      SplitCase{"NoType", "/a/README", "/", "/a/", "README", "README", "", "/a/"},
                      SplitCase{"DotFile", "/a/.profile", "/", "/a/", ".profile", "", "profile", "/a/"},
                      SplitCase{"DotInDirectory", "/a.d/file", "/", "/a.d/", "file", "file", "", "/a.d/"},
                      SplitCase{"Root", "/", "/", "/", "", "", "", ""},
                      SplitCase{"Bare", "x.txt", "", "", "x.txt", "x", "txt", ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PathPatterns, ExpandRelativeAndDataPafn) {
    std::string cur = native("/home/u/work/");
    EXPECT_EQ(ExpandRelative(native("./a.txt"), cur), native("/home/u/work/a.txt"));
    EXPECT_EQ(ExpandRelative(native("../a.txt"), native("/home/u/work")), native("/home/u/a.txt"));
    EXPECT_EQ(ExpandRelative(native("../.././x/"), cur), native("/home/x/"));
    EXPECT_EQ(ExpandRelative(native("../../../../../x"), cur), native("/x"));  // stops at the root
    EXPECT_EQ(ExpandRelative("..", cur), native("/home/u/"));
    EXPECT_EQ(ExpandRelative("name.txt", cur), "name.txt");
    EXPECT_EQ(ExpandRelative(native("/abs/x"), cur), native("/abs/x"));

    EXPECT_EQ(DataPafn("Tavelo.ini", native("/data")), native("/data/Tavelo.ini"));
    EXPECT_EQ(DataPafn(native("param/setupkey.ini"), native("/data/")), native("/data/param/setupkey.ini"));
    EXPECT_EQ(DataPafn(native("/etc/x.ini"), native("/data/")), native("/etc/x.ini"));

    EXPECT_TRUE(isDriveLetterPath(native("/x")));
    EXPECT_FALSE(isDriveLetterPath("x"));
    EXPECT_TRUE(isDotRelative(native("./x")));
    EXPECT_FALSE(isDotRelative(native("../x")));
    EXPECT_TRUE(isDotDotRelative(native("../x")));
}

TEST(FindOnPath, SearchesEachDirectoryOfThePath) {
    tavtest::TempDir dir;
    dir.write("bin1/other", "");
    dir.write("bin2/tool", "");
    std::filesystem::create_directories(dir / "bin3" / "tool");  // a directory is no program
#ifdef _WIN32
    const char sep = ';';
#else
    const char sep = ':';
#endif
    std::string path = (dir / "bin3").string() + sep + "%PATH%" + sep + sep + (dir / "bin1").string() + sep +
                       (dir / "bin2").string();
    PathSearchResult found = FindOnPath("tool", path);
    EXPECT_EQ(found.outcome, PathSearch::Found);
    EXPECT_EQ(found.found, withFinalSep((dir / "bin2").string()) + "tool");
    EXPECT_EQ(found.message, "");

    PathSearchResult missing = FindOnPath("absent", path);
    EXPECT_EQ(missing.outcome, PathSearch::NotFound);
    EXPECT_EQ(missing.message,
              "This file is not contained in any directory specified in the path statement. Please specify full "
              "path for file.");
    EXPECT_EQ(FindOnPath("tool", std::string()).outcome, PathSearch::CannotCheck);
    EXPECT_EQ(FindOnPath(std::string("tool") + kDirSep, path).outcome, PathSearch::BadName);
}

TEST(FileAttrWords, WordsAndLetters) {
    EXPECT_EQ(AttrWords(0), "");
    EXPECT_EQ(AttrWords(kAttrReadOnly | kAttrHidden | kAttrSystem), "Hidden, System, Read Only");
    EXPECT_EQ(AttrLetters(kAttrArchive | kAttrReadOnly), "ar");
    EXPECT_EQ(AttrLetters(kAttrReadOnly | kAttrHidden | kAttrSystem | kAttrArchive), "ahsr");
}

}  // namespace
}  // namespace tav
