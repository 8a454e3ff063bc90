#pragma once
// A file read for a search that hands on every byte it reads, in order from
// the first, to the content columns of the list (a ContentFeed). The search
// walks forward block by block, so its reads give the feed the file in
// order; bytes read out of order (the context of a hit further back) are
// not passed twice. When the search is done, feedRest() reads on for the
// feed alone. The feed gets pieces of at least kListReadChunk bytes, as the
// list maker's own reads give them, except for the last.
#include <cstdint>
#include <functional>
#include <string>

#include "filelist/FileTest.h"
#include "find/ByteSource.h"

namespace tav {

class FeedingFileBytes : public FileBytes {
public:
    // `feed` may be empty: then this is a plain FileBytes.
    FeedingFileBytes(std::string path, ContentFeed feed);

    const char* view(int64_t from, int64_t to, bool forward) override;
    std::string read(int64_t from, int64_t to) override;

    // Reads on until the feed wants no more or the file ends, and hands
    // over what is held back. False when `stop` said so (tested between
    // pieces) or the file could not be read.
    bool feedRest(const std::function<bool()>& stop);

    bool feedDone() const { return done_; }

private:
    void pass(int64_t from, const char* bytes, size_t count);
    void flush();

    ContentFeed feed_;
    int64_t fedTo_ = 0;    // the last byte taken into pending_ or fed
    std::string pending_;  // bytes held until there is a whole piece
    bool done_ = false;    // the feed wants no more
};

}  // namespace tav
