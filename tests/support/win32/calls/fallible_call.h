// A call of the system's that can be made to fail: the test programs have it in the place of the system's own.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "embedded/diagnostics/fault_injection.h"

namespace Tests {

/// The system's own function of that name. Whoever links this folder in reaches it in no other way.
template <class Function>
Function* systemFunction(const wchar_t* library, const char* name)
{
    const HMODULE module = LoadLibraryW(library); // for as long as the program runs
    const FARPROC address = module != nullptr ? GetProcAddress(module, name) : nullptr;
    if (address == nullptr)
        throw std::runtime_error(std::string("the system has no ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

template <class Function>
struct StruckCall;

/// What is known of a call: where the system has it, the name under which it is made to fail, and how it does.
template <class Result, class... Arguments>
struct StruckCall<Result(Arguments...)> {
    const wchar_t* library;
    const char* name;
    Result failure;
    /// What is left to do when the result is there, planned or the system's.
    void (*settle)(Result result, Arguments... arguments) = nullptr;

    Result operator()(Arguments... arguments) const
    {
        static const auto real = systemFunction<Result(Arguments...)>(library, name);
        const auto planned = Embedded::FaultInjection::injectedFailure(name, failure);
        const Result result = planned ? *planned : real(arguments...);
        if (settle != nullptr)
            settle(result, arguments...);
        return result;
    }
};

/// The call as a function that can be pointed at.
template <const auto& call, class Result, class... Arguments>
Result struck(Arguments... arguments)
{
    return call(arguments...);
}

} // namespace Tests
