#include "extensions.h"

#include "../core/trial.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace Draft {
namespace {

constexpr int interfaceVersion = 0x00180000;
constexpr int started = 1;
constexpr int stopping = 2;

using Version = int (*)();
using Message = int (*)(int message, void* extension);

#ifdef _WIN32
void* openLibrary(const std::filesystem::path& path)
{
    return LoadLibraryW(path.c_str());
}
void closeLibrary(void* library)
{
    FreeLibrary(static_cast<HMODULE>(library));
}
template <class Function>
Function findFunction(void* library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name)));
}
#else
void* openLibrary(const std::filesystem::path& path)
{
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}
void closeLibrary(void* library)
{
    dlclose(library);
}
template <class Function>
Function findFunction(void* library, const char* name)
{
    return reinterpret_cast<Function>(dlsym(library, name));
}
#endif

int send(void* library, int message, Extensions::Number number)
{
    return findFunction<Message>(library, "qerxEntryPoint")(message, reinterpret_cast<void*>(number));
}

} // namespace

Extensions& Extensions::get()
{
    static Extensions extensions;
    return extensions;
}

Outcome Extensions::load(const std::filesystem::path& path, Number& number)
{
    number = 0;
    if (Core::failsNow())
        return Outcome::trialFailure;
    void* const library = openLibrary(path);
    if (!library)
        return Outcome::noRecord;
    const auto version = findFunction<Version>(library, "qerxGetApiVersion");
    if (!version || version() != interfaceVersion || !findFunction<Message>(library, "qerxEntryPoint")) {
        closeLibrary(library);
        return Outcome::badEdition;
    }
    number = ++m_lastNumber;
    m_extensions[number] = {.library = library, .mayBeUnloaded = false};
    send(library, started, number);
    return Outcome::done;
}

Outcome Extensions::unload(Number number)
{
    const auto found = m_extensions.find(number);
    if (found == m_extensions.end())
        return Outcome::badArgument;
    if (!found->second.mayBeUnloaded)
        return Outcome::busy;
    void* const library = found->second.library;
    send(library, stopping, number);
    m_extensions.erase(found);
    closeLibrary(library);
    return Outcome::done;
}

Outcome Extensions::allowUnloading(Number number)
{
    const auto found = m_extensions.find(number);
    if (found == m_extensions.end())
        return Outcome::badArgument;
    found->second.mayBeUnloaded = true;
    return Outcome::done;
}

} // namespace Draft
