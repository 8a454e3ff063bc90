#pragma once
// The last few masks a thread used, each kept in its read form, so that a
// list of many rows reads each column's mask once. A grid uses a handful of
// masks at a time; the oldest entry gives way to a new mask.
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tav {

template <class Compiled, std::size_t Size = 8>
class MaskCache {
public:
    template <class Compile>
    const Compiled& get(std::string_view mask, Compile compile) {
        for (std::size_t k = 0; k < count_; ++k)
            if (masks_[k] == mask) return compiled_[k];
        const std::size_t slot = count_ < Size ? count_++ : next_++ % Size;
        masks_[slot].assign(mask);
        compiled_[slot] = compile(mask);
        return compiled_[slot];
    }

private:
    std::array<std::string, Size> masks_;
    std::array<Compiled, Size> compiled_{};
    std::size_t count_ = 0;
    std::size_t next_ = 0;
};

}  // namespace tav
