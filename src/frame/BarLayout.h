#pragma once
// The arithmetic of the three separation bars of a File List window, in
// twips: where a dragged or keyed bar ends, the two toggle positions, their
// saving as whole percentages, and the Text frame's height on a resize.
// Pure functions over numbers and "|" texts; the window applies the results.
#include <optional>
#include <string>
#include <string_view>

namespace tav {

// The bars, each known by the drag name its Tag holds.
enum class Bar {
    TextLists,       // "Sep_DFListsText": the Text frame's height
    DirFiles,        // "Sep_DirFiles": the left column's width
    TopListDirList,  // "Sep_TopListDirList": the Top List's height
};

std::optional<Bar> barOfDragName(std::string_view dragName);  // none for any other drag
std::string_view dragNameOf(Bar bar);
// The "Main" entry of its two toggle positions: "% text", "% tree", "% toplist".
std::string_view toggleEntryOf(Bar bar);
// Whether the bar's size is a part of the window's width (else its height).
inline bool barIsVertical(Bar bar) { return bar == Bar::DirFiles; }

inline constexpr int kKeyStep = 120;           // twips of one keyed move
inline constexpr int kTextFrameMargin = 105;   // kept below the Text frame on a resize

// What the window measures for a move.
struct BarGeometry {
    int innerWidth = 0;
    int innerHeight = 0;
    int dirFilesBarWidth = 0;     // fSepPic_DirFiles
    int textBarHeight = 0;        // fSepPic_TextDFLists
    int topListBarHeight = 0;     // fSepPic_TopListSelectDir
    int textFrameHeight = 0;      // fTextframe as it stands
};

// The largest size the bar's frame may take.
int barLimit(Bar bar, const BarGeometry& g);
// A size clamped to 0 .. the bar's limit.
int clampBar(Bar bar, int size, const BarGeometry& g);

// A drop (or a continuous drag step) at `position`, already made relative to
// the window by adding the Left (DirFiles) or Top of the containers between.
struct BarMove {
    int size = 0;                    // the frame's new size
    std::optional<int> provisional;  // Top List only: the size set first, so the column lays itself out
};
BarMove MoveBar(Bar bar, int position, const BarGeometry& g);

// An arrow key on a focused bar: 37 Left, 38 Up, 39 Right, 40 Down. Left and
// Right move only DirFiles, Up and Down only the other two; none for a key
// the bar does not take. The step is 120 twips, a third of it with Shift
// alone, three times it with Ctrl alone.
int keyStepOf(bool shift, bool ctrl);
std::optional<int> keyedBarMove(Bar bar, int keyCode, bool shift, bool ctrl, int current, const BarGeometry& g);

// The key table's repositioning entries: "Reposition Text bar - Move Up",
// "Reposition Tree bar - Toggle", "Reposition List bar - Move Down" ...
enum class BarAction { Toggle, Decrease, Increase };
struct RepositionCommand {
    Bar bar;
    BarAction action;
};
std::optional<RepositionCommand> parseRepositionCommand(std::string_view name);

// A move by `% change` percent of the window's height or width (the total),
// down or right for a positive direction; clamped like a drag.
int percentBarMove(Bar bar, int current, int percentChange, int direction, const BarGeometry& g);

// The total a bar's percentages refer to: inner width or inner height.
int barTotal(Bar bar, const BarGeometry& g);

// The two toggle positions of an entry "first|second" for a total.
struct TogglePositions {
    int p1 = 0;
    int p2 = 0;
};
TogglePositions togglePositions(std::string_view entryValue, int total);
// `ToggleBar`: the position farther from the present size; p2 on a tie.
int ToggleBar(int current, std::string_view entryValue, int total);

// A size as a whole percentage of the total, as a 16-bit integer (rounded
// half to even); none for a total of 0 or a value out of range.
std::optional<int> wholePercent(double size, double total);
// `SaveTogglePosition`: the entry with element `which` (1 or 2) replaced by
// the percentage of size over total, the other kept. None when no
// percentage can be made.
std::optional<std::string> SaveTogglePosition(std::string_view entryValue, double size, double total, int which);

// The enabled state of a pair of save items for the present size.
struct SavePairState {
    bool first = false;
    bool second = false;
};
SavePairState savePairEnabled(std::string_view entryValue, double size, double total);

// A resize of the window: the Text frame's wanted height is element 2 of
// `fiTextOptions`; above the inner height less 105 it is reduced for good.
struct TextFrameResize {
    bool acted = false;         // false for a minimised or closing window
    bool reduced = false;       // element 2 was lowered
    std::string textOptions;    // fiTextOptions, element 2 as it now stands
    int frameHeight = 0;        // the height the Text frame takes when shown
};
TextFrameResize resizeTextFrame(int innerHeight, std::string_view textOptions, bool minimized, bool closing);

}  // namespace tav
