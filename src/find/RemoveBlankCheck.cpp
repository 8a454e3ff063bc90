#include "find/RemoveBlankCheck.h"

#include "find/ComplexCriteria.h"

namespace tav {

std::string withCharacterCodes(std::string_view value) {
    std::string out;
    for (char ch : value) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 32 || c == 127)
            out += "&#" + std::to_string(c);
        else
            out += ch;
    }
    return out;
}

std::vector<std::string> removeBlankProblems(const FindCriteria& criteria, bool sectionSearch) {
    std::vector<std::string> lines;
    const ComplexCriteria complex = parseComplexCriteria(criteria.complex);
    std::vector<std::string> values{criteria.text};
    values.insert(values.end(), complex.values.begin(), complex.values.end());
    for (const std::string& v : values) {
        if (v.empty()) continue;
        const std::string shown = "Search value >>" + withCharacterCodes(v) + "<<";
        if (v.find_first_of("\r\n") != std::string::npos)
            lines.push_back(shown + " includes CR or LF [Carriage Return or Line Feed].");
        else if (v.back() == ' ')
            lines.push_back(shown + " has spaces at end.");
    }
    if (sectionSearch) {
        const std::pair<const std::vector<std::string>*, const char*> lists[] = {
            {&complex.excludeLineStarts, "Exclude Lines Which Start [l]"},
            {&complex.excludeSameLine, "Exclude When one of following on Same line as text to find [s]"},
            {&complex.includeLineStarts, "Only Find When Line Starts [l]"},
            {&complex.includeSameLine, "Only Find When one of following on Same line as text to find [s]"},
        };
        for (const auto& [list, caption] : lists)
            if (!list->empty())
                lines.push_back(std::string("Complex criteria includes criteria \"") + caption + ": >>" +
                                withCharacterCodes(list->front()) + "<< ... \"");
    }
    return lines;
}

RemoveBlankOutcome checkRemoveBlank(const FindCriteria& criteria, bool removeBlankOn, bool sectionSearch,
                                    MessageHost& host) {
    RemoveBlankOutcome outcome;
    if (!removeBlankOn) return outcome;
    const std::vector<std::string> problems = removeBlankProblems(criteria, sectionSearch);
    if (problems.empty()) return outcome;
    std::string message;
    for (const std::string& line : problems) message += line + "\r";
    message +=
        "Option to remove blank lines cannot be used for this search value. If you continue with search now, this "
        "option will be switched off. You can switch it on again using the Text section on Options screen.\r"
        "[Search Value is shown with all special (non-printable) characters in format &#nn where nn is the "
        "character code]\r"
        "Press OK to continue. \r"
        "Press Cancel to stop.";
    MessageRequest request = makeRequest(message, "1");
    const int answer = host.show(request);
    outcome.goOn = answer == 1;
    outcome.switchOff = outcome.goOn;
    return outcome;
}

}  // namespace tav
