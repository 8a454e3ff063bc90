// The formats prompt: asked again after a wrong mask, the question for a
// size mask that cannot be read back, and Cancel.
#include <gtest/gtest.h>

#include <string>

#include "filelist/FormatChecks.h"
#include "filelist/FormatEditPrompt.h"
#include "support/ScriptedHost.h"

namespace {

const tav::WindowFormats kCurrent{"dd mmm yyyy", "hh:nn", "#,##0"};

// Types the three masks into the prompt's text boxes and presses a button.
auto typeMasks(std::string date, std::string time, std::string size, int button = 1) {
    return [=](tav::MessageRequest& r) {
        int box = 0;
        for (std::size_t k = 1; k < r.ctlSpecs.size(); ++k) {
            if (r.ctlSpecs[k].rfind("TextBox", 0) != 0) continue;
            r.values[k] = box == 0 ? date : box == 1 ? time : size;
            ++box;
        }
        return button;
    };
}

TEST(EditFormats, CancelKeepsTheFormats) {
    tavtest::ScriptedHost host;
    host.answerWith(typeMasks("yyyy", "hh", "0", 2));
    const tav::EditFormatsOutcome out = tav::EditFormats(host, kCurrent);
    EXPECT_FALSE(out.changed);
    ASSERT_EQ(host.asked().size(), 1u);
    const tav::MessageRequest& r = host.asked()[0];
    EXPECT_EQ(r.message, "Enter new formats and press OK to reformat data.\rPress Cancel to keep existing formats.");
    EXPECT_EQ(r.title, "- [Enter Formats]");
    EXPECT_EQ(r.buttons, "1");
    // The boxes start with the window's masks, under their labels.
    std::string shown;
    for (std::size_t k = 1; k < r.values.size(); ++k) shown += r.values[k] + ";";
    EXPECT_EQ(shown, "Date Format [a]:;dd mmm yyyy;Time Format [t]:;hh:nn;FileSize Format [z]:;#,##0;");
}

TEST(EditFormats, WrongMaskIsToldAndAskedAgainWithWhatWasTyped) {
    tavtest::ScriptedHost host;
    host.answerWith(typeMasks("dd/mm/yy", "0.00", "#,##0"));
    host.answer(1);  // OK to the message
    host.answerWith([](tav::MessageRequest& r) {
        // The prompt shows again with the masks as typed.
        EXPECT_EQ(r.values[4], "0.00");
        return typeMasks("dd/mm/yy", "hh:mm AM/PM", "#,##0")(r);
    });
    const tav::EditFormatsOutcome out = tav::EditFormats(host, kCurrent);
    ASSERT_TRUE(out.changed);
    EXPECT_EQ(out.formats.date, "dd/mm/yy");
    EXPECT_EQ(out.formats.time, "hh:mm AM/PM");
    EXPECT_TRUE(out.showByteTotals);
    ASSERT_EQ(host.asked().size(), 3u);
    EXPECT_EQ(host.asked()[1].message, tav::timeFormatProblem("0.00"));
}

TEST(EditFormats, IrreversibleSizeKeptOnYesWithoutTotals) {
    tavtest::ScriptedHost host;
    host.answerWith(typeMasks("dd mmm yyyy", "hh:nn", "#,##0K"));
    host.answer(1);  // Yes
    const tav::EditFormatsOutcome out = tav::EditFormats(host, kCurrent);
    ASSERT_TRUE(out.changed);
    EXPECT_EQ(out.formats.size, "#,##0K");
    EXPECT_FALSE(out.showByteTotals);
    ASSERT_EQ(host.asked().size(), 2u);
    EXPECT_EQ(host.asked()[1].message, tav::sizeNotReversiblePrompt("#,##0K"));
    EXPECT_EQ(host.asked()[1].buttons, "4");
}

TEST(EditFormats, IrreversibleSizeOnNoReturnsToThePrompt) {
    tavtest::ScriptedHost host;
    host.answerWith(typeMasks("dd mmm yyyy", "hh:nn", "#,##0K"));
    host.answer(2);  // No
    host.answerWith(typeMasks("dd mmm yyyy", "hh:nn", "#,##0"));
    const tav::EditFormatsOutcome out = tav::EditFormats(host, kCurrent);
    ASSERT_TRUE(out.changed);
    EXPECT_EQ(out.formats.size, "#,##0");
    EXPECT_TRUE(out.showByteTotals);
    EXPECT_EQ(host.asked().size(), 3u);
}

}  // namespace
