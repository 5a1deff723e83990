// A library as the project's are: with its own copy of the C++ library in it, and the C runtime's heap for all.
#include <cstddef>
#include <cstring>
#include <string>

namespace {

// Allocated before the program that loads the library has it in hand.
const std::string* const initial = new std::string(100, 'i');
void* kept = nullptr;

} // namespace

extern "C" __declspec(dllexport) char* lend(std::size_t size)
{
    char* const block = new char[size];
    if (LIBRARY_KEEPS)
        kept = block;
    return block;
}

extern "C" __declspec(dllexport) void takeBack(const char* block)
{
    delete[] block;
}

extern "C" __declspec(dllexport) void writeInto(char* block, std::size_t size)
{
    std::memset(block, 'w', size);
}

extern "C" __declspec(dllexport) void freeInitial()
{
    delete initial;
}
