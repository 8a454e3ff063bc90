#include "find/EscapeSequence.h"

#include <array>

#include "core/AppError.h"

namespace tav {

std::string escapeSequence(std::string_view text) {
    std::string alphabet;
    for (int c = 33; c <= 126; ++c)
        if (std::string_view("`#~[]|{}").find(static_cast<char>(c)) == std::string_view::npos)
            alphabet += static_cast<char>(c);
    // Mark which sequences occur: one bit per triple of alphabet characters.
    std::array<int, 128> slot{};
    slot.fill(-1);
    for (size_t i = 0; i < alphabet.size(); ++i) slot[static_cast<unsigned char>(alphabet[i])] = static_cast<int>(i);
    const size_t n = alphabet.size();
    std::string used(n * n * n, '\0');
    for (size_t i = 0; i + 2 < text.size(); ++i) {
        auto at = [&](size_t k) {
            auto c = static_cast<unsigned char>(text[k]);
            return c < 128 ? slot[c] : -1;
        };
        int a = at(i), b = at(i + 1), c = at(i + 2);
        if (a >= 0 && b >= 0 && c >= 0) used[(static_cast<size_t>(a) * n + static_cast<size_t>(b)) * n + static_cast<size_t>(c)] = 1;
    }
    for (size_t a = 0; a < n; ++a)
        for (size_t b = 0; b < n; ++b)
            for (size_t c = 0; c < n; ++c)
                if (a != c && !used[(a * n + b) * n + c]) return {alphabet[a], alphabet[b], alphabet[c]};
    raiseError(9910, "No free sequence to escape a delimiter");
}

std::string replaceAllOf(std::string_view s, std::string_view from, std::string_view to) {
    if (from.empty()) return std::string(s);
    std::string out;
    out.reserve(s.size());
    size_t pos = 0;
    while (true) {
        size_t hit = s.find(from, pos);
        if (hit == std::string_view::npos) break;
        out.append(s.substr(pos, hit - pos));
        out.append(to);
        pos = hit + from.size();
    }
    out.append(s.substr(pos));
    return out;
}

}  // namespace tav
