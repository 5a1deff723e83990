#include "support/win32/heap/report.h"

#include <windows.h>

#include <algorithm>

namespace GuardedHeap {

Report& Report::operator<<(std::string_view text)
{
    const std::size_t taken = std::min(text.size(), text_.size() - 1 - length_);
    std::copy_n(text.data(), taken, text_.data() + length_);
    length_ += taken;
    return *this;
}

Report& Report::operator<<(std::size_t number)
{
    appendDigits(number, 10);
    return *this;
}

Report& Report::operator<<(Hexadecimal number)
{
    *this << "0x";
    appendDigits(number.value, 16);
    return *this;
}

void Report::appendDigits(std::size_t number, std::size_t base)
{
    std::array<char, 20> digits;
    std::size_t first = digits.size();
    do {
        digits[--first] = "0123456789abcdef"[number % base];
        number /= base;
    } while (number != 0);
    *this << std::string_view(digits.data() + first, digits.size() - first);
}

void Report::endLine()
{
    constexpr std::string_view name = "guarded heap: ";
    const HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
    DWORD written = 0;
    text_[length_++] = '\n';
    // A stream that is gone takes no message; the exit code remains.
    static_cast<void>(WriteFile(stream, name.data(), static_cast<DWORD>(name.size()), &written, nullptr));
    static_cast<void>(WriteFile(stream, text_.data(), static_cast<DWORD>(length_), &written, nullptr));
    length_ = 0;
}

void Report::endProcess(unsigned exitCode)
{
    if (length_ != 0)
        endLine();
    *this << "the process ends with exit code " << exitCode;
    endLine();
    static_cast<void>(TerminateProcess(GetCurrentProcess(), exitCode)); // it does not return
    __builtin_trap();
}

} // namespace GuardedHeap
