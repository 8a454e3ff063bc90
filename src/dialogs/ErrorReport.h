#pragma once
// The text of an error report: the block that goes to the log and onto the
// error screen.
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

struct ErrorInfo {
    int number = 0;
    std::string text;      // empty: a generic text
    int systemError = 0;   // the platform's error code, if one came with it
};

// Where it happened; the UI supplies the form and control names.
struct ErrorPlace {
    std::string procedure;    // as "fMnu_EDK_Click"
    std::string form;         // caption or name; empty: "Form Not defined"
    std::string control;      // active control with its index; empty: "Not defined"
    std::string controlKind;  // its kind, as "TextBox"; checked against the standard kinds
};

// The kind as the report shows it: one of the standard control kinds, or
// "Unrecognised.".
std::string controlKindName(std::string_view kind);

// "YYYY-MM-DD HH:MM:SS" in local time.
std::string errorTimeStamp(std::chrono::system_clock::time_point when);

// The six lines of the block; logName is the log the block goes to.
std::vector<std::string> errorBlockLines(const ErrorInfo& error, const ErrorPlace& place,
                                         std::string_view timeStamp, std::string_view logName);

// Lines joined with CR, the way messages are built.
std::string joinLines(const std::vector<std::string>& lines);

}  // namespace tav
