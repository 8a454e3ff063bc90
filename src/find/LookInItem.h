#pragma once
// An item of the Look In box: a list whose first element is the value (a
// directory or a "|" list of them) and whose second is true for a divider
// line. Inside an item "{" is written "::**", "}" "**::" and "|" '"'.
#include <string>
#include <string_view>

namespace tav {

struct LookInItem {
    std::string value;
    bool divider = false;
    bool operator==(const LookInItem&) const = default;
};

std::string buildLookInItem(const LookInItem& item);
LookInItem parseLookInItem(std::string_view text);

}  // namespace tav
