#include "fuzz/packed_form.h"

#include <algorithm>
#include <array>

#include "fuzz/oracle.h"
#include "fuzz/running_checksum.h"
#include "storage/reference_run_length.h"

namespace Fuzz {
namespace {

using ClassId = std::array<unsigned char, kClassIdLength>;

constexpr std::array<ClassId, kDefinitionKinds> kClassIds{
    ClassId{0x4B, 0xEA, 0x00, 0x3C, 0x84, 0x0B, 0xD2, 0x11, 0x9D, 0xE2, 0x08, 0x00, 0x09, 0xAC, 0xE1, 0x8E},
    ClassId{0xB6, 0x1D, 0xE0, 0xB4, 0x13, 0x0D, 0xD2, 0x11, 0x9D, 0xE2, 0x08, 0x00, 0x09, 0xAC, 0xE1, 0x8E},
    ClassId{0xB4, 0x1D, 0xE0, 0xB4, 0x13, 0x0D, 0xD2, 0x11, 0x9D, 0xE2, 0x08, 0x00, 0x09, 0xAC, 0xE1, 0x8E}};

constexpr std::array kFirstByte{'\0'};

std::uint32_t computeChecksum(Input stream)
{
    RunningChecksum checksum;
    checksum.add({kFirstByte.data(), kFirstByte.size()});
    checksum.add({reinterpret_cast<const char*>(stream.data()), stream.size()});
    return checksum.value();
}

} // namespace

Bytes getClassId(std::size_t kind)
{
    require(kind < kDefinitionKinds, "there is a definition of that kind");
    return {kClassIds[kind].begin(), kClassIds[kind].end()};
}

std::optional<Bytes> unpackStream(const Bytes& packed)
{
    const std::optional<Bytes> form = Tests::referenceUnpacked(packed);
    if (!form || form->size() <= kClassIdLength)
        return std::nullopt;
    const auto stream = form->begin() + kClassIdLength;
    const bool isKnown = std::ranges::any_of(
        kClassIds, [&](const ClassId& classId) { return std::equal(form->begin(), stream, classId.begin()); });
    return isKnown ? std::optional(Bytes(stream, form->end())) : std::nullopt;
}

Bytes packStream(std::size_t kind, Input stream)
{
    Bytes form = getClassId(kind);
    form.insert(form.end(), stream.begin(), stream.end());
    std::uint32_t checksum = computeChecksum(stream);
    for (int count = 0; count < 4; ++count, checksum >>= 8)
        form.push_back(static_cast<unsigned char>(checksum & 0xFF));
    return Tests::referencePacked(form);
}

} // namespace Fuzz
