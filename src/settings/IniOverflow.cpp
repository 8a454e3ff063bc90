// Overflow of an INI file into alternate files, and their merge back at start.
#include <filesystem>

#include "core/AppError.h"
#include "core/ListText.h"
#include "core/UniqueName.h"
#include "settings/IniNumbers.h"
#include "settings/IniStore.h"

namespace fs = std::filesystem;

namespace tav {

namespace {
constexpr std::string_view kAltPrefix = "AltNo.";

size_t sizeOf(const std::string& path) { return ProfileService::fileSize(path).value_or(0); }

bool isAltSection(std::string_view name) {
    return name.size() >= kAltPrefix.size() && foldName(name.substr(0, kAltPrefix.size())) == foldName(kAltPrefix);
}
}  // namespace

void IniStore::persistAltList(const Resolved& r) {
    service_.write(altFilesIni(), "Main", r.path, altLists_[r.alt]);
}

std::string IniStore::newAlternate(Resolved& r, int* element, int errorNumber) {
    std::string error;
    std::string path = uniqueFileName(r.path, &error);
    if (path.empty() || !ProfileService::writeFileAtomic(path, "", &error))
        raiseError(errorNumber, "Cannot make an alternate file for " + r.path + ": " + error);
    if (r.alt == 0) {
        altLists_.push_back(path);
        altMains_.push_back(r.path);
        r.alt = static_cast<int>(altLists_.size() - 1);
        *element = 1;
    } else {
        altLists_[r.alt] += "|" + path;
        *element = static_cast<int>(splitItems(altLists_[r.alt]).size());
    }
    persistAltList(r);
    return path;
}

// The last alternate when it has room for `need` bytes, else a new one.
std::string IniStore::ensureAlternate(Resolved& r, size_t need, int* element, int errorNumber) {
    if (r.alt == 0) return newAlternate(r, element, 6233);
    auto items = splitItems(altLists_[r.alt]);
    const std::string& last = items.back();
    if (sizeOf(last) + need > kFileSizeLimit) return newAlternate(r, element, errorNumber);
    *element = static_cast<int>(items.size());
    return last;
}

std::string IniStore::fileForNewEntry(std::string_view section, std::string_view entry, size_t valueSize,
                                      Resolved& r) {
    const size_t need = entry.size() + 1 + valueSize;
    int element = 0;
    std::string alt = ensureAlternate(r, need, &element, 6235);
    if (sizeOf(r.path) + entry.size() + 1 > kFileSizeLimit && moveSectionOut(section, r, need)) {
        std::string holder = altPath(r, altIndexOf(section, entry, r));
        if (!holder.empty()) return holder;
    }
    recordIndex(section, entry, element, r);
    return alt;
}

bool IniStore::relocateFailedWrite(std::string_view section, std::string_view entry, const std::string& value,
                                   Resolved& r) {
    const size_t need = entry.size() + 1 + value.size();
    int element = 0;
    std::string alt = ensureAlternate(r, need, &element, 6235);
    service_.eraseEntry(r.path, section, entry);
    if (sizeOf(r.path) + entry.size() + 1 > kFileSizeLimit) {
        moveSectionOut(section, r, need);
        auto items = splitItems(altLists_[r.alt]);
        alt = items.back();
        element = static_cast<int>(items.size());
        if (sizeOf(alt) + need > kFileSizeLimit) alt = newAlternate(r, &element, 6235);
    }
    relocating = true;
    bool ok = service_.write(alt, section, entry, value);
    report(ok, "write to ini file: " + alt + "\r. Section: " + std::string(section) + "\r. Entry: " +
                   std::string(entry) + "\r. Value: " + value + "\r\rError ignored but data not written to ini file.");
    relocating = false;
    recordIndex(section, entry, element, r);
    writeFailed = !ok;
    return ok;
}

// Records where an entry (or, under "AltNo.", a whole section) lies. When the
// main file is too full even for that, its sections move out one by one.
void IniStore::recordIndex(std::string_view section, std::string_view entry, int element, Resolved& r) {
    const std::string altSection = std::string(kAltPrefix) + std::string(section);
    for (int guard = 0; guard < 10000; ++guard) {
        if (service_.write(r.path, altSection, entry, std::to_string(element))) return;
        std::string next;
        for (const std::string& name : service_.sectionNames(r.path))
            if (!isAltSection(name)) {
                next = name;
                break;
            }
        if (next.empty() || !moveSectionOut(next, r, 0)) break;
    }
    writeFailed = true;
}

bool IniStore::moveSectionOut(std::string_view section, Resolved& r, size_t need) {
    if (isAltSection(section)) return false;
    ProfileFile main = service_.snapshot(r.path);
    if (!main.hasSection(section)) return false;

    std::vector<std::pair<std::string, std::string>> entries;
    size_t textSize = section.size() + 3;
    for (const std::string& name : main.entryNames(section)) {
        const std::string* v = main.find(section, name);
        entries.emplace_back(name, v ? *v : std::string());
        textSize += name.size() + 2 + entries.back().second.size();
    }
    if (textSize > kFileSizeLimit)
        raiseError(19132, "Section too large to move to an alternate file: " + std::string(section));

    int element = 0;
    std::string alt = ensureAlternate(r, need, &element, 6235);
    ProfileFile altFile = service_.snapshot(alt);
    if (sizeOf(alt) + need + textSize > kFileSizeLimit || altFile.hasSection(section)) {
        alt = newAlternate(r, &element, 6235);
        altFile = service_.snapshot(alt);
    }
    for (const auto& [name, value] : entries) altFile.set(section, name, value);
    if (!service_.replace(alt, altFile)) return false;
    main.eraseSection(section);
    if (!service_.replace(r.path, main)) return false;
    recordIndex(section, kAltPrefix, element, r);
    return true;
}

void IniStore::openAltList(std::string& fileVar) {
    if (fileVar.rfind(">>", 0) == 0) return;
    std::string path = qualify(fileVar);
    auto list = service_.read(altFilesIni(), "Main", path);
    if (!list || list->empty()) return;
    altLists_.push_back(*list);
    altMains_.push_back(path);
    const int index = static_cast<int>(altLists_.size() - 1);
    fileVar = ">>" + std::to_string(index) + "<" + path;
    merge(index);
    if (altLists_[index].empty()) fileVar = path;
}

// Alternate files live only while they are needed: when the main file and
// its alternates fit in one file again, they become one.
void IniStore::merge(int index) {
    const std::string main = altMains_[index];
    auto alternates = splitItems(altLists_[index]);
    auto total = ProfileService::fileSize(main);
    if (!total || *total > kFileSizeLimit) return;
    for (const std::string& alt : alternates) {
        auto size = ProfileService::fileSize(alt);
        if (!size) return;
        *total += *size;
        if (*total > kFileSizeLimit) return;
    }

    ProfileFile merged = service_.snapshot(main);
    for (const std::string& alt : alternates) {
        service_.invalidate(alt);
        ProfileFile part = service_.snapshot(alt);
        for (const std::string& section : part.sectionNames()) {
            for (const std::string& name : part.entryNames(section))
                if (const std::string* v = part.find(section, name)) merged.set(section, name, *v);
            merged.eraseSection(std::string(kAltPrefix) + section);
        }
    }
    service_.eraseEntry(altFilesIni(), "Main", main);
    if (!service_.replace(main, merged)) {
        service_.write(altFilesIni(), "Main", main, altLists_[index]);
        return;
    }
    altLists_[index].clear();
    for (const std::string& alt : alternates) {
        std::error_code ec;
        fs::remove(alt, ec);
        service_.invalidate(alt);
    }
}

}  // namespace tav
