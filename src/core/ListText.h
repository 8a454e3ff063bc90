#pragma once
// "|" lists: elements separated by a separator, with a bracket pair around
// an element that holds the separator. Two styles: brackets ("{}", or any
// two different non-blank characters) and plain ("Do not exclude any part").
#include <string>
#include <string_view>
#include <vector>

namespace tav {

inline constexpr std::string_view kPlainListStyle = "Do not exclude any part";
inline constexpr std::string_view kNotFoundText = "*** not found ***";
inline constexpr int kNotFoundNumber = 31313;

struct ListSplit {
    std::vector<std::string> items;  // the elements, in order
    std::string rest;                // the unsplit rest when a limit stopped the split
};

// Splits text into its elements. An empty text gives one empty element.
// brackets: "{}" (or two other characters) for the bracket style, or
// kPlainListStyle. limit > 0 stops after that many elements, leaving the rest.
ListSplit splitList(std::string_view text, std::string_view separator = "|",
                    std::string_view brackets = "{}", int limit = 0);

// Convenience: the elements only.
std::vector<std::string> splitItems(std::string_view text, std::string_view separator = "|",
                                    std::string_view brackets = "{}");

// Element n (from 1) of a list; empty beyond the end.
std::string listElement(std::string_view text, int n, std::string_view separator = "|",
                        std::string_view brackets = "{}");

// Joins elements so that splitList with the same arguments gives them back.
std::string joinList(const std::vector<std::string>& items, std::string_view separator = "|",
                     std::string_view brackets = "{}");

// The first sequence of `length` (1 to 3) characters with codes 33 to 254
// that `text` does not hold; `skip` characters are never used. Empty if none.
std::string unusedSequence(std::string_view text, int length, std::string_view skip = {});

// A text tested as a flag: false only for "", "0" and "False" (after trimming).
bool textIsTrue(std::string_view text);

}  // namespace tav
