#include <gtest/gtest.h>

#include <filesystem>

#include "core/ListText.h"
#include "settings/IniStore.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;
namespace fs = std::filesystem;

namespace {
// A file grown past the limits: a write fails at 65,535 bytes and the
// entries overflow into alternate files.
class IniOverflowTest : public ::testing::Test {
protected:
    IniOverflowTest() : ini(service, &host) {
        ini.setDataDir(dir.str());
        main = ini.qualify("Tavelo.ini");
        ini.setRoleFile(IniRole::Main, main);
        ini.missingDefault = kMissingNotFound;
        ini.missingMode = kMissingNotFound;
    }
    void fill(int sections) {
        for (int s = 0; s < sections; ++s)
            for (int e = 0; e < 10; ++e)
                ini.put("Section" + std::to_string(s), "Entry" + std::to_string(e), std::string(900, 'a' + s % 26), spec);
    }
    size_t size(const std::string& p) { return fs::file_size(p); }

    tavtest::TempDir dir;
    ProfileService service;
    tavtest::ScriptedHost host;
    IniStore ini;
    std::string main, spec = "Tavelo.ini";
};
}  // namespace

TEST_F(IniOverflowTest, EntriesOverflowIntoAlternatesAndReadBackTransparently) {
    fill(9);  // about 82 KB of values
    EXPECT_EQ(spec.rfind(">>1<", 0), 0u) << spec;
    EXPECT_LE(size(main), ProfileService::kDefaultMaxFileSize);
    for (int s = 0; s < 9; ++s)
        for (int e = 0; e < 10; ++e)
            ASSERT_EQ(ini.get("Section" + std::to_string(s), "Entry" + std::to_string(e), spec),
                      std::string(900, 'a' + s % 26))
                << s << "/" << e;
    auto alternates = splitItems(ini.altLists()[1]);
    ASSERT_FALSE(alternates.empty());
    for (const auto& alt : alternates) EXPECT_LE(size(alt), IniStore::kFileSizeLimit + 2000);
    // The list is kept for the next start.
    EXPECT_NE(dir.read("AltFiles.ini").find(main + "=" + ini.altLists()[1]), std::string::npos);
    EXPECT_TRUE(host.asked().empty());
}

TEST_F(IniOverflowTest, NewSectionAfterOverflowGoesToAnAlternate) {
    fill(9);
    ini.put("Fresh", "First", "value", spec);
    EXPECT_EQ(dir.read("Tavelo.ini").find("[Fresh]"), std::string::npos);
    EXPECT_EQ(ini.get("Fresh", "First", spec), "value");
    // An update of an entry that lives in an alternate stays there.
    ini.put("Fresh", "First", "changed", spec);
    EXPECT_EQ(ini.get("Fresh", "First", spec), "changed");
    ini.eraseEntry("Fresh", "First", spec);
    EXPECT_EQ(ini.get("Fresh", "First", spec), "*** not found ***");
}

TEST_F(IniOverflowTest, EraseSectionRemovesItFromEveryFile) {
    fill(9);
    for (int s = 0; s < 9; ++s) ini.eraseSection("Section" + std::to_string(s), spec);
    EXPECT_EQ(ini.get("Section8", "Entry9", spec), "*** not found ***");
    for (const auto& alt : splitItems(ini.altLists()[1])) EXPECT_EQ(tavtest::readFile(alt).find("[Section"), std::string::npos);
}

TEST_F(IniOverflowTest, NextStartMergesWhenEverythingFitsAgain) {
    fill(9);
    auto alternates = splitItems(ini.altLists()[1]);
    // Shrink the data so that all fits in one file again.
    for (int s = 0; s < 9; ++s)
        for (int e = 0; e < 10; ++e) ini.put("Section" + std::to_string(s), "Entry" + std::to_string(e), "v" + std::to_string(s * 10 + e), spec);

    ProfileService fresh;
    IniStore next(fresh, &host);
    next.setDataDir(dir.str());
    next.missingDefault = next.missingMode = kMissingNotFound;
    std::string var = "Tavelo.ini";
    next.openAltList(var);
    EXPECT_EQ(var, main);
    for (const auto& alt : alternates) EXPECT_FALSE(fs::exists(alt)) << alt;
    EXPECT_EQ(dir.read("AltFiles.ini").find(main), std::string::npos);
    EXPECT_EQ(dir.read("Tavelo.ini").find("[AltNo."), std::string::npos);
    for (int s = 0; s < 9; ++s)
        for (int e = 0; e < 10; ++e)
            ASSERT_EQ(next.get("Section" + std::to_string(s), "Entry" + std::to_string(e), var), "v" + std::to_string(s * 10 + e));
}

TEST_F(IniOverflowTest, NextStartKeepsAlternatesWhileTheyDoNotFit) {
    fill(9);
    ProfileService fresh;
    IniStore next(fresh, &host);
    next.setDataDir(dir.str());
    next.missingDefault = next.missingMode = kMissingNotFound;
    std::string var = "Tavelo.ini";
    next.openAltList(var);
    EXPECT_EQ(var, ">>1<" + main);
    EXPECT_EQ(next.get("Section8", "Entry9", var), std::string(900, 'a' + 8));
}
