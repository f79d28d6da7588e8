// What the inbox channels keep between notifications.
#pragma once

#include <chrono>

struct InboxState {
    // Blocks a second view move while a render the first one caused is running.
    bool FOLDERMONITORINGBUSY = false;
    // The last folder notification handled; one within 100 ms of it is a repeat.
    std::chrono::steady_clock::time_point lastChange{};
    bool anyChange = false;
};

InboxState& inboxState();
void resetInboxState();
