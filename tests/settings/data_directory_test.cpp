#include <gtest/gtest.h>

#include <filesystem>

#include "core/AppError.h"
#include "core/ListText.h"
#include "settings/DataDirectory.h"
#include "settings/ListEdit.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;
namespace fs = std::filesystem;

namespace {
struct Fixture {
    tavtest::TempDir dir;
    ProfileService service;
    tavtest::ScriptedHost host;
    IniStore ini{service, &host};
    DataLocations where;
    Fixture() {
        where.programDir = (dir / "prog").string();
        where.configDir = (dir / "config").string();
        where.defaultDataDir = (dir / "userdata").string();
        where.factoryDir = TAVELO_FACTORY_DATA;
        fs::create_directories(where.programDir);
    }
};
}  // namespace

TEST(DataDirectory, FirstStartMakesTheUserDataDirectoryAndDirIni) {
    Fixture f;
    DataDirResult r = locateDataDir(f.ini, f.where);
    ASSERT_EQ(r.error, "");
    EXPECT_TRUE(r.created);
    EXPECT_EQ(r.dataDir, f.where.defaultDataDir);
    EXPECT_TRUE(fs::exists(f.dir / "userdata" / "Tavelo.ini"));
    EXPECT_TRUE(fs::exists(f.dir / "userdata" / "param" / "sucurrwin.ini"));
    EXPECT_NE(f.dir.read("config/Dir.ini").find("Main Data Dir=" + f.where.defaultDataDir), std::string::npos);
    // The next start finds it through Dir.ini and changes nothing.
    f.dir.write("userdata/Tavelo.ini", "[Main]\nMine=1\n");
    DataDirResult again = locateDataDir(f.ini, f.where);
    EXPECT_FALSE(again.created);
    EXPECT_EQ(f.dir.read("userdata/Tavelo.ini"), "[Main]\nMine=1\n");
}

TEST(DataDirectory, DirIniBesideTheProgramWinsAndTrailingSeparatorsGo) {
    Fixture f;
    std::string mine = (f.dir / "elsewhere").string();
    f.dir.write("prog/Dir.ini", "[Main]\nMain Data Dir=" + mine + "/   \n");
    f.dir.write("config/Dir.ini", "[Main]\nMain Data Dir=/nowhere\n");
    DataDirResult r = locateDataDir(f.ini, f.where);
    EXPECT_EQ(r.dataDir, mine);
    EXPECT_TRUE(fs::exists(f.dir / "elsewhere" / "Tavelo.ini"));
}

TEST(DataDirectory, DirIniWithoutTheEntryAsksAndCancelStops) {
    Fixture f;
    f.dir.write("prog/Dir.ini", "[Main]\nOther=1\n");
    f.host.answer(2);
    EXPECT_THROW(locateDataDir(f.ini, f.where), AppError);
    ASSERT_EQ(f.host.asked().size(), 1u);
    EXPECT_NE(f.host.asked()[0].message.find("Entry: Main Data Dir"), std::string::npos);
}

TEST(DataDirectory, OpeningLocatesEveryFileAndRunsTheFirstRunOnce) {
    Fixture f;
    DataDirResult r = locateDataDir(f.ini, f.where, (f.dir / "d").string());
    ASSERT_TRUE(r.created);
    f.ini.setDataDir(r.dataDir);
    {
        std::string setup = r.dataDir + "/param/setupkey.ini";
        std::string text = tavtest::readFile(setup) + "KC200=<XX;[2];[0]>\n";
        f.dir.write("d/param/setupkey.ini", text);
    }
    OpenedFiles files = openDataFiles(f.ini);
    EXPECT_TRUE(files.firstRun);
    EXPECT_TRUE(fs::is_directory(files.systemp));
    for (IniRole role : {IniRole::XParam, IniRole::Currwin, IniRole::Cols, IniRole::Hef})
        EXPECT_TRUE(fs::exists(f.ini.roleFile(role))) << f.ini.roleFile(role);
    EXPECT_NE(f.ini.roleFile(IniRole::Cols), f.ini.roleFile(IniRole::Main));
    // The key set supplied at setup is in the main file.
    f.ini.missingMode = kMissingNotFound;
    EXPECT_EQ(f.ini.get("Keys", "KC200"), "<XX;[2];[0]>");
    EXPECT_FALSE(openDataFiles(f.ini).firstRun);
    EXPECT_TRUE(f.host.asked().empty());
}

TEST(ListEdit, UniqueListsRefuseDuplicatesWithTheMessage) {
    tavtest::ScriptedHost host;
    std::string list;
    EXPECT_TRUE(addListItem(list, "a|b", true, &host));
    EXPECT_TRUE(addListItem(list, "c", true, &host));
    EXPECT_FALSE(addListItem(list, "a|b", true, &host));
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].message, kItemExists);
    EXPECT_EQ(splitItems(list), (std::vector<std::string>{"a|b", "c"}));
    EXPECT_TRUE(addListItem(list, "c", false, &host));
}
