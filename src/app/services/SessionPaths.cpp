#include "SessionPaths.h"

SessionPaths& sessionPaths() {
    static SessionPaths paths;
    return paths;
}

void resetSessionPaths() { sessionPaths() = SessionPaths{}; }
