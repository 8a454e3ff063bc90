#include "content/StreamFinder.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#define TAV_FINDER_AVX2 1
#endif

namespace tav {

namespace {

bool isLetter(unsigned char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Rough rarity of a byte in text: lower is rarer. Used to pick the anchor.
int commonness(unsigned char c) {
    if (isLetter(c)) return 3;
    if (c == ' ' || (c >= '0' && c <= '9')) return 2;
    if (c == '.' || c == ',' || c == '-' || c == '_') return 1;
    return 0;
}

#if defined(TAV_FINDER_AVX2)
// Places i in [from, last] where the first and last byte of the pattern
// (either case when f2/l2 differ from f1/l1) both match, 32 at a time, each
// tried by `matches`; the first place that matches, or npos. Returns the
// place where the 32-byte steps ended through `stopped` when nothing matched.
// A third byte, in the middle of the pattern, keeps texts full of the first
// and last bytes (quotes, say) from calling `matches` at every other place.
template <class Matches>
__attribute__((target("avx2"))) std::size_t findAvx2(const char* base, std::size_t from, std::size_t last,
                                                     std::size_t m, const unsigned char (&bytes)[6],
                                                     Matches&& matches, std::size_t& stopped) {
    const __m256i vf1 = _mm256_set1_epi8(static_cast<char>(bytes[0]));
    const __m256i vf2 = _mm256_set1_epi8(static_cast<char>(bytes[1]));
    const __m256i vl1 = _mm256_set1_epi8(static_cast<char>(bytes[2]));
    const __m256i vl2 = _mm256_set1_epi8(static_cast<char>(bytes[3]));
    const __m256i vm1 = _mm256_set1_epi8(static_cast<char>(bytes[4]));
    const __m256i vm2 = _mm256_set1_epi8(static_cast<char>(bytes[5]));
    const std::size_t mid = m / 2;
    std::size_t i = from;
    while (i + 32 <= last + 1) {
        const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(base + i));
        const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(base + i + m - 1));
        const __m256i c = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(base + i + mid));
        const __m256i first = _mm256_or_si256(_mm256_cmpeq_epi8(a, vf1), _mm256_cmpeq_epi8(a, vf2));
        const __m256i lastByte = _mm256_or_si256(_mm256_cmpeq_epi8(b, vl1), _mm256_cmpeq_epi8(b, vl2));
        const __m256i middle = _mm256_or_si256(_mm256_cmpeq_epi8(c, vm1), _mm256_cmpeq_epi8(c, vm2));
        const __m256i hit = _mm256_and_si256(_mm256_and_si256(first, lastByte), middle);
        auto mask = static_cast<std::uint32_t>(_mm256_movemask_epi8(hit));
        while (mask != 0) {
            const std::size_t at = i + static_cast<std::size_t>(__builtin_ctz(mask));
            if (matches(base + at)) return at;
            mask &= mask - 1;
        }
        i += 32;
    }
    stopped = i;
    return StreamFinder::npos;
}

const bool kHaveAvx2 = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
}();
#endif

}  // namespace

void StreamFinder::setPattern(std::string_view pattern, bool ignoreCase) {
    pattern_.assign(pattern.data(), pattern.size());
    ignoreCase_ = ignoreCase;
    if (ignoreCase_)
        for (char& c : pattern_) c = static_cast<char>(asciiLower(static_cast<unsigned char>(c)));
    anchor_ = 0;
    int best = 99;
    for (std::size_t i = 0; i < pattern_.size(); ++i) {
        const int r = commonness(static_cast<unsigned char>(pattern_[i]));
        if (r < best) {
            best = r;
            anchor_ = i;
        }
    }
    if (!pattern_.empty()) {
        const auto a = static_cast<unsigned char>(pattern_[anchor_]);
        anchorLower_ = a;
        anchorUpper_ = (ignoreCase_ && a >= 'a' && a <= 'z') ? static_cast<unsigned char>(a - 32) : a;
    }
    carry_.clear();
}

bool StreamFinder::matchesAt(const char* p) const {
    if (!ignoreCase_) return std::memcmp(p, pattern_.data(), pattern_.size()) == 0;
    for (std::size_t i = 0; i < pattern_.size(); ++i)
        if (asciiLower(static_cast<unsigned char>(p[i])) != static_cast<unsigned char>(pattern_[i])) return false;
    return true;
}

std::size_t StreamFinder::findIn(std::string_view text, std::size_t from) const {
    const std::size_t m = pattern_.size();
    if (m == 0) return from <= text.size() ? from : npos;
    if (text.size() < m || from > text.size() - m) return npos;
    const char* base = text.data();
#if defined(__SSE2__)
    // Sixteen places at a time: the first and the last byte of the pattern
    // must both match before the whole is compared.
    if (m >= 2) {
        const auto f = static_cast<unsigned char>(pattern_[0]);
        const auto l = static_cast<unsigned char>(pattern_[m - 1]);
        auto other = [&](unsigned char c) {
            return (ignoreCase_ && c >= 'a' && c <= 'z') ? static_cast<unsigned char>(c - 32) : c;
        };
        const __m128i f1 = _mm_set1_epi8(static_cast<char>(f)), f2 = _mm_set1_epi8(static_cast<char>(other(f)));
        const __m128i l1 = _mm_set1_epi8(static_cast<char>(l)), l2 = _mm_set1_epi8(static_cast<char>(other(l)));
        std::size_t i = from;
        const std::size_t last = text.size() - m;  // last place a match may start
#if defined(TAV_FINDER_AVX2)
        if (kHaveAvx2) {
            const auto md = static_cast<unsigned char>(pattern_[m / 2]);
            const unsigned char bytes[6] = {f, other(f), l, other(l), md, other(md)};
            const std::size_t at = findAvx2(base, from, last, m, bytes, [this](const char* p) { return matchesAt(p); }, i);
            if (at != npos) return at;
        }
#endif
        while (i + 16 <= last + 1) {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(base + i));
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(base + i + m - 1));
            const __m128i hit = _mm_and_si128(_mm_or_si128(_mm_cmpeq_epi8(a, f1), _mm_cmpeq_epi8(a, f2)),
                                              _mm_or_si128(_mm_cmpeq_epi8(b, l1), _mm_cmpeq_epi8(b, l2)));
            auto mask = static_cast<unsigned>(_mm_movemask_epi8(hit));
            while (mask != 0) {
                const std::size_t at = i + static_cast<std::size_t>(__builtin_ctz(mask));
                if (matchesAt(base + at)) return at;
                mask &= mask - 1;
            }
            i += 16;
        }
        for (; i <= last; ++i)
            if (matchesAt(base + i)) return i;
        return npos;
    }
#endif
    std::size_t a = from + anchor_;             // next anchor position to look at
    const std::size_t aLast = text.size() - m + anchor_;
    while (a <= aLast) {
        const void* hit;
        const std::size_t len = aLast - a + 1;
        if (anchorLower_ == anchorUpper_) {
            hit = std::memchr(base + a, anchorLower_, len);
        } else {
            const void* h1 = std::memchr(base + a, anchorLower_, len);
            const std::size_t len2 = h1 ? static_cast<std::size_t>(static_cast<const char*>(h1) - (base + a)) : len;
            const void* h2 = std::memchr(base + a, anchorUpper_, len2);
            hit = h2 ? h2 : h1;
        }
        if (!hit) return npos;
        const std::size_t at = static_cast<std::size_t>(static_cast<const char*>(hit) - base);
        if (matchesAt(base + at - anchor_)) return at - anchor_;
        a = at + 1;
    }
    return npos;
}

std::size_t StreamFinder::findEnd(std::string_view chunk, std::int64_t chunkBase, std::int64_t minStart) const {
    const std::size_t m = pattern_.size();
    if (m == 0) {
        if (minStart < chunkBase) return 0;
        const auto rel = static_cast<std::size_t>(minStart - chunkBase);
        return rel <= chunk.size() ? rel : npos;
    }
    // Matches that begin in the kept bytes.
    if (!carry_.empty() && carryBase_ + static_cast<std::int64_t>(carry_.size()) == chunkBase) {
        const std::size_t take = chunk.size() < m - 1 ? chunk.size() : m - 1;
        char window[512];
        std::string big;
        const char* w;
        const std::size_t wlen = carry_.size() + take;
        if (wlen <= sizeof window) {
            std::memcpy(window, carry_.data(), carry_.size());
            std::memcpy(window + carry_.size(), chunk.data(), take);
            w = window;
        } else {
            big = carry_;
            big.append(chunk.data(), take);
            w = big.data();
        }
        for (std::size_t i = 0; i < carry_.size() && i + m <= wlen; ++i) {
            if (carryBase_ + static_cast<std::int64_t>(i) < minStart) continue;
            if (matchesAt(w + i)) return i + m - carry_.size();
        }
    }
    std::size_t from = 0;
    if (minStart > chunkBase) {
        const auto rel = static_cast<std::size_t>(minStart - chunkBase);
        if (rel > chunk.size()) return npos;
        from = rel;
    }
    const std::size_t at = findIn(chunk, from);
    return at == npos ? npos : at + m;
}

void StreamFinder::keep(std::string_view chunk, std::int64_t chunkBase) {
    const std::size_t want = pattern_.empty() ? 0 : pattern_.size() - 1;
    if (want == 0) {
        carry_.clear();
        carryBase_ = chunkBase + static_cast<std::int64_t>(chunk.size());
        return;
    }
    if (chunk.size() >= want) {
        carry_.assign(chunk.data() + chunk.size() - want, want);
    } else {
        if (carryBase_ + static_cast<std::int64_t>(carry_.size()) != chunkBase) carry_.clear();
        carry_.append(chunk.data(), chunk.size());
        if (carry_.size() > want) carry_.erase(0, carry_.size() - want);
    }
    carryBase_ = chunkBase + static_cast<std::int64_t>(chunk.size()) - static_cast<std::int64_t>(carry_.size());
}

}  // namespace tav
