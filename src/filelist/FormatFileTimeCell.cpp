#include "filelist/FormatFileTimeCell.h"

#include <array>
#include <vector>

#include "filelist/FormatCellPut.h"
#include "filelist/FormatDateMask.h"
#include "filelist/FormatMaskCache.h"

namespace tav {

// A mask read into steps; `plain` false when it is not a plain mask.
struct PlainDateMask {
    enum class Op : unsigned char {
        Literal, Day, Day2, Month, Month2, MonthShort, Year2, Year4, Hour, Hour2, Minute, Minute2, Second, Second2, AmPm
    };
    struct Step {
        Op op;
        char text[5] = {};  // Literal: the character; AmPm: "AM" and "PM" as the mask writes them
    };
    bool plain = false;
    bool twelveHour = false;
    std::vector<Step> steps;
};

namespace {

constexpr std::array<const char*, 12> kMonthShort = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

using Plan = PlainDateMask;
using Op = PlainDateMask::Op;
using Step = PlainDateMask::Step;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }

bool isSeparator(char c) { return c == ' ' || c == '/' || c == '-' || c == '.' || c == ':' || c == ','; }

bool isHour(Op op) { return op == Op::Hour || op == Op::Hour2; }
bool isSecond(Op op) { return op == Op::Second || op == Op::Second2; }

Plan readPlan(std::string_view mask) {
    Plan plan;
    bool any = false;
    std::size_t i = 0;
    while (i < mask.size()) {
        const char c = mask[i];
        if (isSeparator(c)) {
            Step s{Op::Literal};
            s.text[0] = c;
            plan.steps.push_back(s);
            ++i;
            continue;
        }
        const char l = lower(c);
        if (l == 'a') {
            // AM/PM only, in any case; A/P and AMPM go the long way.
            if (mask.size() - i < 5 || lower(mask[i + 1]) != 'm' || mask[i + 2] != '/' || lower(mask[i + 3]) != 'p' ||
                lower(mask[i + 4]) != 'm')
                return Plan{};
            Step s{Op::AmPm};
            s.text[0] = isUpper(mask[i]) ? 'A' : 'a';
            s.text[1] = isUpper(mask[i + 1]) ? 'M' : 'm';
            s.text[2] = isUpper(mask[i + 3]) ? 'P' : 'p';
            s.text[3] = isUpper(mask[i + 4]) ? 'M' : 'm';
            plan.steps.push_back(s);
            plan.twelveHour = true;
            any = true;
            i += 5;
            continue;
        }
        std::size_t run = 0;
        while (i + run < mask.size() && lower(mask[i + run]) == l) ++run;
        Op op;
        switch (l) {
            case 'd':
                if (run > 2) return Plan{};
                op = run == 1 ? Op::Day : Op::Day2;
                break;
            case 'm':
                if (run > 3) return Plan{};
                op = run == 1 ? Op::Month : run == 2 ? Op::Month2 : Op::MonthShort;
                break;
            case 'y':
                if (run != 2 && run != 4) return Plan{};
                op = run == 2 ? Op::Year2 : Op::Year4;
                break;
            case 'h':
                if (run > 2) return Plan{};
                op = run == 1 ? Op::Hour : Op::Hour2;
                break;
            case 'n':
                if (run > 2) return Plan{};
                op = run == 1 ? Op::Minute : Op::Minute2;
                break;
            case 's':
                if (run > 2) return Plan{};
                op = run == 1 ? Op::Second : Op::Second2;
                break;
            default: return Plan{};
        }
        plan.steps.push_back(Step{op});
        any = true;
        i += run;
    }
    if (!any) return Plan{};
    // `m` and `mm` are minutes right after an hour or right before seconds,
    // the nearest parts on either side, separators skipped.
    auto neighbour = [&plan](std::size_t k, int step) -> const Step* {
        for (long j = static_cast<long>(k) + step; j >= 0 && j < static_cast<long>(plan.steps.size()); j += step)
            if (plan.steps[static_cast<std::size_t>(j)].op != Op::Literal) return &plan.steps[static_cast<std::size_t>(j)];
        return nullptr;
    };
    for (std::size_t k = 0; k < plan.steps.size(); ++k) {
        Step& s = plan.steps[k];
        if (s.op != Op::Month && s.op != Op::Month2) continue;
        const Step* before = neighbour(k, -1);
        const Step* after = neighbour(k, 1);
        if ((before && isHour(before->op)) || (after && isSecond(after->op)))
            s.op = s.op == Op::Month ? Op::Minute : Op::Minute2;
    }
    plan.plain = true;
    return plan;
}

const Plan& planFor(std::string_view mask) {
    thread_local MaskCache<Plan> cache;
    return cache.get(mask, readPlan);
}

void writePlain(const CivilDateTime& v, const Plan& plan, std::string& out) {
    char text[64];
    std::size_t n = 0;
    auto put = [&](char c) {
        if (n < sizeof text) text[n++] = c;
    };
    auto number = [&](int value) {
        if (value >= 10) put(static_cast<char>('0' + value / 10 % 10));
        put(static_cast<char>('0' + value % 10));
    };
    auto two = [&](int value) {
        put(static_cast<char>('0' + value / 10 % 10));
        put(static_cast<char>('0' + value % 10));
    };
    const int hour = plan.twelveHour ? (v.hour % 12 == 0 ? 12 : v.hour % 12) : v.hour;
    for (const Step& s : plan.steps) {
        if (n + 8 > sizeof text) {
            out.append(text, n);
            n = 0;
        }
        switch (s.op) {
            case Op::Literal: put(s.text[0]); break;
            case Op::Day: number(v.day); break;
            case Op::Day2: two(v.day); break;
            case Op::Month: number(v.month); break;
            case Op::Month2: two(v.month); break;
            case Op::MonthShort:
                for (int k = 0; k < 3; ++k) put(kMonthShort[static_cast<std::size_t>(v.month - 1)][k]);
                break;
            case Op::Year2: two(v.year % 100); break;
            case Op::Year4:
                two(v.year / 100);
                two(v.year % 100);
                break;
            case Op::Hour: number(hour); break;
            case Op::Hour2: two(hour); break;
            case Op::Minute: number(v.minute); break;
            case Op::Minute2: two(v.minute); break;
            case Op::Second: number(v.second); break;
            case Op::Second2: two(v.second); break;
            case Op::AmPm:
                put(s.text[v.hour < 12 ? 0 : 2]);
                put(s.text[v.hour < 12 ? 1 : 3]);
                break;
        }
    }
    out.append(text, n);
}

}  // namespace

bool plainDateMaskText(const CivilDateTime& v, std::string_view mask, std::string& out) {
    if (!isValidCivil(v)) return false;
    const Plan& plan = planFor(mask);
    if (!plan.plain) return false;
    writePlain(v, plan, out);
    return true;
}

CivilDateTime fileTimePart(const CivilDateTime& when, FileTimePart part) {
    CivilDateTime out;  // 30 December 1899, midnight
    if (part == FileTimePart::Date) {
        out.year = when.year;
        out.month = when.month;
        out.day = when.day;
    } else {
        out.hour = when.hour;
        out.minute = when.minute;
        out.second = when.second;
    }
    return out;
}

std::string fileTimeValueText(const CivilDateTime& when, FileTimePart part) {
    FormatResult r = formatDateTime(when, part == FileTimePart::Date ? kListDateMask : kListTimeMask);
    return r.ok() ? std::move(r.text) : std::string();
}

std::string fileTimeCell(const CivilDateTime& when, FileTimePart part, std::string_view mask) {
    if (!isValidCivil(when)) return {};
    std::string out;
    if (!mask.empty() && plainDateMaskText(fileTimePart(when, part), mask, out)) return out;
    return displayFromKey(fileTimeValueText(when, part), mask);
}

FileTimeCellMask::FileTimeCellMask(std::string_view mask) : mask_(mask) {
    auto plan = std::make_shared<PlainDateMask>(readPlan(mask));
    if (plan->plain) plain_ = std::move(plan);
}

std::string FileTimeCellMask::cell(const CivilDateTime& when, FileTimePart part) const {
    if (!isValidCivil(when)) return {};
    std::string out;
    if (plain_) {
        writePlain(fileTimePart(when, part), *plain_, out);
        return out;
    }
    return displayFromKey(fileTimeValueText(when, part), mask_);
}

}  // namespace tav
