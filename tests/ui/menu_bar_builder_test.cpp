// The menu bar made from the menu catalogue: its menus and captions, items
// reaching their handlers by code, and the state of items taken from the
// active window before a menu shows.
#include <QtTest>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <map>

#include "frame/MenuDispatch.h"
#include "frame/MenuTree.h"
#include "support/ScriptedHost.h"
#include "ui/MenuBarBuilder.h"

using namespace tav;

namespace {
class FakeWindow : public MenuStateProvider {
public:
    bool window = true;
    bool off = false;
    std::map<std::string, MenuItemState> states;
    MenuItemState itemState(const MenuItem& item, MenuItemState own) const override {
        auto it = states.find(item.code);
        return it == states.end() ? own : it->second;
    }
    bool hasFileListWindow() const override { return window; }
    bool eventsOff() const override { return off; }
};

// A menu bar with every code's handler recording the calls.
struct Bar {
    MenuTree tree = MenuTree::standard();
    tavtest::ScriptedHost host{2};
    MenuDispatch dispatch{tree, host};
    FakeWindow window;
    QMenuBar bar;
    ui::MenuBarBuilder builder{tree, dispatch};
    QStringList ran;

    Bar() {
        dispatch.setProvider(&window);
        for (const MenuItem& m : tree.items())
            if (!m.code.empty())
                dispatch.setHandler(m.code, [this](const MenuCall& c) { ran << QString::fromStdString(c.code); });
        builder.build(&bar);
    }
};
}  // namespace

class MenuBarBuilderTest : public QObject {
    Q_OBJECT
private slots:
    void topMenusWithTheirCaptions();
    void submenusAndSeparators();
    void triggeringReachesTheHandler();
    void disabledItemDoesNotRun();
    void stateIsReadBeforeAMenuShows();
    void arrayItemsWithoutCaptionStayHidden();
    void menusShutInsideAPump();
    void keysShowBehindCaptions();
};

void MenuBarBuilderTest::topMenusWithTheirCaptions() {
    Bar b;
    QStringList shown, hidden;
    for (QAction* a : b.bar.actions()) (a->isVisible() ? shown : hidden) << a->text();
    QCOMPARE(shown, (QStringList{"&File", "&Edit", "&Show", "&DartShift", "&Action", "&View", "Se&lect", "&Window",
                                 "&Help"}));
    QCOMPARE(hidden.size(), 3);  // the Window Type menus without a caption

    b.tree.setCaption("2", "&Viewer");
    b.tree.setCaption("2Z(0)", "&Pictures");
    b.builder.refresh();
    QVERIFY(b.builder.action("2")->isVisible());
    QCOMPARE(b.builder.action("2")->text(), QString("&Viewer"));
    QCOMPARE(b.builder.action("2Z(0)")->text(), QString("&Pictures"));
}

void MenuBarBuilderTest::submenusAndSeparators() {
    Bar b;
    QMenu* file = b.builder.menu("F");
    QVERIFY(file);
    QStringList items;
    for (QAction* a : file->actions()) items << (a->isSeparator() ? "-" : a->text());
    QCOMPARE(items.mid(0, 6), (QStringList{"&Move", "&Copy", "&Delete", "Delete without &recycle copy", "-", "Re&name"}));
    QCOMPARE(items.last(), QString("E&xit"));
    QMenu* tools = b.builder.menu("FL");
    QVERIFY(tools);
    QCOMPARE(tools->menuAction()->text(), QString("System T&ools"));
    QCOMPARE(tools->actions().size(), 2);
    QVERIFY(b.builder.action("VYSORT(5)")->isSeparator());
}

void MenuBarBuilderTest::triggeringReachesTheHandler() {
    Bar b;
    b.builder.action("FM")->trigger();
    b.builder.action("F_Save")->trigger();
    b.builder.action("vsort(2)")->trigger();
    QCOMPARE(b.ran, (QStringList{"FM", "F_SAVE", "VSORT(2)"}));
    QCOMPARE(QString::fromStdString(b.dispatch.lastMnuCode()), QString("VSORT(2)"));
}

void MenuBarBuilderTest::disabledItemDoesNotRun() {
    Bar b;
    b.window.states["EE"] = {true, false, false};
    b.builder.refresh();
    QVERIFY(!b.builder.action("EE")->isEnabled());
    b.builder.action("EE")->trigger();
    QVERIFY(b.ran.isEmpty());

    // Without a File List window the commands that need one are off, the others run.
    b.window.window = false;
    b.builder.refresh();
    QVERIFY(!b.builder.action("FM")->isEnabled());
    QVERIFY(b.builder.action("WW")->isEnabled());
    b.builder.action("FM")->trigger();
    b.builder.action("WW")->trigger();
    QCOMPARE(b.ran, QStringList{"WW"});
}

void MenuBarBuilderTest::stateIsReadBeforeAMenuShows() {
    Bar b;
    QMenu* quick = b.builder.menu("EQ");
    QVERIFY(!b.builder.action("EQM")->isChecked());
    b.window.states["EQM"] = {true, true, true};
    b.window.states["EQS"] = {false, true, false};
    emit quick->aboutToShow();
    QVERIFY(b.builder.action("EQM")->isChecked());
    QVERIFY(!b.builder.action("EQS")->isVisible());
    // A menu's refresh leaves the other menus as they were.
    b.window.states["FM"] = {true, false, false};
    emit quick->aboutToShow();
    QVERIFY(b.builder.action("FM")->isEnabled());
    emit b.builder.menu("F")->aboutToShow();
    QVERIFY(!b.builder.action("FM")->isEnabled());
}

void MenuBarBuilderTest::arrayItemsWithoutCaptionStayHidden() {
    Bar b;
    QVERIFY(!b.builder.action("09(3)")->isVisible());
    QVERIFY(b.builder.action("09(10)")->isVisible());
    QVERIFY(!b.builder.action("SZ(0)")->isVisible());
    b.tree.setCaption("09(0)", "&1 C:\\Work");
    emit b.builder.menu("W")->aboutToShow();
    QVERIFY(b.builder.action("09(0)")->isVisible());
    QCOMPARE(b.builder.action("09(0)")->text(), QString("&1 C:\\Work"));

    // A grown array needs the bar made again.
    b.tree.addMember("LCZ", 2);
    b.tree.setCaption("LCZ(2)", "&Title");
    b.builder.rebuild();
    QVERIFY(b.builder.action("LCZ(2)"));
    QVERIFY(b.builder.action("LCZ(2)")->isVisible());
    QVERIFY(!b.builder.action("LCZ(1)")->isVisible());
    QCOMPARE(b.bar.actions().size(), 12);
}

void MenuBarBuilderTest::menusShutInsideAPump() {
    Bar b;
    int shut = 0;
    b.builder.setMenusShutHandler([&] { ++shut; });
    b.window.off = true;
    emit b.builder.menu("E")->aboutToShow();
    QCOMPARE(shut, 1);
    QVERIFY(!b.builder.menu("E")->menuAction()->isEnabled());
    b.builder.refresh();  // stays shut until "Enable Menus"
    QVERIFY(!b.builder.menu("E")->menuAction()->isEnabled());
    // A click while events are off leaves no trace.
    b.builder.action("EE")->trigger();
    QVERIFY(b.ran.isEmpty());
    QCOMPARE(QString::fromStdString(b.dispatch.lastMnuCode()), QString());
    b.window.off = false;
    b.builder.enableMenus();
    QVERIFY(b.builder.menu("E")->menuAction()->isEnabled());
}

void MenuBarBuilderTest::keysShowBehindCaptions() {
    Bar b;
    std::map<std::string, std::string> keys = {{"EE", "F5"}, {"F", "Alt+F"}};
    b.builder.setKeyTextSource([&](const std::string& code) {
        auto it = keys.find(code);
        return it == keys.end() ? std::string() : it->second;
    });
    b.builder.refresh();
    QCOMPARE(b.builder.action("EE")->text(), QString("Refres&h\tF5"));
    QCOMPARE(b.builder.action("F")->text(), QString("&File"));  // a menu title shows no key
    keys["EE"] = "Ctrl+R";
    emit b.builder.menu("E")->aboutToShow();
    QCOMPARE(b.builder.action("EE")->text(), QString("Refres&h\tCtrl+R"));
}

QTEST_MAIN(MenuBarBuilderTest)
#include "menu_bar_builder_test.moc"
