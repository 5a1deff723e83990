// What the tests of the spatial-reference library have in common: holders, and loads that must succeed.
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
    static Holder<CoordinateReferenceSystemDefinition> system(const std::wstring& code);
    static Holder<DatumDefinition> datum(const std::wstring& code);
    static Holder<EllipsoidDefinition> ellipsoid(const std::wstring& code);
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

    /// The stream's bytes; empty when writing fails.
    static Bytes bytesOf(const std::vector<const DefinitionBase*>& definitions);
    /// Null when reading fails.
    static Holder<DefinitionBaseArray> read(const Bytes& bytes);
    static Status readStatus(const Bytes& bytes);

    /// The serialized text as bytes, with its NUL; empty when it fails.
    static Bytes serialized(const DefinitionBase& definition, bool includeDependents);
    /// The same as text, without the NUL.
    static std::wstring textOf(const DefinitionBase& definition, bool includeDependents);
    static Bytes utf16le(std::wstring_view text);
    static Status deserialize(const Bytes& bytes, Holder<DefinitionBaseArray>& definitions);
    static Status deserialize(std::wstring_view text, Holder<DefinitionBaseArray>& definitions);

    static std::wstring wktOf(const CoordinateReferenceSystemDefinition& definition, Status expected = statusOk);

    /// Everything that can be asked, as one text for comparison.
    static std::wstring factsOf(const DefinitionBase& definition);

    /// Facts that hold for one version of the catalog only begin with this.
    static bool isReferenceCatalog();
};

} // namespace Tests
