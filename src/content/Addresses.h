#pragma once
// WWW and mail address candidates: the characters that end them, and the
// final split of the candidates into the MailAddresses and WWWAddresses lists.
#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tav {

class ItemList;

// One list of end characters (`End Chars for WWW addr.s` or
// `End Chars for Email addr.s`). Carriage return and line feed always end a
// candidate, whatever the list holds.
class EndChars {
public:
    EndChars();
    // From the stored `|` list of single characters (brackets {} allowed).
    static EndChars fromList(std::string_view list);
    static EndChars fromChars(std::string_view chars);

    void add(unsigned char c) { table_[c] = true; }
    void remove(unsigned char c);
    bool ends(unsigned char c) const { return table_[c]; }
    // The characters of the list, without the line ends; "**Empty**" when none.
    std::string describe() const;
    // The stored form: a `|` list of the characters, without the line ends.
    std::string toList() const;
    const std::array<bool, 256>& table() const { return table_; }

private:
    std::array<bool, 256> table_{};
};

// The shipped defaults.
EndChars defaultWwwEndChars();
EndChars defaultMailEndChars();

// Splits candidates into the two lists. A candidate holding '@' is a mail
// address when mail is wanted; any other goes to the WWW list when WWW is
// wanted. Items are appended to the lists.
void SplitAddresses(const std::vector<std::string>& candidates, bool mailWanted, bool wwwWanted,
                    bool convertWwwToHttp, std::vector<std::string>& mailList,
                    std::vector<std::string>& wwwList);

// The same over a gathered list of candidates.
void SplitAddresses(const ItemList& candidates, bool mailWanted, bool wwwWanted, bool convertWwwToHttp,
                    std::vector<std::string>& mailList, std::vector<std::string>& wwwList);

// One candidate's place: 'm' for the mail list, 'w' for the WWW list, 0 for
// neither; `item` gets the text that goes there.
char splitAddress(std::string_view candidate, bool mailWanted, bool wwwWanted, bool convertWwwToHttp,
                  std::string& item);

// The cleaning of one mail candidate (the rules of SplitAddresses).
std::string cleanMailCandidate(std::string_view candidate);

}  // namespace tav
