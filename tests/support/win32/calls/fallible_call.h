// A system call that a test can make fail. The test programs call it instead of the system's function.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "embedded/diagnostics/fault_injection.h"

namespace Tests {

/// Looks up the system's function. Programs that link this folder reach it in no other way.
template <class Function>
Function* systemFunction(const wchar_t* library, const char* name)
{
    const HMODULE module = LoadLibraryW(library); // for as long as the program runs
    const FARPROC address = module != nullptr ? GetProcAddress(module, name) : nullptr;
    if (address == nullptr)
        throw std::runtime_error(std::string("the system does not export ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

template <class Function>
struct FallibleCall;

/// A call: the library that exports it, its name for the system and for fault injection, and its result on failure.
template <class Result, class... Arguments>
struct FallibleCall<Result(Arguments...)> {
    const wchar_t* library;
    const char* name;
    Result failure;
    /// Runs after the call, whether it failed or not.
    void (*afterwards)(Result result, Arguments... arguments) = nullptr;

    Result operator()(Arguments... arguments) const
    {
        static const auto real = systemFunction<Result(Arguments...)>(library, name);
        const auto injected = Embedded::FaultInjection::injectedFailure(name, failure);
        const Result result = injected ? *injected : real(arguments...);
        if (afterwards != nullptr)
            afterwards(result, arguments...);
        return result;
    }
};

/// The call as a function with an address.
template <const auto& call, class Result, class... Arguments>
Result callOrFail(Arguments... arguments)
{
    return call(arguments...);
}

} // namespace Tests
