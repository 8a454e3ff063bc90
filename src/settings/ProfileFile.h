#pragma once
// One INI file held in memory as its lines, so that a rewrite keeps every
// line it did not change (comments, odd lines, the order of entries).
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tav {

class ProfileFile {
public:
    // Parses file bytes: UTF-8 when valid, else Windows-1252; a BOM is dropped.
    static ProfileFile parse(std::string_view bytes);

    // The stored text of an entry: as written behind "=", trimmed.
    const std::string* find(std::string_view section, std::string_view entry) const;
    bool hasSection(std::string_view section) const;

    void set(std::string_view section, std::string_view entry, std::string_view value);
    bool erase(std::string_view section, std::string_view entry);
    bool eraseSection(std::string_view section);

    std::vector<std::string> sectionNames() const;
    std::vector<std::string> entryNames(std::string_view section) const;

    // The file text, lines ended the platform's way.
    std::string serialize() const;
    size_t serializedSize() const;

private:
    struct Line {
        std::string text;   // the line as written, for lines that are not entries
        std::string key;    // the entry name as written; empty for other lines
        std::string value;  // the entry's value
        bool isEntry = false;
    };
    struct Section {
        std::string name;        // as written; empty for the lines before the first header
        bool hasHeader = false;
        std::vector<Line> lines;
    };

    Section* findSection(std::string_view name);
    const Section* findSection(std::string_view name) const;
    void reindex();

    std::vector<Section> sections_;
    // lower-case "section\x01entry" -> (section index, line index): the first entry wins
    std::unordered_map<std::string, std::pair<size_t, size_t>> index_;
    std::unordered_map<std::string, size_t> sectionIndex_;
};

// Lower-case for the case-insensitive match of section and entry names.
std::string foldName(std::string_view s);

}  // namespace tav
