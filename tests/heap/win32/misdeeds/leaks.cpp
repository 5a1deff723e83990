#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "misdeeds.h"

namespace Misdeeds {
namespace {

struct Link {
    std::shared_ptr<Link> next;
};

struct First {
    virtual ~First() = default;
    int first = 1;
};
struct Second {
    virtual ~Second() = default;
    int second = 2;
};
struct Both : First, Second {};

void leakOne()
{
    std::memset(hidden(std::malloc(48)), 0, 48);
}

void leakObject()
{
    static_cast<void>(hidden(new std::vector<int>(7)));
}

void leakCycle()
{
    auto one = std::make_shared<Link>();
    one->next = std::make_shared<Link>();
    one->next->next = one;
}

void* keptBlock = nullptr;
void keepInVariable()
{
    keptBlock = std::malloc(48);
}

std::unique_ptr<std::vector<std::vector<int>>>* keptTree = nullptr;
void keepThroughBlocks()
{
    keptTree = new auto(std::make_unique<std::vector<std::vector<int>>>(3, std::vector<int>(5)));
}

Second* keptSecond = nullptr;
void keepByBaseClass()
{
    keptSecond = new Both;
}

thread_local void* keptByThread = nullptr;
void keepInThread()
{
    keptByThread = std::malloc(48);
}

DWORD WINAPI waitForever(void* block)
{
    void* volatile keptOnStack = block;
    static_cast<void>(keptOnStack);
    Sleep(INFINITE); // the process ends meanwhile
    return 0;
}

void keepOnOtherStack()
{
    CloseHandle(CreateThread(nullptr, 0, waitForever, std::malloc(48), 0, nullptr));
}

void* keptEmpty = nullptr;
void keepEmpty()
{
    keptEmpty = std::malloc(0);
}

} // namespace

Deeds leaks()
{
    return {{"leak-one", leakOne},
            {"leak-object", leakObject},
            {"leak-cycle", leakCycle},
            {"keep-in-variable", keepInVariable},
            {"keep-through-blocks", keepThroughBlocks},
            {"keep-by-base-class", keepByBaseClass},
            {"keep-in-thread", keepInThread},
            {"keep-on-other-stack", keepOnOtherStack},
            {"keep-empty", keepEmpty}};
}

} // namespace Misdeeds
