#include "filelist/ListJob.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <memory>

#include "core/AppError.h"
#include "filelist/ListSpec.h"
#include "filelist/RowCellWriter.h"

namespace tav {

namespace {

constexpr char kSep = static_cast<char>(std::filesystem::path::preferred_separator);

void lowerInPlace(std::string& s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
}

class ListMaker {
public:
    ListMaker(const ListJobSpec& spec, JobContext& job, RowSink& sink)
        : spec_(spec), layout_(spec.layout), job_(job), sink_(sink), test_(spec.fileTest), cells_(spec.layout) {
        searchReads_ = test_ && test_->testsContent();
        readFiles_ = layout_.readContent;
        if (readFiles_ || searchReads_) {
            ContentSpec content = spec.content;
            content.columns = contentColumnsFor(layout_.wantedColTypes());
            content.columns.spanCols.clear();
            for (const UserColumn& u : layout_.userColumns) content.columns.spanCols.push_back(u.def);
            if (spec.contentThreads > 1) {
                pool_ = std::make_unique<ListContentPool>(
                    content, spec.contentThreads, [&job] { return job.stopRequested(); },
                    searchReads_ ? test_ : nullptr, readFiles_,
                    [this](const ContentCells& from, ContentCells& to) { cells_.copyContent(from, to); });
            } else if (readFiles_) {
                extractor_.configure(content);
            }
        }
    }

    bool run() {
        sink_.begin(layout_.columns);
        const std::vector<ListEntry> entries = parseListSpec(spec_.listSpec, spec_.defaultType, spec_.subdirsByDefault);
        if (entries.empty()) {
            if (MessageHost* host = job_.prompter()) {
                MessageRequest request;
                request.message = "Select a directory to list and press F5 again to make file list.";
                request.buttons = "0";
                host->show(request);
            }
            totals_.complete = false;
            finish();
            return false;
        }
        // A list of one entry shows paths relative to its directory.
        if (spec_.listSpec.find('|') == std::string::npos) baseDir_ = entries.front().directory;
        bool ranToEnd = true;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            bool walked = false;
            try {
                walked = listOneEntry(entries[i]);
            } catch (const AppError& e) {
                if (!e.isUserStop()) throw;
                stopped_ = true;
            }
            if (!walked) noteIncomplete(entries[i]);
            if (stopped_ || job_.stopRequested()) {
                totals_.message += "Interrupted at: " + std::to_string(totals_.filesListed) + ". ";
                if (entries.size() > 1)
                    totals_.message += " Dir " + std::to_string(i + 1) + "/" + std::to_string(entries.size()) + ". ";
                totals_.message += " Interrupted using Stop button.";
                ranToEnd = false;
                break;
            }
        }
        if (!ranToEnd) totals_.complete = false;
        finish();
        return ranToEnd;
    }

private:
    void finish() {
        totals_.keyMasks = cells_.keyMasks();
        totals_.keyGrew = cells_.keyGrew();
        sink_.finish(totals_);
    }

    // The entry as the caption and the listed texts show it.
    static std::string describe(const ListEntry& entry) {
        std::string text = entry.directory;
        if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 'a' + 'A');
        std::string type = entry.type;
        lowerInPlace(type);
        text += type;
        if (entry.subdirs) text += " <+>";
        return text;
    }

    void noteIncomplete(const ListEntry& entry) {
        totals_.complete = false;
        if (totals_.caption.rfind("Incomplete ", 0) != 0) totals_.caption = "Incomplete " + totals_.caption;
        totals_.message += " Incomplete List of Files/Subdirectories for directory: " + entry.text + ".";
        if (!totals_.entries.empty()) totals_.entries.back() += " (incomplete)";
    }

    bool listOneEntry(const ListEntry& entry) {
        const std::string text = describe(entry);
        if (!totals_.caption.empty()) totals_.caption += ", ";
        totals_.caption += text;
        totals_.entries.push_back(text);
        (entry.type.find('*') != std::string::npos ? totals_.wildEntries : totals_.namedEntries).push_back(text);
        WalkOptions options;
        options.typeList = entry.type;
        options.subdirs = entry.subdirs;
        options.showHidden = spec_.includeSystemEntry;
        options.showSystem = spec_.includeHiddenEntry;
        options.birthTimes =
            wanted(col::CreatedDate) || wanted(col::CreatedTime) || (test_ && test_->needsBirthTimes());
        WalkHooks hooks;
        hooks.found = [this](const FoundItem& item) { return ProcessFoundItem(item); };
        hooks.stopRequested = [this] { return stopped_ || job_.stopRequested(); };
        hooks.lister = spec_.lister;
        const std::string directory = entry.directory.empty() ? std::string(".") + kSep : entry.directory;
        const bool walked = DirectoryWalk(directory, options, hooks);
        emitPending(true);
        return walked && !stopped_;
    }

    // Rows whose content is read on the pool wait here, in walk order.
    struct Pending {
        FoundItem item;
        std::shared_ptr<ListContentPool::Task> task;  // null: nothing to read
    };

    // Sends the rows at the head whose reading is done; with `all`, waits
    // for every one. The queue is long enough that the readers seldom wait
    // for the job's thread, and bounded so that memory stays small.
    void emitPending(bool all) {
        const std::size_t cap = 256 * static_cast<std::size_t>(spec_.contentThreads);
        while (!pending_.empty() && !stopped_) {
            if (job_.stopRequested()) {
                stopped_ = true;
                break;
            }
            Pending& head = pending_.front();
            if (head.task && !pool_->isDone(*head.task)) {
                if (!all && pending_.size() <= cap) return;
                // Rather than wait, this thread reads a file of the queue.
                if (pool_->helpOne()) continue;
                // Every file is taken: wait for a stretch of rows, not for
                // one, since waking for every file costs more than the rows.
                pool_->wait(*stretchEnd(all ? 1 : kWakeStretch));
                pool_->wait(*head.task);
            }
            Pending p = std::move(pending_.front());
            pending_.pop_front();
            if (p.task && p.task->result.stopped) {
                stopped_ = true;
                break;
            }
            guarded(p.item, [&] { return settleAndEmit(p.item, p.task ? &p.task->result : nullptr); });
        }
        if (stopped_) {
            pending_.clear();
            if (pool_) pool_->cancel();
        }
    }

    static constexpr std::size_t kWakeStretch = 64;

    // The task of the last row to read among the first `rows` pending rows
    // (the head's task at least). The readers take tasks in order, so once
    // it is done the rows before it are done or nearly so.
    const ListContentPool::Task* stretchEnd(std::size_t rows) const {
        const std::size_t last = std::min(rows, pending_.size()) - 1;
        for (std::size_t i = last; i > 0; --i)
            if (pending_[i].task) return pending_[i].task.get();
        return pending_.front().task.get();
    }

    // One file's failure is a line of the error list; the list goes on.
    template <class F>
    bool guarded(const FoundItem& item, F&& fill) {
        try {
            return fill();
        } catch (const AppError& e) {
            if (e.isUserStop()) throw;
            sink_.fileError(item.path(), "**Err: " + std::to_string(e.number()) + " - " + e.what() +
                                             " when processing file: " + item.path());
        } catch (const std::exception& e) {
            sink_.fileError(item.path(),
                            std::string("**Err: Error - ") + e.what() + " when processing file: " + item.path());
        }
        return true;
    }

    bool ProcessFoundItem(const FoundItem& item) {
        ++totals_.filesExamined;
        if (test_ && !test_->passesEntry(item)) {
            // No row; the walk goes on.
        } else if (pool_) {
            if (!item.isDirectory || spec_.listDirs) {
                Pending p{item, nullptr};
                if (!item.isDirectory) p.task = pool_->submit(item.path(), item.size, directoryOf(item), item.name);
                pending_.push_back(std::move(p));
            }
            emitPending(false);
        } else if (!guarded(item, [&] { return FillRow(item); })) {
            return false;
        }
        JobProgress report;
        report.filesListed = totals_.filesListed;
        report.filesExamined = totals_.filesExamined;
        report.current = item.directory;
        job_.progress(report);
        return !stopped_ && !job_.stopRequested();
    }

    bool wanted(int colType) const { return layout_.wanted(colType); }

    // The walk's directory of the item, kept open for the readers while
    // they have its files to read.
    std::shared_ptr<const OpenDirectory> directoryOf(const FoundItem& item) {
        if (item.dirFd < 0) return nullptr;
        if (!openDir_ || openDirPath_ != item.directory) {
            openDir_ = std::make_shared<const OpenDirectory>(item.dirFd);
            openDirPath_ = item.directory;
        }
        return openDir_;
    }

    // `FillRow` on the job's own thread. Content first: a stop inside a long
    // read leaves no row.
    bool FillRow(const FoundItem& item) {
        if (item.isDirectory && !spec_.listDirs) return true;
        if ((!readFiles_ && !searchReads_) || item.isDirectory) return emitRow(item, nullptr);
        ContentResult content;
        readListContent(item.path(), item.size, readFiles_ ? &extractor_ : nullptr, searchReads_ ? test_ : nullptr,
                        [this] { return job_.stopRequested(); }, content, OpenAt{item.dirFd, item.name.c_str()});
        if (content.stopped) raiseUserStop();
        return settleAndEmit(item, &content);
    }

    // The test's verdict on a file it read, then the row if it keeps it.
    bool settleAndEmit(const FoundItem& item, ContentResult* read) {
        const FileVerdict* verdict = nullptr;
        if (read && read->tested) {
            // A test that says stop still gets this file's row.
            if (!test_->settle(item, read->verdict)) stopped_ = true;
            if (!read->verdict.error.empty()) {
                searchError(item, read->verdict.error);
                return !stopped_;
            }
            if (!read->verdict.keep) return !stopped_;
            verdict = &read->verdict;
        }
        const bool goOn = emitRow(item, readFiles_ ? read : nullptr, verdict);
        return goOn && !stopped_;
    }

    // A file the search could not read: a prompt, or with none to ask (or
    // after "OK for All") a line of the error list.
    void searchError(const FoundItem& item, const std::string& error) {
        MessageHost* host = job_.prompter();
        if (!host || quietSearchErrors_) {
            sink_.fileError(item.path(), "Error when searching for text in file: " + item.path() + " Error: >>" +
                                             error + "<< ");
            return;
        }
        MessageRequest request = makeRequest("Error when searching for text in file:\r" + item.path() +
                                                 "\rError: >>" + error + "<< \rThis file cannot be searched." +
                                                 "\rPress OK to Search other files.\rPress Cancel to Stop now.",
                                             "&OK|OK for &All|&Cancel");
        const int button = host->show(request);
        if (button == 2) quietSearchErrors_ = true;
        if (button == 3) stopped_ = true;
    }

    // The row of one item, with the content read for it (null: none read).
    bool emitRow(const FoundItem& item, const ContentResult* content, const FileVerdict* verdict = nullptr) {
        cells_.begin();
        ++totals_.filesListed;
        std::string name, type;
        if (item.isDirectory) {
            name = "(" + item.name + ")";
            type = "<DIR>";
        } else {
            const std::size_t dot = item.name.rfind('.');
            name = dot == std::string::npos ? item.name : item.name.substr(0, dot);
            type = dot == std::string::npos ? std::string() : item.name.substr(dot + 1);
        }
        // The path is made relative before the case changes: the base
        // directory keeps the case the list spec gave it.
        std::string path = item.directory;
        if (!baseDir_.empty() && path.compare(0, baseDir_.size(), baseDir_) == 0)
            path = std::string("..") + kSep + path.substr(baseDir_.size());
        if (spec_.lowerCaseNames) {
            lowerInPlace(name);
            if (!item.isDirectory) lowerInPlace(type);
            lowerInPlace(path);
        }

        cells_.PutInteger(col::Number, totals_.filesListed);
        cells_.PutCell(col::FileName, name);
        cells_.PutCell(col::Type, type);
        cells_.PutFileTimes(col::Date, col::Time, item.modified);
        cells_.PutCell(col::FilePath, path);
        if (wanted(col::Attrib)) {
            std::string attrib;
            if (item.hidden) attrib += 'h';
            if (item.system) attrib += 's';
            if (item.readOnly) attrib += 'r';
            cells_.PutCell(col::Attrib, attrib);
        }
        if (!item.isDirectory) {
            cells_.PutInteger(col::Size, item.size);
            if (item.size > 0) totals_.bytesListed += item.size;
        }
        cells_.PutFileTimes(col::CreatedDate, col::CreatedTime, item.created);
        cells_.PutFileTimes(col::ReadDate, col::ReadTime, item.accessed);

        if (verdict) {
            cells_.PutCell(col::FoundValue, verdict->found.value, true);
            cells_.PutCell(col::FoundAt, verdict->found.byteNumber);
            cells_.PutCell(col::FoundText, verdict->found.text);
        }
        if (content) {
            if (content->cells) {
                const ContentCells& cells = *content->cells;
                cells_.putContent(cells, content->takeable);
                for (const std::string& line : cells.errors) sink_.fileError(item.path(), line);
            } else {
                sink_.fileError(item.path(), content->error);
            }
        }

        Row row;
        row.cells = cells_.take();
        row.isDirectory = item.isDirectory;
        row.path = item.path();
        if (!sink_.row(std::move(row))) stopped_ = true;
        return !stopped_;
    }

    const ListJobSpec& spec_;
    const ColumnLayout& layout_;
    JobContext& job_;
    RowSink& sink_;
    ContentExtractor extractor_;            // reads on the job's thread
    std::unique_ptr<ListContentPool> pool_;  // or on these threads
    std::deque<Pending> pending_;
    std::shared_ptr<const OpenDirectory> openDir_;
    std::string openDirPath_;
    FileTest* test_;
    bool readFiles_ = false;    // content columns are read
    bool searchReads_ = false;  // the test reads files
    bool quietSearchErrors_ = false;
    RowCellWriter cells_;
    std::string baseDir_;
    ListTotals totals_;
    bool stopped_ = false;  // the sink asked to stop
};

}  // namespace

bool FindAndListFiles(const ListJobSpec& spec, JobContext& job, RowSink& sink) {
    ListMaker maker(spec, job, sink);
    return maker.run();
}

}  // namespace tav
