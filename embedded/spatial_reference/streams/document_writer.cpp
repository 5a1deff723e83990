#include <bit>
#include <cmath>

#include "embedded/spatial_reference/streams/document_coding.h"
#include "embedded/spatial_reference/streams/document_tags.h"
#include "embedded/spatial_reference/streams/vocabulary.h"

namespace Embedded {
namespace {

/// The shortest decimal that is exactly the magnitude.
std::optional<Decimal> decimalOf(double magnitude)
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

class DocumentWriter {
public:
    explicit DocumentWriter(ByteWriter& writer) : writer_(writer) {}

    void value(const Projjson& document)
    {
        if (const auto number = vocabularyNumberOf(document))
            return reference(*number);
        switch (document.type()) {
        case Projjson::value_t::object:
            return object(document);
        case Projjson::value_t::array:
            return array(document);
        case Projjson::value_t::string:
            return text(document.get_ref<const std::string&>());
        case Projjson::value_t::number_float:
            return number(document.get<double>());
        case Projjson::value_t::number_unsigned:
        case Projjson::value_t::number_integer:
            return integer(document);
        case Projjson::value_t::boolean:
            return writer_.byte(document.get<bool>() ? Tag::trueValue : Tag::falseValue);
        default:
            return writer_.byte(Tag::null);
        }
    }

private:
    void reference(std::size_t number)
    {
        if (number < kShortEntries)
            return writer_.byte(Tag::firstShort + static_cast<unsigned>(number));
        const auto rest = static_cast<unsigned>(number - kShortEntries);
        writer_.byte(Tag::firstLong + (rest >> 8));
        writer_.byte(rest);
    }

    void text(const std::string& utf8)
    {
        writer_.byte(Tag::text);
        writer_.text(utf8);
    }

    void key(const std::string& name)
    {
        if (const auto number = vocabularyNumberOf(Projjson(name)))
            return reference(*number);
        text(name);
    }

    void integer(const Projjson& document)
    {
        const bool negative =
            document.is_number_integer() && document.get<std::int64_t>() < 0 && !document.is_number_unsigned();
        writer_.byte(negative ? Tag::negativeInteger : Tag::integer);
        writer_.varint(negative ? static_cast<std::uint64_t>(-1 - document.get<std::int64_t>())
                                : document.get<std::uint64_t>());
    }

    void number(double value)
    {
        const auto decimal = std::signbit(value) && value == 0 ? std::nullopt : decimalOf(std::abs(value));
        if (!decimal) {
            writer_.byte(Tag::floatingPoint);
            return writer_.littleEndian(std::bit_cast<std::uint64_t>(value), 8);
        }
        writer_.byte(value < 0 ? Tag::negativeDecimal : Tag::decimal);
        writer_.varint(decimal->mantissa);
        writer_.byte(decimal->exponent);
    }

    void array(const Projjson& document)
    {
        writer_.byte(Tag::array);
        writer_.varint(document.size());
        for (const Projjson& element : document)
            value(element);
    }

    void object(const Projjson& document)
    {
        if (epsgIdentifier(document) || parameter(document))
            return;
        writer_.byte(Tag::object);
        writer_.varint(document.size());
        for (const auto& [name, member] : document.items()) {
            key(name);
            value(member);
        }
    }

    bool epsgIdentifier(const Projjson& document)
    {
        const Projjson* code = memberOf(document, "code");
        if (!code || !code->is_number_integer() || !(*code >= 0) ||
            document != Projjson{{"authority", "EPSG"}, {"code", *code}})
            return false;
        writer_.byte(Tag::epsgIdentifier);
        writer_.varint(code->get<std::uint64_t>());
        return true;
    }

    bool parameter(const Projjson& document)
    {
        for (const char* key : {"name", "value", "unit", "id"}) {
            if (!document.contains(key))
                return false;
        }
        const Projjson identity = identityOf(document);
        const auto number = vocabularyNumberOf(identity);
        if (!number || document != parameterFrom(identity, document["value"], document["unit"]))
            return false;
        writer_.byte(Tag::parameter);
        reference(*number);
        value(document["value"]);
        value(document["unit"]);
        return true;
    }

    static Projjson identityOf(const Projjson& document)
    {
        Projjson identity = document;
        identity.erase("value");
        identity.erase("unit");
        return identity;
    }

    ByteWriter& writer_;
};

} // namespace

void writeDocument(ByteWriter& writer, const Projjson& document)
{
    DocumentWriter(writer).value(document);
}

} // namespace Embedded
