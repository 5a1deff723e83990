// The fixture of the tests of the spatial-reference library, and a holder for its objects.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/spatial_reference.h"
#include "support/platform_test.h"

namespace Tests {

using namespace Zentara::Infrastructure::SpatialReference;

struct DestroyObject {
    void operator()(const Object* object) const { Object::Destroy(object); }
};
template <typename T>
using Holder = std::unique_ptr<T, DestroyObject>;

using Bytes = std::vector<unsigned char>;

class SpatialReferenceTest : public PlatformTest {
protected:
    /// Loads that must succeed.
    template <typename Definition>
    static Holder<Definition> load(const std::wstring& codeOrName)
    {
        Definition* definition = nullptr;
        EXPECT_EQ(Definition::Load(codeOrName.c_str(), definition), statusOk) << testing::PrintToString(codeOrName);
        return Holder<Definition>(definition);
    }
    static Holder<CoordinateReferenceSystemDefinition> loadSystem(const std::wstring& code);
    static Holder<DatumDefinition> loadDatum(const std::wstring& code);
    static Holder<EllipsoidDefinition> loadEllipsoid(const std::wstring& code);
    static Holder<CoordinateReferenceSystemDefinition> fromText(const std::wstring& text,
                                                                const std::wstring& code = L"USER:1");
    static Holder<DatumDefinition> datumOf(const CoordinateReferenceSystemDefinition& definition);
    static Holder<EllipsoidDefinition> ellipsoidOf(const CoordinateReferenceSystemDefinition& definition);

    static std::wstring codeOf(const DefinitionBase& definition);
    static std::wstring nameOf(const DefinitionBase& definition);
    static int kindOf(const CoordinateReferenceSystemDefinition& definition);
    static std::wstring datumCodeOf(const CoordinateReferenceSystemDefinition& definition);
    static std::wstring ellipsoidCodeOf(const CoordinateReferenceSystemDefinition& definition);
    static bool isDatumBased(const CoordinateReferenceSystemDefinition& definition);

    /// The bytes of a stream with the definitions. Empty if writing fails.
    static Bytes writeStream(const std::vector<const DefinitionBase*>& definitions);
    static Holder<DefinitionBaseArray> definitionsIn(const DefinitionStream& stream);
    /// Null if reading fails.
    static Holder<DefinitionBaseArray> readStream(const Bytes& bytes);
    static Status readStatus(const Bytes& bytes);

    /// The definition as text, in bytes with the NUL. Empty if serializing fails.
    static Bytes serialize(const DefinitionBase& definition, bool includeDependents);
    /// The same without the NUL.
    static std::wstring serializedText(const DefinitionBase& definition, bool includeDependents);
    static Bytes utf16le(std::wstring_view text);
    static Status deserialize(const Bytes& bytes, Holder<DefinitionBaseArray>& definitions);
    static Status deserialize(std::wstring_view text, Holder<DefinitionBaseArray>& definitions);

    static std::wstring writeWkt(const CoordinateReferenceSystemDefinition& definition, Status expected = statusOk);

    /// The definition with its parts as text, to compare definitions.
    static std::wstring describe(const DefinitionBase& definition);

    /// Whether the catalog has the version for which the expected numbers hold.
    static bool isReferenceCatalog();
};

} // namespace Tests
