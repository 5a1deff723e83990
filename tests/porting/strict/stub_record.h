// What a module has told the stub host, for the program that loads the module.
#pragma once

#include "platform/host.h"

#pragma GCC visibility push(default)

struct StubRecord {
    void* registered = nullptr; // the handle that the module registered
    void* unlocked = nullptr;   // the handle that the module unlocked
    QeDbDecompositionReactor* reactor = nullptr;
};
StubRecord& stubRecord();

#pragma GCC visibility pop
