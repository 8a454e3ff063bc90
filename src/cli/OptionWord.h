#pragma once
// One command-line word, with "--name=value" taken apart.
#include <string>

namespace tav::cli {

struct OptionWord {
    std::string name;   // the word, or the part before "=" of a "--name=value"
    std::string value;  // the part after "="
    bool hasValue = false;
};

inline OptionWord splitOptionWord(const std::string& word) {
    OptionWord w{word, {}, false};
    const size_t eq = word.find('=');
    if (word.rfind("--", 0) == 0 && eq != std::string::npos) {
        w.name = word.substr(0, eq);
        w.value = word.substr(eq + 1);
        w.hasValue = true;
    }
    return w;
}

}  // namespace tav::cli
