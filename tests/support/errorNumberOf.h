#pragma once

#include "platform/runtimeError.h"

// The number of the error that the action throws; 0 if none.
template <class Action>
int errorNumberOf(const Action& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}
