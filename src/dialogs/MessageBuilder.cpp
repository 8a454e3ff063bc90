#include "dialogs/MessageBuilder.h"

#include <algorithm>

#include "core/AppError.h"
#include "core/ListText.h"
#include "dialogs/ControlSpec.h"
#include "dialogs/SpecText.h"

namespace tav {

namespace {

void resetArrays(MessageRequest& r) {
    r.ctlSpecs.assign(1, std::string());
    r.values.assign(1, std::string());
    r.lists.assign(1, std::vector<std::string>());
}

// Index 0 of the three arrays always exists, and the three stay parallel.
void ensureBase(MessageRequest& r) {
    size_t n = std::max({r.ctlSpecs.size(), r.values.size(), r.lists.size(), size_t{1}});
    r.ctlSpecs.resize(n);
    r.values.resize(n);
    r.lists.resize(n);
}

std::string storedSpec(std::string_view spec) {
    if (spec.find(kSpecSeparator) != std::string_view::npos) return std::string(spec);
    return MBSpec(spec);
}

std::string joinIndices(const std::vector<int>& indices) {
    std::string out;
    for (size_t i = 0; i < indices.size(); ++i) {
        if (i) out += "|";
        out += std::to_string(indices[i]);
    }
    return out;
}

}  // namespace

int MBAddButton(std::string_view caption, std::string& list, bool first) {
    if (first) list.clear();
    int number = 1;
    if (!list.empty()) {
        number = static_cast<int>(splitItems(list).size()) + 1;
        list += "|";
    }
    list += caption;
    return number;
}

int MBAddCtl(std::string_view type, std::string_view spec, std::string_view value,
             MessageRequest& request, bool first) {
    if (first)
        resetArrays(request);
    else
        ensureBase(request);
    if (type.empty() || type == "_") raiseError(9710, "Message box control without a type");
    std::string entry(type);
    entry += kSpecSeparator;
    entry += storedSpec(spec);
    request.ctlSpecs.push_back(std::move(entry));
    if (isListType(type)) {
        request.values.emplace_back();
        request.lists.push_back({std::string(value)});
    } else {
        request.values.emplace_back(value);
        request.lists.emplace_back();
    }
    return static_cast<int>(request.ctlSpecs.size()) - 1;
}

int MBAddListItem(std::string_view text, int position, MessageRequest& request, int control) {
    ensureBase(request);
    if (control == -1) control = static_cast<int>(request.ctlSpecs.size()) - 1;
    if (control < 1 || static_cast<size_t>(control) >= request.ctlSpecs.size() ||
        !isListType(splitStoredSpec(request.ctlSpecs[control]).front()))
        raiseError(9712, "Message box list item for a control that is no list control");
    auto& column = request.lists[control];
    if (column.empty()) column.emplace_back();  // row 0: the value
    if (position < 1 || static_cast<size_t>(position) >= column.size()) {
        column.emplace_back(text);
        return static_cast<int>(column.size()) - 1;
    }
    column.insert(column.begin() + position, std::string(text));
    return position;
}

std::string MBAddButtons(bool firstInRow, std::string_view spec, std::string_view captions,
                         MessageRequest& request, bool newArrays) {
    std::vector<int> indices;
    bool opensRow = firstInRow;
    for (const auto& caption : splitItems(captions)) {
        indices.push_back(MBAddCtl(opensRow ? "CommandButton" : "_CommandButton", spec, caption, request,
                                   newArrays && indices.empty()));
        opensRow = false;
    }
    return joinIndices(indices);
}

std::string MBAddOptionGroup(std::string_view captions, int chosen, int* chosenIndex,
                             MessageRequest& request, std::string_view type, std::string_view spec,
                             bool newArrays, bool oneRow) {
    std::vector<int> indices;
    if (chosenIndex) *chosenIndex = 0;
    std::string stored = storedSpec(spec);
    std::string shared = "_" + std::string(type);
    int n = 0;
    for (const auto& caption : splitItems(captions)) {
        ++n;
        std::string ctlSpec = caption + std::string(kSpecSeparator) + stored;
        bool opensRow = !oneRow || indices.empty();
        int index = MBAddCtl(opensRow ? std::string(type) : shared, ctlSpec, n == chosen ? "-1" : "0",
                             request, newArrays && indices.empty());
        if (n == chosen && chosenIndex) *chosenIndex = index;
        indices.push_back(index);
    }
    return joinIndices(indices);
}

}  // namespace tav
