#include "embedded/spatial_reference/streams/definition_stream_coding.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "embedded/base/memo_cache.h"
#include "embedded/spatial_reference/projjson/projjson_validation.h"
#include "embedded/spatial_reference/streams/byte_coding.h"
#include "embedded/spatial_reference/streams/vocabulary.h"

namespace Embedded {
namespace {

using Definitions = std::vector<DefinitionData>;

constexpr unsigned kFirstByte = 0;
constexpr unsigned kVersion = 1;
constexpr int kChecksumLengthInBytes = 4;
constexpr int kDoubleLengthInBytes = 8;

enum Tag : unsigned {
    tagNull = 0x00,
    tagFalse = 0x01,
    tagTrue = 0x02,
    tagInteger = 0x03,
    tagNegativeInteger = 0x04,
    tagDecimal = 0x05,
    tagNegativeDecimal = 0x06,
    tagFloatingPoint = 0x07,
    tagText = 0x08,
    tagArray = 0x09,
    tagObject = 0x0A,
    tagEpsgIdentifier = 0x0B,
    tagParameter = 0x0C,
    tagFirstShortEntry = 0x10,
    tagFirstLongEntry = 0xF0
};
constexpr std::size_t kShortEntries = tagFirstLongEntry - tagFirstShortEntry;

/// mantissa / 10^exponent. Both are exact as doubles, so the quotient is rounded once and is the same everywhere.
struct Decimal {
    static constexpr std::uint64_t kLargestMantissa = std::uint64_t{1} << 53;
    static constexpr std::array<double, 23> kPowersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    std::uint64_t mantissa;
    unsigned exponent;

    double value() const { return static_cast<double>(mantissa) / kPowersOfTen[exponent]; }
};

/// The decimal with the smallest exponent that is exactly the magnitude; nothing when there is none.
std::optional<Decimal> exactDecimal(double magnitude)
{
    for (unsigned exponent = 0; exponent < Decimal::kPowersOfTen.size(); ++exponent) {
        const double scaled = std::round(magnitude * Decimal::kPowersOfTen[exponent]);
        if (!(scaled <= static_cast<double>(Decimal::kLargestMantissa)))
            return std::nullopt;
        const Decimal decimal{static_cast<std::uint64_t>(scaled), exponent};
        if (decimal.value() == magnitude)
            return decimal;
    }
    return std::nullopt;
}

/// The operation parameter with the name and the identifier of the identity.
Projjson operationParameter(const Projjson& identity, const Projjson& value, const Projjson& unit)
{
    return {{"name", identity.at("name")}, {"value", value}, {"unit", unit}, {"id", identity.at("id")}};
}

class ValueWriter {
public:
    explicit ValueWriter(ByteWriter& bytes) : bytes_(bytes) {}

    void value(const Projjson& node)
    {
        if (const auto number = vocabularyNumber(node))
            return entry(*number);
        switch (node.type()) {
        case Projjson::value_t::object:
            return object(node);
        case Projjson::value_t::array:
            return array(node);
        case Projjson::value_t::string:
            bytes_.byte(tagText);
            return bytes_.text(node.get_ref<const std::string&>());
        case Projjson::value_t::number_float:
            return real(node.get<double>());
        case Projjson::value_t::number_unsigned:
        case Projjson::value_t::number_integer:
            return integer(node);
        case Projjson::value_t::boolean:
            return bytes_.byte(node.get<bool>() ? tagTrue : tagFalse);
        default:
            return bytes_.byte(tagNull);
        }
    }

private:
    void entry(std::size_t number)
    {
        if (number < kShortEntries)
            return bytes_.byte(tagFirstShortEntry + static_cast<unsigned>(number));
        const auto rest = static_cast<unsigned>(number - kShortEntries);
        bytes_.byte(tagFirstLongEntry + (rest >> 8));
        bytes_.byte(rest);
    }

    void integer(const Projjson& number)
    {
        const bool isNegative = !number.is_number_unsigned() && number.get<std::int64_t>() < 0;
        bytes_.byte(isNegative ? tagNegativeInteger : tagInteger);
        bytes_.varint(isNegative ? static_cast<std::uint64_t>(-1 - number.get<std::int64_t>())
                                 : number.get<std::uint64_t>());
    }

    void real(double number)
    {
        const bool isNegativeZero = std::signbit(number) && number == 0;
        const auto decimal = isNegativeZero ? std::nullopt : exactDecimal(std::abs(number));
        if (!decimal) {
            bytes_.byte(tagFloatingPoint);
            return bytes_.littleEndian(std::bit_cast<std::uint64_t>(number), kDoubleLengthInBytes);
        }
        bytes_.byte(number < 0 ? tagNegativeDecimal : tagDecimal);
        bytes_.varint(decimal->mantissa);
        bytes_.byte(decimal->exponent);
    }

    void array(const Projjson& elements)
    {
        bytes_.byte(tagArray);
        bytes_.varint(elements.size());
        for (const Projjson& element : elements)
            value(element);
    }

    void object(const Projjson& members)
    {
        if (epsgIdentifier(members) || parameter(members))
            return;
        bytes_.byte(tagObject);
        bytes_.varint(members.size());
        for (const auto& [key, member] : members.items()) {
            value(Projjson(key));
            value(member);
        }
    }

    /// False, and nothing written, for any other members.
    bool epsgIdentifier(const Projjson& members)
    {
        const Projjson* code = memberOf(members, "code");
        if (!code || !code->is_number_integer() || !(*code >= 0) ||
            members != Projjson{{"authority", "EPSG"}, {"code", *code}})
            return false;
        bytes_.byte(tagEpsgIdentifier);
        bytes_.varint(code->get<std::uint64_t>());
        return true;
    }

    /// False, and nothing written, for any other members.
    bool parameter(const Projjson& members)
    {
        for (const char* key : {"name", "value", "unit", "id"}) {
            if (!members.contains(key))
                return false;
        }
        Projjson identity = members;
        identity.erase("value");
        identity.erase("unit");
        const auto number = vocabularyNumber(identity);
        if (!number || members != operationParameter(identity, members["value"], members["unit"]))
            return false;
        bytes_.byte(tagParameter);
        entry(*number);
        value(members["value"]);
        value(members["unit"]);
        return true;
    }

    ByteWriter& bytes_;
};

class ValueReader {
public:
    explicit ValueReader(ByteReader& bytes) : bytes_(bytes) {}

    Projjson value(int depth = 0)
    {
        const unsigned tag = bytes_.byte();
        if (depth > kDeepestJson)
            throwDamaged("a value is nested too deeply");
        if (tag >= tagFirstShortEntry)
            return entry(tag);
        switch (tag) {
        case tagNull:
            return {};
        case tagFalse:
        case tagTrue:
            return tag == tagTrue;
        case tagInteger:
            return bytes_.varint();
        case tagNegativeInteger:
            return negativeInteger();
        case tagDecimal:
            return decimal();
        case tagNegativeDecimal:
            return -decimal();
        case tagFloatingPoint:
            return floatingPoint();
        case tagText:
            return bytes_.text();
        default:
            return structure(tag, depth + 1);
        }
    }

private:
    Projjson structure(unsigned tag, int depth)
    {
        switch (tag) {
        case tagArray:
            return array(depth);
        case tagObject:
            return object(depth);
        case tagEpsgIdentifier:
            return {{"authority", "EPSG"}, {"code", bytes_.varint()}};
        case tagParameter:
            return parameter(depth);
        default:
            throwDamaged("a value begins with a byte that has no meaning");
        }
    }

    Projjson entry(unsigned tag)
    {
        std::size_t number = tag - tagFirstShortEntry;
        if (tag >= tagFirstLongEntry)
            number = kShortEntries + ((tag - tagFirstLongEntry) << 8) + bytes_.byte();
        const Projjson* known = vocabularyEntry(number);
        if (!known)
            throwDamaged("the vocabulary does not have the entry");
        return *known;
    }

    std::int64_t negativeInteger()
    {
        const std::uint64_t number = bytes_.varint();
        if (number > static_cast<std::uint64_t>(INT64_MAX))
            throwDamaged("a negative number has more than 64 bits");
        return -1 - static_cast<std::int64_t>(number);
    }

    double decimal()
    {
        const std::uint64_t mantissa = bytes_.varint();
        const unsigned exponent = bytes_.byte();
        if (mantissa > Decimal::kLargestMantissa || exponent >= Decimal::kPowersOfTen.size())
            throwDamaged("a decimal is out of range");
        return Decimal{mantissa, exponent}.value();
    }

    double floatingPoint()
    {
        const auto number = std::bit_cast<double>(bytes_.littleEndian(kDoubleLengthInBytes));
        if (!std::isfinite(number))
            throwDamaged("a number is not finite");
        return number;
    }

    Projjson array(int depth)
    {
        Projjson elements = Projjson::array();
        for (std::size_t left = bytes_.count(); left > 0; --left)
            elements.push_back(value(depth));
        return elements;
    }

    Projjson object(int depth)
    {
        Projjson members = Projjson::object();
        for (std::size_t left = bytes_.count(); left > 0; --left) {
            const Projjson key = value(depth);
            if (!key.is_string() || members.contains(key.get_ref<const std::string&>()))
                throwDamaged("a key is not a text or appears twice");
            members[key.get_ref<const std::string&>()] = value(depth);
        }
        return members;
    }

    Projjson parameter(int depth)
    {
        const Projjson identity = value(depth);
        const Projjson number = value(depth);
        const Projjson unit = value(depth);
        if (!memberOf(identity, "name") || !memberOf(identity, "id"))
            throwDamaged("an operation parameter has no name or no identifier");
        return operationParameter(identity, number, unit);
    }

    ByteReader& bytes_;
};

DefinitionType readType(ByteReader& bytes)
{
    const auto type = static_cast<DefinitionType>(bytes.byte());
    if (type != DefinitionType::coordinateReferenceSystem && type != DefinitionType::datum &&
        type != DefinitionType::ellipsoid)
        throwDamaged("a definition is not a system, a datum or an ellipsoid");
    return type;
}

DefinitionData readDefinition(ByteReader& bytes)
{
    const DefinitionType type = readType(bytes);
    std::string code = bytes.text();
    Projjson projjson = ValueReader(bytes).value();
    if (!isValidProjjson(type, projjson))
        throwDamaged("a definition lacks a part that its type must have");
    if (code.empty())
        code = codeOf(projjson);
    if (code.empty())
        throwDamaged("a definition has no code");
    return {type, std::move(code), std::move(projjson)};
}

void writeDefinition(ByteWriter& bytes, const DefinitionData& definition)
{
    bytes.byte(static_cast<unsigned>(definition.type));
    bytes.text(definition.codeUtf8 == codeOf(definition.projjson()) ? std::string() : definition.codeUtf8);
    ValueWriter(bytes).value(definition.projjson());
}

/// The bytes before the checksum. Throws ErrorException when they do not have that checksum.
std::string_view checkedBytes(std::string_view bytes)
{
    if (bytes.size() > kLongestDefinitionStreamInBytes || bytes.size() <= kChecksumLengthInBytes)
        throwDamaged("a stream has from 5 to 1,024 bytes");
    const std::string_view checked = bytes.substr(0, bytes.size() - kChecksumLengthInBytes);
    if (ByteReader(bytes.substr(checked.size())).littleEndian(kChecksumLengthInBytes) != crc32(checked))
        throwDamaged("the checksum is wrong");
    return checked;
}

Definitions readStream(std::string_view stream)
{
    ByteReader bytes(checkedBytes(stream));
    if (bytes.byte() != kFirstByte || bytes.byte() != kVersion)
        throwDamaged("the first byte or the version is wrong");
    Definitions definitions;
    for (std::size_t left = bytes.count(); left > 0; --left)
        definitions.push_back(readDefinition(bytes));
    if (bytes.remaining() != 0)
        throwDamaged("bytes follow the last definition");
    return definitions;
}

} // namespace

std::string encodeDefinitionStream(const std::vector<DefinitionData>& definitions)
{
    ByteWriter bytes;
    bytes.byte(kFirstByte);
    bytes.byte(kVersion);
    bytes.varint(definitions.size());
    for (const DefinitionData& definition : definitions)
        writeDefinition(bytes, definition);
    bytes.littleEndian(crc32(bytes.bytes()), kChecksumLengthInBytes);
    return bytes.bytes();
}

Expected<std::vector<DefinitionData>> decodeDefinitionStream(std::string_view bytes)
{
    static MemoCache<std::string, Expected<Definitions>> streams;
    return streams.getOrCompute(
        bytes, [bytes] { return catchError([bytes] { return readStream(bytes); }); },
        [](const Expected<Definitions>& read) { return read.has_value(); });
}

} // namespace Embedded
