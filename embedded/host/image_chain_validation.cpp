#include "embedded/host/image_chain_validation.h"

#include <cstddef>
#include <limits>
#include <variant>

#include "platform/host/resbuf.h"

namespace Embedded {
namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t kLargestExtendedDataChunkInBytes = 127;
constexpr std::size_t kLargestChunkInBytes = std::numeric_limits<short>::max();

std::string codeFault(int code, ChainUse use)
{
    if (qeutValueKind(code) == QeRb::ValueKind::none)
        return std::to_string(code) + " is not a group code of a stored value";
    if (use == ChainUse::extendedData && (code < QeRb::kXdataString || code == QeRb::kXdataAppName))
        return std::to_string(code) + " is not a group code of a value in extended data";
    return {};
}

bool hasKind(const ImageValue& value, QeRb::ValueKind kind)
{
    switch (kind) {
    case QeRb::ValueKind::string:
        return std::holds_alternative<std::wstring>(value.value);
    case QeRb::ValueKind::binary:
        return std::holds_alternative<Bytes>(value.value);
    case QeRb::ValueKind::real:
        return std::holds_alternative<double>(value.value);
    case QeRb::ValueKind::integer16:
    case QeRb::ValueKind::integer32:
        return std::holds_alternative<std::int32_t>(value.value);
    case QeRb::ValueKind::none:
        break;
    }
    return false;
}

std::string valueFault(const ImageValue& value)
{
    const QeRb::ValueKind kind = qeutValueKind(value.code);
    if (!hasKind(value, kind))
        return "is not of the kind that group code " + std::to_string(value.code) + " calls for";
    if (kind == QeRb::ValueKind::string && !isStorableText(std::get<std::wstring>(value.value)))
        return "holds U+0000";
    if (kind != QeRb::ValueKind::integer16)
        return {};
    const std::int32_t number = std::get<std::int32_t>(value.value);
    const bool fits = number == static_cast<std::int16_t>(number);
    return fits ? std::string() : std::to_string(number) + " is not a 16-bit integer";
}

std::string chunkFault(const ImageValue& value, ChainUse use)
{
    const auto* bytes = std::get_if<Bytes>(&value.value);
    const std::size_t most = use == ChainUse::extendedData ? kLargestExtendedDataChunkInBytes : kLargestChunkInBytes;
    if (bytes == nullptr || bytes->size() <= most)
        return {};
    return std::to_string(bytes->size()) + " bytes are more than the " + std::to_string(most) + " of a chunk";
}

} // namespace

bool isStorableText(std::wstring_view text)
{
    return text.find(L'\0') == std::wstring_view::npos;
}

std::string chainFault(const ImageChain& chain, ChainUse use)
{
    for (std::size_t index = 0; index < chain.size(); ++index) {
        const std::string place = std::string("[").append(std::to_string(index)).append("]");
        if (const std::string fault = codeFault(chain[index].code, use); !fault.empty())
            return place + ".code: " + fault;
        if (const std::string fault = valueFault(chain[index]); !fault.empty())
            return place + ".value: " + fault;
        if (const std::string fault = chunkFault(chain[index], use); !fault.empty())
            return place + ".hex: " + fault;
    }
    return {};
}

} // namespace Embedded
