// A shared library mapped into the process: the operating system's part of loading a module.
#pragma once

#include <filesystem>
#include <string>
#include <utility>

#include "platform/export.h"

namespace Embedded {

class FQCORE_API SharedLibrary {
public:
    SharedLibrary() = default;
    /// Maps the library; when that fails the result is empty and `error` says why, in the system's words.
    static SharedLibrary open(const std::filesystem::path& file, std::string& error);
    ~SharedLibrary();
    SharedLibrary(SharedLibrary&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    SharedLibrary& operator=(SharedLibrary&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }

    explicit operator bool() const { return handle_ != nullptr; }
    /// Null when the library does not export the name.
    void* symbol(const char* name) const;
    /// Whether both are the same library, which the system maps but once.
    bool isSameAs(const SharedLibrary& other) const { return handle_ == other.handle_; }

private:
    explicit SharedLibrary(void* handle) : handle_(handle) {}

    void* handle_ = nullptr;
};

} // namespace Embedded
