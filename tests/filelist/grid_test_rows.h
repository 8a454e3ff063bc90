#pragma once
// A small list as a refresh would leave it: No., FileName, Type, Size and
// Date shown, and hidden keys for Size and Date.
#include <string>
#include <vector>

#include "filelist/ColumnTypes.h"
#include "filelist/RowTable.h"

namespace gridtest {

struct Item {
    std::string name, type, size, sizeKey, date, dateKey;
};

inline std::vector<tav::ListColumn> gridColumns() {
    using tav::ListColumn;
    std::vector<ListColumn> c(7);
    c[0].colType = tav::col::Number, c[0].caption = "No.";
    c[1].colType = tav::col::FileName, c[1].caption = "FileName";
    c[2].colType = tav::col::Type, c[2].caption = "Type";
    c[3].colType = tav::col::Size, c[3].caption = "Size";
    c[4].colType = tav::col::Date, c[4].caption = "Date";
    c[5].colType = tav::col::Size, c[5].caption = "Size", c[5].isKey = true, c[5].hidden = true;
    c[6].colType = tav::col::Date, c[6].caption = "Date", c[6].isKey = true, c[6].hidden = true;
    return c;
}

inline void fill(tav::RowTable& table, const std::vector<Item>& items) {
    table.begin(gridColumns());
    int n = 0;
    for (const Item& it : items) {
        tav::Row r;
        r.cells = {std::to_string(++n), it.name, it.type, it.size, it.date, it.sizeKey, it.dateKey};
        r.isDirectory = it.type == "<DIR>";
        table.row(std::move(r));
    }
}

inline std::vector<std::string> names(const tav::RowTable& table) {
    std::vector<std::string> v;
    for (const tav::Row& r : table.rows()) v.push_back(r.cells[1]);
    return v;
}

}  // namespace gridtest
