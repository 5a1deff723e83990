#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

#include "embedded/base/hex.h"
#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "platform/win32.h"

namespace {

using Embedded::FaultInjection;
using Embedded::ResourceCounters;
using Embedded::ResourceKind;

/// Where the hexadecimal digits of an identifier's text begin, field by field and byte by byte, and how many there are.
struct DigitRun {
    std::size_t at;
    std::size_t count;
};
constexpr DigitRun kData1{1, 8};
constexpr DigitRun kData2{10, 4};
constexpr DigitRun kData3{15, 4};
constexpr DigitRun kData4[8] = {{20, 2}, {22, 2}, {25, 2}, {27, 2}, {29, 2}, {31, 2}, {33, 2}, {35, 2}};
constexpr std::wstring_view kPattern = L"{########-####-####-####-############}";

bool matchesPattern(std::wstring_view text)
{
    if (text.size() != kPattern.size())
        return false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (kPattern[index] == L'#' ? !Embedded::hexDigitValue(text[index]) : text[index] != kPattern[index])
            return false;
    }
    return true;
}

std::uint32_t readDigits(std::wstring_view text, DigitRun run)
{
    std::uint32_t value = 0;
    for (const wchar_t digit : text.substr(run.at, run.count))
        value = value << 4 | Embedded::hexDigitValue(digit).value_or(0);
    return value;
}

void writeDigits(std::wstring& text, DigitRun run, std::uint32_t value)
{
    const std::string digits = Embedded::upperCaseHex(value, run.count);
    std::copy(digits.begin(), digits.end(), text.begin() + static_cast<std::ptrdiff_t>(run.at));
}

} // namespace

HRESULT CLSIDFromString(const wchar_t* text, CLSID* clsid)
{
    if (const auto fault = FaultInjection::injectedFailure("CLSIDFromString", CO_E_CLASSSTRING))
        return *fault;
    if (clsid == nullptr)
        return E_INVALIDARG;
    if (text == nullptr || !matchesPattern(text))
        return CO_E_CLASSSTRING;
    clsid->Data1 = readDigits(text, kData1);
    clsid->Data2 = static_cast<std::uint16_t>(readDigits(text, kData2));
    clsid->Data3 = static_cast<std::uint16_t>(readDigits(text, kData3));
    for (std::size_t index = 0; index < std::size(kData4); ++index)
        clsid->Data4[index] = static_cast<unsigned char>(readDigits(text, kData4[index]));
    return S_OK;
}

HRESULT StringFromCLSID(const CLSID& clsid, wchar_t** text)
{
    if (text == nullptr)
        return E_INVALIDARG;
    *text = nullptr;
    if (const auto fault = FaultInjection::injectedFailure("StringFromCLSID", E_OUTOFMEMORY))
        return *fault;
    std::wstring digits(kPattern);
    writeDigits(digits, kData1, clsid.Data1);
    writeDigits(digits, kData2, clsid.Data2);
    writeDigits(digits, kData3, clsid.Data3);
    for (std::size_t index = 0; index < std::size(kData4); ++index)
        writeDigits(digits, kData4[index], clsid.Data4[index]);
    *text = new (std::nothrow) wchar_t[digits.size() + 1];
    if (*text == nullptr)
        return E_OUTOFMEMORY;
    std::wmemcpy(*text, digits.c_str(), digits.size() + 1);
    ResourceCounters::add(ResourceKind::comMemory);
    return S_OK;
}

void CoTaskMemFree(void* memory)
{
    if (memory == nullptr)
        return;
    delete[] static_cast<wchar_t*>(memory);
    ResourceCounters::remove(ResourceKind::comMemory);
}
