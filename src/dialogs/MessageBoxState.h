#pragma once
// The codes a message box leaves behind for its caller: the number of the
// Cancel button, the secondary (Retry) code, and the key data of the last
// simple box.
//
// Threads: each thread has its own state. It is written and read only by the
// thread that asks the question: MessageHost::show runs on the asking thread
// (a GUI host relays the box to the UI thread and waits for it), and the host
// updates this state there before it returns. A caller may also set
// cancelCode itself before the call to the number of its own Cancel button.
#include <string>

namespace tav {

struct MessageBoxState {
    int cancelCode = 0;        // the Cancel button of the last standard box (or the caller's own)
    int retryCode = 0;         // the Retry button of the last "Abort/Retry/Ignore" or "Retry/Cancel" box
    std::string lastKeyData;   // Values entry 0 of the last simple box: "keycode|shift|control"
};

// The calling thread's state.
MessageBoxState& mbState();

// Back to zero codes and empty key data (for a new run or a test).
void resetMbState();

}  // namespace tav
