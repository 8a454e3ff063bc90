#pragma once
// Reading files for the content columns of a list: each file opened once,
// read in chunks of kListReadChunk bytes until the extractor wants no more,
// and closed. On the job's thread, or on worker threads that each keep their
// own extractor; the job takes the results back in the order it asked.
// With a file test (a search), the test reads the file and feeds the
// extractor on the way, so the file is still read once.
#include <condition_variable>
#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "content/ContentExtractor.h"
#include "filelist/FileTest.h"

namespace tav {

inline constexpr std::size_t kListReadChunk = 64 * 1024;

struct ContentResult {
    const ContentCells* cells = nullptr;  // set when the file was read (or partly)
    // The same cells when the job may take their texts: made by the pool's
    // cell copy (see ListContentPool::CellCopy).
    ContentCells* takeable = nullptr;
    std::string error;                    // the file could not be read
    bool stopped = false;                 // a stop came during the read
    bool tested = false;                  // a file test judged the file
    FileVerdict verdict;                  // its verdict
};

// Where a file may be opened by its name alone: in an open directory. Opening
// it there spares the kernel the lookup of every directory of its path.
struct OpenAt {
    int dirFd = -1;  // -1: open by the path
    const char* name = nullptr;
};

// A directory kept open (a duplicate of the walk's handle) for the reads of
// its files on other threads; closed with its last user.
class OpenDirectory {
public:
    explicit OpenDirectory(int fd);
    ~OpenDirectory();
    OpenDirectory(const OpenDirectory&) = delete;
    OpenDirectory& operator=(const OpenDirectory&) = delete;
    int fd() const { return fd_; }

private:
    int fd_;
};

// Reads one file through `extractor`; `stop` is tested before each chunk.
void readListContent(const std::string& path, std::int64_t size, ContentExtractor& extractor,
                     const std::function<bool()>& stop, ContentResult& out, OpenAt at = {});
// The same with a file test: the test reads the file and feeds `extractor`
// (null: no content columns). Without a test, as above.
void readListContent(const std::string& path, std::int64_t size, ContentExtractor* extractor, const FileTest* test,
                     const std::function<bool()>& stop, ContentResult& out, OpenAt at = {});

class ListContentPool {
public:
    struct Task {
        std::string path;
        std::int64_t size = -1;
        std::shared_ptr<const OpenDirectory> directory;  // null: opened by the path
        std::string name;                                // the name in `directory`
        ContentCells cells;    // written by the worker, read by the job after `done`
        ContentResult result;
        bool done = false;     // guarded by the pool's mutex
    };

    // How a worker hands an extractor's cells to the task; it runs on the
    // worker, so work done here (cleaning cells) is off the job's thread.
    // Empty: a plain copy.
    using CellCopy = std::function<void(const ContentCells& from, ContentCells& to)>;

    // `threads` readers: threads - 1 workers, and the job's own thread when
    // it helps (`helpOne`) rather than wait; at least one worker.
    // `stop` is called from the workers and must be safe to call there.
    // With `test`, files are read through it; `readContent` false: the
    // extractors are not fed (only the test reads).
    ListContentPool(const ContentSpec& spec, int threads, std::function<bool()> stop,
                    const FileTest* test = nullptr, bool readContent = true, CellCopy copy = {});
    ~ListContentPool();
    ListContentPool(const ListContentPool&) = delete;
    ListContentPool& operator=(const ListContentPool&) = delete;

    std::shared_ptr<Task> submit(std::string path, std::int64_t size,
                                 std::shared_ptr<const OpenDirectory> directory = {}, std::string name = {});
    bool isDone(const Task& task);
    // Reads the first task no reader has taken whose file has at most
    // kHelpBytes, on the calling thread (the job's); false when there is none.
    bool helpOne();
    static constexpr std::int64_t kHelpBytes = 4 << 20;
    void wait(const Task& task);
    // Tasks not begun are dropped; those under way stop at their next chunk.
    void cancel();

private:
    void work(ContentExtractor& extractor);
    void run(Task& task, ContentExtractor& extractor);

    std::function<bool()> stop_;
    std::function<bool()> readerStop_;  // a cancel or the job's stop
    CellCopy copy_;
    const FileTest* test_ = nullptr;
    bool readContent_ = true;
    std::atomic<bool> cancelled_{false};
    std::mutex mutex_;
    std::condition_variable wake_;  // workers: a task, or the end
    std::condition_variable ready_; // the job: a task is done
    std::deque<std::shared_ptr<Task>> queue_;
    const Task* awaited_ = nullptr;  // the task the job waits for: only its end wakes the job
    bool ending_ = false;
    std::vector<ContentExtractor> extractors_;
    std::vector<std::thread> threads_;
};

}  // namespace tav
