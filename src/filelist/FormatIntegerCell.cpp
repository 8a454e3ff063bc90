#include "filelist/FormatIntegerCell.h"

#include "filelist/FormatCellPut.h"
#include "filelist/FormatMaskCache.h"

namespace tav {

namespace {

// What a plain mask asks for: how many digits are always shown, and whether
// thousands are grouped.
struct Plan {
    bool plain = false;
    bool grouping = false;
    std::size_t zeroRun = 0;  // placeholders from the first `0` to the end
};

Plan readPlan(std::string_view mask) {
    Plan plan;
    if (mask.empty() || mask.front() == ',' || mask.back() == ',') return plan;
    std::size_t placeholders = 0;
    std::size_t firstZeroAt = std::string_view::npos;  // in placeholders
    for (const char c : mask) {
        if (c == ',') {
            plan.grouping = true;
        } else if (c == '0' || c == '#') {
            if (c == '0' && firstZeroAt == std::string_view::npos) firstZeroAt = placeholders;
            ++placeholders;
        } else {
            return plan;
        }
    }
    plan.zeroRun = firstZeroAt == std::string_view::npos ? 0 : placeholders - firstZeroAt;
    plan.plain = true;
    return plan;
}

const Plan& planFor(std::string_view mask) {
    thread_local MaskCache<Plan> cache;
    return cache.get(mask, readPlan);
}

}  // namespace

namespace {

// The digits of a value of 0 or more, at least `zeroRun` of them, grouped
// by thousands if asked.
void writePlain(std::int64_t value, bool grouping, std::size_t zeroRun, std::string& out) {
    char digits[24];
    std::size_t n = 0;
    for (std::uint64_t v = static_cast<std::uint64_t>(value); v > 0; v /= 10)
        digits[n++] = static_cast<char>('0' + v % 10);
    while (n < zeroRun) digits[n++] = '0';
    // digits[] holds them from the right.
    char text[32];
    std::size_t length = 0;
    for (std::size_t k = n; k > 0; --k) {
        text[length++] = digits[k - 1];
        if (grouping && k - 1 > 0 && (k - 1) % 3 == 0) text[length++] = ',';
    }
    out.append(text, length);
}

}  // namespace

bool plainIntegerMaskText(std::int64_t value, std::string_view mask, std::string& out) {
    if (value < 0) return false;
    const Plan& plan = planFor(mask);
    if (!plan.plain || plan.zeroRun > 20) return false;  // longer ones go the long way
    writePlain(value, plan.grouping, plan.zeroRun, out);
    return true;
}

std::string integerCell(std::int64_t value, std::string_view mask) {
    std::string out;
    if (!mask.empty() && plainIntegerMaskText(value, mask, out)) return out;
    return displayFromKey(std::to_string(value), mask);
}

IntegerCellMask::IntegerCellMask(std::string_view mask) : mask_(mask) {
    const Plan plan = readPlan(mask);
    plain_ = plan.plain && plan.zeroRun <= 20;
    grouping_ = plan.grouping;
    zeroRun_ = plan.zeroRun;
}

std::string IntegerCellMask::cell(std::int64_t value) const {
    std::string out;
    if (plain_ && value >= 0) {
        writePlain(value, grouping_, zeroRun_, out);
        return out;
    }
    return displayFromKey(std::to_string(value), mask_);
}

}  // namespace tav
