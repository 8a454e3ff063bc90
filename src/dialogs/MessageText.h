#pragma once
// Texts of a message box as a renderer or a plain host shows them.
#include <string>
#include <string_view>

namespace tav {

// The caption of the box. A title beginning with "-" follows the
// application's message title after a blank ("- [Rename]" gives
// "<app title> - [Rename]"); any other non-empty title stands alone; an
// empty one takes the application's message title, or when that is empty
// too, the caption of the main window.
std::string resolveTitle(std::string_view title, std::string_view appMessageTitle,
                         std::string_view mainWindowCaption = {});

// A caption without its accelerator marker: "&Yes" -> "Yes", "A&&B" -> "A&B".
std::string captionText(std::string_view caption);

// The accelerator key of a caption, lower case; 0 when it has none. "&&"
// counts as no accelerator.
char acceleratorOf(std::string_view caption);

// The message as plain text: every "&" stays, "#H160#" (the accelerator
// marker a caller may put into a message) is dropped, and CR line breaks
// become "\n" (a CR/LF pair stays one break).
std::string messagePlainText(std::string_view message);

// The message for a label that takes "&" as its accelerator marker: every
// "&" doubled, then "#H160#" turned into "&". Line breaks stay as given.
std::string messageLabelText(std::string_view message);

}  // namespace tav
