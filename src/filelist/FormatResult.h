#pragma once
// What a format mask gives: the text, or why the mask could not be applied.
#include <string>

namespace tav {

struct FormatResult {
    std::string text;
    std::string error;  // empty when the mask applied
    bool ok() const { return error.empty(); }
};

inline FormatResult formatFailure(std::string why) { return FormatResult{{}, std::move(why)}; }

}  // namespace tav
