// Holds an open file of the system.
#pragma once

#include <windows.h>

#include <utility>

namespace Embedded {

class FileHandle {
public:
    explicit FileHandle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    FileHandle(FileHandle&& other) noexcept : handle_(std::exchange(other.handle_, INVALID_HANDLE_VALUE)) {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~FileHandle() { close(); }

    HANDLE get() const { return handle_; }
    bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    void close()
    {
        if (isOpen())
            static_cast<void>(CloseHandle(
                std::exchange(handle_, INVALID_HANDLE_VALUE))); // who needs the content on disk flushes first
    }

private:
    HANDLE handle_;
};

} // namespace Embedded
