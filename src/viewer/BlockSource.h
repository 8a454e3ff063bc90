#pragma once
// Where the text cache gets its blocks: a file read as raw text, or a text
// already made in memory (the plain text of a file, a grid cell). A source
// gives text after its conversions, and says which byte follows the block.
#include <cstdint>
#include <string>

namespace tav {

struct SourceBlock {
    std::string text;      // converted; may be shorter than the bytes it came from
    int64_t nextByte = -1; // byte number behind the last byte read; -1 on failure
    int64_t length = -1;   // length of the source as seen by this read; -1 if unknown
    std::string error;     // the message for the user when the read failed
};

class BlockSource {
public:
    virtual ~BlockSource() = default;
    // Identifies what the cache holds: two sources with the same key give the same text.
    virtual std::string key() const = 0;
    // The name shown to the user (the file's path).
    virtual std::string name() const = 0;
    // Length in bytes now, or -1 when it cannot be read.
    virtual int64_t length() const = 0;
    // At most `count` bytes from `startByte` (from 1), converted.
    virtual SourceBlock read(int64_t startByte, int64_t count) const = 0;
};

// A file shown as raw text: blank lines optionally collapsed, bytes 0 and 9 as byte 1.
class FileTextSource : public BlockSource {
public:
    // The key holds the file's size and time as they are now, so that a file
    // changed since the cache was filled is read afresh by the next show.
    FileTextSource(std::string path, bool removeBlank);
    std::string key() const override;
    std::string name() const override { return path_; }
    int64_t length() const override;
    SourceBlock read(int64_t startByte, int64_t count) const override;

private:
    std::string path_;
    bool removeBlank_;
    std::string stamp_;
};

// A text held in memory; one character a byte. Each source is a text of
// its own: two sources made from one file at different times never share
// what the cache holds.
class MemoryTextSource : public BlockSource {
public:
    MemoryTextSource(std::string name, std::string text, std::string kind = "Memory");
    std::string key() const override { return kind_ + '\n' + name_ + '\n' + serial_; }
    std::string name() const override { return name_; }
    int64_t length() const override { return static_cast<int64_t>(text_.size()); }
    SourceBlock read(int64_t startByte, int64_t count) const override;
    const std::string& text() const { return text_; }

private:
    std::string name_;
    std::string text_;
    std::string kind_;
    std::string serial_;
};

}  // namespace tav
