#pragma once
// One prompt of the system, described as data: message, buttons, options,
// title, control specifications with their values, and the lists of the
// list, combo and grid controls. A host renders it and fills in the answer.
#include <string>
#include <utility>
#include <vector>

namespace tav {

struct MessageRequest {
    std::string message;       // lines joined with CR (character 13)
    std::string buttons;       // "|" list of captions, or a standard number as text ("0".."5")
    std::string options;       // the option string
    std::string title;
    std::vector<std::string> ctlSpecs;             // "<Type>|~~|<Spec>" a control; index 0 unused
    std::vector<std::string> values;               // parallel to ctlSpecs; entry 0 is the key data
    std::vector<std::vector<std::string>> lists;   // lists[control][row]
};

// A box with message, buttons and options only.
inline MessageRequest makeRequest(std::string message, std::string buttons, std::string options = {},
                                  std::string title = {}) {
    MessageRequest r;
    r.message = std::move(message);
    r.buttons = std::move(buttons);
    r.options = std::move(options);
    r.title = std::move(title);
    return r;
}

// The answer to a request: the button pressed (from 1), or -2 when a key hid
// the box. Values and lists are edited in place in the request.
class MessageHost {
public:
    virtual ~MessageHost() = default;
    virtual int show(MessageRequest& request) = 0;
};

}  // namespace tav
