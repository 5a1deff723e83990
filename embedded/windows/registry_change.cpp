#include "embedded/windows/registry_change.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <optional>

#include "embedded/foundation/text.h"
#include "embedded/windows/registry_name.h"

namespace Embedded {
namespace {

using Json = nlohmann::ordered_json;
using Kind = RegistryChange::Kind;

constexpr std::string_view kDigits = "0123456789abcdef";

[[noreturn]] void refuse(const std::string& reason)
{
    throw RegistryDamage{reason};
}

/// A text that no UTF-8 can stand for is written as its UTF-16 units.
Json jsonOfText(const std::wstring& text)
{
    if (isWellFormed(text))
        return utf8FromWide(text);
    const std::string bytes = utf16leFromWide(text);
    Json units = Json::array();
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        units.push_back(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1]) << 8);
    return {{"units", units}};
}

std::string hexOf(std::string_view bytes)
{
    std::string hex;
    hex.reserve(2 * bytes.size());
    for (const char byte : bytes) {
        hex += kDigits[static_cast<unsigned char>(byte) >> 4];
        hex += kDigits[static_cast<unsigned char>(byte) & 0xF];
    }
    return hex;
}

/// The text of bytes that are one text with one NUL, at its end; those can be written so that people can read them.
std::optional<std::wstring> plainText(const RegistryChange& change)
{
    if (!isTextType(change.type) || change.data.size() % 2 != 0)
        return std::nullopt;
    std::wstring text = wideFromUtf16le(change.data);
    if (text.empty() || text.find(L'\0') != text.size() - 1 || !isWellFormed(text))
        return std::nullopt;
    text.pop_back();
    return text;
}

const Json& field(const Json& object, const char* name)
{
    const auto found = object.find(name);
    if (found == object.end())
        refuse(std::string("there is no \"") + name + '"');
    return *found;
}

std::string stringIn(const Json& value, const char* name)
{
    if (!value.is_string())
        refuse('"' + std::string(name) + "\" is not a text");
    return value.get<std::string>();
}

std::uint64_t numberIn(const Json& value, std::uint64_t most, const char* name)
{
    if (!value.is_number_unsigned() || value.get<std::uint64_t>() > most)
        refuse('"' + std::string(name) + "\" is not a number from 0 to " + std::to_string(most));
    return value.get<std::uint64_t>();
}

std::wstring textOfUnits(const Json& units)
{
    std::string bytes;
    for (const Json& unit : units) {
        const std::uint64_t number = numberIn(unit, 0xFFFF, "units");
        bytes += static_cast<char>(number & 0xFF);
        bytes += static_cast<char>(number >> 8);
    }
    return wideFromUtf16le(bytes);
}

std::wstring textField(const Json& object, const char* name)
{
    const Json& value = field(object, name);
    const bool hasUnits = value.is_object() && value.contains("units") && value["units"].is_array();
    std::wstring text = hasUnits ? textOfUnits(value["units"]) : wideFromUtf8(stringIn(value, name));
    if (text.find(L'\0') != std::wstring::npos)
        refuse('"' + std::string(name) + "\" holds a NUL");
    return text;
}

std::wstring keyField(const Json& object)
{
    std::wstring key = textField(object, "key");
    std::size_t length = 0;
    for (const std::wstring_view part : pathParts(key)) {
        length += part.size() + 1;
        if (utf16Length(part) > kLongestKeyName)
            refuse("a part of \"key\" is longer than " + std::to_string(kLongestKeyName));
    }
    if (!key.empty() && length != key.size() + 1)
        refuse("\"key\" has an empty part");
    return key;
}

std::wstring nameField(const Json& object)
{
    std::wstring name = textField(object, "name");
    if (utf16Length(name) > kLongestValueName)
        refuse("\"name\" is longer than " + std::to_string(kLongestValueName));
    return name;
}

std::string bytesOfHex(const std::string& hex)
{
    if (hex.size() % 2 != 0)
        refuse("\"hex\" has an odd number of digits");
    std::string bytes;
    bytes.reserve(hex.size() / 2);
    for (std::size_t at = 0; at < hex.size(); at += 2) {
        const std::size_t high = kDigits.find(hex[at]);
        const std::size_t low = kDigits.find(hex[at + 1]);
        if (high == std::string_view::npos || low == std::string_view::npos)
            refuse("\"hex\" holds a character that is not a hexadecimal digit");
        bytes += static_cast<char>(high << 4 | low);
    }
    return bytes;
}

std::string dataField(const Json& object, DWORD type)
{
    if (!object.contains("text"))
        return bytesOfHex(stringIn(field(object, "hex"), "hex"));
    if (!isTextType(type))
        refuse("\"text\" is not for type " + std::to_string(type));
    return utf16leFromWide(wideFromUtf8(stringIn(object["text"], "text")) + L'\0');
}

Kind kindField(const Json& object)
{
    const std::string word = stringIn(field(object, "do"), "do");
    if (word == "create")
        return Kind::createKey;
    if (word == "set")
        return Kind::setValue;
    if (word != "delete")
        refuse("\"do\" is not create, set or delete");
    return Kind::deleteValue;
}

} // namespace

std::string jsonOf(const RegistryChange& change)
{
    const char* const word = change.kind == Kind::createKey  ? "create"
                             : change.kind == Kind::setValue ? "set"
                                                             : "delete";
    Json line{{"do", word}, {"key", jsonOfText(change.key)}};
    if (change.kind != Kind::createKey)
        line["name"] = jsonOfText(change.name);
    if (change.kind == Kind::setValue) {
        line["type"] = change.type;
        if (const auto text = plainText(change))
            line["text"] = utf8FromWide(*text);
        else
            line["hex"] = hexOf(change.data);
    }
    return line.dump();
}

RegistryChange changeFrom(std::string_view json)
{
    const Json line = Json::parse(json, nullptr, false);
    if (!line.is_object())
        refuse("not a JSON object");
    RegistryChange change;
    change.kind = kindField(line);
    change.key = keyField(line);
    if (change.kind != Kind::createKey)
        change.name = nameField(line);
    if (change.kind == Kind::setValue) {
        change.type = static_cast<DWORD>(numberIn(field(line, "type"), std::numeric_limits<DWORD>::max(), "type"));
        change.data = dataField(line, change.type);
    }
    return change;
}

} // namespace Embedded
