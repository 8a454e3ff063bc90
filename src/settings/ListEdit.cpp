#include "settings/ListEdit.h"

#include <algorithm>

#include "core/ListText.h"

namespace tav {

bool addListItem(std::string& list, const std::string& item, bool unique, MessageHost* host,
                 std::string_view brackets) {
    std::vector<std::string> items;
    if (!list.empty()) items = splitItems(list, "|", brackets);
    if (unique && std::find(items.begin(), items.end(), item) != items.end()) {
        if (host) {
            MessageRequest request = makeRequest(std::string(kItemExists), "0");
            host->show(request);
        }
        return false;
    }
    items.push_back(item);
    list = joinList(items, "|", brackets);
    return true;
}

}  // namespace tav
