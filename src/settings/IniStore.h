#pragma once
// The one layer through which all settings are read and written. Over the
// profile service it adds: a per-read policy for a missing entry, the value
// encoding, values split into numbered pieces, overflow of a file that grows
// too large into alternate files, and the routing of "::*" by section name.
//
// Used from the interface thread; a job gets the values it needs before it
// starts. The flags below are the layer's shared state.
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/MessageRequest.h"
#include "settings/IniRouting.h"
#include "settings/ProfileService.h"

namespace tav {

// What a read gives for a missing entry.
enum IniMissing : int {
    kMissingPrompt = 0,    // "" after an OK/Cancel prompt; Cancel stops with 1066
    kMissingNotFound = 1,  // "*** not found ***" (numeric reads: 31313)
    kMissingRaise = 2,     // error 1001
    kMissingEmpty = 3,     // "" (numeric reads: 0)
    kMissingZero = 4,      // 0
};

class IniStore {
public:
    static constexpr size_t kFileSizeLimit = 50000;   // above it, entries go to alternate files
    static constexpr size_t kLongestValue = 9998;     // longer encoded values are split
    static constexpr size_t kPieceSize = 9500;

    explicit IniStore(ProfileService& service, MessageHost* host = nullptr);

    ProfileService& service() { return service_; }
    void setHost(MessageHost* host) { host_ = host; }
    MessageHost* host() const { return host_; }

    // The main data directory: the root of every relative name.
    void setDataDir(std::string dir);
    const std::string& dataDir() const { return dataDir_; }
    // A relative name placed in the data directory; a full path as it is.
    std::string qualify(std::string_view name) const;

    // The file specification of each located file (a path or ">>n<path").
    void setRoleFile(IniRole role, std::string spec) { roles_[static_cast<size_t>(role)] = std::move(spec); }
    const std::string& roleFile(IniRole role) const { return roles_[static_cast<size_t>(role)]; }
    std::string& roleFileRef(IniRole role) { return roles_[static_cast<size_t>(role)]; }

    // Shared state. `missingMode` applies to the next read only, then returns to `missingDefault`.
    int missingMode = kMissingPrompt;
    int missingDefault = kMissingPrompt;
    bool noWrite = false;      // while set, puts do nothing (set around loading controls)
    bool quietOnce = false;    // the next failure report shows no message
    bool writeFailed = false;  // the last reported profile call returned zero
    bool relocating = false;   // a failed write is reported, not relocated
    bool reservedOk = false;   // the next name check is skipped

    // Sets the missing mode for the next read: ini.mode(1).get(...).
    IniStore& mode(int m) {
        missingMode = m;
        return *this;
    }

    // Reads. `file` is a file specification and may be changed by the call.
    std::string get(std::string_view section, std::string_view entry, std::string& file);
    std::string get(std::string_view section, std::string_view entry, std::string_view file = kAutoFile);
    int getInt(std::string_view section, std::string_view entry, std::string_view file = kAutoFile);
    double getNum(std::string_view section, std::string_view entry, std::string_view file = kAutoFile);
    bool getBool(std::string_view section, std::string_view entry, std::string_view file = kAutoFile);
    std::string getBit(std::string_view section, std::string_view entry, std::string_view file = kAutoFile);

    // Writes. A number is stored as its text.
    void put(std::string_view section, std::string_view entry, std::string_view value, std::string& file);
    void put(std::string_view section, std::string_view entry, std::string_view value,
             std::string_view file = kAutoFile);
    void putNumber(std::string_view section, std::string_view entry, double value, std::string_view file = kAutoFile);

    void eraseEntry(std::string_view section, std::string_view entry, std::string_view file = kAutoFile);
    void eraseSection(std::string_view section, std::string_view file = kAutoFile);
    void flush(std::string_view file = kAutoFile);

    // Start-up: takes up the alternate files of the file in `fileVar` (which
    // then reads ">>n<path") and merges them back when they fit again.
    void openAltList(std::string& fileVar);

    // The alternate files of each main file that has any; index 0 is not used.
    const std::vector<std::string>& altLists() const { return altLists_; }
    std::string altFilesIni() const { return qualify("AltFiles.ini"); }

    // The path a specification names (after routing).
    std::string pathOf(std::string_view section, std::string_view file);

private:
    struct Resolved {
        std::string path;  // the main file
        int alt = 0;       // index into altLists_, 0 when it has no alternates
    };

    Resolved resolve(std::string_view section, std::string_view spec) const;
    std::string specFor(const Resolved& r) const;
    std::string routeSpec(std::string_view section) const;

    // The stored text of an entry, wherever it lies; nullopt when missing.
    std::optional<std::string> readStored(std::string_view section, std::string_view entry, const Resolved& r);
    // The file that holds an entry (or its section) of a file with alternates; "" when none.
    std::string holderOf(std::string_view section, std::string_view entry, const Resolved& r);
    // The element of the alternate list recorded for an entry or its section; 0 when none.
    int altIndexOf(std::string_view section, std::string_view entry, const Resolved& r);
    std::string altPath(const Resolved& r, int element) const;
    std::string applyMissing(int mode, std::string_view section, std::string_view entry, const std::string& path);

    void checkNames(std::string_view section, std::string_view entry);
    void putInBatch(std::string_view section, std::string_view entry, std::string_view value, std::string& file);
    void splitValue(std::string_view section, std::string_view entry, std::string_view value, std::string& spec);
    void eraseStalePieces(std::string_view section, std::string_view entry, int oldCount, int newCount,
                          std::string& spec);
    int pieceCount(std::string_view section, std::string_view entry, std::string& spec);

    // Overflow into alternate files.
    std::string fileForNewEntry(std::string_view section, std::string_view entry, size_t valueSize, Resolved& r);
    bool relocateFailedWrite(std::string_view section, std::string_view entry, const std::string& value, Resolved& r);
    std::string ensureAlternate(Resolved& r, size_t need, int* element, int errorNumber);
    std::string newAlternate(Resolved& r, int* element, int errorNumber);
    bool moveSectionOut(std::string_view section, Resolved& r, size_t need);
    void recordIndex(std::string_view section, std::string_view entry, int element, Resolved& r);
    void persistAltList(const Resolved& r);
    void merge(int index);

    void eraseEntryResolved(std::string_view section, std::string_view entry, std::string& spec);

    // Reports a profile call's result.
    void report(bool ok, const std::string& operation);
    int ask(const std::string& message, const std::string& buttons);

    ProfileService& service_;
    MessageHost* host_;
    std::string dataDir_;
    std::array<std::string, static_cast<size_t>(IniRole::Count)> roles_;
    std::vector<std::string> altLists_{std::string()};
    std::vector<std::string> altMains_{std::string()};  // the main file of each list
};

}  // namespace tav
