#include "dialogs/MessageBoxState.h"

namespace tav {

MessageBoxState& mbState() {
    thread_local MessageBoxState state;
    return state;
}

void resetMbState() { mbState() = MessageBoxState{}; }

}  // namespace tav
