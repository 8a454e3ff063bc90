#include "content/HtmlScanner.h"

#include <cstring>
#include <new>

#include "content/Entities.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#endif

namespace tav {

namespace {

// The internal item separator: characters 160, 165, 164, 165, 160 as a
// Windows-1252 file holds them. A tag name holding it is escaped.
constexpr std::string_view kItemSeparatorBytes = "\xA0\xA5\xA4\xA5\xA0";

// The ten common tags are looked up by flag, not in the list.
constexpr std::array<std::string_view, 10> kCommonTags = {"BR", "HR", "LI", "TR", "TD", "B", "P", "A", "I", "U"};

int commonIndex(std::string_view name) {
    if (name.size() == 1) {
        switch (name[0]) {
            case 'B': return 5;
            case 'P': return 6;
            case 'A': return 7;
            case 'I': return 8;
            case 'U': return 9;
            default: return -1;
        }
    }
    if (name.size() != 2) return -1;
    for (std::size_t i = 0; i < 5; ++i)
        if (kCommonTags[i][0] == name[0] && kCommonTags[i][1] == name[1]) return static_cast<int>(i);
    return -1;
}

std::uint32_t hashName(std::string_view s) {
    std::uint32_t h = 2166136261u;
    for (char c : s) h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
    return h;
}

inline unsigned char upper(unsigned char c) { return (c >= 'a' && c <= 'z') ? static_cast<unsigned char>(c - 32) : c; }
inline unsigned char lower(unsigned char c) { return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + 32) : c; }
inline bool isBlank(unsigned char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

void HtmlScanner::configure(const DissectOptions& options, const Wants& wants, const EndChars& wwwEnd,
                            const EndChars& mailEnd, PlainText* plain) {
    options_ = options;
    wants_ = wants;
    wwwEnd_ = wwwEnd.table();
    mailEnd_ = mailEnd.table();
    plain_ = plain;
    lenLimit_ = options.LenLmt < 0 ? 0 : static_cast<std::size_t>(options.LenLmt);
}

void HtmlScanner::beginFile() {
    tags_.clear();
    meta_.clear();
    www_.clear();
    mail_.clear();
    otherTags_.clear();
    serverText_.clear();
    scriptText_.clear();
    styleText_.clear();
    tagTextTotal_ = 0;
    commonSeen_.fill(false);
    if (++generation_ == 0) {
        tagMemo_.fill(TagMemo{});
        nameSlots_.fill(NameSlot{});
        generation_ = 1;
    }
    wwwOn_ = wants_.www;
    mailOn_ = wants_.mail;
    beginSection(0);
}

void HtmlScanner::beginSection(std::int64_t base) {
    mode_ = Mode::Text;
    pos_ = pieceStart_ = base;
    histLen_ = 0;
    tagBuf_.clear();
    tagLen_ = 0;
    blockBuf_.clear();
    collecting_ = false;
    cand_.clear();
    candScanned_ = candEnd_ = base;
}

bool HtmlScanner::active() const {
    const bool tagsLive = (wants_.tags && !tags_.over(lenLimit_)) || (wants_.meta && !meta_.over(lenLimit_));
    return tagsLive || wwwOn_ || mailOn_ || collecting_ || wants_.blocks || (plainOn() && !plain_->stopped());
}

unsigned char HtmlScanner::byteAt(const unsigned char* s, std::int64_t abs) const {
    if (abs >= pos_) return s[abs - pos_];
    return hist_[histLen_ - static_cast<std::size_t>(pos_ - abs)];
}

// Whether the bytes just before s[hit] are lowerText, ignoring case.
bool HtmlScanner::matchBack(const unsigned char* s, std::size_t hit, std::string_view lowerText) const {
    if (hit >= lowerText.size()) {
        const unsigned char* p = s + hit - lowerText.size();
        for (std::size_t k = 0; k < lowerText.size(); ++k)
            if (lower(p[k]) != static_cast<unsigned char>(lowerText[k])) return false;
        return true;
    }
    const std::int64_t at = pos_ + static_cast<std::int64_t>(hit);
    const auto len = static_cast<std::int64_t>(lowerText.size());
    if (at - len < pos_ - static_cast<std::int64_t>(histLen_)) return false;
    for (std::int64_t k = 0; k < len; ++k)
        if (lower(byteAt(s, at - len + k)) != static_cast<unsigned char>(lowerText[static_cast<std::size_t>(k)]))
            return false;
    return true;
}

void HtmlScanner::addTagText(std::string& into, std::string_view text) {
    if (!wants_.blocks || tagTextTotal_ > options_.MaxLenPTTT) return;
    tagTextTotal_ += static_cast<std::int64_t>(text.size());
    into.append(text);
}

void HtmlScanner::addTag(std::string_view name) {
    if (!wants_.tags || tags_.over(lenLimit_)) return;
    std::string escaped;
    if (name.find(kItemSeparatorBytes) != std::string_view::npos) {
        escaped = EscapeCell(name);
        name = escaped;
    }
    const std::uint32_t h = hashName(name);
    std::size_t slot = h & (nameSlots_.size() - 1);
    for (std::size_t probes = 0; probes < nameSlots_.size(); ++probes) {
        const NameSlot& v = nameSlots_[slot];
        if (v.generation != generation_) {
            nameSlots_[slot] = NameSlot{h, static_cast<std::uint32_t>(tags_.size()), generation_};
            tags_.add(name);
            return;
        }
        if (v.hash == h && tags_[v.index] == name) return;
        slot = (slot + 1) & (nameSlots_.size() - 1);
    }
    // The table is full (only with a very long list limit): plain look-up.
    if (!tags_.contains(name)) tags_.add(name);
}

void HtmlScanner::enterBlock(BlockKind kind, std::int64_t start) {
    mode_ = Mode::Block;
    block_ = kind;
    blockStart_ = start;
    blockBuf_.clear();
}

void HtmlScanner::endBlock(std::string_view text) {
    switch (block_) {
        case BlockKind::Script: addTagText(scriptText_, text); break;
        case BlockKind::Style: addTagText(styleText_, text); break;
        case BlockKind::Server:
            addTagText(serverText_, serverHead_);
            addTagText(serverText_, text);
            break;
        case BlockKind::Comment: break;
    }
    mode_ = Mode::Text;
}

// A whole tag: `text` lies between '<' and '>'. Returns true when another
// tag with the same first word can need no work in this file: it is listed
// already, or dropped, and sets off no block or META action.
bool HtmlScanner::onTagEnd(std::string_view text) {
    // The first word, cut at a blank or a line end, upper-cased.
    const auto* t = reinterpret_cast<const unsigned char*>(text.data());
    std::size_t k = 0;
    if (text.size() <= kNameBuffer) {
        while (k < text.size()) {
            const unsigned char c = t[k];
            if (c == ' ' || c == '\r' || c == '\n') break;
            nameBuf_[k++] = static_cast<char>(upper(c));
        }
    } else {
        while (k < text.size() && t[k] != ' ' && t[k] != '\r' && t[k] != '\n') ++k;
        name_.resize(k);
        for (std::size_t i = 0; i < k; ++i) name_[i] = static_cast<char>(upper(t[i]));
    }
    std::string_view name = text.size() <= kNameBuffer ? std::string_view(nameBuf_, k) : std::string_view(name_);
    const char first = k == 0 ? '\0' : name[0];
    const std::int64_t behind = pieceStart_;  // the byte after '>'

    if (first == '!') {
        addTagText(otherTags_, text);
        if (k >= 3 && name[1] == '-' && name[2] == '-') {
            const bool ended = tagLen_ >= 5 && tagLast_[0] == '-' && tagLast_[1] == '-';
            if (!ended) enterBlock(BlockKind::Comment, behind);
        }
        return false;
    }
    if (first == 'S' && (name == "SCRIPT" || name == "STYLE")) {
        addTag(name);
        enterBlock(name.size() == 6 ? BlockKind::Script : BlockKind::Style, behind);
        return false;
    }
    if (first == '%') {
        if (tagLast_[1] == '%') {
            addTagText(serverText_, text);
        } else {
            enterBlock(BlockKind::Server, behind);
            // The block's text begins with the tag's: "<% if a > b %>".
            if (wants_.blocks) serverHead_.assign(text).push_back('>');
        }
        return false;
    }
    const bool endTag = first == '/';
    if (k <= 3) {
        const int common = commonIndex(endTag ? name.substr(1) : name);
        if (common >= 0) {
            if (commonSeen_[static_cast<std::size_t>(common)]) return true;
            commonSeen_[static_cast<std::size_t>(common)] = true;
        }
    }
    if (endTag && options_.IncEndTag) name.remove_prefix(1);
    if (name.empty()) return true;
    addTag(name);
    if (!endTag && name == "META") {
        if (wants_.meta && !meta_.over(lenLimit_) && !meta_.contains(text)) meta_.add(text);
        return false;
    }
    return true;
}

// The first word of a tag as a key for the memo of finished words: its
// bytes as they stand (another case is another key), packed in a 64-bit
// word. False when the word is longer than 8 bytes or ends in a control
// character other than CR and LF; such tags take the full path.
inline bool HtmlScanner::tagKey(const unsigned char* t, std::size_t len, std::size_t room, std::uint64_t& key) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    constexpr std::uint64_t ones = 0x0101010101010101ULL;
    constexpr std::uint64_t highs = 0x8080808080808080ULL;
    std::uint64_t w = 0;
    if (room >= 8) {
        std::memcpy(&w, t, 8);
    } else {
        std::memcpy(&w, t, len < 8 ? len : 8);
    }
    // Bytes below 0x21 (blank, CR, LF, other controls): the lowest found is exact.
    const std::uint64_t low = (w - ones * 0x21) & ~w & highs;
    std::size_t k = low != 0 ? static_cast<std::size_t>(__builtin_ctzll(low)) / 8 : 8;
    // Whether the word ends at the tag's end or at a blank or line end is
    // worked out without branches: which of the two it is cannot be guessed.
    // t[k] is readable: within the tag, or the '>' that ends it.
    k = k < len ? k : len;
    const unsigned char c = t[k];
    const bool wordEnds = (k == len) | (c == ' ') | (c == '\r') | (c == '\n');
    if (!wordEnds) return false;
    if (k >= 8) {
        k = 8;
    } else {
        w &= (std::uint64_t{1} << (8 * k)) - 1;
    }
    key = w;
    return true;
#else
    (void)t;
    (void)len;
    (void)room;
    (void)key;
    return false;
#endif
}

void HtmlScanner::finishCandidate(std::int64_t endAbs) {
    collecting_ = false;
    candEnd_ = endAbs;
    ItemList& list = collectMail_ ? mail_ : www_;
    if (!list.over(lenLimit_)) list.add(cand_);
    if (list.over(lenLimit_)) {
        if (collectMail_) {
            mailOn_ = false;
        } else {
            wwwOn_ = false;
        }
    }
}

// Collects candidate bytes up to chunk index upTo, or to the candidate's end.
void HtmlScanner::advanceCollector(const unsigned char* s, std::size_t upTo) {
    if (!collecting_) return;
    const std::int64_t upToAbs = pos_ + static_cast<std::int64_t>(upTo);
    if (candScanned_ >= upToAbs) return;
    const std::size_t from = static_cast<std::size_t>(candScanned_ - pos_);
    const std::size_t room = kCandidateBytes - cand_.size();
    const std::size_t limit = upTo - from < room ? upTo : from + room;
    const std::array<bool, 256>& ends = collectMail_ ? mailEnd_ : wwwEnd_;
    std::size_t k = from;
    while (k < limit && !ends[s[k]]) ++k;
    cand_.append(reinterpret_cast<const char*>(s) + from, k - from);
    candScanned_ = pos_ + static_cast<std::int64_t>(k);
    if (k < limit || cand_.size() >= kCandidateBytes) finishCandidate(candScanned_);
}

// "http:" or "www." ending at chunk index hit; length is the text's length.
void HtmlScanner::onWwwHit(const unsigned char* s, std::size_t hit, std::size_t length) {
    const std::int64_t hitAbs = pos_ + static_cast<std::int64_t>(hit);
    const std::int64_t start = hitAbs + 1 - static_cast<std::int64_t>(length);
    if (start >= pos_) advanceCollector(s, static_cast<std::size_t>(start - pos_));
    if (!wwwOn_) return;  // the list went out with the candidate just finished
    pieceStart_ = hitAbs + 1;
    if (collecting_ || candEnd_ > start) return;
    collecting_ = true;
    collectMail_ = false;
    cand_.clear();
    for (std::int64_t a = start; a <= hitAbs; ++a) cand_.push_back(static_cast<char>(byteAt(s, a)));
    candScanned_ = hitAbs + 1;
}

void HtmlScanner::onMailHit(const unsigned char* s, std::size_t hit) {
    const std::int64_t hitAbs = pos_ + static_cast<std::int64_t>(hit);
    advanceCollector(s, hit);
    if (!mailOn_) return;
    const std::int64_t pieceFrom = pieceStart_;
    pieceStart_ = hitAbs + 1;
    if (collecting_ || candEnd_ > hitAbs) return;
    // The candidate starts behind the last break before the '@' (a blank,
    // a line end or a mail end character), within the tail of the piece
    // before it.
    std::int64_t from = hitAbs - static_cast<std::int64_t>(kMailPrefix);
    if (from < pieceFrom) from = pieceFrom;
    const std::int64_t oldest = pos_ - static_cast<std::int64_t>(histLen_);
    if (from < oldest) from = oldest;
    std::int64_t start = hitAbs;
    while (start > from) {
        const unsigned char c = byteAt(s, start - 1);
        if (isBlank(c) || mailEnd_[c]) break;
        --start;
    }
    collecting_ = true;
    collectMail_ = true;
    cand_.clear();
    for (std::int64_t a = start; a <= hitAbs; ++a) cand_.push_back(static_cast<char>(byteAt(s, a)));
    candScanned_ = hitAbs + 1;
}

// Keeps the length and the last two bytes of the tag text, which may be cut
// by seams and longer than what is kept of it.
void HtmlScanner::noteTagBytes(std::string_view part) {
    tagLen_ += part.size();
    if (part.size() >= 2) {
        tagLast_[0] = static_cast<unsigned char>(part[part.size() - 2]);
        tagLast_[1] = static_cast<unsigned char>(part.back());
    } else if (part.size() == 1) {
        tagLast_[0] = tagLast_[1];
        tagLast_[1] = static_cast<unsigned char>(part[0]);
    }
}

// One delimiter at chunk index hit: c is '<' in text, '>' in a tag or block,
// or ':', '.', '@' of an address. runFrom is the start of the current run.
void HtmlScanner::onHit(std::string_view chunk, std::size_t hit, unsigned char c, std::size_t& runFrom) {
    const auto* s = reinterpret_cast<const unsigned char*>(chunk.data());
    const std::size_t n = chunk.size();
    if (c == '<' || c == '>') {
        const std::int64_t behind = pos_ + static_cast<std::int64_t>(hit) + 1;
        if (mode_ == Mode::Text) {
            if (plain_) {
                plain_->append(std::string_view(chunk.data() + runFrom, hit - runFrom));
                plain_->endPiece();
            }
            mode_ = Mode::Tag;
            tagBuf_.clear();
            tagLen_ = 0;
            tagLast_[0] = tagLast_[1] = 0;
            pieceStart_ = behind;
            runFrom = hit + 1;
        } else if (mode_ == Mode::Tag) {
            const std::string_view part(chunk.data() + runFrom, hit - runFrom);
            // Nothing is kept of a tag begun in this chunk yet.
            if (tagBuf_.empty()) startTagBytes();
            noteTagBytes(part);
            pieceStart_ = behind;
            mode_ = Mode::Text;
            if (tagBuf_.empty()) {
                // The caller found no memo of this first word: deal with the
                // tag, and remember the word if it needs no more work.
                std::uint64_t key;
                const bool keyed = tagKey(s + runFrom, part.size(), n - runFrom, key);
                if (onTagEnd(part) && keyed) tagMemo_[memoSlot(key)] = TagMemo{key, generation_};
            } else {
                if (tagBuf_.size() < kMaxTag) tagBuf_.append(part.substr(0, kMaxTag - tagBuf_.size()));
                onTagEnd(tagBuf_);
                tagBuf_.clear();
            }
            runFrom = hit + 1;
            if (mode_ == Mode::Block) blockBuf_.clear();
        } else {
            std::string_view endText;
            switch (block_) {
                case BlockKind::Comment: endText = "--"; break;
                case BlockKind::Script: endText = "</script"; break;
                case BlockKind::Style: endText = "</style"; break;
                case BlockKind::Server: endText = "%"; break;
            }
            const std::int64_t textEnd = pos_ + static_cast<std::int64_t>(hit) - static_cast<std::int64_t>(endText.size());
            if (textEnd >= blockStart_ && matchBack(s, hit, endText)) {
                const std::int64_t textLen = textEnd - blockStart_;
                if (wants_.blocks && block_ != BlockKind::Comment) {
                    if (blockBuf_.empty() && blockStart_ >= pos_) {
                        endBlock(std::string_view(chunk.data() + (blockStart_ - pos_), static_cast<std::size_t>(textLen)));
                    } else {
                        blockBuf_.append(chunk.data() + runFrom, hit - runFrom);
                        blockBuf_.resize(static_cast<std::size_t>(textLen) < blockBuf_.size()
                                             ? static_cast<std::size_t>(textLen)
                                             : blockBuf_.size());
                        endBlock(blockBuf_);
                    }
                } else {
                    endBlock({});
                }
                blockBuf_.clear();
                pieceStart_ = behind;
                runFrom = hit + 1;
            }
        }
        return;
    }
    if (c == ':') {
        if (matchBack(s, hit, "http")) onWwwHit(s, hit, 5);
    } else if (c == '.') {
        if (matchBack(s, hit, "www")) onWwwHit(s, hit, 4);
    } else if (c == '@') {
        onMailHit(s, hit);
    }
}

namespace {

// The delimiter mask of one 64-byte block, bit k for byte k: '<' and '>'
// (one compare: only they give 0x3E when or-ed with 2), '@' when mail is
// wanted, and when WWW is wanted each ':' after a 'p' and '.' after a 'w'
// (any ':' and '.' of the first 16 bytes unless `back`); the caller checks
// whether they end "http:" or "www.".
#if defined(__SSE2__)
inline std::uint64_t eventMaskSse2(const unsigned char* s, bool www, bool mail, bool back) {
    const __m128i v2 = _mm_set1_epi8(2);
    const __m128i vangle = _mm_set1_epi8(0x3E);
    const __m128i vat = _mm_set1_epi8('@');
    std::uint64_t events = 0;
    for (int g = 0; g < 4; ++g) {
        const unsigned char* p = s + 16 * g;
        const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        __m128i e = _mm_cmpeq_epi8(_mm_or_si128(x, v2), vangle);
        if (mail) e = _mm_or_si128(e, _mm_cmpeq_epi8(x, vat));
        if (www) {
            __m128i colonAt = _mm_cmpeq_epi8(x, _mm_set1_epi8(':'));
            __m128i dotAt = _mm_cmpeq_epi8(x, _mm_set1_epi8('.'));
            if (back || g > 0) {
                // Only "p:" and "w." can end "http:" and "www.".
                const __m128i x1 = _mm_or_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p - 1)),
                                                _mm_set1_epi8(0x20));
                colonAt = _mm_and_si128(colonAt, _mm_cmpeq_epi8(x1, _mm_set1_epi8('p')));
                dotAt = _mm_and_si128(dotAt, _mm_cmpeq_epi8(x1, _mm_set1_epi8('w')));
            }
            e = _mm_or_si128(e, _mm_or_si128(colonAt, dotAt));
        }
        events |= static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(e))) << (16 * g);
    }
    return events;
}
#endif

#if defined(__GNUC__) && defined(__x86_64__)
#define TAV_HAVE_AVX2_PATH 1
__attribute__((target("avx2"))) inline std::uint64_t eventMaskAvx2(const unsigned char* s, bool www, bool mail,
                                                                   bool back) {
    const __m256i v2 = _mm256_set1_epi8(2);
    const __m256i vangle = _mm256_set1_epi8(0x3E);
    const __m256i vat = _mm256_set1_epi8('@');
    std::uint64_t events = 0;
    for (int g = 0; g < 2; ++g) {
        const unsigned char* p = s + 32 * g;
        const __m256i x = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
        __m256i e = _mm256_cmpeq_epi8(_mm256_or_si256(x, v2), vangle);
        if (mail) e = _mm256_or_si256(e, _mm256_cmpeq_epi8(x, vat));
        if (www) {
            __m256i colonAt = _mm256_cmpeq_epi8(x, _mm256_set1_epi8(':'));
            __m256i dotAt = _mm256_cmpeq_epi8(x, _mm256_set1_epi8('.'));
            if (back || g > 0) {
                const __m256i x1 = _mm256_or_si256(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p - 1)),
                                                   _mm256_set1_epi8(0x20));
                colonAt = _mm256_and_si256(colonAt, _mm256_cmpeq_epi8(x1, _mm256_set1_epi8('p')));
                dotAt = _mm256_and_si256(dotAt, _mm256_cmpeq_epi8(x1, _mm256_set1_epi8('w')));
            }
            e = _mm256_or_si256(e, _mm256_or_si256(colonAt, dotAt));
        }
        events |= static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm256_movemask_epi8(e))) << (32 * g);
    }
    return events;
}
#endif

// The same for the last, shorter block, byte by byte.
inline std::uint64_t eventMaskTail(const unsigned char* s, std::size_t count, bool www, bool mail) {
    std::uint64_t events = 0;
    for (std::size_t k = 0; k < count; ++k) {
        const unsigned char x = s[k];
        if (x == '<' || x == '>' || (mail && x == '@') || (www && (x == ':' || x == '.')))
            events |= std::uint64_t{1} << k;
    }
    return events;
}

// Masks of `blocks` whole blocks from s into out. `back`: s[-1] may be read,
// which lets most ':' and '.' be passed over here already.
using EventMaskFn = void (*)(const unsigned char*, std::size_t, bool, bool, bool, std::uint64_t*);

#if defined(__SSE2__)
void eventMasksSse2(const unsigned char* s, std::size_t blocks, bool www, bool mail, bool back, std::uint64_t* out) {
    for (std::size_t i = 0; i < blocks; ++i) out[i] = eventMaskSse2(s + 64 * i, www, mail, back || i > 0);
}
#endif

#if defined(TAV_HAVE_AVX2_PATH)
__attribute__((target("avx2"))) void eventMasksAvx2(const unsigned char* s, std::size_t blocks, bool www,
                                                    bool mail, bool back, std::uint64_t* out) {
    for (std::size_t i = 0; i < blocks; ++i) out[i] = eventMaskAvx2(s + 64 * i, www, mail, back || i > 0);
}
#endif

#if !defined(__SSE2__)
void eventMasksPlain(const unsigned char* s, std::size_t blocks, bool www, bool mail, bool /*back*/,
                     std::uint64_t* out) {
    for (std::size_t i = 0; i < blocks; ++i) out[i] = eventMaskTail(s + 64 * i, 64, www, mail);
}
#endif

// The best routine for this processor, chosen once.
EventMaskFn chooseEventMask() {
#if defined(TAV_HAVE_AVX2_PATH)
    __builtin_cpu_init();  // this runs before main
    if (__builtin_cpu_supports("avx2")) return eventMasksAvx2;
#endif
#if defined(__SSE2__)
    return eventMasksSse2;
#else
    return eventMasksPlain;
#endif
}

const EventMaskFn kEventMask = chooseEventMask();

}  // namespace

namespace scan_detail {

int vectorLevels() { return 3; }

bool eventMasks(int level, const unsigned char* s, std::size_t blocks, bool www, bool mail, std::uint64_t* out) {
    switch (level) {
        case 0:
            for (std::size_t i = 0; i < blocks; ++i) out[i] = eventMaskTail(s + 64 * i, 64, www, mail);
            return true;
#if defined(__SSE2__)
        case 1:
            eventMasksSse2(s, blocks, www, mail, true, out);
            return true;
#endif
#if defined(TAV_HAVE_AVX2_PATH)
        case 2:
            if (!__builtin_cpu_supports("avx2")) return false;
            eventMasksAvx2(s, blocks, www, mail, true, out);
            return true;
#endif
        default:
            return false;
    }
}

}  // namespace scan_detail

namespace {

}  // namespace

void HtmlScanner::feed(std::string_view chunk) {
    const auto* s = reinterpret_cast<const unsigned char*>(chunk.data());
    const std::size_t n = chunk.size();
    std::size_t runFrom = 0;  // start of the text, tag or block run in this chunk

    // Every byte is classified once, 64 at a time; the delimiters of the
    // block are then taken in order. A class that does not apply in the
    // current mode ('>' in text, '<' in a tag) is passed over.
    // The masks of a stretch of blocks are made in one go, with the wants
    // of its start: a want that ends meanwhile only leaves events that the
    // loop passes over.
    constexpr std::size_t kStretch = 64;
    std::uint64_t masks[kStretch];
    // The mode and the piece start live in registers in the common cases;
    // they go back to the members around every call that uses them.
    Mode mode = mode_;
    std::int64_t pieceStart = pieceStart_;
    auto store = [&] {
        mode_ = mode;
        pieceStart_ = pieceStart;
    };
    auto load = [&] {
        mode = mode_;
        pieceStart = pieceStart_;
    };
    for (std::size_t b = 0; b < n; b += 64) {
        const std::size_t index = (b / 64) % kStretch;
        if (index == 0 && b + 64 <= n) {
            std::size_t blocks = (n - b) / 64;
            if (blocks > kStretch) blocks = kStretch;
            kEventMask(s + b, blocks, wwwOn_, mailOn_, b > 0, masks);
        }
        std::uint64_t events = b + 64 <= n ? masks[index] : eventMaskTail(s + b, n - b, wwwOn_, mailOn_);
        while (events != 0) {
            const std::size_t hit = b + static_cast<std::size_t>(__builtin_ctzll(events));
            events &= events - 1;
            const unsigned char c = s[hit];
            if (c == '<') {
                if (mode != Mode::Text) continue;
                if (plain_) {
                    store();
                    onHit(chunk, hit, '<', runFrom);
                    load();
                    continue;
                }
                // A tag whose '>' is the next event of the block and whose
                // first word needs no more work is done with at once.
                if (events != 0) {
                    const std::size_t end = b + static_cast<std::size_t>(__builtin_ctzll(events));
                    std::uint64_t key;
                    if (s[end] == '>' && tagKey(s + hit + 1, end - hit - 1, n - hit - 1, key)) {
                        const TagMemo& memo = tagMemo_[memoSlot(key)];
                        if (memo.generation == generation_ && memo.key == key) {
                            events &= events - 1;
                            if (!tagBuf_.empty()) tagBuf_.clear();
                            pieceStart = pos_ + static_cast<std::int64_t>(end) + 1;
                            runFrom = end + 1;
                            continue;
                        }
                    }
                }
                // A tag begins: the common case, kept inline. A tag cut by
                // the seam before this chunk has been dealt with by now.
                mode = Mode::Tag;
                if (!tagBuf_.empty()) tagBuf_.clear();
                pieceStart = pos_ + static_cast<std::int64_t>(hit) + 1;
                runFrom = hit + 1;
            } else if (c == '>') {
                if (mode == Mode::Text) continue;
                if (mode == Mode::Tag && tagBuf_.empty()) {
                    // A tag whose first word needs no more work ends here.
                    std::uint64_t key;
                    if (tagKey(s + runFrom, hit - runFrom, n - runFrom, key)) {
                        const TagMemo& memo = tagMemo_[memoSlot(key)];
                        if (memo.generation == generation_ && memo.key == key) {
                            pieceStart = pos_ + static_cast<std::int64_t>(hit) + 1;
                            mode = Mode::Text;
                            runFrom = hit + 1;
                            continue;
                        }
                    }
                }
                store();
                onHit(chunk, hit, '>', runFrom);
                load();
            } else if (c == '@') {
                if (!mailOn_) continue;
                store();
                onMailHit(s, hit);
                load();
            } else if (wwwOn_) {
                // Most ':' and '.' are not the end of "http:" or "www.": one
                // byte before them tells.
                if (hit > 0 && (s[hit - 1] | 0x20) != (c == ':' ? 'p' : 'w')) continue;
                store();
                onHit(chunk, hit, c, runFrom);
                load();
            }
        }
    }
    store();

    // The run that reaches the end of the chunk is carried.
    const std::string_view rest(chunk.data() + runFrom, n - runFrom);
    switch (mode_) {
        case Mode::Text:
            if (plain_) plain_->append(rest);
            break;
        case Mode::Tag:
            if (tagBuf_.empty()) startTagBytes();
            if (tagBuf_.size() < kMaxTag) tagBuf_.append(rest.substr(0, kMaxTag - tagBuf_.size()));
            noteTagBytes(rest);
            break;
        case Mode::Block:
            if (wants_.blocks && block_ != BlockKind::Comment && blockBuf_.size() < kMaxTag)
                blockBuf_.append(rest.substr(0, kMaxTag - blockBuf_.size()));
            break;
    }
    advanceCollector(s, n);

    if (n >= kHistory) {
        std::memcpy(hist_.data(), s + n - kHistory, kHistory);
        histLen_ = kHistory;
    } else {
        const std::size_t keep = histLen_ + n > kHistory ? kHistory - n : histLen_;
        std::memmove(hist_.data(), hist_.data() + histLen_ - keep, keep);
        std::memcpy(hist_.data() + keep, s, n);
        histLen_ = keep + n;
    }
    pos_ += static_cast<std::int64_t>(n);
}

bool HtmlScanner::Dissect(std::span<const std::string_view> chunks, std::int64_t base) {
    try {
        beginSection(base);
        for (std::string_view c : chunks) feed(c);
        endSection();
        return true;
    } catch (const std::bad_alloc&) {
        return false;  // what was gathered stays good
    }
}

void HtmlScanner::endSection() {
    switch (mode_) {
        case Mode::Text: break;
        case Mode::Tag:
            // An unfinished tag at the end counts as text.
            if (plain_) plain_->append(tagBuf_);
            break;
        case Mode::Block:
            if (wants_.blocks && block_ != BlockKind::Comment) endBlock(blockBuf_);
            break;
    }
    if (plain_) plain_->endPiece();
    if (collecting_) finishCandidate(candScanned_);
    mode_ = Mode::Text;
    tagBuf_.clear();
    blockBuf_.clear();
}

}  // namespace tav
