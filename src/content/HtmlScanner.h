#pragma once
// The one-pass dissection of a file's text: tags, meta tags, WWW and mail
// address candidates, plain text, and the text of comments, scripts, styles
// and server blocks, all gathered in the same pass. It never fails on bad
// markup and works on any bytes. Fed by sections, each any number of
// chunks of any size; a tag, end text or address cut by a chunk seam gives
// the same result as unsplit input.
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "content/Addresses.h"
#include "content/DissectOptions.h"
#include "content/ItemList.h"
#include "content/PlainText.h"

namespace tav {

class HtmlScanner {
public:
    struct Wants {
        bool tags = false;    // HTMLTags
        bool meta = false;    // MetaTags
        bool www = false;     // WWW address candidates
        bool mail = false;    // mail address candidates
        bool blocks = false;  // other tag text, server, script and style blocks
    };
    // Longest address candidate, in bytes.
    static constexpr std::size_t kCandidateBytes = 200;
    // Bytes before a '@' that may start a mail candidate.
    static constexpr std::size_t kMailPrefix = 30;

    // `plain` (may be null) receives the plain text. The objects passed
    // must outlive the scanner's use.
    void configure(const DissectOptions& options, const Wants& wants, const EndChars& wwwEnd,
                   const EndChars& mailEnd, PlainText* plain);
    // True if any output at all is wanted.
    bool needed() const { return wants_.tags || wants_.meta || wants_.www || wants_.mail || wants_.blocks || plainOn(); }

    void beginFile();
    // `Dissect` is beginSection, feed for each chunk, endSection.
    void beginSection(std::int64_t base);
    void feed(std::string_view chunk);
    void endSection();
    // One section given as chunks, beginning at stream offset `base`. False
    // when memory ran out; what was gathered stays good.
    bool Dissect(std::span<const std::string_view> chunks, std::int64_t base);
    // False once nothing more can be gathered from this file.
    bool active() const;

    const ItemList& tags() const { return tags_; }
    const ItemList& metaTags() const { return meta_; }
    const ItemList& wwwCandidates() const { return www_; }
    const ItemList& mailCandidates() const { return mail_; }
    const std::string& otherTagText() const { return otherTags_; }
    const std::string& serverText() const { return serverText_; }
    const std::string& scriptText() const { return scriptText_; }
    const std::string& styleText() const { return styleText_; }

private:
    enum class Mode : std::uint8_t { Text, Tag, Block };
    enum class BlockKind : std::uint8_t { Comment, Script, Style, Server };
    static constexpr std::size_t kHistory = 32;
    static constexpr std::size_t kMaxTag = 1 << 20;

    bool plainOn() const { return plain_ && plain_->wanted(); }
    unsigned char byteAt(const unsigned char* s, std::int64_t abs) const;
    bool matchBack(const unsigned char* s, std::size_t hit, std::string_view lowerText) const;

    void onHit(std::string_view chunk, std::size_t hit, unsigned char c, std::size_t& runFrom);
    void noteTagBytes(std::string_view part);
    void startTagBytes() {
        tagLen_ = 0;
        tagLast_[0] = tagLast_[1] = 0;
    }
    bool onTagEnd(std::string_view text);
    static bool tagKey(const unsigned char* t, std::size_t len, std::size_t room, std::uint64_t& key);
    void addTag(std::string_view name);
    void enterBlock(BlockKind kind, std::int64_t start);
    void endBlock(std::string_view text);
    void addTagText(std::string& into, std::string_view text);

    void advanceCollector(const unsigned char* s, std::size_t upTo);
    void finishCandidate(std::int64_t endAbs);
    void onWwwHit(const unsigned char* s, std::size_t hit, std::size_t length);
    void onMailHit(const unsigned char* s, std::size_t hit);

    // Options and wants, fixed for a refresh.
    DissectOptions options_;
    Wants wants_;
    std::array<bool, 256> wwwEnd_{}, mailEnd_{};
    PlainText* plain_ = nullptr;
    std::size_t lenLimit_ = 400;

    // Results of the file.
    ItemList tags_, meta_, www_, mail_;
    std::string otherTags_, serverText_, scriptText_, styleText_;
    std::int64_t tagTextTotal_ = 0;
    std::array<bool, 10> commonSeen_{};
    struct NameSlot {
        std::uint32_t hash = 0;
        std::uint32_t index = 0;       // the name's place in tags_
        std::uint32_t generation = 0;  // the file it belongs to; another: free
    };
    std::array<NameSlot, 512> nameSlots_{};
    // First words of tags that need no more work in this file. A key holds
    // the word's bytes (none below 0x21) and zeros after them, so it tells
    // the word's length too.
    struct TagMemo {
        std::uint64_t key = 0;
        std::uint32_t generation = 0;  // the file it belongs to
    };
    std::array<TagMemo, 256> tagMemo_{};
    static std::size_t memoSlot(std::uint64_t key) {
        return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15ULL) >> 56);
    }
    std::uint32_t generation_ = 0;

    // Scanner state, carried from chunk to chunk.
    Mode mode_ = Mode::Text;
    BlockKind block_ = BlockKind::Comment;
    std::int64_t pos_ = 0;          // stream offset of the current chunk
    std::int64_t pieceStart_ = 0;   // stream offset behind the last delimiter
    std::array<unsigned char, kHistory> hist_{};  // the bytes just before pos_
    std::size_t histLen_ = 0;
    std::string tagBuf_;            // tag text cut by a seam
    std::size_t tagLen_ = 0;
    unsigned char tagLast_[2] = {0, 0};
    std::string blockBuf_;
    std::string serverHead_;        // the tag that opened a server block
    std::int64_t blockStart_ = 0;
    static constexpr std::size_t kNameBuffer = 256;
    char nameBuf_[kNameBuffer];     // scratch: the upper-cased tag name
    std::string name_;              // the same for a longer tag
    bool wwwOn_ = false, mailOn_ = false;

    // Address collector.
    bool collecting_ = false;
    bool collectMail_ = false;
    std::string cand_;
    std::int64_t candScanned_ = 0;  // next stream offset to look at
    std::int64_t candEnd_ = 0;      // where the last candidate ended
};

// The delimiter masks at each vector level (0 plain, 1 SSE2, 2 AVX2), for
// tests that compare them; s[-1] must be readable. Level 0 marks every ':'
// and '.', the others only those after 'p' and 'w' (either case). False
// when this build or processor lacks the level.
namespace scan_detail {
int vectorLevels();
bool eventMasks(int level, const unsigned char* s, std::size_t blocks, bool www, bool mail, std::uint64_t* out);
}  // namespace scan_detail

}  // namespace tav
