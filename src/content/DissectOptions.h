#pragma once
// The options of one dissection, set by the caller once per refresh. The
// file list takes them from the window items named beside each field.
#include <cstdint>
#include <string>

namespace tav {

struct DissectOptions {
    std::string LstSep = ",";           // separator of the finished lists (.l)
    std::int64_t BytF = 0;              // raw bytes from the start, FirstNBytes (.m)
    std::int64_t BytL = 0;              // raw bytes from the end, LastNBytes (.n)
    std::int64_t PBytF = 0;             // plain text from the start (.o)
    std::int64_t PBytL = 0;             // plain text from the end (.p)
    bool Only1stPart = false;           // read only the first part of each file (.q)
    std::int64_t Only1stByt = 0;        // size of the first part; 0: whole file (.r)
    bool IncEndTag = false;             // end tags count under their start tag's name (.s)
    std::int64_t LenLmt = 400;          // a list stops growing when longer than this
    std::int64_t MaxLenPTTT = 320000000;  // plain and tag text stop being compiled beyond this
};

}  // namespace tav
