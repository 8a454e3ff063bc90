#pragma once
// Where a search reads its bytes: a file of any size, or text in memory.
// Byte numbers count from 1; ranges are [from, to), to exclusive.
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual int64_t length() const = 0;
    // The bytes [from, to) as one piece, valid until the next call of view;
    // nullptr when they cannot be read (error() says why). `forward` tells
    // which way the caller is walking, so a file can read ahead that way.
    virtual const char* view(int64_t from, int64_t to, bool forward) = 0;
    // A copy of [from, to), clipped to the source; served from the piece
    // held by view when it lies inside it, without moving it. Sets the error
    // and returns what it could read on a failure.
    virtual std::string read(int64_t from, int64_t to) = 0;
    const std::string& error() const { return error_; }

protected:
    std::string error_;
};

// Text held in memory (a section of a window, a string under test).
class MemoryBytes : public ByteSource {
public:
    explicit MemoryBytes(std::string_view bytes) : bytes_(bytes) {}
    int64_t length() const override { return static_cast<int64_t>(bytes_.size()); }
    const char* view(int64_t from, int64_t to, bool forward) override;
    std::string read(int64_t from, int64_t to) override;

private:
    std::string_view bytes_;
};

// A file read through a window of a few hundred kilobytes, so memory does
// not grow with the file. The file is opened on the first read and closed
// when the object goes.
class FileBytes : public ByteSource {
public:
    explicit FileBytes(std::string path, size_t windowSize = 256 * 1024);
    ~FileBytes() override;
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;

    // Opens the file and learns its length; false (and error()) on failure.
    bool open();
    int64_t length() const override { return length_; }
    const char* view(int64_t from, int64_t to, bool forward) override;
    std::string read(int64_t from, int64_t to) override;

private:
    bool readAt(int64_t from, char* into, size_t count);

    std::string path_;
    size_t windowSize_;
    int64_t length_ = 0;
    struct Handle;
    std::unique_ptr<Handle> handle_;
    std::vector<char> window_;
    int64_t windowStart_ = 1;  // byte number of window_[0]
    size_t windowLength_ = 0;
};

// Reads the bytes [from, to] of a file (to inclusive, clipped to the file),
// at most maxLength of them (0: no limit); `truncated` tells that the limit
// cut it. On failure the result is empty and *error holds the text.
struct FileBytesResult {
    std::string bytes;
    bool truncated = false;
    std::string error;
};
FileBytesResult readFileBytes(const std::string& path, int64_t fromByte, int64_t toByte, int64_t maxLength = 0);

}  // namespace tav
