#pragma once

#include "app/base/branch.h"

class Clock;
class Folders;
class Messages;
class Processes;

/// What a run leans on and a test replaces. Made once by the start-up and passed by reference.
struct Environment {
    Folders &folders;
    Clock &clock;
    Messages &messages;
    Processes &processes;
    Branch branch; ///< the current branch
};
