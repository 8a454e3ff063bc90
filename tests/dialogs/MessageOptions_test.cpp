#include "dialogs/MessageOptions.h"

#include <gtest/gtest.h>

#include "dialogs/OptionBuilders.h"
#include "dialogs/PictureTable.h"
#include "core/AppError.h"

namespace tav {
namespace {

struct IconCase {
    const char* name;
    const char* options;
    MessageIcon icon;
    int defaultButton;
};

class OptionFlags : public ::testing::TestWithParam<IconCase> {};

TEST_P(OptionFlags, IconAndDefaultButtonFromNumbers) {
    const auto& c = GetParam();
    MessageOptions o = MessageOptions::parse(c.options);
    EXPECT_EQ(o.icon(), c.icon);
    EXPECT_EQ(o.defaultButton(), c.defaultButton);
}

INSTANTIATE_TEST_SUITE_P(
    Table, OptionFlags,
    ::testing::Values(IconCase{"Empty", "", MessageIcon::None, 1},
                      IconCase{"Critical", "16|", MessageIcon::Critical, 1},
                      IconCase{"Question", "32|", MessageIcon::Question, 1},
                      IconCase{"Exclamation", "48|", MessageIcon::Exclamation, 1},
                      IconCase{"Information", "64|", MessageIcon::Information, 1},
                      IconCase{"InformationWinsOverCritical", "80|", MessageIcon::Information, 1},
                      IconCase{"InformationWinsOverAll", "112|", MessageIcon::Information, 1},
                      IconCase{"NoPictureBit", "1|", MessageIcon::None, 1},
                      IconCase{"SecondDefault", "256|", MessageIcon::None, 2},
                      IconCase{"ThirdDefaultWithQuestion", "544|", MessageIcon::Question, 3},
                      IconCase{"NumberWithoutBar", "48", MessageIcon::Exclamation, 1},
                      IconCase{"NumberWithBlank", "32 ", MessageIcon::Question, 1},
                      IconCase{"TwoNumberItems", "16|256|", MessageIcon::Critical, 2},
                      IconCase{"DfltButtonBeatsFlags", "256|DfltButton=3|", MessageIcon::None, 3},
                      IconCase{"NamedItemsOnly", "TextBold|Esc=2|", MessageIcon::None, 1}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(MessageOptions, PrefixesCountOnlyAtTheStart) {
    EXPECT_TRUE(MessageOptions::parse("No show|").noShow());
    EXPECT_TRUE(MessageOptions::parse("IconFromForm|").iconFromForm());
    MessageOptions both = MessageOptions::parse("IconFromForm|No show|TextBold|");
    EXPECT_TRUE(both.noShow());
    EXPECT_TRUE(both.iconFromForm());
    EXPECT_TRUE(both.textBold());

    MessageOptions later = MessageOptions::parse("TextBold|No show|");
    EXPECT_FALSE(later.noShow());
    // Without its bar the prefix does not count either.
    EXPECT_FALSE(MessageOptions::parse("No show").noShow());
}

TEST(MessageOptions, ValuesSwitchesAndLists) {
    MessageOptions o = MessageOptions::parse(
        "Esc=3|FocBut=2|{BoldButts=1|3}|TextFont=Courier New|{Top, left of form=100|2000}|"
        "{Buttons gap/gap betw lines=60||300}|MBButtspec.MaxBpl=3|Controls under msg|{Fixed Height=900|-1}|");
    EXPECT_EQ(o.escButton(), 3);
    EXPECT_EQ(o.focusButton(), 2);
    EXPECT_EQ(o.boldButtons(), (std::vector<int>{1, 3}));
    EXPECT_TRUE(o.italicButtons().empty());
    EXPECT_EQ(o.textFont(), "Courier New");
    ASSERT_TRUE(o.topLeft());
    EXPECT_EQ(o.topLeft()->top, 100);
    EXPECT_EQ(o.topLeft()->left, 2000);
    ButtonGaps gaps = o.buttonGaps(false);
    EXPECT_EQ(gaps.between, 60);
    EXPECT_EQ(gaps.lines, 120);  // empty: the default stays
    EXPECT_EQ(gaps.above, 300);
    EXPECT_EQ(o.maxButtonsPerLine(), 3);
    EXPECT_TRUE(o.controlsUnderMessage());
    ASSERT_TRUE(o.fixedHeight());
    EXPECT_EQ(o.fixedHeight()->height, 900);
    EXPECT_TRUE(o.fixedHeight()->controlArea);
    EXPECT_FALSE(o.textBold());
    EXPECT_FALSE(o.has("Esc=3"));
}

TEST(MessageOptions, DefaultsWithoutOptions) {
    MessageOptions o = MessageOptions::parse("");
    EXPECT_EQ(o.maxButtonsPerLine(), 99);
    EXPECT_FALSE(o.escButton());
    EXPECT_EQ(o.buttonGaps(false).above, 240);
    EXPECT_EQ(o.buttonGaps(true).above, 120);
    EXPECT_FALSE(o.noHide());
    EXPECT_TRUE(o.items().empty());
}

TEST(MessageOptions, RepeatedKeyHidesAreAllKept) {
    MessageOptions o = MessageOptions::parse("{KeyHides=27|0}|Any Key Hides|{KeyHides=112|2}|");
    auto keys = o.keyHides();
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0].keyCode, 27);
    EXPECT_EQ(keys[1].keyCode, 112);
    EXPECT_EQ(keys[1].shift, 2);
    EXPECT_TRUE(o.anyKeyHides());
}

TEST(MessageOptions, NoHideAsSwitchOrWithText) {
    auto plain = MessageOptions::parse("NoHide|").noHide();
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->text, "");
    auto withText = MessageOptions::parse("{NoHide=Name is empty.|-1|0}|").noHide();
    ASSERT_TRUE(withText);
    EXPECT_EQ(withText->text, "Name is empty.");
    EXPECT_TRUE(withText->removeOthers);
    EXPECT_FALSE(withText->secondInstance);
}

TEST(MessageOptions, PlainNumberIsOneNumericItem) {
    MessageOptions o = MessageOptions::parse(64L + 512L);
    ASSERT_EQ(o.items().size(), 1u);
    EXPECT_TRUE(o.items()[0].isNumber);
    EXPECT_EQ(o.icon(), MessageIcon::Information);
    EXPECT_EQ(o.defaultButton(), 3);
}

TEST(OptionBuilders, EveryBuilderReadsBackThroughTheParser) {
    std::string all = mbopt::noShow() + mbopt::iconFromForm() + mbopt::flags(48) + mbopt::topLeftOfForm(10, 20) +
                      mbopt::maxButtonsPerLine(4) + mbopt::dfltButton(2) + mbopt::esc(3) + mbopt::focBut(1) +
                      mbopt::boldButts({1, 2}) + mbopt::itiButts({3}) + mbopt::undrButts({2}) +
                      mbopt::textBold() + mbopt::textSize(12) + mbopt::textFont("Arial") +
                      mbopt::buttonGaps(10, 20, 30) + mbopt::bNextToIcon() + mbopt::bUnderTextOnly() +
                      mbopt::controlsUnderMsg() + mbopt::noHide("Bad name", false, true) + mbopt::fixedWidth(5000) +
                      mbopt::fixedHeight(3000, false) + mbopt::defaultAndMinWidthPercent(54, 20000) +
                      mbopt::backColor(255) + mbopt::foreColor(65280) + mbopt::anyKeyHides() +
                      mbopt::keyHides(27, 1) + mbopt::buttonsAtBottom();
    MessageOptions o = MessageOptions::parse(all);
    EXPECT_TRUE(o.noShow());
    EXPECT_TRUE(o.iconFromForm());
    EXPECT_EQ(o.icon(), MessageIcon::Exclamation);
    EXPECT_EQ(o.topLeft()->left, 20);
    EXPECT_EQ(o.maxButtonsPerLine(), 4);
    EXPECT_EQ(o.defaultButton(), 2);
    EXPECT_EQ(o.escButton(), 3);
    EXPECT_EQ(o.focusButton(), 1);
    EXPECT_EQ(o.boldButtons(), (std::vector<int>{1, 2}));
    EXPECT_EQ(o.italicButtons(), (std::vector<int>{3}));
    EXPECT_EQ(o.underlinedButtons(), (std::vector<int>{2}));
    EXPECT_TRUE(o.textBold());
    EXPECT_EQ(o.textSize(), 12);
    EXPECT_EQ(o.textFont(), "Arial");
    EXPECT_EQ(o.buttonGaps(true).above, 30);
    EXPECT_TRUE(o.buttonsNextToIcon());
    EXPECT_TRUE(o.buttonsUnderTextOnly());
    EXPECT_TRUE(o.controlsUnderMessage());
    EXPECT_EQ(o.noHide()->text, "Bad name");
    EXPECT_TRUE(o.noHide()->secondInstance);
    EXPECT_EQ(o.fixedWidth(), 5000);
    EXPECT_FALSE(o.fixedHeight()->controlArea);
    EXPECT_EQ(o.defaultAndMinWidth(), 10800);
    EXPECT_EQ(o.backColor(), 255);
    EXPECT_EQ(o.foreColor(), 65280);
    EXPECT_TRUE(o.anyKeyHides());
    EXPECT_EQ(o.keyHides().at(0).shift, 1);
    EXPECT_TRUE(o.buttonsAtBottom());
}

TEST(OptionBuilders, SetPicTakesFreeSlotsAndRaisesWhenFull) {
    PictureTable table;
    MessageOptions o = MessageOptions::parse(mbopt::setPic(std::string("a.png"), table));
    ASSERT_EQ(o.pictureSlot(), 1);
    EXPECT_EQ(MessageOptions::parse(mbopt::setPic(std::string("b.png"), table)).pictureSlot(), 2);
    EXPECT_EQ(std::any_cast<std::string>(table.take(1)), "a.png");
    // The freed slot is the first free one again.
    EXPECT_EQ(MessageOptions::parse(mbopt::setPic(std::string("c.png"), table)).pictureSlot(), 1);
    while (table.used() < PictureTable::kSlots) table.put(1);
    try {
        mbopt::setPic(2, table);
        FAIL() << "a full table must raise";
    } catch (const AppError& e) {
        EXPECT_EQ(e.number(), 8172);
    }
}

}  // namespace
}  // namespace tav
