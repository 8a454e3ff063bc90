#pragma once
// A list gathered while a file is dissected: tags, meta tags, address
// candidates. It measures itself as the joined text would be, each item
// followed by the five-character item separator, and stops growing once
// it is longer than its limit (the item that passed the limit stays).
// Cleared between files without giving back its memory.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

class ItemList {
public:
    static constexpr std::size_t kSeparatorLength = 5;

    void clear() {
        count_ = 0;
        length_ = 0;
    }
    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    std::size_t length() const { return length_; }
    // Longer than the limit: no more items may be added.
    bool over(std::size_t limit) const { return length_ > limit; }

    const std::string& operator[](std::size_t i) const { return items_[i]; }

    void add(std::string_view item) {
        if (count_ < items_.size()) {
            items_[count_].assign(item.data(), item.size());
        } else {
            items_.emplace_back(item);
        }
        ++count_;
        length_ += item.size() + kSeparatorLength;
    }

    bool contains(std::string_view item) const {
        for (std::size_t i = 0; i < count_; ++i)
            if (items_[i] == item) return true;
        return false;
    }

    std::vector<std::string> items() const {
        return std::vector<std::string>(items_.begin(), items_.begin() + static_cast<std::ptrdiff_t>(count_));
    }

    std::string joined(std::string_view separator) const {
        std::string out;
        for (std::size_t i = 0; i < count_; ++i) {
            if (i > 0) out.append(separator);
            out.append(items_[i]);
        }
        return out;
    }

private:
    std::vector<std::string> items_;  // items_[count_..] are spare, kept for their memory
    std::size_t count_ = 0;
    std::size_t length_ = 0;
};

}  // namespace tav
