#include "find/RejectedList.h"

namespace tav {

void RejectedList::add(std::string_view heading, std::string_view rejectText, bool keepAll, bool showing) {
    if (heading != lastHeading_ || lines_.empty()) {
        if (!keepAll && !showing) lines_.clear();
        if (!lines_.empty()) lines_.emplace_back();
        lines_.push_back("^^ " + std::string(heading) + " ^^");
        lastHeading_ = std::string(heading);
    }
    lines_.emplace_back(rejectText);
}

void RejectedList::clear() {
    lines_.clear();
    lastHeading_.clear();
}

}  // namespace tav
