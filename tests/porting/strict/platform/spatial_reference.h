// The strictest spatial-reference library that the module can be built against: it declares what docs/porting.md lists
// and nothing more. Results must not be discarded, enumerations are scoped where they may be, and only Object::Destroy
// destroys.
#pragma once

#include <cstddef>
#include <cstdint>

#if !defined(_WIN32)
#pragma GCC visibility push(default)
#endif

namespace Zentara::Infrastructure::SpatialReference {

enum class [[nodiscard]] Status : unsigned char{statusOk = 0,         statusCheckFailed = 10, statusNotFound = 35,
                                                statusInexact = 41,   statusFailed = 52,      statusNullText = 54,
                                                statusEmptyText = 55, statusOutOfMemory = 57};
using enum Status;

enum CoordinateReferenceSystemKind : int { kindNotEarthReferenced = 1, kindGeographic = 2, kindProjected = 3 };
enum class SerializationFormat : unsigned char { formatAutomatic, formatBinary, formatText };
using enum SerializationFormat;
enum class WktFlavor : unsigned char { wktFlavorDefault };
using enum WktFlavor;

class Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    static void Destroy(const Object*);

protected:
    Object() = default;
    virtual ~Object();
};

class DefinitionBase : public Object {
public:
    Status GetCode(const wchar_t*&) const;

protected:
    ~DefinitionBase() override;
};

class EllipsoidDefinition final : public DefinitionBase {
    ~EllipsoidDefinition() override;
};

class DatumDefinition final : public DefinitionBase {
public:
    Status GetEllipsoidCode(const wchar_t*&) const;
    Status SetEllipsoid(const EllipsoidDefinition*);

protected:
    ~DatumDefinition() override;
};

class CoordinateReferenceSystemDefinition final : public DefinitionBase {
public:
    static Status Load(const wchar_t*, CoordinateReferenceSystemDefinition*&);
    Status GetKind(int&) const;
    Status GetDatumCode(const wchar_t*&) const;
    Status GetEllipsoidCode(const wchar_t*&) const;
    Status GetDatum(DatumDefinition*&) const;
    Status SetDatum(const DatumDefinition*);
    Status SetEllipsoid(const EllipsoidDefinition*);

protected:
    ~CoordinateReferenceSystemDefinition() override;
};

class DefinitionBaseArray final : public Object {
public:
    static Status CreateInstance(DefinitionBaseArray*&);
    [[nodiscard]] int GetCount() const;
    Status Add(DefinitionBase*);
    [[nodiscard]] DefinitionBase* Remove(int);

protected:
    ~DefinitionBaseArray() override;
};

class DefinitionStream final : public Object {
public:
    static Status CreateInstance(DefinitionStream*&);
    Status Add(const DefinitionBase*);
    Status Write(unsigned char*, std::size_t&, SerializationFormat, int) const;
    Status Read(const unsigned char*, std::size_t, SerializationFormat, int);
    Status GetDefinitions(DefinitionBaseArray*&) const;
    static Status Serialize_s(const DefinitionBase*, unsigned char*, std::uint64_t, SerializationFormat, int, bool);
    static Status Deserialize_s(DefinitionBaseArray*&, const unsigned char*, std::uint64_t, SerializationFormat, int);

protected:
    ~DefinitionStream() override;
};

class FormatConverter {
public:
    static Status DefinitionToWkt_s(const CoordinateReferenceSystemDefinition*, WktFlavor, wchar_t*, std::size_t);
};

class CoordinateReferenceSystemOperation final : public Object {
public:
    static Status Load(const CoordinateReferenceSystemDefinition*, CoordinateReferenceSystemOperation*&);
    Status IsDatumBased(bool&) const;

protected:
    ~CoordinateReferenceSystemOperation() override;
};

class CoordinateReferenceSystemUtil {
public:
    static Status GetEllipsoid(const CoordinateReferenceSystemDefinition*, EllipsoidDefinition*&);
};

enum TransformationKind : int { transformationNone = 0, transformationPath = 1 };

class GeodeticTransformationDefinition final : public DefinitionBase {
public:
    static Status Load(const wchar_t*, GeodeticTransformationDefinition*&);
    Status IsReversible(bool&) const;

protected:
    ~GeodeticTransformationDefinition() override;
};

class GeodeticPathDefinition final : public DefinitionBase {
public:
    static Status Load(const wchar_t*, GeodeticPathDefinition*&);
    Status IsReversible(bool&) const;

protected:
    ~GeodeticPathDefinition() override;
};

class TransformationInfo final : public Object {
public:
    static Status CreateInstance(TransformationInfo*&);
    Status SetName(const wchar_t*);
    Status SetKind(int);

protected:
    ~TransformationInfo() override;
};

} // namespace Zentara::Infrastructure::SpatialReference

#if !defined(_WIN32)
#pragma GCC visibility pop
#endif
