// A shared library mapped into the process: the operating system's part of loading a module.
#pragma once

#include <filesystem>
#include <utility>

#include "embedded/base/error.h"
#include "platform/export.h"

namespace Embedded {

class FQCORE_API SharedLibrary {
public:
    /// Maps the library. The Error has the system's words; its status is 0.
    static Expected<SharedLibrary> open(const std::filesystem::path& file);
    ~SharedLibrary();
    SharedLibrary(SharedLibrary&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    SharedLibrary& operator=(SharedLibrary&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }

    /// Null when the library does not export the name.
    void* symbol(const char* name) const;
    /// Returns whether both are the same library. The system maps a library only once and returns the same handle each
    /// time.
    bool isSameAs(const SharedLibrary& other) const { return handle_ == other.handle_; }

private:
    explicit SharedLibrary(void* handle) : handle_(handle) {}

    void* handle_ = nullptr;
};

/// The file of the shared library or program that contains the address; empty when there is none.
FQCORE_API std::filesystem::path libraryFileAt(const void* address);

} // namespace Embedded
