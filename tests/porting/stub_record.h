// What the stub host hears from a module, for the program that loads one.
#pragma once

#include "platform/host.h"

#pragma GCC visibility push(default)

struct StubRecord {
    void* worksWithSeveralDocuments = nullptr; // the handle that the module declared it for
    void* unlocked = nullptr;                  // the handle that the module unlocked
    QeDbDecompositionReactor* reactor = nullptr;
};
StubRecord& stubRecord();

#pragma GCC visibility pop
