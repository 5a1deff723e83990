#include "storage/definition_class_id.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <type_traits>

#include "platform/win32.h"
#include "storage/holder.h"
#include "storage/ignore_result.h"
#include "storage/library_holder.h"

namespace Orvel {
namespace {

constexpr std::wstring_view kCoordinateReferenceSystem = L"{3C00EA4B-0B84-11D2-9DE2-080009ACE18E}";
constexpr std::wstring_view kDatum = L"{B4E01DB6-0D13-11D2-9DE2-080009ACE18E}";
constexpr std::wstring_view kEllipsoid = L"{B4E01DB4-0D13-11D2-9DE2-080009ACE18E}";

struct ComTextPolicy {
    using Handle = wchar_t*;
    static void dispose(wchar_t* text)
    {
        ignoreResult([=] { return CoTaskMemFree(text); });
    }
};

std::wstring_view classIdText(const Library::DefinitionBase* definition)
{
    if (dynamic_cast<const Library::CoordinateReferenceSystemDefinition*>(definition) != nullptr)
        return kCoordinateReferenceSystem;
    if (dynamic_cast<const Library::DatumDefinition*>(definition) != nullptr)
        return kDatum;
    if (dynamic_cast<const Library::EllipsoidDefinition*>(definition) != nullptr)
        return kEllipsoid;
    return {};
}

/// Writes field by field, because the format decides the order of the bytes, not the machine.
ClassIdBytes writeClassId(const CLSID& id)
{
    ClassIdBytes bytes{};
    unsigned char* next = bytes.data();
    const auto put = [&](auto field) {
        for (std::size_t index = 0; index < sizeof field; ++index)
            *next++ = static_cast<unsigned char>(field >> 8 * index & 0xFF);
    };
    put(id.Data1);
    put(id.Data2);
    put(id.Data3);
    std::copy(std::begin(id.Data4), std::end(id.Data4), next);
    return bytes;
}

CLSID readClassId(const ClassIdBytes& bytes)
{
    CLSID id{};
    const unsigned char* next = bytes.data();
    const auto take = [&](auto& field) {
        for (std::size_t index = 0; index < sizeof field; ++index)
            field = static_cast<std::remove_reference_t<decltype(field)>>(field | std::uint32_t{*next++} << 8 * index);
    };
    take(id.Data1);
    take(id.Data2);
    take(id.Data3);
    std::copy_n(next, std::size(id.Data4), std::begin(id.Data4));
    return id;
}

} // namespace

std::optional<ClassIdBytes> DefinitionKindClsid(const Library::DefinitionBase* definition)
{
    const std::wstring_view text = classIdText(definition);
    CLSID id{};
    if (text.empty() || CLSIDFromString(text.data(), &id) != S_OK)
        return std::nullopt;
    return writeClassId(id);
}

bool isDefinitionKindClsid(const ClassIdBytes& bytes)
{
    Holder<ComTextPolicy> text;
    if (StringFromCLSID(readClassId(bytes), &text.put()) != S_OK || !text)
        return false;
    const std::wstring_view identifier(text.get());
    return identifier == kCoordinateReferenceSystem || identifier == kDatum || identifier == kEllipsoid;
}

} // namespace Orvel
