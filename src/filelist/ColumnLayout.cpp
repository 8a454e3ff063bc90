#include "filelist/ColumnLayout.h"

#include <algorithm>

#include "core/ListText.h"
#include "filelist/FormatColumnMask.h"

namespace tav {

namespace {

bool isContentColType(int t) {
    return t == col::Title || t == col::FirstBytes || t == col::LastBytes || (t >= col::FirstPlain && t <= col::Mail);
}

bool needsWholeFile(int t) { return t == col::LastBytes || (t >= col::LastPlain && t <= col::Mail); }

const UserColumn* findUser(const std::vector<UserColumn>& users, int colType) {
    for (const UserColumn& u : users)
        if (u.def.colType == colType) return &u;
    return nullptr;
}

}  // namespace

std::vector<int> ColumnLayout::wantedColTypes() const {
    std::vector<int> out;
    for (int t = 0; t < static_cast<int>(position.size()); ++t)
        if (position[static_cast<std::size_t>(t)] >= 0) out.push_back(t);
    return out;
}

ColumnLayout SetUpListColumns(const ColumnRequest& request, const ColumnSpecs& specs, const WindowFormats& formats) {
    ColumnLayout layout;
    std::vector<int> order;
    for (int t : request.colTypes) {
        if (t < 0 || t == 14) continue;
        if (t >= kStdColTypes && !findUser(request.userColumns, t)) continue;
        if (!request.searchActive && (t == col::FoundValue || t == col::FoundAt || t == col::FoundText)) continue;
        if (std::find(order.begin(), order.end(), t) != order.end()) continue;
        order.push_back(t);
    }
    if (order.empty()) order.push_back(col::FileName);

    int highest = kStdColTypes - 1;
    for (int t : order) highest = std::max(highest, t);
    layout.position.assign(static_cast<std::size_t>(highest) + 1, -1);
    layout.keyColumn.assign(static_cast<std::size_t>(highest) + 1, -1);

    auto add = [&](int t, bool hidden) {
        ListColumn c;
        c.colType = t;
        c.hidden = hidden;
        if (t >= kStdColTypes) {
            const UserColumn* u = findUser(request.userColumns, t);
            c.caption = u->caption;
            c.mask = displayMaskFor(u->format, formats);
            layout.userColumns.push_back(*u);
        } else {
            c.caption = std::string(colTypeCaption(t));
            c.mask = displayMaskFor(specs.formats[static_cast<std::size_t>(t)], formats);
        }
        layout.position[static_cast<std::size_t>(t)] = static_cast<int>(layout.columns.size());
        layout.columns.push_back(std::move(c));
    };
    for (int t : order) add(t, false);
    layout.visibleCount = static_cast<int>(layout.columns.size());
    if (!layout.userColumns.empty() && !layout.wanted(col::Title)) add(col::Title, true);
    for (int t = col::FilePath; t <= col::Number; ++t)
        if (!layout.wanted(t)) add(t, true);

    // Key columns, behind all others.
    const std::size_t shown = layout.columns.size();
    for (std::size_t i = 0; i < shown; ++i) {
        const int t = layout.columns[i].colType;
        std::string dataType;
        if (t >= kStdColTypes)
            dataType = findUser(request.userColumns, t)->dataType;
        else
            dataType = specs.dataTypes[static_cast<std::size_t>(t)];
        const std::string keyMask = keyMaskForDataType(dataType);
        if (keyMask.empty()) continue;
        ListColumn k;
        k.colType = t;
        k.caption = layout.columns[i].caption;
        k.hidden = true;
        k.isKey = true;
        k.mask = keyMask;
        k.keyMayGrow = keyMaskMayGrow(dataType);
        layout.keyColumn[static_cast<std::size_t>(t)] = static_cast<int>(layout.columns.size());
        layout.columns.push_back(std::move(k));
    }

    // Whether files are read, and how much of them.
    bool content = !layout.userColumns.empty() || request.startValue != "*";
    std::int64_t bytes = request.startValue != "*" ? 1000 : 0;
    for (int t : layout.wantedColTypes()) {
        if (!isContentColType(t)) continue;
        content = true;
        if (needsWholeFile(t)) layout.wholeFile = true;
        if (t == col::Title) bytes = std::max<std::int64_t>(bytes, 2000);
        if (t == col::FirstPlain) bytes = std::max(bytes, request.firstPlainBytes);
        if (t == col::FirstBytes) bytes = std::max(bytes, request.firstBytes);
    }
    layout.readContent = content;
    layout.bytesNeeded = layout.wholeFile ? 0 : bytes;
    return layout;
}

int DefineUserColumn(std::vector<UserColumn>& defined, UserColumn column) {
    for (const UserColumn& u : defined)
        if (u.def.textFrom == column.def.textFrom && u.def.textTo == column.def.textTo &&
            u.def.inFileWithTitle == column.def.inFileWithTitle && u.format == column.format &&
            u.dataType == column.dataType)
            return u.def.colType;
    int number = kFirstUserColType;
    for (const UserColumn& u : defined) number = std::max(number, u.def.colType + 1);
    column.def.colType = number;
    defined.push_back(std::move(column));
    return number;
}

bool parseUserColumn(const std::string& definition, UserColumn& out, std::string* name) {
    std::size_t separators = 0;
    int depth = 0;
    for (char c : definition) {
        if (c == '[') ++depth;
        else if (c == ']' && depth > 0) --depth;
        else if (c == ';' && depth == 0) ++separators;
    }
    if (separators < 4) return false;
    std::vector<std::string> f = splitItems(definition, ";", "[]");
    f.resize(8);
    if (name) *name = f[0];
    out.def.textFrom = f[1];
    out.def.textTo = f[2];
    out.def.inFileWithTitle = f[3];
    out.format = f[5];
    out.dataType = f[6];
    out.caption = f[7].empty() ? f[0] : f[7];
    return true;
}

}  // namespace tav
