#include "find/FileFindRecord.h"

#include <vector>

#include "core/ListText.h"
#include "find/ComplexCriteria.h"
#include "find/EscapeSequence.h"

namespace tav {

namespace {

constexpr size_t kFixedFields = 14;

std::optional<int64_t> dayOf(const std::string& s) {
    if (s.empty()) return std::nullopt;
    return leadingNumber(s);
}

std::string dayText(const std::optional<int64_t>& d) { return d ? std::to_string(*d) : std::string(); }

}  // namespace

bool FileFindRecord::hasNamePattern() const { return !(pattern.empty() || pattern == "*" || pattern == "*.*"); }

FileFindRecord parseFileFindRecord(std::string_view text) {
    // Fields 1..14 never hold "|"; the pattern is everything behind them.
    std::vector<std::string> f;
    size_t pos = 0;
    while (f.size() < kFixedFields) {
        size_t next = text.find('|', pos);
        if (next == std::string_view::npos) {
            f.emplace_back(text.substr(std::min(pos, text.size())));
            pos = text.size() + 1;
            break;
        }
        f.emplace_back(text.substr(pos, next - pos));
        pos = next + 1;
    }
    f.resize(kFixedFields);
    FileFindRecord r;
    int64_t mode = leadingNumber(f[0]);
    r.mode = mode == 1 ? FindSearchMode::CurrentListAll
             : mode == 2 ? FindSearchMode::CurrentListNamed
                         : FindSearchMode::Directories;
    r.options = parseFindOptions(replaceAllOf(f[1], "_", "|"));
    r.minSize = leadingNumber(f[2]);
    r.maxSize = leadingNumber(f[3]);
    r.modifiedToday = textIsTrue(f[4]);
    r.modified = {textIsTrue(f[5]), dayOf(f[6]), dayOf(f[7])};
    r.created = {textIsTrue(f[8]), dayOf(f[9]), dayOf(f[10])};
    r.accessed = {textIsTrue(f[11]), dayOf(f[12]), dayOf(f[13])};
    r.pattern = pos <= text.size() ? std::string(text.substr(pos)) : std::string();
    return r;
}

std::string buildFileFindRecord(const FileFindRecord& r) {
    std::vector<std::string> f = {
        std::to_string(static_cast<int>(r.mode)),
        replaceAllOf(buildFindOptions(r.options), "|", "_"),
        std::to_string(r.minSize),
        std::to_string(r.maxSize),
        storedFlag(r.modifiedToday),
        storedFlag(r.modified.on), dayText(r.modified.from), dayText(r.modified.to),
        storedFlag(r.created.on), dayText(r.created.from), dayText(r.created.to),
        storedFlag(r.accessed.on), dayText(r.accessed.from), dayText(r.accessed.to),
        r.pattern,
    };
    std::string out;
    for (size_t i = 0; i < f.size(); ++i) {
        if (i) out += '|';
        out += f[i];
    }
    return out;
}

}  // namespace tav
