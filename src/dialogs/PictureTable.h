#pragma once
// The picture slots behind the SetPic option: a caller stores a picture
// (whatever the renderer draws: an image handle, a file name) in the first
// free slot and passes the slot number in the options; the renderer takes the
// picture out, which frees the slot.
//
// Threads: any thread may put and take; the table locks itself.
#include <any>
#include <array>
#include <mutex>

namespace tav {

class PictureTable {
public:
    static constexpr int kSlots = 16;

    // Stores the picture in the first free slot and returns its number (from
    // 1). Raises AppError 8172 when every slot is taken.
    int put(std::any picture);

    // The picture of a slot, freeing the slot; empty for a free or bad slot.
    std::any take(int slot);

    int used() const;

    // The table the SetPic option refers to.
    static PictureTable& shared();

private:
    mutable std::mutex mutex_;
    std::array<std::any, kSlots> slots_;
};

}  // namespace tav
