#include "content/HtmlScanner.h"

#include <cstring>

#include "content/Entities.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tav {

namespace {

// The internal item separator: characters 160, 165, 164, 165, 160 as a
// Windows-1252 file holds them. A tag name holding it is escaped.
constexpr std::string_view kItemSeparatorBytes = "\xA0\xA5\xA4\xA5\xA0";

// The ten common tags are looked up by flag, not in the list.
constexpr std::array<std::string_view, 10> kCommonTags = {"BR", "HR", "LI", "TR", "TD", "B", "P", "A", "I", "U"};

int commonIndex(std::string_view name) {
    if (name.empty() || name.size() > 2) return -1;
    for (std::size_t i = 0; i < kCommonTags.size(); ++i)
        if (kCommonTags[i] == name) return static_cast<int>(i);
    return -1;
}

std::uint32_t hashName(std::string_view s) {
    std::uint32_t h = 2166136261u;
    for (char c : s) h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
    return h | 1u;  // never 0: 0 marks a free slot
}

// First index in [i, n) whose byte is one of a, b, c, d; n if none.
inline std::size_t findAny(const unsigned char* s, std::size_t i, std::size_t n, unsigned char a,
                           unsigned char b, unsigned char c, unsigned char d) {
#if defined(__SSE2__)
    const __m128i va = _mm_set1_epi8(static_cast<char>(a));
    const __m128i vb = _mm_set1_epi8(static_cast<char>(b));
    const __m128i vc = _mm_set1_epi8(static_cast<char>(c));
    const __m128i vd = _mm_set1_epi8(static_cast<char>(d));
    while (i + 16 <= n) {
        const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
        const __m128i m = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(x, va), _mm_cmpeq_epi8(x, vb)),
                                       _mm_or_si128(_mm_cmpeq_epi8(x, vc), _mm_cmpeq_epi8(x, vd)));
        const int mask = _mm_movemask_epi8(m);
        if (mask != 0) return i + static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(mask)));
        i += 16;
    }
#endif
    for (; i < n; ++i) {
        const unsigned char x = s[i];
        if (x == a || x == b || x == c || x == d) return i;
    }
    return n;
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
    nameSlots_.fill(0);
    wwwOn_ = wants_.www;
    mailOn_ = wants_.mail;
    beginSection(0);
}

void HtmlScanner::beginSection(std::int64_t base) {
    mode_ = Mode::Text;
    sectionBase_ = pos_ = pieceStart_ = base;
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
        const std::uint32_t v = nameSlots_[slot];
        if (v == 0) break;
        if (v == h && tags_.contains(name)) return;
        slot = (slot + 1) & (nameSlots_.size() - 1);
    }
    if (tags_.contains(name)) return;  // the table is full (a very long limit): plain look-up
    nameSlots_[slot] = h;
    tags_.add(name);
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
        case BlockKind::Server: addTagText(serverText_, text); break;
        case BlockKind::Comment: break;
    }
    mode_ = Mode::Text;
}

// A whole tag: `text` lies between '<' and '>'.
void HtmlScanner::onTagEnd(std::string_view text) {
    std::size_t k = 0;
    while (k < text.size() && text[k] != ' ' && text[k] != '\r' && text[k] != '\n') ++k;
    const std::string_view raw = text.substr(0, k);
    const char first = raw.empty() ? '\0' : raw[0];
    const std::int64_t behind = pieceStart_;  // the byte after '>'

    if (raw.size() >= 3 && raw[0] == '!' && raw[1] == '-' && raw[2] == '-') {
        addTagText(otherTags_, text);
        const bool ended = tagLen_ >= 5 && tagLast_[0] == '-' && tagLast_[1] == '-';
        if (!ended) enterBlock(BlockKind::Comment, behind);
        return;
    }
    name_.resize(raw.size());
    for (std::size_t i = 0; i < raw.size(); ++i) name_[i] = static_cast<char>(upper(static_cast<unsigned char>(raw[i])));
    std::string_view name = name_;

    if (name == "SCRIPT" || name == "STYLE") {
        addTag(name);
        enterBlock(name == "SCRIPT" ? BlockKind::Script : BlockKind::Style, behind);
        return;
    }
    if (first == '%') {
        if (tagLast_[1] == '%') {
            addTagText(serverText_, text);
        } else {
            enterBlock(BlockKind::Server, behind);
        }
        return;
    }
    const bool endTag = first == '/';
    const int common = commonIndex(endTag ? name.substr(1) : name);
    if (common >= 0) {
        if (commonSeen_[static_cast<std::size_t>(common)]) return;
        commonSeen_[static_cast<std::size_t>(common)] = true;
    }
    if (endTag && options_.IncEndTag) name.remove_prefix(1);
    if (first == '!') {
        addTagText(otherTags_, text);
        return;
    }
    if (name.empty()) return;
    addTag(name);
    if (wants_.meta && !endTag && name == "META" && !meta_.over(lenLimit_) && !meta_.contains(text)) meta_.add(text);
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
    // The candidate starts at the last break before the '@', within the
    // tail of the piece before it.
    std::int64_t from = hitAbs - static_cast<std::int64_t>(kMailPrefix);
    if (from < pieceFrom) from = pieceFrom;
    const std::int64_t oldest = pos_ - static_cast<std::int64_t>(histLen_);
    if (from < oldest) from = oldest;
    std::int64_t start = hitAbs;
    while (start > from && !isBlank(byteAt(s, start - 1))) --start;
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

void HtmlScanner::feed(std::string_view chunk) {
    const auto* s = reinterpret_cast<const unsigned char*>(chunk.data());
    const std::size_t n = chunk.size();
    std::size_t i = 0;
    std::size_t runFrom = 0;  // start of the text, tag or block run in this chunk

    while (i < n) {
        const unsigned char primary = mode_ == Mode::Text ? '<' : '>';
        std::size_t hit;
        if (!wwwOn_ && !mailOn_) {
            const void* p = std::memchr(s + i, primary, n - i);
            hit = p ? static_cast<std::size_t>(static_cast<const unsigned char*>(p) - s) : n;
        } else {
            hit = findAny(s, i, n, primary, wwwOn_ ? ':' : primary, wwwOn_ ? '.' : primary,
                          mailOn_ ? '@' : primary);
        }
        if (hit >= n) break;
        const unsigned char c = s[hit];
        i = hit + 1;
        if (c == primary) {
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
                noteTagBytes(part);
                pieceStart_ = behind;
                mode_ = Mode::Text;
                if (tagBuf_.empty()) {
                    onTagEnd(part);
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
            continue;
        }
        if (c == ':') {
            if (matchBack(s, hit, "http")) onWwwHit(s, hit, 5);
        } else if (c == '.') {
            if (matchBack(s, hit, "www")) onWwwHit(s, hit, 4);
        } else if (c == '@') {
            onMailHit(s, hit);
        }
    }

    // The run that reaches the end of the chunk is carried.
    const std::string_view rest(chunk.data() + runFrom, n - runFrom);
    switch (mode_) {
        case Mode::Text:
            if (plain_) plain_->append(rest);
            break;
        case Mode::Tag:
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
