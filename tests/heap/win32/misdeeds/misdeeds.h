// What the program can be told to do, one function each. None of them is inlined, so that no address of a block stays
// behind in the frame of the caller.
#pragma once

#include <map>
#include <string_view>

namespace Misdeeds {

using Deeds = std::map<std::string_view, void (*)()>;

Deeds damage();
Deeds leaks();
Deeds libraries();
Deeds properUse();

/// Keeps the compiler from knowing where the pointer comes from: it would warn of all that is done here.
template <class Pointer>
Pointer hidden(Pointer pointer)
{
    asm volatile("" : "+r"(pointer));
    return pointer;
}

} // namespace Misdeeds
