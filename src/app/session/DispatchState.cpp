#include "DispatchState.h"

namespace {

DispatchState& state() {
    static DispatchState instance;
    return instance;
}

}  // namespace

DispatchState& dispatchState() { return state(); }
void resetDispatchState() { state() = DispatchState{}; }
