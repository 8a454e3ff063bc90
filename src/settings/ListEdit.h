#pragma once
// Adding to a stored "|" list, optionally refusing an item already there.
#include <string>
#include <string_view>

#include "core/MessageRequest.h"

namespace tav {

inline constexpr std::string_view kItemExists = "Item already exists. List can contain unique items only.";

// Appends `item` to `list` (joined in the given bracket style). With
// `unique`, an item already in the list is refused: the message is shown
// through `host` (when given) and false is returned.
bool addListItem(std::string& list, const std::string& item, bool unique, MessageHost* host,
                 std::string_view brackets = "{}");

}  // namespace tav
