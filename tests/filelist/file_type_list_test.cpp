// The list of named file types: its stored form, its edits, the prompt of
// a new type and the status line after the file types dialog.
#include <gtest/gtest.h>

#include "filelist/FileTypeList.h"
#include "filelist/ShellFileTypes.h"
#include "settings/IniStore.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

const std::string kStored = "{*;All files}|{*.htm|*.html;Web pages}|{*.txt;Text files}";

TEST(FileTypeList, ReadsAndWritesTheValueWhole) {
    FileTypeList list = FileTypeList::parse(kStored);
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[1], (NamedFileType{"*.htm|*.html", "Web pages"}));
    EXPECT_EQ(list.text(), kStored);
    EXPECT_EQ(FileTypeList::parse("=" + kStored), list);
}

struct ParseCase {
    const char* name;
    const char* stored;
    std::vector<NamedFileType> items;
};

TEST(FileTypeList, OddElements) {
    const ParseCase cases[] = {
        {"empty", "", {}},
        {"only the equals sign", "=", {}},
        {"no name", "{*.log}", {{"*.log", ""}}},
        {"blanks trimmed", "{ *.c ; C code }", {{"*.c", "C code"}}},
        {"no types dropped", "{;Nothing}|{*.md;Markdown}", {{"*.md", "Markdown"}}},
        {"semicolon in the name", "{*.csv;Data; comma separated}", {{"*.csv", "Data; comma separated"}}},
        {"unbracketed single type", "*.txt;Text", {{"*.txt", "Text"}}},
    };
    for (const ParseCase& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(FileTypeList::parse(c.stored).items(), c.items);
    }
}

TEST(FileTypeList, BracesInANameSurviveTheRoundTrip) {
    FileTypeList list;
    ASSERT_TRUE(list.add({"*.json", "Data {json}"}));
    EXPECT_EQ(FileTypeList::parse(list.text()), list);
}

TEST(FileTypeList, EditsKeepTheListValid) {
    FileTypeList list = FileTypeList::parse(kStored);
    EXPECT_FALSE(list.add({"  ", "No types"}));
    EXPECT_TRUE(list.add({"*.md", "Markdown"}));
    EXPECT_EQ(list.find("*.HTM|*.html"), 1);
    EXPECT_EQ(list.find("*.doc"), -1);
    EXPECT_FALSE(list.replace(9, {"*.x", "X"}));
    EXPECT_FALSE(list.replace(0, {"", "All"}));
    EXPECT_TRUE(list.replace(0, {"*", "Everything"}));
    EXPECT_TRUE(list.move(3, 0));
    EXPECT_EQ(list[0].name, "Markdown");
    EXPECT_FALSE(list.move(0, 4));
    EXPECT_TRUE(list.remove(1));
    EXPECT_FALSE(list.remove(3));
    EXPECT_EQ(list.text(), "{*.md;Markdown}|{*.htm|*.html;Web pages}|{*.txt;Text files}");
    EXPECT_FALSE(list.reorder({0, 0, 1}));
    EXPECT_FALSE(list.reorder({0, 1}));
    EXPECT_TRUE(list.reorder({2, 0, 1}));
    EXPECT_EQ(list[0].name, "Text files");
    EXPECT_EQ(list.displayLine(1), "Markdown - *.md");
}

TEST(FileTypeList, StoredInTheFileTypesSection) {
    tavtest::TempDir dir;
    ProfileService service;
    tavtest::ScriptedHost host;
    IniStore ini(service, &host);
    ini.setDataDir(dir.str());
    ini.setRoleFile(IniRole::Main, ini.qualify("Tavelo.ini"));
    EXPECT_TRUE(readFileTypes(ini).empty());
    writeFileTypes(ini, FileTypeList::parse(kStored));
    EXPECT_EQ(ini.mode(kMissingEmpty).get("File Types", "Select File Type/start value"), kStored);
    EXPECT_EQ(readFileTypes(ini).text(), kStored);
    EXPECT_TRUE(host.asked().empty());
}

TEST(AskFileType, TwoLabelledBoxesAndTheHint) {
    tavtest::ScriptedHost host;
    host.answerWith([](MessageRequest& r) {
        r.values[2] = " Pictures ";
        r.values[4] = "*.png|*.jpg";
        return 1;
    });
    NamedFileType t{"*.png", ""};
    ASSERT_TRUE(askFileType(host, t, "- New File Type"));
    EXPECT_EQ(t, (NamedFileType{"*.png|*.jpg", "Pictures"}));
    const MessageRequest& r = host.asked()[0];
    EXPECT_EQ(r.message,
              "Enter Name for file type and as many file type specifications as required (in format *.htm).\r"
              "Example *.htm will list all files of type htm.");
    EXPECT_EQ(r.values[1], "Name [n]:");
    EXPECT_EQ(r.values[3], "File Type Specifications [p]:");
    EXPECT_EQ(r.values[4], "*.png");  // as shown
}

TEST(AskFileType, CancelOrNoTypesChangeNothing) {
    tavtest::ScriptedHost host;
    host.answer(2);
    host.answerWith([](MessageRequest& r) {
        r.values[2] = "Name only";
        r.values[4] = "";
        return 1;
    });
    NamedFileType t{"*.c", "C"};
    EXPECT_FALSE(askFileType(host, t, ""));
    EXPECT_FALSE(askFileType(host, t, ""));
    EXPECT_EQ(t, (NamedFileType{"*.c", "C"}));
}

TEST(FileTypeStatus, TellsTypeAndBothAttributes) {
    EXPECT_EQ(fileTypeStatus("*.htm", true, false), " - done. New Type: *.htm, show Hidden files, hide System files.");
    EXPECT_EQ(fileTypeStatus("*", false, true), " - done. New Type: *, hide Hidden files, show System files.");
}

}  // namespace

namespace {

const std::vector<KnownFileType> kKnown = {
    {{"*.htm", "*.html"}, "HTML document"},
    {{"*.txt", "*.text"}, "plain text"},
    {{"*.HTML", "a|b"}, "XHTML page"},
    {{"core"}, "Core dump"},
    {{"x;y"}, "Unusable"},
};

TEST(ShellFileTypes, CombinedOneElementForEachKindByName) {
    const FileTypeList list = shellFileTypes(kKnown, false);
    EXPECT_EQ(list.text(), "{core;Core dump}|{*.htm|*.html;HTML document}|{*.txt|*.text;plain text}|{*.HTML;XHTML page}");
}

TEST(ShellFileTypes, SeparateOneElementForEachPatternByPattern) {
    const FileTypeList list = shellFileTypes(kKnown, true);
    // "*.HTML" is "*.html" again: the first type that holds it names it.
    EXPECT_EQ(list.text(), "{*.htm;HTML document}|{*.html;HTML document}|{*.text;plain text}|{*.txt;plain text}|"
                           "{core;Core dump}");
    EXPECT_EQ(shellTypesButtonCaption(true), "Combine File Ty&pes");
    EXPECT_EQ(shellTypesButtonCaption(false), "Seperate File Ty&pes");
}

}  // namespace
