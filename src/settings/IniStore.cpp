#include "settings/IniStore.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/AppError.h"
#include "core/ListText.h"
#include "core/Utf8.h"
#include "settings/IniNumbers.h"
#include "settings/IniValueCodec.h"

namespace tav {

namespace {
constexpr std::string_view kSplitPrefix = "SplitEntry.";
constexpr std::string_view kAltPrefix = "AltNo.";
const std::string CR = "\r";

bool startsWithFolded(std::string_view s, std::string_view prefix) {
    return s.size() >= prefix.size() && foldName(s.substr(0, prefix.size())) == foldName(prefix);
}

std::string pieceName(int i, std::string_view entry) {
    return std::string(kSplitPrefix) + std::to_string(i) + "." + std::string(entry);
}

std::string countName(std::string_view entry) { return std::string(kSplitPrefix) + std::string(entry); }
}  // namespace

IniStore::IniStore(ProfileService& service, MessageHost* host) : service_(service), host_(host) {}

void IniStore::setDataDir(std::string dir) {
    while (dir.size() > 1 && (dir.back() == '/' || dir.back() == '\\')) dir.pop_back();
    dataDir_ = std::move(dir);
}

std::string IniStore::qualify(std::string_view name) const {
#ifdef _WIN32
    bool full = name.find(":\\") != std::string_view::npos || name.substr(0, 2) == "\\\\";
    const char sep = '\\';
#else
    bool full = !name.empty() && name.front() == '/';
    const char sep = '/';
#endif
    if (full || dataDir_.empty()) return std::string(name);
    return dataDir_ + sep + std::string(name);
}

std::string IniStore::routeSpec(std::string_view section) const {
    const std::string& spec = roleFile(routeSection(section));
    if (!spec.empty()) return spec;
    if (!roleFile(IniRole::Main).empty()) return roleFile(IniRole::Main);
    return qualify("Tavelo.ini");
}

IniStore::Resolved IniStore::resolve(std::string_view section, std::string_view spec) const {
    std::string s = spec == kAutoFile ? routeSpec(section) : std::string(spec);
    Resolved r;
    if (s.rfind(">>", 0) == 0) {
        size_t lt = s.find('<', 2);
        int n = 0;
        std::from_chars(s.data() + 2, s.data() + (lt == std::string::npos ? s.size() : lt), n);
        r.path = lt == std::string::npos ? std::string() : s.substr(lt + 1);
        r.alt = n;
    } else {
        r.path = qualify(s);
    }
    // A plain path of a file with alternates still finds them.
    if (r.alt == 0) {
        for (size_t i = 1; i < altMains_.size(); ++i)
            if (altMains_[i] == r.path) r.alt = static_cast<int>(i);
    }
    if (r.alt <= 0 || static_cast<size_t>(r.alt) >= altLists_.size() || altLists_[r.alt].empty()) r.alt = 0;
    return r;
}

std::string IniStore::specFor(const Resolved& r) const {
    if (r.alt == 0) return r.path;
    return ">>" + std::to_string(r.alt) + "<" + r.path;
}

std::string IniStore::pathOf(std::string_view section, std::string_view file) { return resolve(section, file).path; }

// ---- reading ---------------------------------------------------------------

std::string IniStore::altPath(const Resolved& r, int element) const {
    if (r.alt == 0 || element < 1) return {};
    return listElement(altLists_[r.alt], element);
}

int IniStore::altIndexOf(std::string_view section, std::string_view entry, const Resolved& r) {
    std::string altSection = std::string(kAltPrefix) + std::string(section);
    auto v = service_.read(r.path, altSection, entry);
    if (!v) v = service_.read(r.path, altSection, kAltPrefix);
    if (!v) return 0;
    return static_cast<int>(numberAtStart(*v).value_or(0));
}

std::string IniStore::holderOf(std::string_view section, std::string_view entry, const Resolved& r) {
    if (service_.read(r.path, section, entry)) return r.path;
    return altPath(r, altIndexOf(section, entry, r));
}

std::optional<std::string> IniStore::readStored(std::string_view section, std::string_view entry, const Resolved& r) {
    auto v = service_.read(r.path, section, entry);
    if (v && v->rfind(kNotFoundText, 0) == 0) v.reset();
    if (!v && r.alt) {
        std::string holder = altPath(r, altIndexOf(section, entry, r));
        if (!holder.empty()) {
            v = service_.read(holder, section, entry);
            if (v && v->rfind(kNotFoundText, 0) == 0) v.reset();
        }
    }
    return v;
}

std::string IniStore::applyMissing(int mode, std::string_view section, std::string_view entry, const std::string& path) {
    switch (mode) {
        case kMissingNotFound: return std::string(kNotFoundText);
        case kMissingRaise:
            raiseError(1001, "Entry missing in ini file " + path + ". Section: " + std::string(section) +
                                 ". Entry: " + std::string(entry));
        case kMissingEmpty: return {};
        case kMissingZero: return "0";
        default: break;
    }
    std::string msg = "Error when trying to read from ini file. Entry or section of ini file missing." + CR +
                      "Ini file: " + path + CR + ". Section: " + std::string(section) + CR +
                      ". Entry: " + std::string(entry) + CR + CR + "Error ignored but no data read from ini file." +
                      CR + CR + "Press OK to continue. Press Cancel to Stop with Error.";
    if (ask(msg, "1") == 2) raiseUserStop();
    return {};
}

std::string IniStore::get(std::string_view section, std::string_view entry, std::string& file) {
    const int kept = missingMode;
    missingMode = missingDefault;
    Resolved r = resolve(section, file);
    if (!startsWithFolded(entry, kSplitPrefix)) {
        if (auto count = readStored(section, countName(entry), r)) {
            auto n = numberAtStart(decodeIniValue(*count));
            if (n && *n >= 0 && *n != kNotFoundNumber) {
                std::string all;
                for (int i = 0; i <= static_cast<int>(*n); ++i) {
                    missingMode = kept;
                    all += get(section, pieceName(i, entry), file);
                }
                missingMode = missingDefault;
                return all;
            }
        }
    }
    auto raw = readStored(section, entry, r);
    if (!raw) return applyMissing(kept, section, entry, r.path);
    return decodeIniValue(*raw);
}

std::string IniStore::get(std::string_view section, std::string_view entry, std::string_view file) {
    std::string spec(file);
    return get(section, entry, spec);
}

int IniStore::getInt(std::string_view section, std::string_view entry, std::string_view file) {
    const int kept = missingMode;
    const bool quiet = kept == kMissingNotFound || kept == kMissingEmpty || kept == kMissingZero;
    if (quiet) missingMode = kMissingNotFound;
    std::string v = get(section, entry, file);
    if (quiet && v == kNotFoundText) return kept == kMissingNotFound ? kNotFoundNumber : 0;
    double d = numberAtStart(v).value_or(0);
    return static_cast<int>(std::clamp(std::round(d), -2147483648.0, 2147483647.0));
}

double IniStore::getNum(std::string_view section, std::string_view entry, std::string_view file) {
    const int kept = missingMode;
    const bool quiet = kept == kMissingNotFound || kept == kMissingEmpty || kept == kMissingZero;
    if (quiet) missingMode = kMissingNotFound;
    std::string v = get(section, entry, file);
    if (v == kNotFoundText) return kept == kMissingNotFound || !quiet ? kNotFoundNumber : 0;
    return numberAtStart(v).value_or(0);
}

bool IniStore::getBool(std::string_view section, std::string_view entry, std::string_view file) {
    return valueIsTrue(get(section, entry, file));
}

std::string IniStore::getBit(std::string_view section, std::string_view entry, std::string_view file) {
    return getBool(section, entry, file) ? "1" : "0";
}

// ---- writing ---------------------------------------------------------------

void IniStore::checkNames(std::string_view section, std::string_view entry) {
    if (reservedOk) {
        reservedOk = false;
        return;
    }
    if (startsWithFolded(section, kAltPrefix))
        raiseError(8011, "Section name cannot start with AltNo. : " + std::string(section));
    if (startsWithFolded(entry, kAltPrefix))
        raiseError(8012, "Entry name cannot start with AltNo. : " + std::string(entry));
    if (startsWithFolded(entry, kSplitPrefix))
        raiseError(8013, "Entry name cannot start with SplitEntry. : " + std::string(entry));
}

int IniStore::pieceCount(std::string_view section, std::string_view entry, std::string& spec) {
    auto v = readStored(section, countName(entry), resolve(section, spec));
    if (!v) return -1;
    auto n = numberAtStart(decodeIniValue(*v));
    if (!n || *n < 0 || *n == kNotFoundNumber) return -1;
    return static_cast<int>(*n);
}

void IniStore::put(std::string_view section, std::string_view entry, std::string_view value, std::string_view file) {
    std::string spec(file);
    put(section, entry, value, spec);
}

void IniStore::putNumber(std::string_view section, std::string_view entry, double value, std::string_view file) {
    put(section, entry, numberText(value), file);
}

// One put reaches each file as one atomic replacement, pieces and all.

void IniStore::put(std::string_view section, std::string_view entry, std::string_view value, std::string& file) {
    if (noWrite) return;
    const bool quiet = quietOnce;
    service_.beginBatch();
    try {
        putInBatch(section, entry, value, file);
    } catch (...) {
        service_.endBatch();
        throw;
    }
    if (!service_.endBatch()) {
        quietOnce = quiet;
        report(false, "write to ini file: " + pathOf(section, file) + CR + ". Section: " + std::string(section) + CR +
                          ". Entry: " + std::string(entry) + CR + ". Value: " + std::string(value) + CR + CR +
                          "Error ignored but data not written to ini file.");
    }
}

void IniStore::putInBatch(std::string_view section, std::string_view entry, std::string_view value,
                          std::string& file) {
    const bool routed = file == kAutoFile;
    std::string spec = routed ? routeSpec(section) : file;
    const int oldCount = pieceCount(section, entry, spec);
    const bool internal = reservedOk;
    checkNames(section, entry);
    Resolved r = resolve(section, spec);

    std::string target = r.path;
    if (r.alt) {
        target = holderOf(section, entry, r);
        if (target.empty()) target = fileForNewEntry(section, entry, 0, r);
    }

    if (!internal) {
        MarkerWarnings w = markerWarnings(value);
        if (w.crlf)
            ask(std::string(kWarnCrlf) + kMarkerCrlf +
                    " which will be converted to CR_LF when read again from ini file.", "0");
        if (w.quote)
            ask(std::string(kWarnQuote) + kMarkerQuote +
                    " which will be converted to a quote when read again from ini file.", "0");
        if (w.blank)
            ask(std::string(kWarnBlank) + kMarkerBlank +
                    " which will be converted to a quote when read again from ini file.", "0");
    }

    std::string encoded = encodeIniValue(value);
    if (utf8Length(encoded) > kLongestValue) {
        spec = specFor(r);
        splitValue(section, entry, value, spec);
        eraseStalePieces(section, entry, oldCount, pieceCount(section, entry, spec), spec);
        if (routed) setRoleFile(routeSection(section), spec); else file = spec;
        return;
    }
    if (blankOutControls(encoded)) ask(kWarnControls, "0");
    // A leading blank would be lost to the profile's trimming: quotes keep it.
    if (!encoded.empty() && (encoded.front() == ' ' || encoded.front() == '\t')) encoded = '"' + encoded + '"';

    bool ok = service_.write(target, section, entry, encoded);
    if (!ok && !relocating && service_.lastWriteTooLarge()) {
        relocateFailedWrite(section, entry, encoded, r);
    } else {
        report(ok, "write to ini file: " + target + CR + ". Section: " + std::string(section) + CR +
                       ". Entry: " + std::string(entry) + CR + ". Value: " + std::string(value) + CR + CR +
                       "Error ignored but data not written to ini file.");
    }
    spec = specFor(r);
    eraseStalePieces(section, entry, oldCount, -1, spec);
    if (routed) {
        if (spec != routeSpec(section)) setRoleFile(routeSection(section), spec);
    } else {
        file = spec;
    }
}

// Pieces of 9,500 characters, the last one holding the value's last
// character too, and never a CR cut from its LF.
void IniStore::splitValue(std::string_view section, std::string_view entry, std::string_view value,
                          std::string& spec) {
    std::vector<std::string> pieces;
    size_t start = 0;
    while (start < value.size()) {
        size_t end = start + utf8Offset(value.substr(start), kPieceSize);
        if (end < value.size() && value[end - 1] == '\r' && value[end] == '\n') --end;
        pieces.emplace_back(value.substr(start, end - start));
        start = end;
    }
    for (size_t i = 0; i < pieces.size(); ++i) {
        reservedOk = true;
        put(section, pieceName(static_cast<int>(i), entry), pieces[i], spec);
    }
    reservedOk = true;
    put(section, countName(entry), std::to_string(pieces.size() - 1), spec);
    Resolved r = resolve(section, spec);
    std::string holder = r.alt ? holderOf(section, entry, r) : r.path;
    if (!holder.empty()) service_.eraseEntry(holder, section, entry);
}

// Erases the pieces that a shorter value no longer uses; a value that is no
// longer split loses its piece count as well.
void IniStore::eraseStalePieces(std::string_view section, std::string_view entry, int oldCount, int newCount,
                                std::string& spec) {
    for (int i = newCount + 1; i <= oldCount; ++i) {
        reservedOk = true;
        eraseEntryResolved(section, pieceName(i, entry), spec);
    }
    if (newCount < 0 && oldCount >= 0) {
        reservedOk = true;
        eraseEntryResolved(section, countName(entry), spec);
    }
}

void IniStore::eraseEntry(std::string_view section, std::string_view entry, std::string_view file) {
    std::string spec = file == kAutoFile ? routeSpec(section) : std::string(file);
    eraseEntryResolved(section, entry, spec);
}

void IniStore::eraseEntryResolved(std::string_view section, std::string_view entry, std::string& spec) {
    checkNames(section, entry);
    // A split value goes with its pieces and its piece count.
    const int count = pieceCount(section, entry, spec);
    if (count >= 0) eraseStalePieces(section, entry, count, -1, spec);

    Resolved r = resolve(section, spec);
    std::string target = r.path;
    if (r.alt) {
        std::string holder = holderOf(section, entry, r);
        if (!holder.empty()) target = holder;
    }
    bool ok = service_.eraseEntry(target, section, entry);
    if (ok && target != r.path) service_.eraseEntry(r.path, std::string(kAltPrefix) + std::string(section), entry);
    report(ok, "erase entry from ini file: " + target + CR + ". Section: " + std::string(section) + CR +
                   ". Entry: " + std::string(entry) + CR + CR + "Error ignored but data not written to ini file.");
}

void IniStore::eraseSection(std::string_view section, std::string_view file) {
    checkNames(section, "");
    Resolved r = resolve(section, file);
    bool ok = service_.eraseSection(r.path, section);
    if (r.alt) {
        for (const std::string& alt : splitItems(altLists_[r.alt])) ok = service_.eraseSection(alt, section) && ok;
        ok = service_.eraseSection(r.path, std::string(kAltPrefix) + std::string(section)) && ok;
    }
    report(ok, "erase section from ini file: " + r.path + CR + ". Section: " + std::string(section));
}

void IniStore::flush(std::string_view file) {
    Resolved r = resolve("", file);
    bool ok = service_.flush(r.path);
    report(ok, "flush ini file: " + r.path + CR + CR + "Error ignored but data not written to ini file.");
}

// ---- reporting -------------------------------------------------------------

void IniStore::report(bool ok, const std::string& operation) {
    writeFailed = !ok;
    if (!ok && !quietOnce)
        ask("Return code zero indicating error from attempt to " + operation + CR + CR + "Press OK to continue.", "0");
    quietOnce = false;
}

int IniStore::ask(const std::string& message, const std::string& buttons) {
    if (!host_) return 1;
    MessageRequest request = makeRequest(message, buttons);
    return host_->show(request);
}

}  // namespace tav
