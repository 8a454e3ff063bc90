#include "find/FindOptions.h"

#include <vector>

#include "core/ListText.h"
#include "find/ComplexCriteria.h"

namespace tav {

namespace {

std::vector<std::string> fieldsOf(std::string_view text, size_t count) {
    std::vector<std::string> f = splitItems(text, "|", "{}");
    if (f.size() < count) f.resize(count);
    return f;
}

}  // namespace

FindSwitches parseFindSwitches(std::string_view text) {
    auto f = fieldsOf(text, 3);
    FindSwitches s;
    s.showPopup = textIsTrue(f[0]);
    s.promptAtEnd = textIsTrue(f[1]);
    s.onceOnly = f[2];
    return s;
}

std::string buildFindSwitches(const FindSwitches& s) {
    return joinList({storedFlag(s.showPopup), storedFlag(s.promptAtEnd), s.onceOnly});
}

FindOptions parseFindOptions(std::string_view text) {
    auto f = fieldsOf(text, 8);
    FindOptions o;
    o.includeSubdirs = textIsTrue(f[0]);
    o.field2 = f[1];
    o.maxBytes = leadingNumber(f[2]);
    o.keepAllRejected = textIsTrue(f[3]);
    o.showFoundValue = textIsTrue(f[4]);
    o.showFoundAt = textIsTrue(f[5]);
    o.showFoundText = textIsTrue(f[6]);
    o.lastCriteriaRow = leadingNumber(f[7]);
    return o;
}

std::string buildFindOptions(const FindOptions& o) {
    return joinList({storedFlag(o.includeSubdirs), o.field2, std::to_string(o.maxBytes),
                     storedFlag(o.keepAllRejected), storedFlag(o.showFoundValue), storedFlag(o.showFoundAt),
                     storedFlag(o.showFoundText), std::to_string(o.lastCriteriaRow)});
}

int64_t roundMaxBytes(int64_t value) {
    if (value > 2147473647) return kMaxSearchBytes;
    if (value <= 0) return value;
    return ((value - 1) / 10000 + 1) * 10000;
}

}  // namespace tav
