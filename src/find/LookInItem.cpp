#include "find/LookInItem.h"

#include "core/ListText.h"
#include "find/ComplexCriteria.h"
#include "find/EscapeSequence.h"

namespace tav {

std::string buildLookInItem(const LookInItem& item) {
    std::string v = replaceAllOf(item.value, "{", "::**");
    v = replaceAllOf(v, "}", "**::");
    v = replaceAllOf(v, "|", "\"");
    return joinList({v, storedFlag(item.divider)});
}

LookInItem parseLookInItem(std::string_view text) {
    auto items = splitItems(text);
    LookInItem item;
    std::string v = items.empty() ? std::string() : items[0];
    v = replaceAllOf(v, "\"", "|");
    v = replaceAllOf(v, "**::", "}");
    item.value = replaceAllOf(v, "::**", "{");
    item.divider = items.size() > 1 && textIsTrue(items[1]);
    return item;
}

}  // namespace tav
