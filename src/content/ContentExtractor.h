#pragma once
// Reads the content columns of one file at a time: configured once per
// refresh with the columns wanted, fed a file's bytes chunk by chunk, then
// asked for the cell texts. One pass over the bytes serves all columns.
//
// The file is taken in sections of 5,000,000 bytes (or only the first part
// when First Part Only is on). When a section is cut by its limit, the next
// one starts again at the section's last '<' if that comes after its last
// '>', so that a tag cut by the section's end is seen whole; a section with
// neither ends the reading, with a line for the error list.
//
// feed() says false as soon as no wanted column can change any more, so the
// reading of a file stops early (a Title-only list reads a page's head); the
// error-list line for a section without tags is made only when the reading
// got to the section's end. Cell texts are UTF-8, with bytes that are not
// valid UTF-8 read as Windows-1252, and tidied; turning line ends into
// blanks for the grid is left to the caller.
//
// An instance is not shared between threads; use one per thread. Its
// buffers are kept from file to file.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "content/Addresses.h"
#include "content/DissectOptions.h"
#include "content/HtmlScanner.h"
#include "content/PlainText.h"
#include "content/SkipList.h"
#include "content/SpanColumns.h"
#include "content/TitleFinder.h"

namespace tav {

struct ContentColumns {
    bool title = false;       // ColType 10
    bool firstBytes = false;  // 15 FirstNBytes, length BytF
    bool lastBytes = false;   // 16 LastNBytes, length BytL
    bool firstPlain = false;  // 21 FirstNBytesPlainText, length PBytF
    bool lastPlain = false;   // 22 LastNBytesPlainText, length PBytL
    bool htmlTags = false;    // 23
    bool metaTags = false;    // 24
    bool www = false;         // 25 WWWAddresses
    bool mail = false;        // 26 MailAddresses
    std::vector<SpanColumnDef> spanCols;  // user columns, 27 and up
};

// The content columns among a list of ColTypes (10, 15, 16, 21 to 26).
// User columns are added separately, as SpanColumnDef.
ContentColumns contentColumnsFor(const std::vector<int>& colTypes);

struct ContentSpec {
    ContentColumns columns;
    DissectOptions options;
    bool convertWwwToHttp = false;  // `fConvertWWWToHttp`
    EndChars wwwEndChars = defaultWwwEndChars();
    EndChars mailEndChars = defaultMailEndChars();
    SkipList skipList;
    bool keepScriptsAndTagText = false;  // gather other tag text and blocks too
    bool keepAllPlainText = false;       // gather the whole plain text
};

struct ContentCells {
    std::string title, firstBytes, lastBytes, firstPlain, lastPlain;
    std::string htmlTags, metaTags, wwwAddresses, mailAddresses;
    std::vector<std::string> spanCols;  // in the order of ContentColumns::spanCols
    std::vector<std::string> errors;    // lines for the window's error list

    // The cell of a standard content ColType; null for any other number.
    const std::string* forColType(int colType) const;
    std::string* forColType(int colType) {
        return const_cast<std::string*>(static_cast<const ContentCells*>(this)->forColType(colType));
    }
};

class ContentExtractor {
public:
    static constexpr std::int64_t kSectionBytes = 5000000;
    // FirstNBytes is cut from the first chunk of a read: its first 10,000 bytes.
    static constexpr std::size_t kFirstChunkBytes = 10000;

    ContentExtractor() = default;
    explicit ContentExtractor(const ContentSpec& spec) { configure(spec); }
    // Parts point into each other: a copy is configured afresh from the spec.
    ContentExtractor(const ContentExtractor& other) { configure(other.spec_); }
    ContentExtractor& operator=(const ContentExtractor& other) {
        if (this != &other) configure(other.spec_);
        return *this;
    }
    void configure(const ContentSpec& spec);
    const ContentSpec& spec() const { return spec_; }
    // Whether any wanted column needs the file's bytes at all.
    bool needsContent() const;

    // fileName is used in error lines only; fileSize -1 when unknown.
    void beginFile(std::string_view fileName, std::int64_t fileSize = -1);
    // Takes the next bytes of the file. False: no more bytes are wanted, the
    // caller may stop reading and call finish().
    bool feed(std::string_view chunk);
    // The file has ended (or the caller stopped reading): makes the cells.
    void finish();
    const ContentCells& cells() const { return cells_; }

    // What the dissection gathered, for views that show more than cells.
    const HtmlScanner& scanner() const { return scanner_; }
    const PlainText& plainText() const { return plain_; }

private:
    void feedSection(std::string_view part);
    void endSection();
    bool startNextSection();
    void trackAngles(std::string_view part);
    bool wantsMore() const;
    void noteError(const char* what);

    ContentSpec spec_;
    bool titleOn_ = false, scannerOn_ = false;
    std::int64_t limit_ = kSectionBytes;   // bytes of a section
    bool sectionsGoOn_ = true;             // a cut section is followed by the next one
    HtmlScanner scanner_;
    TitleFinder title_;
    PlainText plain_;
    SpanColumns span_;

    // State of the current file.
    std::string fileName_;
    std::int64_t fileSize_ = -1;
    bool done_ = false;
    bool finished_ = false;
    bool trackAngles_ = false;
    int sectionIndex_ = 0;
    bool sectionOpen_ = false;   // its end has not been dealt with yet
    std::int64_t sectionStart_ = 0;
    std::int64_t sectionFed_ = 0;
    bool sectionFull_ = false;
    char lastAngle_ = 0;         // '<', '>' or 0: the last of them in the section
    std::int64_t ltPos_ = 0;     // stream offset of that '<'
    std::string ltTail_;         // the section's bytes from that '<' on
    std::string reFeed_;
    std::string firstChunk_;     // first bytes, for FirstNBytes
    bool firstDone_ = false;     // the FirstNBytes cell is made
    std::string lastBytes_;      // rolling tail of the section, for LastNBytes
    std::size_t lastCap_ = 0;
    std::string titleText_;
    int errorCount_ = 0;
    std::string lastError_;
    ContentCells cells_;
    std::string scratch_;                              // kept for its memory
    std::string mailJoined_, wwwJoined_, item_;         // likewise
};

// The plain text of a whole text in memory, skip list applied.
std::string dissectPlainText(std::string_view bytes, const SkipList* skip = nullptr);

}  // namespace tav
