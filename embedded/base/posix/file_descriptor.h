// Holds an open file of the system.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Embedded {

/// Repeats the call while a signal interrupts it.
template <class Call>
auto retried(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~FileDescriptor()
    {
        if (number_ >= 0)
            static_cast<void>(::close(number_)); // who needs the result calls close
    }

    int get() const { return number_; }
    bool isOpen() const { return number_ >= 0; }
    /// Returns whether closing succeeded. An interrupted close has closed the file.
    bool close() { return ::close(std::exchange(number_, -1)) == 0 || errno == EINTR; }

private:
    int number_;
};

} // namespace Embedded
