#include <bit>
#include <cmath>
#include <utility>

#include "embedded/spatial_reference/projjson/strict_json.h"
#include "embedded/spatial_reference/streams/document_coding.h"
#include "embedded/spatial_reference/streams/document_tags.h"
#include "embedded/spatial_reference/streams/vocabulary.h"

namespace Embedded {
namespace {

class DocumentReader {
public:
    explicit DocumentReader(ByteReader& reader) : reader_(reader) {}

    std::optional<Projjson> value(int depth)
    {
        const auto tag = reader_.byte();
        if (!tag || depth > kDeepestJson)
            return std::nullopt;
        if (*tag >= Tag::firstShort)
            return reference(*tag);
        switch (*tag) {
        case Tag::null:
            return Projjson();
        case Tag::falseValue:
        case Tag::trueValue:
            return Projjson(*tag == Tag::trueValue);
        case Tag::integer:
        case Tag::negativeInteger:
            return integer(*tag == Tag::negativeInteger);
        case Tag::decimal:
        case Tag::negativeDecimal:
            return decimal(*tag == Tag::negativeDecimal);
        case Tag::floatingPoint:
            return floatingPoint();
        case Tag::text:
            return text();
        default:
            return structure(*tag, depth);
        }
    }

private:
    std::optional<Projjson> structure(unsigned tag, int depth)
    {
        switch (tag) {
        case Tag::array:
            return array(depth);
        case Tag::object:
            return object(depth);
        case Tag::epsgIdentifier:
            return epsgIdentifier();
        case Tag::parameter:
            return parameter(depth);
        default:
            return std::nullopt;
        }
    }

    std::optional<Projjson> reference(unsigned tag)
    {
        std::size_t number = tag - Tag::firstShort;
        if (tag >= Tag::firstLong) {
            const auto low = reader_.byte();
            if (!low)
                return std::nullopt;
            number = kShortEntries + ((tag - Tag::firstLong) << 8) + *low;
        }
        const Projjson* entry = vocabularyEntry(number);
        return entry ? std::optional(*entry) : std::nullopt;
    }

    std::optional<Projjson> integer(bool negative)
    {
        const auto number = reader_.varint();
        if (!number)
            return std::nullopt;
        if (!negative)
            return Projjson(*number);
        if (*number > static_cast<std::uint64_t>(INT64_MAX))
            return std::nullopt;
        return Projjson(-1 - static_cast<std::int64_t>(*number));
    }

    std::optional<Projjson> decimal(bool negative)
    {
        const auto mantissa = reader_.varint();
        const auto exponent = reader_.byte();
        if (!mantissa || !exponent || *mantissa > Decimal::kLargestMantissa ||
            *exponent >= Decimal::kPowersOfTen.size())
            return std::nullopt;
        const double magnitude = Decimal{*mantissa, *exponent}.value();
        return Projjson(negative ? -magnitude : magnitude);
    }

    std::optional<Projjson> floatingPoint()
    {
        const auto bits = reader_.littleEndian(8);
        const double value = bits ? std::bit_cast<double>(*bits) : 0;
        return bits && std::isfinite(value) ? std::optional(Projjson(value)) : std::nullopt;
    }

    std::optional<Projjson> text()
    {
        auto utf8 = reader_.text();
        return utf8 ? std::optional(Projjson(*std::move(utf8))) : std::nullopt;
    }

    std::optional<Projjson> array(int depth)
    {
        const auto count = reader_.count();
        Projjson result = Projjson::array();
        for (std::size_t index = 0; count && index < *count; ++index) {
            auto element = value(depth + 1);
            if (!element)
                return std::nullopt;
            result.push_back(*std::move(element));
        }
        return count ? std::optional(std::move(result)) : std::nullopt;
    }

    std::optional<Projjson> object(int depth)
    {
        const auto count = reader_.count();
        Projjson result = Projjson::object();
        for (std::size_t index = 0; count && index < *count; ++index) {
            const auto key = value(depth + 1);
            auto member = key && key->is_string() ? value(depth + 1) : std::nullopt;
            if (!member || result.contains(key->get_ref<const std::string&>()))
                return std::nullopt;
            result[key->get_ref<const std::string&>()] = *std::move(member);
        }
        return count ? std::optional(std::move(result)) : std::nullopt;
    }

    std::optional<Projjson> epsgIdentifier()
    {
        const auto code = reader_.varint();
        return code ? std::optional(Projjson{{"authority", "EPSG"}, {"code", *code}}) : std::nullopt;
    }

    std::optional<Projjson> parameter(int depth)
    {
        const auto identity = value(depth + 1);
        const auto number = identity ? value(depth + 1) : std::nullopt;
        const auto unit = number ? value(depth + 1) : std::nullopt;
        if (!unit || !memberOf(*identity, "name") || !memberOf(*identity, "id"))
            return std::nullopt;
        return parameterFrom(*identity, *number, *unit);
    }

    ByteReader& reader_;
};

} // namespace

std::optional<Projjson> readDocument(ByteReader& reader)
{
    return DocumentReader(reader).value(0);
}

} // namespace Embedded
