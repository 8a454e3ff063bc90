#include <gtest/gtest.h>

#include <map>

#include "core/ListText.h"
#include "dialogs/ControlSpec.h"
#include "frame/WindowStore.h"
#include "frame/WindowTypes.h"
#include "settings/IniStore.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

const std::string kFactory = TAVELO_FACTORY_DATA;

// The factory data set: type texts in the main INI, one window.
class WindowTypesTest : public ::testing::Test {
protected:
    WindowTypesTest() : ini(service, &host), store(ini) {
        dir.write("Tavelo.ini", tavtest::readFile(kFactory + "/Tavelo.ini"));
        dir.write("TavCurrWin.ini", tavtest::readFile(kFactory + "/TavCurrWin.ini"));
        ini.setDataDir(dir.str());
        ini.setRoleFile(IniRole::Main, ini.qualify("Tavelo.ini"));
        ini.setRoleFile(IniRole::Currwin, ini.qualify("TavCurrWin.ini"));
        EXPECT_TRUE(store.load("--W 43200", window));
    }

    // Answers the selection by ticking `type` and pressing `button`.
    void choose(const std::string& type, int button = 1) {
        host.answerWith([type, button](MessageRequest& r) {
            const auto& types = offeredWindowTypes();
            for (size_t i = 1; i < r.ctlSpecs.size(); ++i) {
                const ControlSpec spec = parseControlSpec(r.ctlSpecs[i]);
                if (spec.kind != ControlKind::OptionButton) continue;
                r.values[i] = "0";
                for (const std::string& t : types)
                    if (t == type && spec.caption == "[" + captionOf(t) + "]") r.values[i] = "-1";
            }
            return button;
        });
    }
    static std::string captionOf(const std::string& t) {
        static const std::map<std::string, std::string> captions = {
            {"F", "File List"}, {"Multi F", "File List (Multi Dirs)"}, {"L", "List"},
            {"Multi L", "List (Multi Dirs)"}, {"O", "Other"}, {"x", "No List"}};
        return captions.at(t);
    }
    // The entry as a new start of the program reads it.
    std::string onDisk(const std::string& entry) {
        ProfileService other;
        IniStore fresh(other);
        fresh.setDataDir(dir.str());
        fresh.setRoleFile(IniRole::Currwin, fresh.qualify("TavCurrWin.ini"));
        return fresh.mode(kMissingEmpty).get(window.sections.of(findWindowEntry(entry)->part), entry);
    }

    tavtest::TempDir dir;
    tavtest::ScriptedHost host;
    ProfileService service;
    IniStore ini;
    WindowStore store;
    WindowState window;
};

}  // namespace

TEST_F(WindowTypesTest, CaptionByTypeMultiDirsAndSubdirs) {
    struct Row {
        const char* type;
        bool multi, subdirs;
        const char* caption;
    } rows[] = {
        {"F", false, false, "File List /home/u"},
        {"F", true, false, "File List (Multi Dirs) /home/u"},
        {"L", true, true, "List (Multi Dirs) <+> /home/u"},
        {"N", true, false, "Named Files (Multi Dirs) /home/u"},
        {"S", true, false, "Search Results /home/u"},  // not a type that lists several directories
        {"O", false, true, "Other <+> /home/u"},
        {"", false, false, "/home/u"},
    };
    for (const Row& r : rows) {
        window.put(".4", r.type);
        window.put("LM1", r.multi ? "-1" : "0");
        window.put("LD1", r.subdirs ? "-1" : "0");
        EXPECT_EQ(WindowCaption(window, ini, "/home/u"), r.caption) << r.type;
    }
    window.put(".4", "F");
    EXPECT_EQ(WindowCaption(window, ini, ""), "File List");
}

TEST_F(WindowTypesTest, TheSelectionOffersEachTypeWithItsLabels) {
    window.put("LM1", "-1");
    EXPECT_EQ(selectionTypeOf(window), "Multi F");
    std::vector<int> index;
    const MessageRequest r = windowTypeRequest(ini, selectionTypeOf(window), &index);
    EXPECT_EQ(r.message, "Select Window Type");
    EXPECT_EQ(r.title, "- [Select Window Type]");
    EXPECT_EQ(r.buttons, "1");
    ASSERT_EQ(index.size(), offeredWindowTypes().size());
    const std::vector<std::string> captions = {"[File List]", "[File List (Multi Dirs)]", "[List]",
                                               "[List (Multi Dirs)]", "[Other]", "[No List]"};
    for (size_t i = 0; i < index.size(); ++i) {
        const ControlSpec button = parseControlSpec(r.ctlSpecs[static_cast<size_t>(index[i])]);
        EXPECT_EQ(button.kind, ControlKind::OptionButton);
        EXPECT_EQ(button.caption, captions[i]);
        EXPECT_EQ(textIsTrue(r.values[static_cast<size_t>(index[i])]), i == 1) << i;
        const ControlSpec label = parseControlSpec(r.ctlSpecs[static_cast<size_t>(index[i]) + 1]);
        EXPECT_EQ(label.kind, ControlKind::Label);
        EXPECT_TRUE(label.sharesRow);
    }
    EXPECT_EQ(r.values[static_cast<size_t>(index[0]) + 1], "Files in directories");
    EXPECT_EQ(r.values[static_cast<size_t>(index[5]) + 1], "Window without list");
}

TEST_F(WindowTypesTest, CancelChangesNothing) {
    choose("L", 2);
    const WindowTypeChange c = ChangeWindowType(window, store, host);
    EXPECT_TRUE(c.cancelled);
    EXPECT_EQ(c.status, (std::vector<std::string>{" - ", "cancelled."}));
    EXPECT_EQ(window.get(".4"), "F");
    EXPECT_EQ(onDisk("WTYPE"), "F");
}

TEST_F(WindowTypesTest, MultiTypesStoreTheLetterAndSwitchMultiDirs) {
    struct Row {
        const char* before;
        bool multiBefore;
        const char* chosen;
        const char* stored;
        bool multiAfter, multiChanged;
    } rows[] = {
        {"F", false, "Multi L", "L", true, true},
        {"L", true, "F", "F", false, true},
        {"F", true, "Multi F", "F", true, false},
        {"F", true, "O", "O", true, false},  // other types leave Multi Dirs alone
        {"O", false, "x", "x", false, false},
    };
    for (const Row& r : rows) {
        store.putKey(window, ".4", r.before);
        store.putKey(window, "LM1", r.multiBefore ? "-1" : "0");
        choose(r.chosen);
        const WindowTypeChange c = ChangeWindowType(window, store, host);
        EXPECT_FALSE(c.cancelled) << r.chosen;
        EXPECT_EQ(c.type, r.chosen);
        EXPECT_EQ(c.multiDirsChanged, r.multiChanged) << r.chosen;
        EXPECT_EQ(c.typeChanged, std::string(r.before) != r.stored) << r.chosen;
        EXPECT_EQ(window.get(".4"), r.stored);
        EXPECT_EQ(window.menu("LM").checked, r.multiAfter) << r.chosen;
        EXPECT_EQ(onDisk("WTYPE"), r.stored);
        EXPECT_EQ(onDisk("Multi Dirs"), r.multiAfter ? "-1" : "0");
        ASSERT_EQ(c.status.size(), 3u);
        EXPECT_EQ(c.status[0], " - to ");
        EXPECT_EQ(c.status[2], "done.");
    }
}

TEST_F(WindowTypesTest, StatusCarriesTheTypesDescription) {
    choose("L");
    EXPECT_EQ(ChangeWindowType(window, store, host).status[1], "List - files and directories listed one by one");
    choose("Multi F");
    EXPECT_EQ(ChangeWindowType(window, store, host).status[1],
              "File List - files and directories of several directories chosen in the tree");
}

TEST_F(WindowTypesTest, OkWithNothingTickedCountsAsCancel) {
    choose("none");
    EXPECT_TRUE(ChangeWindowType(window, store, host).cancelled);
}
