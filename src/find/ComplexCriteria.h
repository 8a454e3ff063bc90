#pragma once
// The complex criteria string: further values, exclusions, line and range
// conditions. Stored as fields joined by "~" (with "[" "]" as group
// characters), each list joined by "#"; delimiters inside values are put
// back through substitutes kept at the end of the string.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

struct ComplexCriteria {
    std::vector<std::string> values;             // or(   further values to find
    std::vector<std::string> exclude;            // -(
    std::vector<std::string> excludeLineStarts;  // -L( / -LG(
    std::vector<std::string> excludeSameLine;    // -S(
    std::vector<std::string> excludeRange;       // -Rnn(
    std::vector<std::string> includeLineStarts;  // +L( / +LG(
    std::vector<std::string> includeSameLine;    // +S(
    std::vector<std::string> includeRange;       // +Rnn(
    int64_t restrictLine = 0;       // bytes a line start or end may lie from the hit; 0: 1000 when searching
    int64_t excludeRangeBytes = 0;
    int64_t includeRangeBytes = 0;
    bool excludeStartIgnoreSpaces = false;
    bool includeStartIgnoreSpaces = false;

    // True when no list holds a value.
    bool empty() const;
    // Only the values to find and the exclude values (what a list, tree or
    // Top List search can use: those have no lines).
    ComplexCriteria withoutLineAndRange() const;
    bool operator==(const ComplexCriteria&) const = default;
};

// Reads a complex criteria string; an empty text gives empty criteria.
// Empty list elements are dropped.
ComplexCriteria parseComplexCriteria(std::string_view text);
// The inverse; empty criteria give the empty text.
std::string buildComplexCriteria(const ComplexCriteria& c);

// A number held as text: its leading digits (with a sign), 0 when none.
int64_t leadingNumber(std::string_view text);
// A flag as stored: "-1" or "0".
inline const char* storedFlag(bool b) { return b ? "-1" : "0"; }

}  // namespace tav
