// Holds the lock of the user's stores, as another process would.
#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

namespace Tests {

class HeldLock {
public:
    explicit HeldLock(const std::filesystem::path& file)
        : descriptor_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600))
    {
        if (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0)
            throw std::runtime_error("the lock is not free");
    }
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;
    ~HeldLock() { release(); }

    void release()
    {
        if (descriptor_ >= 0)
            ::close(descriptor_);
        descriptor_ = -1;
    }

private:
    int descriptor_;
};

} // namespace Tests
