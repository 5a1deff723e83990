// What the guarded heap has to say, put together and written without a single allocation.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace GuardedHeap {

/// How a process ends whose heap was misused, and one that passed but leaked. Nothing else in the project ends so.
inline constexpr unsigned kDamageExitCode = 86;
inline constexpr unsigned kLeakExitCode = 87;

struct Hexadecimal {
    std::size_t value;
};

class Report {
public:
    Report& operator<<(std::string_view text);
    Report& operator<<(std::size_t number);
    Report& operator<<(Hexadecimal number);
    /// Ends the line and hands it to the standard error stream; each line begins with the heap's name.
    void endLine();
    /// Ends the line and the process, without its exit handlers: they would use the heap.
    [[noreturn]] void endProcess(unsigned exitCode);

private:
    void appendDigits(std::size_t number, std::size_t base);

    std::array<char, 1024> text_;
    std::size_t length_ = 0;
};

} // namespace GuardedHeap
