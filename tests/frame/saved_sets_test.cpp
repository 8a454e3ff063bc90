#include <gtest/gtest.h>

#include <memory>

#include "dialogs/ControlSpec.h"
#include "frame/SavedSets.h"
#include "frame/WindowStore.h"
#include "settings/IniStore.h"
#include "settings/ListEdit.h"
#include "support/ScriptedHost.h"
#include "support/TempDir.h"

using namespace tav;

namespace {

const std::string kFactory = std::string(TAVELO_FACTORY_DATA);
constexpr const char* kWindow = "--W 43200";

// A data directory with the factory windows file and the factory saved
// sets ("ISO dates", a saved Formats set), one window loaded from it.
class SavedSetsTest : public ::testing::Test {
protected:
    SavedSetsTest() {
        dir.write("TavCurrWin.ini", tavtest::readFile(kFactory + "/param/sucurrwin.ini"));
        dir.write("LH_saved.ini", tavtest::readFile(kFactory + "/LH_saved.ini"));
        dir.write("Tavelo.ini", "[Main]\nPAFN CurrwinIni=TavCurrWin.ini\n");
        ini = std::make_unique<IniStore>(service, &host);
        ini->setDataDir(dir.str());
        ini->setRoleFile(IniRole::Main, ini->qualify("Tavelo.ini"));
        ini->setRoleFile(IniRole::Currwin, ini->qualify("TavCurrWin.ini"));
        store = std::make_unique<WindowStore>(*ini);
        EXPECT_TRUE(store->load(kWindow, window));
    }

    SavedSetContext context() {
        return {window, *store, *ini, host, ini->qualify(std::string(kSavedFileName)),
                [this](char letter, const std::string& name) { counted.push_back(std::string(1, letter) + ":" + name); }};
    }
    std::string saved(const std::string& section, const std::string& entry) {
        return ini->mode(kMissingNotFound).get(section, entry, ini->qualify("LH_saved.ini"));
    }
    std::string index(std::string_view entry) { return saved("Main", std::string(entry)); }
    // The window as the next start reads it from the current windows file.
    WindowState reloaded() {
        WindowState w;
        EXPECT_TRUE(store->load(kWindow, w));
        return w;
    }

    // Answers the name prompt with `name` (OK), or Cancel for "".
    void typeName(const std::string& name) {
        host.answerWith([name](MessageRequest& r) {
            if (name.empty()) return 2;
            r.values[1] = name;
            return 1;
        });
    }
    // Answers the list of saved names with the item at `row` (from 0) and OK.
    void pick(int row) {
        host.answerWith([row](MessageRequest& r) {
            r.lists[1][0] = std::to_string(row);
            return 1;
        });
    }

    tavtest::TempDir dir;
    tavtest::ScriptedHost host;
    ProfileService service;
    std::unique_ptr<IniStore> ini;
    std::unique_ptr<WindowStore> store;
    WindowState window;
    std::vector<std::string> counted;
};

}  // namespace

// ---- save as -----------------------------------------------------------------

TEST_F(SavedSetsTest, SaveAsWritesOnlyTheKindsPartsAndListsTheName) {
    struct Row {
        SavedKind kind;
        const char* prompt;
        const char* list;
        const char* key;
        const char* use;  // the letter counted
        bool cols, selections, formats, window;
    };
    const Row rows[] = {
        {SavedKind::Window, "Enter name under which Selections/Formats will be listed for re-display",
         "saved fmts/selns", "-4", "w", true, true, true, true},
        {SavedKind::Selections, "Enter name under which Selections will be listed for re-display",
         "Saved Selections", "-2", "l", true, true, false, false},
        {SavedKind::Formats, "Enter name under which formats will be listed for re-display", "Saved Formats", "-3",
         "r", false, false, true, false},
    };
    std::string all = "ISO dates";
    for (const Row& row : rows) {
        SCOPED_TRACE(row.list);
        const std::string name = std::string("Set ") + row.key;
        host.clear();
        counted.clear();
        typeName(name);
        SavedSetContext ctx = context();
        const SavedSetResult r = saveSetAs(ctx, row.kind);

        ASSERT_EQ(host.asked().size(), 1u);
        EXPECT_EQ(host.asked()[0].message, row.prompt);
        EXPECT_TRUE(r.done);
        EXPECT_EQ(r.results, std::vector<std::string>{">> " + name + " << done."});
        all += "|" + name;
        EXPECT_EQ(index("All Saved sectionnames"), all);
        EXPECT_EQ(index(row.list), row.kind == SavedKind::Formats ? "ISO dates|" + name : name);
        EXPECT_EQ(window.get(row.key), name);
        EXPECT_EQ(counted, std::vector<std::string>{std::string(1, row.use[0]) + ":" + name});

        const std::string nf = "*** not found ***";
        EXPECT_EQ(saved(name, "Sort col Index") != nf, row.cols);
        EXPECT_EQ(saved(name, "Last Dir") != nf, row.selections);
        EXPECT_EQ(saved(name, "Fixed Rows") != nf, row.selections);
        EXPECT_EQ(saved(name, "Date Format") != nf, row.formats);
        EXPECT_EQ(saved(name, "WTYPE") != nf, row.window);
        // A copy never names the window's own sections.
        EXPECT_EQ(saved(name, "Last Cols section"), nf);
    }
}

TEST_F(SavedSetsTest, NameInUseByAnyKindIsRefusedAndAskedAgain) {
    for (const char* used : {"ISO dates",    // a saved Formats set
                             "iso DATES",    // the same section name
                             "Main"}) {      // the index section
        typeName(used);
        host.answer(1);  // the refusal
    }
    typeName("");
    SavedSetContext ctx = context();
    const SavedSetResult r = SaveWindowAs(ctx);

    EXPECT_FALSE(r.done);
    EXPECT_EQ(r.results, std::vector<std::string>{"cancelled."});
    const auto& asked = host.messages();
    ASSERT_EQ(asked.size(), 7u);
    for (size_t i : {1u, 3u, 5u}) EXPECT_EQ(asked[i], kItemExists) << i;
    // The refused name is offered again for editing.
    EXPECT_EQ(host.asked()[2].values[1], "ISO dates");
    EXPECT_EQ(saved("ISO dates", "WTYPE"), "*** not found ***");
    EXPECT_EQ(index("All Saved sectionnames"), "ISO dates");
    EXPECT_EQ(index("saved fmts/selns"), "");
    EXPECT_EQ(window.get("-4"), "");
    EXPECT_TRUE(counted.empty());
}

// ---- overwrite -----------------------------------------------------------------

TEST_F(SavedSetsTest, OverwriteAsksFirstAndNoLeavesTheSetAlone) {
    store->putKey(window, "-3", "ISO dates");
    store->put(window, "Date Format", "yyyy");
    host.answer(2);  // No
    SavedSetContext ctx = context();
    SavedSetResult r = SaveFormats(ctx);

    ASSERT_EQ(host.asked().size(), 1u);
    const MessageRequest& ask = host.asked()[0];
    EXPECT_EQ(ask.title, "- [Save Formats ISO dates]");
    EXPECT_EQ(ask.buttons, "4");
    EXPECT_EQ(ask.message,
              "Are you Sure?\rThe current set of formats will be saved and overwrite all existing formats in set of "
              "formats saved as >> ISO dates <<.\rPress Yes to confirm Save, Press No to cancel.\r"
              "Do you wish to save changes Now?");
    EXPECT_EQ(r.results, std::vector<std::string>{"cancelled."});
    EXPECT_EQ(saved("ISO dates", "Date Format"), "yyyy-mm-dd");

    ini->put("ISO dates", "Grid Gone", "1", ini->qualify("LH_saved.ini"));
    host.answer(1);  // Yes
    r = SaveFormats(ctx);
    EXPECT_EQ(r.results, std::vector<std::string>{">> ISO dates << done."});
    EXPECT_EQ(saved("ISO dates", "Date Format"), "yyyy");
    EXPECT_EQ(saved("ISO dates", "Grid Gone"), "*** not found ***");  // the set is replaced whole
    EXPECT_EQ(index("Saved Formats"), "ISO dates");  // listed once
    EXPECT_EQ(counted, std::vector<std::string>{"r:ISO dates"});
}

TEST_F(SavedSetsTest, OverwriteTextsOfWindowAndSelections) {
    EXPECT_EQ(overwriteRequest(SavedKind::Window, "A").title, "- [Save Window A]");
    EXPECT_NE(overwriteRequest(SavedKind::Window, "A")
                  .message.find("The current set of Formats AND Selections will be saved and overwrite all existing "
                                "Formats/Selections in set of Formats/Selections saved as >> A <<.\r"),
              std::string::npos);
    EXPECT_EQ(overwriteRequest(SavedKind::Selections, "B").title, "- [Save Selections B]");
    EXPECT_NE(overwriteRequest(SavedKind::Selections, "B")
                  .message.find("The current set of Selections will be saved and overwrite all existing Selections in "
                                "set of Selections saved as >> B <<.\r"),
              std::string::npos);
}

TEST_F(SavedSetsTest, SaveWithoutANameInUseAsksForOne) {
    typeName("Mine");
    SavedSetContext ctx = context();
    const SavedSetResult r = SaveSelections(ctx);
    ASSERT_EQ(host.asked().size(), 1u);
    EXPECT_EQ(host.asked()[0].message, "Enter name under which Selections will be listed for re-display");
    EXPECT_TRUE(r.done);
    EXPECT_EQ(index("Saved Selections"), "Mine");
}

// ---- get -----------------------------------------------------------------------

TEST_F(SavedSetsTest, GetSelectionsBringsThemBackAndSavesThemLive) {
    store->put(window, "Last Dir", "{/data}");
    store->put(window, "Last Col List", "1|3");
    typeName("Data");
    SavedSetContext ctx = context();
    SaveSelectionsAs(ctx);

    store->put(window, "Last Dir", "{/home}");
    store->put(window, "Last Col List", "1|6");
    store->put(window, "Date Format", "yy");
    host.clear();
    pick(0);
    const SavedSetResult r = GetSavedSelections(ctx);

    ASSERT_EQ(host.asked().size(), 1u);
    const MessageRequest& list = host.asked()[0];
    EXPECT_EQ(list.message, "Select Saved Selections/Formats to load and press OK to continue");
    const ControlSpec box = parseControlSpec(list.ctlSpecs[1]);
    EXPECT_EQ(box.kind, ControlKind::ListBox);
    EXPECT_EQ(box.width(), 5000);
    EXPECT_EQ(box.height(), 7000);
    EXPECT_EQ(list.lists[1], (std::vector<std::string>{"0", "Data"}));

    EXPECT_TRUE(r.done);
    EXPECT_TRUE(r.selectionsChanged);
    EXPECT_FALSE(r.keysAfterGet);
    EXPECT_EQ(r.results, (std::vector<std::string>{
                             "Displayed Columns Changed.\rOld Columns: FileName, Date\rNew Columns: FileName, Size",
                             "[Selected for next read: FileName, Size]",
                             "Saved Selections Loaded with different Directory to that for which FileList now shown.",
                             ">> Data << done."}));
    EXPECT_EQ(window.value("Last Dir"), "{/data}");
    EXPECT_EQ(window.value("Date Format"), "yy");  // not a part of Selections
    EXPECT_EQ(window.get("-2"), "Data");
    EXPECT_EQ(counted, (std::vector<std::string>{"l:Data", "l:Data"}));
    const WindowState again = reloaded();
    EXPECT_EQ(again.value("Last Dir"), "{/data}");
    EXPECT_EQ(again.value("Last Col List"), "1|3");
}

TEST_F(SavedSetsTest, GetWindowOffersEveryNameAndKeepsItsKind) {
    store->put(window, "Date Format", "yy");
    pick(0);
    SavedSetContext ctx = context();
    const SavedSetResult r = GetSavedWindow(ctx);

    EXPECT_EQ(host.asked()[0].lists[1], (std::vector<std::string>{"0", "ISO dates"}));
    EXPECT_TRUE(r.keysAfterGet);
    EXPECT_EQ(window.value("Date Format"), "yyyy-mm-dd");
    EXPECT_EQ(reloaded().value("Date Format"), "yyyy-mm-dd");
    // A Formats set got as a window is saved back as Formats.
    EXPECT_EQ(window.get("-3"), "ISO dates");
    EXPECT_EQ(window.get("-4"), "");
    EXPECT_EQ(counted, std::vector<std::string>{"w:ISO dates"});
}

TEST_F(SavedSetsTest, SavedWindowCarriesKeyDefinitionsIntoAnotherWindow) {
    window.setIn(WindowPart::Window, "Key F9", "EE");
    store->put(window, "Key F9", "EE");
    store->put(window, "WTYPE", "P");
    typeName("Whole");
    SavedSetContext ctx = context();
    SaveWindowAs(ctx);
    EXPECT_EQ(saved("Whole", "Key F9"), "EE");

    WindowState other = store->makeNewWindow("", 50000.5);
    ASSERT_NE(other.sections.window, window.sections.window);
    SavedSetContext otherCtx{other, *store, *ini, host, ini->qualify("LH_saved.ini"), {}};
    pick(1);  // "ISO dates|Whole"
    const SavedSetResult r = GetSavedWindow(otherCtx);
    EXPECT_EQ(r.name, "Whole");
    EXPECT_EQ(other.value("WTYPE"), "P");
    EXPECT_EQ(other.value("Key F9"), "EE");
    EXPECT_EQ(other.get("-4"), "Whole");
    WindowState onFile;
    ASSERT_TRUE(store->load(other.sections.window, onFile));
    EXPECT_EQ(onFile.value("Key F9"), "EE");
    EXPECT_EQ(onFile.sections.cols, other.sections.cols);  // its own sections stay its own
}

TEST_F(SavedSetsTest, GetCancelledChangesNothing) {
    host.answer(2);
    SavedSetContext ctx = context();
    const SavedSetResult r = GetSavedFormats(ctx);
    EXPECT_FALSE(r.done);
    EXPECT_EQ(r.results, std::vector<std::string>{"cancelled."});
    EXPECT_EQ(window.value("Date Format"), "dd mmm yyyy");
    EXPECT_TRUE(counted.empty());
}

TEST_F(SavedSetsTest, GetOfABadColumnOrderSaysSo) {
    ini->put("Bad", "Last Col List", "1|Nonsense", ini->qualify("LH_saved.ini"));
    ini->put("Main", "Saved Selections", "Bad", ini->qualify("LH_saved.ini"));
    pick(0);
    SavedSetContext ctx = context();
    GetSavedSelections(ctx);
    ASSERT_EQ(host.asked().size(), 2u);
    EXPECT_EQ(host.asked()[1].message, kSavedColumnOrderError);
}

// ---- columns -------------------------------------------------------------------

TEST(SavedSetColumns, ListFits) {
    struct Row {
        const char* name;
        const char* list;
        bool fits;
    };
    const Row rows[] = {
        {"standard", "4|1|2|3|6|7|0", true},
        {"empty", "", true},
        {"user column", "1|UserCol/Price", true},
        {"user column without name", "1|UserCol/", false},
        {"no column", "1|14", false},
        {"beyond the standard", "1|99", false},
        {"word", "1|Nonsense", false},
    };
    for (const Row& row : rows) EXPECT_EQ(columnListFits(row.list), row.fits) << row.name;
}

TEST(SavedSetColumns, SameColumnsGiveNoLines) { EXPECT_TRUE(columnChangeLines("1|3", "1|3").empty()); }
