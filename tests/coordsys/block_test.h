// The fixture for the functions that serialize definitions to blocks of bytes and read them back.
#pragma once

#include <algorithm>
#include <memory>

#include "storage/host_holders.h"
#include "storage/packed_definition.h"
#include "support/coordsys_test.h"

namespace Tests {

using HostBlock = Orvel::Holder<Orvel::HostBufferPolicy<unsigned char>>;

inline constexpr auto k29 = static_cast<QeDb::QeDbDwgVersion>(29);
inline constexpr auto k30 = static_cast<QeDb::QeDbDwgVersion>(30);

/// A copy of the block, followed by a NUL unit at an even offset, which is the least that a caller must provide.
/// Sanitizers notice every read beyond it.
class GuardedBlock {
public:
    explicit GuardedBlock(const Bytes& block)
        : length_(block.size()), bytes_(std::make_unique<unsigned char[]>(block.size() + block.size() % 2 + 2))
    {
        std::ranges::copy(block, bytes_.get());
    }

    const unsigned char* get() const { return bytes_.get(); }
    int length() const { return static_cast<int>(length_); }

private:
    std::size_t length_;
    std::unique_ptr<unsigned char[]> bytes_;
};

class BlockTest : public PlatformTest {
protected:
    Library::Status status = kUntouched;

    static Bytes packed(const Library::DefinitionBase* definition)
    {
        Bytes form;
        EXPECT_TRUE(Orvel::EncodeDefinitionBytes(definition, form));
        return form;
    }
    /// The block of a definition. Fails the test when there is none.
    static Bytes serialized(const Library::CoordinateReferenceSystemDefinition* definition,
                            QeDb::QeDbDwgVersion version)
    {
        HostBlock bytes;
        int length = 0;
        EXPECT_EQ(Cs::SerializeCoordinateSystem(definition, bytes.put(), length, version), Qeapp::eOk);
        return bytes ? Bytes(bytes.get(), bytes.get() + length) : Bytes();
    }
    /// The definitions in the block. Fails the test when there are none.
    static ArrayHolder deserialized(const Bytes& block)
    {
        const GuardedBlock guarded(block);
        ArrayHolder definitions;
        EXPECT_EQ(Cs::DeserializeCoordinateSystem(definitions.put(), guarded.get(), guarded.length()), Qeapp::eOk);
        return definitions;
    }
};

} // namespace Tests
