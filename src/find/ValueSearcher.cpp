#include "find/ValueSearcher.h"

#include <array>
#include <cstring>

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#define TAV_FIND_X86 1
#include <immintrin.h>
#endif

namespace tav {

namespace {

// Rough commonness of a byte in files people search (text, markup, binary):
// higher is more common. The scan filters on the least common positions.
int byteCommonness(unsigned char b) {
    static const std::array<int, 256> table = [] {
        std::array<int, 256> t{};
        for (int c = 0; c < 256; ++c) t[c] = c < 128 ? 20 : 8;
        for (int c = 0; c < 32; ++c) t[c] = 4;
        const char* lower = "etaoinsrhldcumfpgwybvkxjqz";
        for (int i = 0; lower[i]; ++i) {
            t[static_cast<unsigned char>(lower[i])] = 200 - i * 6;
            t[static_cast<unsigned char>(lower[i] - 32)] = 60 - i * 2;
        }
        for (int c = '0'; c <= '9'; ++c) t[c] = 70;
        t[' '] = 255;
        t['\n'] = t['\r'] = 90;
        t['\t'] = 60;
        t[0] = 150;
        t[0xFF] = 60;
        for (unsigned char c : std::string_view("<>=\"/.,;:-_()'")) t[c] = 80;
        return t;
    }();
    return table[b];
}

bool isLatinLetterByte(unsigned char b) {
    return (b >= 0xC0 && b <= 0xDE && b != 0xD7) || (b >= 0xE0 && b <= 0xFE && b != 0xF7);
}

bool isLatinPairTail(unsigned char b) {
    return (b >= 0x80 && b <= 0x9E && b != 0x97) || (b >= 0xA0 && b <= 0xBE && b != 0xB7);
}

bool isAsciiLetter(unsigned char b) {
    return (b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z');
}

// Length of the well-formed UTF-8 sequence at s[i], or 0.
size_t utf8SequenceAt(std::string_view s, size_t i) {
    auto u = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
    unsigned char c = u(i);
    size_t n = c >= 0xF0 && c <= 0xF4 ? 4 : c >= 0xE0 ? 3 : c >= 0xC2 && c <= 0xDF ? 2 : 0;
    if (n == 0 || i + n > s.size()) return 0;
    for (size_t k = 1; k < n; ++k)
        if ((u(i + k) & 0xC0) != 0x80) return 0;
    return n;
}

#if TAV_FIND_X86
__attribute__((target("avx2"))) size_t scanForwardAvx2(const char* d, size_t last, size_t p,
                                                        size_t r1, size_t r2, unsigned char m1,
                                                        unsigned char v1, unsigned char m2,
                                                        unsigned char v2, const ValueSearcher& s) {
    const __m256i vm1 = _mm256_set1_epi8(static_cast<char>(m1));
    const __m256i vv1 = _mm256_set1_epi8(static_cast<char>(v1));
    const __m256i vm2 = _mm256_set1_epi8(static_cast<char>(m2));
    const __m256i vv2 = _mm256_set1_epi8(static_cast<char>(v2));
    for (; p + 31 <= last; p += 32) {
        __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(d + p + r1));
        __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(d + p + r2));
        __m256i e = _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_or_si256(a, vm1), vv1),
                                     _mm256_cmpeq_epi8(_mm256_or_si256(b, vm2), vv2));
        unsigned bits = static_cast<unsigned>(_mm256_movemask_epi8(e));
        while (bits) {
            size_t k = p + static_cast<size_t>(__builtin_ctz(bits));
            if (s.matchesAt(d + k)) return k;
            bits &= bits - 1;
        }
    }
    return p | (size_t(1) << 63);  // not found before p: the caller goes on from p
}

__attribute__((target("avx2"))) size_t scanBackwardAvx2(const char* d, size_t& top, size_t r1,
                                                         size_t r2, unsigned char m1,
                                                         unsigned char v1, unsigned char m2,
                                                         unsigned char v2, const ValueSearcher& s) {
    // Candidates are the starts below `top`; blocks of 32 from the top down.
    const __m256i vm1 = _mm256_set1_epi8(static_cast<char>(m1));
    const __m256i vv1 = _mm256_set1_epi8(static_cast<char>(v1));
    const __m256i vm2 = _mm256_set1_epi8(static_cast<char>(m2));
    const __m256i vv2 = _mm256_set1_epi8(static_cast<char>(v2));
    while (top >= 32) {
        size_t p = top - 32;
        __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(d + p + r1));
        __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(d + p + r2));
        __m256i e = _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_or_si256(a, vm1), vv1),
                                     _mm256_cmpeq_epi8(_mm256_or_si256(b, vm2), vv2));
        unsigned bits = static_cast<unsigned>(_mm256_movemask_epi8(e));
        while (bits) {
            unsigned hi = 31u - static_cast<unsigned>(__builtin_clz(bits));
            if (s.matchesAt(d + p + hi)) return p + hi;
            bits &= ~(1u << hi);
        }
        top = p;
    }
    return ValueSearcher::npos;
}

size_t scanForwardSse2(const char* d, size_t last, size_t p, size_t r1, size_t r2,
                       unsigned char m1, unsigned char v1, unsigned char m2, unsigned char v2,
                       const ValueSearcher& s) {
    const __m128i vm1 = _mm_set1_epi8(static_cast<char>(m1));
    const __m128i vv1 = _mm_set1_epi8(static_cast<char>(v1));
    const __m128i vm2 = _mm_set1_epi8(static_cast<char>(m2));
    const __m128i vv2 = _mm_set1_epi8(static_cast<char>(v2));
    for (; p + 15 <= last; p += 16) {
        __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(d + p + r1));
        __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(d + p + r2));
        __m128i e = _mm_and_si128(_mm_cmpeq_epi8(_mm_or_si128(a, vm1), vv1),
                                  _mm_cmpeq_epi8(_mm_or_si128(b, vm2), vv2));
        unsigned bits = static_cast<unsigned>(_mm_movemask_epi8(e));
        while (bits) {
            size_t k = p + static_cast<size_t>(__builtin_ctz(bits));
            if (s.matchesAt(d + k)) return k;
            bits &= bits - 1;
        }
    }
    return p | (size_t(1) << 63);
}

size_t scanBackwardSse2(const char* d, size_t& top, size_t r1, size_t r2, unsigned char m1,
                        unsigned char v1, unsigned char m2, unsigned char v2,
                        const ValueSearcher& s) {
    const __m128i vm1 = _mm_set1_epi8(static_cast<char>(m1));
    const __m128i vv1 = _mm_set1_epi8(static_cast<char>(v1));
    const __m128i vm2 = _mm_set1_epi8(static_cast<char>(m2));
    const __m128i vv2 = _mm_set1_epi8(static_cast<char>(v2));
    while (top >= 16) {
        size_t p = top - 16;
        __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(d + p + r1));
        __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(d + p + r2));
        __m128i e = _mm_and_si128(_mm_cmpeq_epi8(_mm_or_si128(a, vm1), vv1),
                                  _mm_cmpeq_epi8(_mm_or_si128(b, vm2), vv2));
        unsigned bits = static_cast<unsigned>(_mm_movemask_epi8(e));
        while (bits) {
            unsigned hi = 31u - static_cast<unsigned>(__builtin_clz(bits));
            if (s.matchesAt(d + p + hi)) return p + hi;
            bits &= ~(1u << hi);
        }
        top = p;
    }
    return ValueSearcher::npos;
}

bool haveAvx2() {
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}
#endif

constexpr size_t kNotYet = size_t(1) << 63;

}  // namespace

ValueSearcher::ValueSearcher(std::string_view value, bool ignoreCase)
    : value_(value), ored_(value), masks_(value.size(), '\0'), ignoreCase_(ignoreCase) {
    if (ignoreCase) {
        for (size_t i = 0; i < value.size(); ++i) {
            auto c = static_cast<unsigned char>(value[i]);
            size_t seq = utf8SequenceAt(value, i);
            if (isAsciiLetter(c)) {
                masks_[i] = 0x20;
            } else if (seq == 2 && c == 0xC3 && isLatinPairTail(static_cast<unsigned char>(value[i + 1]))) {
                masks_[i + 1] = 0x20;
                ++i;
            } else if (seq > 1) {
                i += seq - 1;
            } else if (isLatinLetterByte(c)) {
                masks_[i] = 0x20;
            }
        }
        for (size_t i = 0; i < value.size(); ++i) {
            ored_[i] = static_cast<char>(ored_[i] | masks_[i]);
            anyMask_ = anyMask_ || masks_[i] != 0;
        }
    }
    // The rarest position first; the second differs in place and, if it can,
    // in byte.
    auto cost = [&](size_t i) {
        auto b = static_cast<unsigned char>(value_[i]);
        int c = byteCommonness(b);
        if (masks_[i]) c += byteCommonness(static_cast<unsigned char>(b ^ 0x20));
        return c;
    };
    if (!value_.empty()) {
        rare1_ = 0;
        for (size_t i = 1; i < value_.size(); ++i)
            if (cost(i) < cost(rare1_)) rare1_ = i;
        rare2_ = rare1_;
        int best = 1 << 30;
        for (size_t i = 0; i < value_.size(); ++i) {
            if (i == rare1_) continue;
            int c = cost(i) + (ored_[i] == ored_[rare1_] ? 1000 : 0);
            if (c < best) {
                best = c;
                rare2_ = i;
            }
        }
    }
}

bool ValueSearcher::matchesAt(const char* p) const {
    size_t n = value_.size();
    if (!anyMask_) return std::memcmp(p, value_.data(), n) == 0;
    const char* m = masks_.data();
    const char* o = ored_.data();
    for (size_t i = 0; i < n; ++i)
        if (static_cast<char>(p[i] | m[i]) != o[i]) return false;
    return true;
}

size_t ValueSearcher::findForward(const char* data, size_t size, size_t from) const {
    size_t n = value_.size();
    if (n == 0 || size < n || from > size - n) return npos;
    size_t last = size - n;  // last possible start
    if (!anyMask_ && n == 1) {
        const void* hit = std::memchr(data + from, value_[0], size - from);
        return hit ? static_cast<size_t>(static_cast<const char*>(hit) - data) : npos;
    }
    size_t p = from;
    auto m1 = static_cast<unsigned char>(masks_[rare1_]), v1 = static_cast<unsigned char>(ored_[rare1_]);
    auto m2 = static_cast<unsigned char>(masks_[rare2_]), v2 = static_cast<unsigned char>(ored_[rare2_]);
#if TAV_FIND_X86
    size_t r = haveAvx2() ? scanForwardAvx2(data, last, p, rare1_, rare2_, m1, v1, m2, v2, *this)
                          : scanForwardSse2(data, last, p, rare1_, rare2_, m1, v1, m2, v2, *this);
    if (!(r & kNotYet)) return r;
    p = r & ~kNotYet;
#endif
    for (; p <= last; ++p) {
        if (static_cast<unsigned char>(data[p + rare1_] | m1) == v1 &&
            static_cast<unsigned char>(data[p + rare2_] | m2) == v2 && matchesAt(data + p))
            return p;
    }
    return npos;
}

size_t ValueSearcher::findBackward(const char* data, size_t limit) const {
    size_t n = value_.size();
    if (n == 0 || limit < n) return npos;
    size_t top = limit - n + 1;  // candidate starts are below top
    auto m1 = static_cast<unsigned char>(masks_[rare1_]), v1 = static_cast<unsigned char>(ored_[rare1_]);
    auto m2 = static_cast<unsigned char>(masks_[rare2_]), v2 = static_cast<unsigned char>(ored_[rare2_]);
#if TAV_FIND_X86
    size_t r = haveAvx2() ? scanBackwardAvx2(data, top, rare1_, rare2_, m1, v1, m2, v2, *this)
                          : scanBackwardSse2(data, top, rare1_, rare2_, m1, v1, m2, v2, *this);
    if (r != npos) return r;
#endif
    while (top > 0) {
        size_t p = --top;
        if (static_cast<unsigned char>(data[p + rare1_] | m1) == v1 &&
            static_cast<unsigned char>(data[p + rare2_] | m2) == v2 && matchesAt(data + p))
            return p;
    }
    return npos;
}

bool textEquals(std::string_view a, std::string_view b, bool ignoreCase) {
    if (a.size() != b.size()) return false;
    if (!ignoreCase) return a == b;
    if (a.empty()) return true;
    return ValueSearcher(b, true).matchesAt(a.data());
}

}  // namespace tav
