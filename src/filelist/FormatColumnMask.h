#pragma once
// Masks of grid columns. A display cell is put through its column's mask; a
// column whose data type sorts by value also has a hidden key cell, whose
// mask makes a text sort give date, time or numeric order:
//   data type `D...`  key `yyyy/mm/dd`
//   data type `T...`  key `hh:nn:ss`
//   data type `N<n>`  key of n zeros; `N`, `N0` give 16 zeros; may grow
//   anything else     no key
#include <cstdint>
#include <string>
#include <string_view>

#include "filelist/FormatCivil.h"
#include "filelist/FormatWindowMasks.h"

namespace tav {

inline constexpr std::string_view kDateKeyMask = "yyyy/mm/dd";
inline constexpr std::string_view kTimeKeyMask = "hh:nn:ss";
inline constexpr int kDefaultNumberKeyLength = 16;

// The format values that stand for the window's own masks.
inline constexpr std::string_view kWindowDateMask = "Dt4Win";
inline constexpr std::string_view kWindowTimeMask = "Tm4Win";
inline constexpr std::string_view kWindowSizeMask = "Sz4Win";

// The key mask of a data type; empty if the column has no key.
std::string keyMaskForDataType(std::string_view dataType);

// True for the fixed length numeric keys, which grow when a value is longer.
bool keyMaskMayGrow(std::string_view dataType);

// The display mask of a column's format value: the window's mask for
// `Dt4Win`, `Tm4Win`, `Sz4Win`, the value itself otherwise (empty: none).
std::string displayMaskFor(std::string_view formatValue, const WindowFormats& window);

// A fixed length numeric mask grown to the length of `value`: as many copies
// of its last character put in front as the value is longer. Unchanged if
// the value fits.
std::string grownKeyMask(std::string_view mask, std::string_view value);

// Key texts of typed values.
std::string dateKey(const CivilDateTime& value);
std::string timeKey(const CivilDateTime& value);
std::string numberKey(std::int64_t value, std::string_view mask);

}  // namespace tav
