#include "dialogs/ErrorHandler.h"

#include <gtest/gtest.h>

#include "core/AppError.h"
#include "dialogs/ErrorLog.h"
#include "support/ScriptedErrorScreen.h"
#include "support/TempDir.h"

namespace tav {
namespace {

std::chrono::system_clock::time_point fixedTime() {
    std::tm tm{};
    tm.tm_year = 2026 - 1900;
    tm.tm_mon = 10;
    tm.tm_mday = 23;
    tm.tm_hour = 9;
    tm.tm_min = 5;
    tm.tm_sec = 7;
    tm.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&tm));
}

class ErrorHandlerTest : public ::testing::Test {
protected:
    tavtest::TempDir dir;
    tavtest::ScriptedErrorScreen screen;
    int ends = 0;
    ErrorHandler handler{screen, [this] { ++ends; }, "Tavelo"};
    std::string log = (dir / "err.log").string();
    std::string fallback = (dir / "TavErr.LOG").string();
    ErrorPlace place{"fMnu_EDK_Click", "File List 1", "fFDgrid", "Grid"};

    void SetUp() override {
        handler.setFallbackLog(fallback);
        handler.setErrorLog(log);
        handler.setClock(fixedTime);
    }
};

TEST_F(ErrorHandlerTest, LogsTheBlockAndShowsItWithThePressLine) {
    EXPECT_EQ(handler.handle(ErrorInfo{5, "Invalid procedure call", 0}, place), ErrorOutcome::ActionEnded);
    const std::string block =
        "<<<ERROR IN PROGRAM>>>\n"
        "Runtime reports Error:<<5 - Invalid procedure call>>.\n"
        "Proc: fMnu_EDK_Click\n"
        "Form: File List 1\n"
        "Control: fFDgrid / Unrecognised.\n"
        "Error Logged at >> 2026-11-23 09:05:07 << to file >>" + log + "<<\n";
    EXPECT_EQ(tavtest::readFile(log), block);
    ASSERT_EQ(screen.errors.size(), 1u);
    std::string shown = block;
    for (char& c : shown)
        if (c == '\n') c = '\r';
    shown += " Press OK to terminate this Action and continue. Press Cancel to end this system.";
    EXPECT_EQ(screen.errors[0], shown);
    EXPECT_EQ(screen.boxesClosed, 1);
    EXPECT_EQ(ends, 0);

    // A second report is appended behind the first.
    handler.handle(ErrorInfo{9, "Subscript out of range", 2}, ErrorPlace{"Timer1_Timer", "", "", ""});
    std::string both = tavtest::readFile(log);
    EXPECT_EQ(both.substr(0, block.size()), block);
    EXPECT_NE(both.find("Runtime reports Error:<<9 - Subscript out of range>>.<<2 - Windows Error>>.\n"
                        "Proc: Timer1_Timer\nForm: Form Not defined\nControl: Not defined\n"),
              std::string::npos);
}

TEST_F(ErrorHandlerTest, StandardControlKindsAreNamed) {
    EXPECT_EQ(controlKindName("TextBox"), "TextBox");
    EXPECT_EQ(controlKindName("VScrollBar"), "VScrollBar");
    EXPECT_EQ(controlKindName("textbox"), "Unrecognised.");
    EXPECT_EQ(controlKindName(""), "Unrecognised.");
}

TEST_F(ErrorHandlerTest, UserStopIsNeitherLoggedNorShown) {
    EXPECT_EQ(handler.handle(AppError(kUserStop, "Stopped by user"), place), ErrorOutcome::Ignored);
    EXPECT_FALSE(std::filesystem::exists(log));
    EXPECT_FALSE(std::filesystem::exists(fallback));
    EXPECT_TRUE(screen.errors.empty());
}

TEST_F(ErrorHandlerTest, EmptyLogNameUsesTheFallbackAndSaysSo) {
    handler.setErrorLog("*** not found ***");
    EXPECT_EQ(handler.errorLog(), "");
    handler.handle(ErrorInfo{11, "Division by zero", 0}, place);
    std::string text = tavtest::readFile(fallback);
    EXPECT_NE(text.find("to file >>" + fallback + "<< Also: gPAFN_Errorlog not set, error log written to " +
                        fallback + ".\n"),
              std::string::npos);
    EXPECT_NE(screen.errors.at(0).find(" Also: gPAFN_Errorlog not set"), std::string::npos);
}

TEST_F(ErrorHandlerTest, UnwritableLogFallsBack) {
    handler.setErrorLog((dir / "no such dir" / "err.log").string());
    EXPECT_EQ(handler.handle(ErrorInfo{53, "File not found", 0}, place), ErrorOutcome::ActionEnded);
    EXPECT_NE(tavtest::readFile(fallback).find("to file >>" + fallback + "<< Also:"), std::string::npos);
    EXPECT_EQ(ends, 0);
}

TEST_F(ErrorHandlerTest, NoWritableLogAtAllIsTheHandlersOwnFailure) {
    handler.setErrorLog("");
    handler.setFallbackLog((dir / "missing" / "TavErr.LOG").string());
    EXPECT_EQ(handler.handle(ErrorInfo{53, "File not found", 0}, place), ErrorOutcome::SystemEnded);
    EXPECT_EQ(ends, 1);
    ASSERT_EQ(screen.notices.size(), 1u);
    EXPECT_EQ(screen.noticeTitles[0], "Error");
    EXPECT_NE(screen.notices[0].find("in ErrorHandler"), std::string::npos);
    EXPECT_NE(screen.notices[0].find("Error Handler did not process an error correctly. Possibly check "),
              std::string::npos);
    EXPECT_NE(screen.notices[0].find("Program will now be stopped."), std::string::npos);
}

TEST_F(ErrorHandlerTest, AnErrorInsideTheHandlerEndsWithoutLooping) {
    int inner = 0;
    screen.onError = [&] {
        if (++inner > 3) return;  // a loop would come back here
        handler.handle(ErrorInfo{91, "Object variable not set", 0}, ErrorPlace{"fMainTmr_Timer", "", "", ""});
    };
    handler.handle(ErrorInfo{5, "Invalid procedure call", 0}, place);
    EXPECT_EQ(inner, 1);
    EXPECT_EQ(ends, 1);
    ASSERT_EQ(screen.notices.size(), 1u);
    EXPECT_EQ(screen.notices[0],
              "Error 91 - Object variable not set in ErrorHandler\r"
              "Error Handler did not process an error correctly. Possibly check \r"
              " the Errorlog path is not set to an incorrect drive mapping in the INI file.\r"
              "Program will now be stopped.\r" +
                  fallback);
    // The report that was under way was logged once; the failure went to the fallback log.
    EXPECT_NE(tavtest::readFile(fallback).find("Error 91 - Object variable not set in ErrorHandler"),
              std::string::npos);
    // Once out, the handler takes reports again.
    screen.onError = nullptr;
    EXPECT_EQ(handler.handle(ErrorInfo{5, "again", 0}, place), ErrorOutcome::ActionEnded);
}

TEST_F(ErrorHandlerTest, CancelThenYesEndsTheSystem) {
    screen.errorAnswers = {false};
    screen.endAnswers = {true};
    EXPECT_EQ(handler.handle(ErrorInfo{5, "x", 0}, place), ErrorOutcome::SystemEnded);
    EXPECT_EQ(ends, 1);
    ASSERT_EQ(screen.asks.size(), 1u);
    EXPECT_EQ(screen.asks[0],
              "To 'debug now press break. Yes will end system, Cancel will continue (same as press OK on error "
              "screen).");
    EXPECT_EQ(screen.notices, (std::vector<std::string>{kSystemEndText}));
}

TEST_F(ErrorHandlerTest, CancelThenCancelIsLikeOk) {
    screen.errorAnswers = {false};
    screen.endAnswers = {false};
    EXPECT_EQ(handler.handle(ErrorInfo{5, "x", 0}, place), ErrorOutcome::ActionEnded);
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(screen.boxesClosed, 1);
}

TEST_F(ErrorHandlerTest, FormLoadPaintAndComboSkipTheStep) {
    for (const char* proc : {"Form_Load", "LHform.Form_Paint"}) {
        screen.errors.clear();
        EXPECT_EQ(handler.handle(ErrorInfo{5, "x", 0}, ErrorPlace{proc, "", "", ""}), ErrorOutcome::SkipStep);
        EXPECT_NE(screen.errors.at(0).find(std::string("Proc: ") + proc +
                                           " - This module will skip the current step and continue.\r"),
                  std::string::npos);
    }
    EXPECT_EQ(handler.handle(ErrorInfo{5, "x", 0}, ErrorPlace{"fCombo_Click", "", "fComboBox(2)", "ComboBox"}),
              ErrorOutcome::SkipStep);
    // The log keeps the plain block.
    EXPECT_EQ(tavtest::readFile(log).find("skip the current step"), std::string::npos);
}

TEST_F(ErrorHandlerTest, ModesLogOnlyAndShowOnly) {
    EXPECT_EQ(handler.handle(ErrorInfo{5, "quiet", 0}, place, -1), ErrorOutcome::ActionEnded);
    EXPECT_TRUE(screen.errors.empty());
    EXPECT_NE(tavtest::readFile(log).find("5 - quiet"), std::string::npos);
    handler.handle(ErrorInfo{6, "shown", 0}, place, -2);
    EXPECT_EQ(screen.errors.size(), 1u);
    EXPECT_EQ(tavtest::readFile(log).find("6 - shown"), std::string::npos);
}

TEST_F(ErrorHandlerTest, AppErrorBringsItsProcedure) {
    handler.handle(AppError(9712, "List control", "MBAddListItem"), ErrorPlace{});
    EXPECT_NE(tavtest::readFile(log).find("Runtime reports Error:<<9712 - List control>>.\nProc: MBAddListItem\n"),
              std::string::npos);
}

TEST(ErrorLog, FallbackNameAndNote) {
    std::string f = fallbackErrorLog();
    EXPECT_TRUE(f.ends_with("TavErr.LOG"));
    EXPECT_EQ(fallbackLogNote("/tmp/TavErr.LOG"), " Also: gPAFN_Errorlog not set, error log written to /tmp/TavErr.LOG.");
    EXPECT_EQ(errorLogName("*** not found ***"), "");
    EXPECT_EQ(errorLogName("/var/log/t.log"), "/var/log/t.log");
}

}  // namespace
}  // namespace tav
