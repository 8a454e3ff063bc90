#include "dialogs/PictureTable.h"

#include "core/AppError.h"

namespace tav {

int PictureTable::put(std::any picture) {
    std::lock_guard lock(mutex_);
    for (int i = 0; i < kSlots; ++i) {
        if (!slots_[i].has_value()) {
            slots_[i] = std::move(picture);
            return i + 1;
        }
    }
    raiseError(8172, "No free slot in the message box picture table");
}

std::any PictureTable::take(int slot) {
    std::lock_guard lock(mutex_);
    if (slot < 1 || slot > kSlots) return {};
    std::any out = std::move(slots_[slot - 1]);
    slots_[slot - 1].reset();
    return out;
}

int PictureTable::used() const {
    std::lock_guard lock(mutex_);
    int n = 0;
    for (const auto& s : slots_) n += s.has_value() ? 1 : 0;
    return n;
}

PictureTable& PictureTable::shared() {
    static PictureTable table;
    return table;
}

}  // namespace tav
