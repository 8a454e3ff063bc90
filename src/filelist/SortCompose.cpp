#include "filelist/SortCompose.h"

#include <algorithm>
#include <charconv>

#include "core/ListText.h"
#include "core/TextTrim.h"
#include "core/Utf8.h"

namespace tav {

std::vector<int> ParseSortOrder(std::string_view text) {
    std::vector<int> order;
    if (text.empty()) return order;
    for (const std::string& item : splitItems(text)) {
        const std::string_view s = trimBlanks(item);
        int value = 0;
        const char* end = s.data() + s.size();
        auto [p, ec] = std::from_chars(s.data(), end, value);
        if (!s.empty() && ec == std::errc() && p == end) order.push_back(value);
    }
    return order;
}

std::string JoinSortOrder(const std::vector<int>& order) {
    std::string text;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i) text += '|';
        text += std::to_string(order[i]);
    }
    return text;
}

bool AddToNewSortOrder(std::vector<int>& newOrder, int colType) {
    if (colType < 0 || std::find(newOrder.begin(), newOrder.end(), colType) != newOrder.end()) return false;
    newOrder.push_back(colType);
    return true;
}

std::string SortCaption(const std::vector<ListColumn>& columns, int colType) {
    for (const ListColumn& c : columns)
        if (c.colType == colType && !c.isKey) return c.caption;
    return std::to_string(colType);
}

namespace {

std::string captions(const std::vector<ListColumn>& columns, const std::vector<int>& order) {
    std::string text;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i) text += ' ';
        text += SortCaption(columns, order[i]);
    }
    return text;
}

}  // namespace

std::string SortDescription(const std::vector<ListColumn>& columns, const std::vector<int>& order) {
    return "Sort File List by: " + captions(columns, order);
}

std::string SortDoneStatus(const std::vector<ListColumn>& columns, const std::vector<int>& order) {
    return "Done: " + SortDescription(columns, order);
}

std::string NewSortOrderMessage(const std::vector<ListColumn>& columns, const std::vector<int>& newOrder) {
    return "New Sort Order now >>" + captions(columns, newOrder) + "<< - Use Alt_Ctrl to add another column and sort.";
}

std::vector<std::string> ParseSortMarks(std::string_view setting) {
    std::vector<std::string> marks;
    if (setting.empty()) return marks;
    if (setting.find('|') != std::string_view::npos) return splitItems(setting);
    for (std::size_t i = 0; i < setting.size();) {
        const std::size_t next = utf8Offset(setting.substr(i), 1);
        marks.emplace_back(setting.substr(i, next == 0 ? 1 : next));
        i += next == 0 ? 1 : next;
    }
    return marks;
}

std::string SortMarkFor(std::size_t position, const std::vector<std::string>& marks) {
    if (marks.empty()) return {};
    return marks[std::min(position, marks.size() - 1)];
}

std::string MarkedCaption(const std::string& caption, int colType, const std::vector<int>& order,
                          const std::vector<std::string>& marks) {
    const auto at = std::find(order.begin(), order.end(), colType);
    if (at == order.end()) return caption;
    return caption + SortMarkFor(static_cast<std::size_t>(at - order.begin()), marks);
}

}  // namespace tav
