// The popup of a directory search at a file with a hit.
#include <gtest/gtest.h>

#include "dialogs/ControlSpec.h"
#include "find/FoundPopup.h"

using namespace tav;

namespace {

FoundHit hitAt() {
    FoundHit h;
    h.byteNumber = 120;
    h.value = "Smith";
    h.text = "... Peter Smith wrote ...";
    h.textStart = 110;
    h.textEnd = 134;
    return h;
}

TEST(FoundPopup, TheTextAroundTheHitWithTheValueSelected) {
    FoundPopup p = foundPopup("Look In: /a", hitAt(), false);
    EXPECT_EQ(p.request.message, "Find Look In: /a\rPart of Document containing Found Value: (Bytes shown: 110 to 134)");
    EXPECT_EQ(p.request.values[static_cast<size_t>(p.textBox)], "... Peter Smith wrote ...");
    const ControlSpec box = parseControlSpec(p.request.ctlSpecs[static_cast<size_t>(p.textBox)]);
    EXPECT_EQ(box.width(), 8000);
    EXPECT_EQ(box.selStart(), 10);
    EXPECT_EQ(box.selLength(), 5);
    EXPECT_EQ(p.request.buttons,
              "Find &Next File (F4)|Select Nex&t Value (F2)|&List All Files|&Edit Criteria|Le&gend|Sto&p");
    EXPECT_EQ(p.request.values.back().rfind("Click \"Select Next Value (F2)\" or Press F2", 0), 0u);
}

TEST(FoundPopup, WithOnlyOneValueThereIsNoNextValueButton) {
    FoundPopup p = foundPopup("x", hitAt(), true);
    EXPECT_EQ(p.nextValue, 0);
    EXPECT_EQ(p.request.buttons, "Find &Next File (F4)|&List All Files|&Edit Criteria|Le&gend|Sto&p");
    EXPECT_EQ(p.request.values.back().rfind("** Only One Value found in this document **\r", 0), 0u);
    const struct {
        int button;
        FoundPopupChoice choice;
    } answers[] = {{1, FoundPopupChoice::NextFile},     {2, FoundPopupChoice::ListAll},
                   {3, FoundPopupChoice::EditCriteria}, {4, FoundPopupChoice::Legend},
                   {5, FoundPopupChoice::Stop},         {-2, FoundPopupChoice::Stop}};
    for (const auto& a : answers) EXPECT_EQ(p.choice(a.button), a.choice) << a.button;
}

}  // namespace
