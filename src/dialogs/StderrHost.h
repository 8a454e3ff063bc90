#pragma once
// A message host for the command line: writes the box to a stream (the
// title, the message with its line breaks, the controls and the button
// captions) and answers at once, without input: the Esc button when the box
// has one, else the default button. It leaves the codes of the box in the
// calling thread's MessageBoxState.
#include <iosfwd>
#include <string>

#include "core/MessageRequest.h"

namespace tav {

class StderrHost : public MessageHost {
public:
    StderrHost(std::ostream& out, std::string appTitle);

    int show(MessageRequest& request) override;

private:
    std::ostream& out_;
    std::string appTitle_;
};

}  // namespace tav
