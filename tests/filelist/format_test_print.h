#pragma once
// Readable failure output for civil date-times in the format tests.
#include <cstdio>
#include <ostream>

#include "filelist/FormatCivil.h"

namespace tav {

inline void PrintTo(const CivilDateTime& v, std::ostream* os) {
    char text[48];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", v.year, v.month, v.day, v.hour, v.minute,
                  v.second);
    *os << text;
}

}  // namespace tav
