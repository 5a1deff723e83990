// The UTF-8 code page, the only one that the stand-in supports.
#include <algorithm>
#include <climits>
#include <cstring>
#include <cwchar>
#include <optional>
#include <string_view>

#include "embedded/base/ascii_run.h"
#include "embedded/base/surrogates.h"
#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"

namespace {

using Embedded::FaultInjection;

/// Counts units and stores those for which the buffer has room. A copy of the whole text would be too long.
template <class Unit>
class Output {
public:
    Output(Unit* units, int capacity) : units_(units), capacity_(static_cast<std::size_t>(capacity)) {}

    void put(char32_t unit)
    {
        if (count_ < capacity_)
            units_[count_] = static_cast<Unit>(unit);
        ++count_;
    }
    /// The same for a run of ASCII characters.
    template <class Character>
    void put(std::basic_string_view<Character> ascii)
    {
        const std::size_t room = capacity_ - std::min(capacity_, count_);
        std::transform(ascii.begin(), ascii.begin() + static_cast<std::ptrdiff_t>(std::min(ascii.size(), room)),
                       units_ + std::min(capacity_, count_), [](Character unit) { return static_cast<Unit>(unit); });
        count_ += ascii.size();
    }
    /// The call's result: the number of units, or 0 when they do not fit.
    int result() const
    {
        const bool fits = capacity_ == 0 || count_ <= capacity_;
        return fits && count_ <= INT_MAX ? static_cast<int>(count_) : 0;
    }

private:
    Unit* units_;
    std::size_t capacity_; // 0: only count
    std::size_t count_ = 0;
};

/// The first byte of a sequence: how many bytes follow it, and the bounds of the next byte. The bounds exclude overlong
/// forms, surrogates and numbers beyond the last code point.
struct LeadByte {
    int following;
    unsigned char least;
    unsigned char most;
    char32_t bits;
};

std::optional<LeadByte> leadByte(unsigned char byte)
{
    if (byte < 0xC2 || byte > 0xF4)
        return std::nullopt;
    if (byte < 0xE0)
        return LeadByte{1, 0x80, 0xBF, byte & 0x1FU};
    if (byte < 0xF0)
        return LeadByte{2, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                        static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF), byte & 0x0FU};
    return LeadByte{3, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
                    static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF), byte & 0x07U};
}

/// Removes the sequence of several bytes at the front and returns its code point. Of an incomplete sequence it removes
/// the valid beginning and returns the replacement character.
char32_t takeSequence(std::string_view& bytes)
{
    const std::optional<LeadByte> lead = leadByte(static_cast<unsigned char>(bytes.front()));
    bytes.remove_prefix(1);
    if (!lead)
        return Embedded::kReplacementCharacter;
    char32_t codePoint = lead->bits;
    for (int index = 0; index < lead->following; ++index) {
        const auto byte = static_cast<unsigned char>(bytes.empty() ? '\0' : bytes.front());
        if (byte < (index == 0 ? lead->least : 0x80) || byte > (index == 0 ? lead->most : 0xBF))
            return Embedded::kReplacementCharacter;
        codePoint = codePoint << 6 | (byte & 0x3FU);
        bytes.remove_prefix(1);
    }
    return codePoint;
}

void decode(std::string_view bytes, Output<wchar_t>& output)
{
    while (true) {
        output.put(Embedded::takeAscii(bytes));
        if (bytes.empty())
            return;
        const char32_t codePoint = takeSequence(bytes);
        if (Embedded::kWideIsUtf16 && codePoint > 0xFFFF) {
            output.put(Embedded::highSurrogate(codePoint));
            output.put(Embedded::lowSurrogate(codePoint));
        } else {
            output.put(codePoint);
        }
    }
}

/// Removes the first code point, which may be a pair of surrogates, and returns it. Joins a pair also where wide
/// characters are code points, as the system's call joins every pair.
char32_t takeCodePoint(std::wstring_view& text)
{
    const auto first = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    const auto second = static_cast<char32_t>(text.empty() ? L'\0' : text.front());
    if (Embedded::isHighSurrogate(first) && Embedded::isLowSurrogate(second)) {
        text.remove_prefix(1);
        return Embedded::codePointFromSurrogates(first, second);
    }
    return Embedded::isScalarValue(first) ? first : Embedded::kReplacementCharacter;
}

/// Writes a code point beyond ASCII.
void encode(char32_t codePoint, Output<char>& output)
{
    if (codePoint < 0x800) {
        output.put(0xC0 | codePoint >> 6);
    } else {
        if (codePoint < 0x10000) {
            output.put(0xE0 | codePoint >> 12);
        } else {
            output.put(0xF0 | codePoint >> 18);
            output.put(0x80 | (codePoint >> 12 & 0x3F));
        }
        output.put(0x80 | (codePoint >> 6 & 0x3F));
    }
    output.put(0x80 | (codePoint & 0x3F));
}

/// Returns whether the stand-in supports the arguments.
bool isSupported(UINT codePage, DWORD flags, const void* text, int length, const void* output, int outputLength)
{
    return codePage == CP_UTF8 && flags == 0 && text != nullptr && length != 0 && outputLength >= 0 &&
           (output != nullptr || outputLength == 0);
}

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, wchar_t* output, int outputLength)
{
    if (const auto fault = FaultInjection::injectedFailure("MultiByteToWideChar", 0))
        return *fault;
    if (!isSupported(codePage, flags, text, length, output, outputLength))
        return 0;
    Output<wchar_t> wide(output, outputLength);
    decode({text, length < 0 ? std::strlen(text) + 1 : static_cast<std::size_t>(length)}, wide);
    return wide.result();
}

int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* text, int length, char* output, int outputLength,
                        const char* defaultCharacter, BOOL* usedDefault) // NOLINT(readability-non-const-parameter)
{
    if (const auto fault = FaultInjection::injectedFailure("WideCharToMultiByte", 0))
        return *fault;
    // Windows accepts no default character for this code page either.
    if (defaultCharacter != nullptr || usedDefault != nullptr ||
        !isSupported(codePage, flags, text, length, output, outputLength))
        return 0;
    Output<char> bytes(output, outputLength);
    std::wstring_view rest(text, length < 0 ? std::wcslen(text) + 1 : static_cast<std::size_t>(length));
    while (!rest.empty()) {
        bytes.put(Embedded::takeAscii(rest));
        if (!rest.empty())
            encode(takeCodePoint(rest), bytes);
    }
    return bytes.result();
}
