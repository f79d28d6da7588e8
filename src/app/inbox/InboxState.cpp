#include "InboxState.h"

InboxState& inboxState() {
    static InboxState state;
    return state;
}

void resetInboxState() { inboxState() = InboxState{}; }
