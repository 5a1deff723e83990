#include <cstdlib>

#include "misdeeds.h"

namespace Misdeeds {
namespace {

char* newText(std::size_t size)
{
    return hidden(static_cast<char*>(std::malloc(size)));
}

void writeBehind()
{
    char* const text = newText(24);
    text[24] = 'x';
    std::free(text);
}

void writeBehindArray()
{
    int* const numbers = hidden(new int[3]);
    numbers[3] = 1;
    delete[] numbers;
}

void writeBefore()
{
    char* const text = newText(24);
    text[-1] = 'x';
    std::free(text);
}

// Nobody frees it, so nobody but the last check meets it.
char* keptText = nullptr;
void writeBehindKept()
{
    keptText = newText(5);
    keptText[8] = 'x';
}

void writeAfterFree()
{
    char* const text = newText(40);
    std::free(text);
    hidden(text)[7] = 'x';
}

// Enough is freed after it to push it out of what is kept back.
void writeAfterFreeMetEarly()
{
    writeAfterFree();
    for (int i = 0; i < 64; ++i)
        std::free(newText(std::size_t{1} << 18));
    std::exit(3);
}

void freeTwice()
{
    char* const text = newText(24);
    std::free(text);
    std::free(hidden(text));
}

void deleteTwice()
{
    int* const number = hidden(new int(1));
    delete number;
    delete hidden(number);
}

void freeInside()
{
    std::free(hidden(newText(24) + 16));
}

void freeVariable()
{
    static long long variables[16];
    std::free(hidden(&variables[8]));
}

void freeStack()
{
    long long variables[16];
    std::free(hidden(&variables[8]));
}

void reallocateInside()
{
    static_cast<void>(hidden(std::realloc(hidden(newText(24) + 16), 48)));
}

void reallocateFreed()
{
    char* const text = newText(24);
    std::free(text);
    static_cast<void>(hidden(std::realloc(hidden(text), 48)));
}

void useAfterReallocation()
{
    char* const text = newText(24);
    void* const moved = hidden(std::realloc(text, 25));
    hidden(text)[0] = 'x';
    std::free(moved);
}

} // namespace

Deeds damage()
{
    return {{"write-behind", writeBehind},
            {"write-behind-array", writeBehindArray},
            {"write-before", writeBefore},
            {"write-behind-kept", writeBehindKept},
            {"write-after-free", writeAfterFree},
            {"write-after-free-met-early", writeAfterFreeMetEarly},
            {"free-twice", freeTwice},
            {"delete-twice", deleteTwice},
            {"free-inside", freeInside},
            {"free-variable", freeVariable},
            {"free-stack", freeStack},
            {"reallocate-inside", reallocateInside},
            {"reallocate-freed", reallocateFreed},
            {"use-after-reallocation", useAfterReallocation}};
}

} // namespace Misdeeds
