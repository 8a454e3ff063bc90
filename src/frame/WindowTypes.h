#pragma once
// Window Types: the title of a File List window and the change of its type
// (menu code `WG`). The texts come from section "Description WindowTypes":
// per type t the description `t`, the captions `Capn t` and `Capn Multi t`,
// and the selection label `Sel Mid Col t`.
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"
#include "frame/WindowState.h"

namespace tav {

class IniStore;
class WindowStore;

inline constexpr std::string_view kWindowTypesSection = "Description WindowTypes";
inline constexpr std::string_view kSelectWindowTypeMessage = "Select Window Type";
inline constexpr std::string_view kSelectWindowTypeTitle = "- [Select Window Type]";

// The types the selection offers, in order.
const std::vector<std::string>& offeredWindowTypes();

// The type as the selection shows it: "Multi F" or "Multi L" for F or L
// with `LM` on, else the stored type.
std::string selectionTypeOf(const WindowState& window);

// `WindowCaption`: the caption of the type (`Capn Multi t` for F, L and N
// with `LM` on), " <+>" with `LD` on, then the list's text after a blank.
std::string WindowCaption(const WindowState& window, IniStore& ini, std::string_view listText);

// The "Select Window Type" request: one option button a type, captioned
// "[" + `Capn t` + "]", with `Sel Mid Col t` beside it; the present type
// chosen. `optionIndex` receives the Values index of each type's button.
MessageRequest windowTypeRequest(IniStore& ini, std::string_view currentType, std::vector<int>* optionIndex);

struct WindowTypeChange {
    bool cancelled = false;
    bool typeChanged = false;       // `.4` took a new value
    bool multiDirsChanged = false;  // `LM` changed: bring the multiple directory selection in line
    std::string type;               // the selection's type chosen ("Multi F" ...); empty when cancelled
    std::vector<std::string> status;  // the pieces for the window's status list `SL`
};

// `ChangeWindowType`: asks through `host`, stores the new type in `.4` and,
// for the F and L types, `LM` (both saved to the window's section at once).
WindowTypeChange ChangeWindowType(WindowState& window, WindowStore& store, MessageHost& host);

}  // namespace tav
