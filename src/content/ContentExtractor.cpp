#include "content/ContentExtractor.h"

#include <new>

#include "content/DisplayText.h"
#include "content/Tidy.h"

namespace tav {

namespace {

std::size_t toSize(std::int64_t v) { return v > 0 ? static_cast<std::size_t>(v) : 0; }

bool isAscii(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

// A list's cell from its items joined by the list separator: tidied, and
// read as display text when it holds bytes beyond ASCII.
void listCell(std::string& cell, const std::string& joined) {
    if (joined.empty()) {
        cell.clear();
    } else if (isAscii(joined)) {
        Tidy(joined, 0, 1, true, cell);
    } else {
        Tidy(toDisplayText(joined), 0, 1, true, cell);
    }
}

void joinItems(std::string& joined, const ItemList& items, std::size_t count, const std::string& separator) {
    joined.clear();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) joined.append(separator);
        joined.append(items[i]);
    }
}

void appendItem(std::string& joined, std::string_view item, const std::string& separator, bool& first) {
    if (!first) joined.append(separator);
    joined.append(item);
    first = false;
}

// Tidy of raw bytes cut to maxLength characters, converting only as much of
// the bytes as the cut needs. The tail of a prefix can change only the last
// few characters of its tidied text, hence the margin.
std::string tidyBytes(std::string_view bytes, std::size_t maxLength) {
    constexpr std::size_t kMargin = 8;
    if (maxLength > 0) {
        // Most texts are ASCII with few blanks to drop: a short prefix
        // usually gives enough characters, and a longer one is tried if not.
        for (std::size_t take = maxLength + 64; take < bytes.size(); take *= 4) {
            std::string t = Tidy(toDisplayText(bytes.substr(0, take)), maxLength + kMargin, 1, true);
            if (charCount(t) >= maxLength + kMargin) {
                t.resize(byteLengthOfChars(t, maxLength));
                return t;
            }
        }
    }
    return Tidy(toDisplayText(bytes), maxLength, 1, true);
}

}  // namespace

ContentColumns contentColumnsFor(const std::vector<int>& colTypes) {
    ContentColumns c;
    for (int t : colTypes) {
        switch (t) {
            case 10: c.title = true; break;
            case 15: c.firstBytes = true; break;
            case 16: c.lastBytes = true; break;
            case 21: c.firstPlain = true; break;
            case 22: c.lastPlain = true; break;
            case 23: c.htmlTags = true; break;
            case 24: c.metaTags = true; break;
            case 25: c.www = true; break;
            case 26: c.mail = true; break;
            default: break;
        }
    }
    return c;
}

const std::string* ContentCells::forColType(int colType) const {
    switch (colType) {
        case 10: return &title;
        case 15: return &firstBytes;
        case 16: return &lastBytes;
        case 21: return &firstPlain;
        case 22: return &lastPlain;
        case 23: return &htmlTags;
        case 24: return &metaTags;
        case 25: return &wwwAddresses;
        case 26: return &mailAddresses;
        default: return nullptr;
    }
}

void ContentExtractor::configure(const ContentSpec& spec) {
    spec_ = spec;
    const ContentColumns& c = spec_.columns;
    const DissectOptions& o = spec_.options;
    titleOn_ = c.title || !c.spanCols.empty();
    HtmlScanner::Wants wants;
    wants.tags = c.htmlTags;
    wants.meta = c.metaTags;
    wants.www = c.www;
    wants.mail = c.mail;
    wants.blocks = spec_.keepScriptsAndTagText;
    plain_.configure(c.firstPlain ? toSize(o.PBytF) : 0, c.lastPlain ? toSize(o.PBytL) : 0,
                     spec_.keepAllPlainText, o.MaxLenPTTT, &spec_.skipList);
    scanner_.configure(o, wants, spec_.wwwEndChars, spec_.mailEndChars, plain_.wanted() ? &plain_ : nullptr);
    scannerOn_ = scanner_.needed();
    span_.configure(c.spanCols);
    if (o.Only1stPart) {
        limit_ = o.Only1stByt > 0 ? o.Only1stByt : INT64_MAX;
        sectionsGoOn_ = false;
    } else {
        limit_ = kSectionBytes;
        sectionsGoOn_ = true;
    }
    lastCap_ = c.lastBytes ? toSize(o.BytL) * 8 : 0;
}

bool ContentExtractor::needsContent() const {
    const ContentColumns& c = spec_.columns;
    return titleOn_ || scannerOn_ || c.firstBytes || c.lastBytes || c.firstPlain || c.lastPlain;
}

void ContentExtractor::beginFile(std::string_view fileName, std::int64_t fileSize) {
    fileName_.assign(fileName.data(), fileName.size());
    fileSize_ = fileSize;
    done_ = finished_ = false;
    sectionIndex_ = 0;
    sectionOpen_ = true;
    sectionStart_ = sectionFed_ = 0;
    sectionFull_ = false;
    lastAngle_ = 0;
    ltPos_ = 0;
    ltTail_.clear();
    firstChunk_.clear();
    firstDone_ = false;
    lastBytes_.clear();
    titleText_.clear();
    errorCount_ = 0;
    lastError_.clear();
    cells_.errors.clear();
    trackAngles_ = sectionsGoOn_ && (fileSize < 0 || fileSize > limit_);
    try {
        if (titleOn_) title_.begin();
        plain_.begin();
        if (scannerOn_) scanner_.beginFile();
        span_.beginFile();
        span_.beginSection(0);
    } catch (const std::bad_alloc&) {
        noteError("Out of memory");
    }
}

void ContentExtractor::noteError(const char* what) {
    ++errorCount_;
    lastError_ = what;
}

void ContentExtractor::trackAngles(std::string_view part) {
    std::size_t k = part.size();
    while (k > 0 && part[k - 1] != '<' && part[k - 1] != '>') --k;
    if (k == 0) {
        if (lastAngle_ == '<') ltTail_.append(part);
        return;
    }
    if (part[k - 1] == '>') {
        lastAngle_ = '>';
        ltTail_.clear();
    } else {
        lastAngle_ = '<';
        ltPos_ = sectionStart_ + sectionFed_ + static_cast<std::int64_t>(k - 1);
        ltTail_.assign(part.data() + k - 1, part.size() - (k - 1));
    }
}

void ContentExtractor::feedSection(std::string_view part) {
    if (part.empty()) return;
    if (sectionIndex_ == 0 && spec_.columns.firstBytes && !firstDone_) {
        if (firstChunk_.empty() && part.size() >= kFirstChunkBytes) {
            // The whole first chunk is at hand: cut the cell from it at once.
            cells_.firstBytes = tidyBytes(part.substr(0, kFirstChunkBytes), toSize(spec_.options.BytF));
            firstDone_ = true;
        } else {
            const std::size_t n = part.size() < kFirstChunkBytes - firstChunk_.size()
                                      ? part.size()
                                      : kFirstChunkBytes - firstChunk_.size();
            firstChunk_.append(part.data(), n);
            if (firstChunk_.size() >= kFirstChunkBytes) {
                cells_.firstBytes = tidyBytes(firstChunk_, toSize(spec_.options.BytF));
                firstDone_ = true;
            }
        }
    }
    if (lastCap_ > 0) {
        if (part.size() >= lastCap_) {
            lastBytes_.assign(part.data() + part.size() - lastCap_, lastCap_);
        } else {
            lastBytes_.append(part);
            if (lastBytes_.size() > 2 * lastCap_) lastBytes_.erase(0, lastBytes_.size() - lastCap_);
        }
    }
    if (titleOn_ && sectionIndex_ == 0 && !title_.done()) title_.feed(part);
    if (scannerOn_ && scanner_.active()) scanner_.feed(part);
    if (!span_.empty()) span_.feed(part);
    if (trackAngles_) trackAngles(part);
    sectionFed_ += static_cast<std::int64_t>(part.size());
}

void ContentExtractor::endSection() {
    if (!sectionOpen_) return;
    sectionOpen_ = false;
    if (scannerOn_) scanner_.endSection();
    if (sectionIndex_ == 0) {
        if (titleOn_) titleText_ = title_.result();
        plain_.freezeFirst();
    }
    if (!span_.empty()) span_.FillSpanCols(titleText_);
}

// The current section was cut by its limit. True if the next one begins.
bool ContentExtractor::startNextSection() {
    endSection();
    if (!sectionsGoOn_) return false;
    if (lastAngle_ == 0) {
        cells_.errors.push_back("No html tags (<html>, <p> etc.) in section of 64,000 bytes. Rest of file >>" +
                                fileName_ + "<< skipped.");
        return false;
    }
    const std::int64_t sectionEnd = sectionStart_ + sectionFed_;
    const std::int64_t base = lastAngle_ == '<' ? ltPos_ : sectionEnd;
    reFeed_.swap(ltTail_);
    if (lastAngle_ != '<') reFeed_.clear();
    ++sectionIndex_;
    sectionOpen_ = true;
    sectionStart_ = base;
    sectionFed_ = 0;
    sectionFull_ = false;
    lastAngle_ = 0;
    ltTail_.clear();
    lastBytes_.clear();
    if (scannerOn_) scanner_.beginSection(base);
    span_.beginSection(base);
    // The bytes from the last '<' are read again, as the start of this section.
    feedSection(reFeed_);
    if (sectionFed_ >= limit_) sectionFull_ = true;
    return true;
}

bool ContentExtractor::wantsMore() const {
    const ContentColumns& c = spec_.columns;
    if (c.lastBytes) return true;
    if (c.lastPlain && !plain_.stopped()) return true;
    if (scannerOn_ && scanner_.active()) return true;
    if (!span_.empty()) return true;
    if (sectionIndex_ == 0) {
        if (titleOn_ && !title_.done()) return true;
        if (c.firstBytes && !firstDone_) return true;
        if (c.firstPlain) return true;
    }
    return false;
}

bool ContentExtractor::feed(std::string_view chunk) {
    if (done_) return false;
    try {
        while (!chunk.empty()) {
            if (sectionFull_ && !startNextSection()) {
                done_ = true;
                return false;
            }
            const std::int64_t room = limit_ - sectionFed_;
            const std::size_t take = static_cast<std::int64_t>(chunk.size()) < room ? chunk.size() : static_cast<std::size_t>(room);
            feedSection(chunk.substr(0, take));
            chunk.remove_prefix(take);
            if (sectionFed_ >= limit_) sectionFull_ = true;
        }
    } catch (const std::bad_alloc&) {
        noteError("Out of memory");
    }
    // A first part that is full takes nothing more.
    if (!wantsMore() || (sectionFull_ && !sectionsGoOn_)) done_ = true;
    return !done_;
}

void ContentExtractor::finish() {
    if (finished_) return;
    finished_ = true;
    const ContentColumns& c = spec_.columns;
    const DissectOptions& o = spec_.options;
    try {
        endSection();
        cells_.title = c.title ? titleText_ : std::string();
        if (!c.firstBytes) {
            cells_.firstBytes.clear();
        } else if (!firstDone_) {
            cells_.firstBytes = tidyBytes(firstChunk_, toSize(o.BytF));
        }
        if (c.lastBytes) {
            std::string text = toDisplayText(lastBytes_);
            const std::size_t chars = charCount(text);
            const std::size_t want = 2 * toSize(o.BytL);
            if (chars > want) text.erase(0, byteLengthOfChars(text, chars - want));
            cells_.lastBytes = Tidy(text, toSize(o.BytL), 1, true);
        } else {
            cells_.lastBytes.clear();
        }
        cells_.firstPlain = plain_.firstCell();
        cells_.lastPlain = plain_.lastCell();
        const HtmlScanner& sc = scanner_;
        joinItems(scratch_, sc.tags(), c.htmlTags ? sc.tags().size() : 0, o.LstSep);
        listCell(cells_.htmlTags, scratch_);
        joinItems(scratch_, sc.metaTags(), c.metaTags ? sc.metaTags().size() : 0, o.LstSep);
        listCell(cells_.metaTags, scratch_);
        // The candidates, WWW ones first, split into the two lists.
        mailJoined_.clear();
        wwwJoined_.clear();
        bool firstMail = true, firstWww = true;
        if (c.www || c.mail) {
            for (const ItemList* list : {&sc.wwwCandidates(), &sc.mailCandidates()}) {
                for (std::size_t i = 0; i < list->size(); ++i) {
                    const char where = splitAddress((*list)[i], c.mail, c.www, spec_.convertWwwToHttp, item_);
                    if (where == 'm') appendItem(mailJoined_, item_, o.LstSep, firstMail);
                    if (where == 'w') appendItem(wwwJoined_, item_, o.LstSep, firstWww);
                }
            }
        }
        listCell(cells_.wwwAddresses, wwwJoined_);
        listCell(cells_.mailAddresses, mailJoined_);
        cells_.spanCols.resize(span_.size());
        for (std::size_t i = 0; i < span_.size(); ++i) cells_.spanCols[i] = span_.cell(i);
    } catch (const std::bad_alloc&) {
        noteError("Out of memory");
    }
    if (errorCount_ > 0)
        cells_.errors.push_back(std::to_string(errorCount_) + " errors when analysing html. Last error: " + lastError_ +
                                " in file >>" + fileName_ + "<<");
}

std::string dissectPlainText(std::string_view bytes, const SkipList* skip) {
    ContentSpec spec;
    spec.keepAllPlainText = true;
    if (skip) spec.skipList = *skip;
    spec.options.Only1stPart = true;  // one section: the whole text
    spec.options.Only1stByt = 0;
    ContentExtractor x(spec);
    x.beginFile({}, static_cast<std::int64_t>(bytes.size()));
    x.feed(bytes);
    x.finish();
    return x.plainText().allText();
}

}  // namespace tav
