#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <direct.h>
#include <malloc.h>

#include "misdeeds.h"

namespace Misdeeds {
namespace {

void require(bool condition, const char* what)
{
    if (condition)
        return;
    std::printf("not so: %s\n", what);
    std::exit(5);
}

bool isAll(const void* block, int value, std::size_t size)
{
    const auto* const bytes = static_cast<const unsigned char*>(block);
    for (std::size_t i = 0; i < size; ++i)
        if (bytes[i] != value)
            return false;
    return true;
}

void useRuntimeFunctions()
{
    void* block = std::calloc(10, 5);
    require(isAll(block, 0, 50), "calloc clears");
    require(reinterpret_cast<std::uintptr_t>(block) % 16 == 0, "blocks are aligned");
    require(_msize(block) == 50, "the size is the one asked for");
    std::memset(block, 'b', 50);
    block = std::realloc(block, 5000);
    require(isAll(block, 'b', 50), "a larger block has the former's bytes");
    block = std::realloc(block, 20);
    require(isAll(block, 'b', 20), "a smaller block has the former's first bytes");
    require(std::realloc(block, 0) == nullptr, "a block of no bytes is none");
    std::free(std::realloc(nullptr, 12));
    std::free(nullptr);
}

void useTexts()
{
    char* const narrow = _strdup("narrow");
    wchar_t* const wide = _wcsdup(L"wide");
    require(std::strcmp(narrow, "narrow") == 0 && std::wcscmp(wide, L"wide") == 0, "texts are copied");
    std::free(narrow);
    std::free(wide);
    // The runtime allocates it.
    wchar_t* const folder = _wgetcwd(nullptr, 0);
    require(folder != nullptr, "there is a current folder");
    std::free(std::realloc(folder, 4096));
    void* const aligned = _aligned_malloc(100, 256);
    require(reinterpret_cast<std::uintptr_t>(aligned) % 256 == 0, "it is aligned");
    _aligned_free(aligned);
}

void useContainers()
{
    std::vector<std::string> texts;
    for (int i = 0; i < 20000; ++i)
        texts.push_back(std::string(static_cast<std::size_t>(i % 300), 'c'));
    try {
        throw std::runtime_error(texts[299]);
    } catch (const std::runtime_error& error) {
        require(error.what() == texts[299], "exceptions carry their text");
    }
}

void useThreads()
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(useContainers);
    for (std::thread& thread : threads)
        thread.join();
}

void runOut()
{
    constexpr std::size_t tooMuch = SIZE_MAX - 8;
    errno = 0;
    require(std::malloc(hidden(tooMuch)) == nullptr && errno == ENOMEM, "malloc says that it has no memory");
    errno = 0;
    require(std::calloc(hidden(tooMuch / 2), 4) == nullptr && errno == ENOMEM, "calloc does");
    void* const block = std::malloc(10);
    require(std::realloc(block, hidden(tooMuch)) == nullptr, "realloc does");
    require(_msize(block) == 10, "the block is there all the same");
    std::free(block);
    try {
        static_cast<void>(hidden(new char[hidden(tooMuch / 2)]));
        require(false, "new throws");
    } catch (const std::bad_alloc&) {
    }
}

void fillFresh()
{
    void* const block = std::malloc(50);
    require(isAll(block, 0xCB, 50), "fresh memory is filled");
    std::free(block);
    require(isAll(hidden(block), 0xDB, 50), "freed memory is filled");
}

void endWithAnotherCode()
{
    std::exit(3);
}

} // namespace

Deeds properUse()
{
    return {{"use-runtime-functions", useRuntimeFunctions},
            {"use-texts", useTexts},
            {"use-containers", useContainers},
            {"use-threads", useThreads},
            {"run-out", runOut},
            {"fill-fresh", fillFresh},
            {"end-with-another-code", endWithAnotherCode}};
}

} // namespace Misdeeds
