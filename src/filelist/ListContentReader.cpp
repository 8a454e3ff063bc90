#include "filelist/ListContentReader.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace tav {

namespace {

class FileCloser {
public:
    explicit FileCloser(int fd) : fd_(fd) {}
    ~FileCloser() {
        if (fd_ >= 0) ::close(fd_);
    }
    FileCloser(const FileCloser&) = delete;
    FileCloser& operator=(const FileCloser&) = delete;

private:
    int fd_;
};

}  // namespace

OpenDirectory::OpenDirectory(int fd) : fd_(fd >= 0 ? ::fcntl(fd, F_DUPFD_CLOEXEC, 0) : -1) {}

OpenDirectory::~OpenDirectory() {
    if (fd_ >= 0) ::close(fd_);
}

void readListContent(const std::string& path, std::int64_t size, ContentExtractor& extractor,
                     const std::function<bool()>& stop, ContentResult& out, OpenAt at) {
    extractor.beginFile(path, size);
    const int fd = at.dirFd >= 0 && at.name ? ::openat(at.dirFd, at.name, O_RDONLY | O_CLOEXEC)
                                            : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        out.error = "Error opening file >>" + path + "<<.";
        extractor.finish();
        return;
    }
    FileCloser closer(fd);
    thread_local std::vector<char> buffer;
    buffer.resize(kListReadChunk);
    // The walk gave the size: once that much is read, no read is spent on
    // finding the end (a file that grew since is read as the walk saw it).
    std::int64_t left = size;
    for (;;) {
        if (left == 0) break;
        if (stop && stop()) {
            out.stopped = true;
            return;
        }
        const ssize_t got = ::read(fd, buffer.data(), buffer.size());
        if (got < 0) {
            if (errno == EINTR) continue;
            out.error = "Error reading file >>" + path + "<<.";
            break;
        }
        if (got == 0) break;
        std::size_t take = static_cast<std::size_t>(got);
        if (left > 0) {
            if (static_cast<std::int64_t>(take) > left) take = static_cast<std::size_t>(left);
            left -= static_cast<std::int64_t>(take);
        }
        if (!extractor.feed(std::string_view(buffer.data(), take))) break;
    }
    extractor.finish();
    if (out.error.empty()) out.cells = &extractor.cells();
}

void readListContent(const std::string& path, std::int64_t size, ContentExtractor* extractor, const FileTest* test,
                     const std::function<bool()>& stop, ContentResult& out, OpenAt at) {
    if (!test) {
        if (extractor) readListContent(path, size, *extractor, stop, out, at);
        return;
    }
    ContentFeed feed;
    if (extractor) {
        extractor->beginFile(path, size);
        feed = [extractor](std::string_view bytes) { return extractor->feed(bytes); };
    }
    out.tested = true;
    out.verdict = test->testContent(path, size, feed, stop);
    if (out.verdict.stopped) {
        out.stopped = true;
        return;
    }
    if (!extractor) return;
    extractor->finish();
    if (out.verdict.error.empty())
        out.cells = &extractor->cells();
    else
        out.error = out.verdict.error;
}

ListContentPool::ListContentPool(const ContentSpec& spec, int threads, std::function<bool()> stop,
                                 const FileTest* test, bool readContent, CellCopy copy)
    : stop_(std::move(stop)), copy_(std::move(copy)), test_(test), readContent_(readContent) {
    if (threads < 2) threads = 2;
    readerStop_ = [this] { return cancelled_.load() || (stop_ && stop_()); };
    // One extractor a worker, and the last for the job's own thread.
    extractors_.resize(static_cast<std::size_t>(threads));
    for (ContentExtractor& e : extractors_) e.configure(spec);
    for (std::size_t i = 0; i + 1 < extractors_.size(); ++i) {
        ContentExtractor& e = extractors_[i];
        threads_.emplace_back([this, &e] { work(e); });
    }
}

ListContentPool::~ListContentPool() {
    cancel();
    {
        std::lock_guard<std::mutex> lock(mutex_);
        ending_ = true;
    }
    wake_.notify_all();
    for (std::thread& t : threads_) t.join();
}

std::shared_ptr<ListContentPool::Task> ListContentPool::submit(std::string path, std::int64_t size,
                                                               std::shared_ptr<const OpenDirectory> directory,
                                                               std::string name) {
    auto task = std::make_shared<Task>();
    task->path = std::move(path);
    task->size = size;
    task->directory = std::move(directory);
    task->name = std::move(name);
    {
        std::lock_guard<std::mutex> lock(mutex_);
        queue_.push_back(task);
    }
    wake_.notify_one();
    return task;
}

bool ListContentPool::isDone(const Task& task) {
    std::lock_guard<std::mutex> lock(mutex_);
    return task.done;
}

void ListContentPool::wait(const Task& task) {
    std::unique_lock<std::mutex> lock(mutex_);
    awaited_ = &task;
    ready_.wait(lock, [&] { return task.done; });
    awaited_ = nullptr;
}

void ListContentPool::cancel() {
    cancelled_.store(true);
    std::deque<std::shared_ptr<Task>> dropped;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        dropped.swap(queue_);
        for (auto& t : dropped) {
            t->result.stopped = true;
            t->done = true;
        }
    }
    ready_.notify_all();
}

bool ListContentPool::helpOne() {
    std::shared_ptr<Task> task;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        // The first file small enough: a long read here would hold up the
        // rows the job sends on.
        auto it = queue_.begin();
        while (it != queue_.end() && ((*it)->size < 0 || (*it)->size > kHelpBytes)) ++it;
        if (it == queue_.end()) return false;
        task = std::move(*it);
        queue_.erase(it);
    }
    run(*task, extractors_.back());
    return true;
}

void ListContentPool::work(ContentExtractor& extractor) {
    for (;;) {
        std::shared_ptr<Task> task;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            wake_.wait(lock, [&] { return ending_ || !queue_.empty(); });
            if (queue_.empty()) return;
            task = std::move(queue_.front());
            queue_.pop_front();
        }
        run(*task, extractor);
    }
}

void ListContentPool::run(Task& task, ContentExtractor& extractor) {
    ContentResult result;
    OpenAt at;
    if (task.directory && task.directory->fd() >= 0) at = OpenAt{task.directory->fd(), task.name.c_str()};
    readListContent(task.path, task.size, readContent_ ? &extractor : nullptr, test_, readerStop_, result, at);
    if (result.cells) {
        if (copy_)
            copy_(*result.cells, task.cells);
        else
            task.cells = *result.cells;
    }
    bool awaited = false;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        task.result = std::move(result);
        if (task.result.cells) {
            task.result.cells = &task.cells;
            if (copy_) task.result.takeable = &task.cells;
        }
        task.done = true;
        awaited = awaited_ == &task;
    }
    if (awaited) ready_.notify_all();
}

}  // namespace tav
