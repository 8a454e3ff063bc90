#include "filelist/GridCsv.h"

#include <cstdio>
#include <filesystem>
#include <memory>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "core/Utf8.h"

namespace fs = std::filesystem;

namespace tav {

std::string CsvProgressText(std::string_view path) {
    return "Writing CSV file " + std::string(path) + ". Please wait ....";
}

std::string CsvField(std::string_view value, const CsvOptions& options) {
    const bool hasQuote = value.find('"') != std::string_view::npos;
    const bool hasBreak = value.find_first_of("\r\n") != std::string_view::npos;
    const bool hasSeparator = value.find(options.separator) != std::string_view::npos;
    std::string text;
    text.reserve(value.size() + 2);
    if (options.doubledQuotes) {
        for (char c : value) {
            if (c == '"') text += '"';
            text += c;
        }
        if (hasQuote || hasBreak || hasSeparator) text = '"' + text + '"';
        return text;
    }
    for (char c : value) {
        if (c == '"')
            text += "&34#";
        else if (c == '\r' || c == '\n')
            text += ' ';
        else
            text += c;
    }
    if (hasSeparator) text = '"' + text + '"';
    return text;
}

std::vector<std::size_t> ShownColumns(const std::vector<ListColumn>& columns) {
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (!columns[i].hidden && !columns[i].isKey) shown.push_back(i);
    return shown;
}

namespace {

struct FileCloser {
    void operator()(std::FILE* f) const {
        if (f) std::fclose(f);
    }
};

fs::path temporaryFor(const fs::path& target) {
    fs::path temp = target;
    temp += ".tmp~";
#ifndef _WIN32
    temp += std::to_string(::getpid());
#endif
    return temp;
}

}  // namespace

CsvResult SaveGridAsCsv(const RowTable& table, const std::vector<std::size_t>& columns, const std::string& path,
                        JobContext& job, const CsvOptions& options) {
    CsvResult result;
    const fs::path target(path);
    const fs::path temp = temporaryFor(target);
    std::unique_ptr<std::FILE, FileCloser> out(std::fopen(temp.string().c_str(), "wb"));
    if (!out) {
        result.error = "cannot create " + temp.string();
        return result;
    }
    std::setvbuf(out.get(), nullptr, _IOFBF, 1 << 16);
    std::error_code ec;
    auto fail = [&](std::string error) {
        out.reset();
        fs::remove(temp, ec);
        result.error = std::move(error);
        return result;
    };

    std::string line;
    auto writeLine = [&]() -> bool {
        line += "\r\n";
        return std::fwrite(line.data(), 1, line.size(), out.get()) == line.size();
    };
    auto addField = [&](std::size_t i, std::string_view value) {
        if (i) line += options.separator;
        line += CsvField(toUtf8(value), options);
    };

    const std::vector<ListColumn>& cols = table.columns();
    if (options.header) {
        line.clear();
        for (std::size_t i = 0; i < columns.size(); ++i)
            addField(i, columns[i] < cols.size() ? std::string_view(cols[columns[i]].caption) : std::string_view());
        if (!writeLine()) return fail("cannot write " + temp.string());
    }
    JobProgress report;
    report.current = CsvProgressText(path);
    for (const Row& r : table.rows()) {
        if (job.stopRequested()) {
            result = fail({});
            result.stopped = true;
            return result;
        }
        if (options.skipHiddenRows && r.hidden) continue;
        line.clear();
        for (std::size_t i = 0; i < columns.size(); ++i)
            addField(i, columns[i] < r.cells.size() ? std::string_view(r.cells[columns[i]]) : std::string_view());
        if (!writeLine()) return fail("cannot write " + temp.string());
        report.filesListed = ++result.rows;
        job.progress(report);
    }
    bool flushed = std::fflush(out.get()) == 0;
#ifndef _WIN32
    if (flushed) flushed = ::fdatasync(::fileno(out.get())) == 0;
#endif
    if (std::fclose(out.release()) != 0) flushed = false;
    if (!flushed) return fail("cannot write " + temp.string());
    fs::rename(temp, target, ec);
    if (ec) return fail("cannot replace " + target.string() + ": " + ec.message());
    result.ok = true;
    return result;
}

}  // namespace tav
