// The smallest spatial-reference library that the module can be built against, without the project's own interfaces. It
// declares exactly what docs/porting.md lists, and a test compares the two.
#pragma once

#include <cstddef>
#include <cstdint>

#pragma GCC visibility push(default)

namespace Zentara::Infrastructure::SpatialReference {

enum
    [[nodiscard]] Status : int{statusOk = 0,      statusCheckFailed = 10, statusNotFound = 35,  statusInexact = 41,
                               statusFailed = 52, statusNullText = 54,    statusEmptyText = 55, statusOutOfMemory = 57};

enum : int { kindNotEarthReferenced = 1, kindGeographic = 2, kindProjected = 3 };
enum : int { formatAutomatic = 0, formatBinary = 2, formatText = 4 };
enum : int { wktFlavorDefault = 0 };

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
    int GetCount() const;
    Status Add(DefinitionBase*);
    DefinitionBase* Remove(int);

protected:
    ~DefinitionBaseArray() override;
};

class DefinitionStream final : public Object {
public:
    static Status CreateInstance(DefinitionStream*&);
    Status Add(const DefinitionBase*);
    Status Write(unsigned char*, std::size_t&, int, int) const;
    Status Read(const unsigned char*, std::size_t, int, int);
    Status GetDefinitions(DefinitionBaseArray*&) const;
    static Status Serialize_s(const DefinitionBase*, unsigned char*, std::uint64_t, int, int, bool);
    static Status Deserialize_s(DefinitionBaseArray*&, const unsigned char*, std::uint64_t, int, int);

protected:
    ~DefinitionStream() override;
};

class FormatConverter {
public:
    static Status DefinitionToWkt_s(const CoordinateReferenceSystemDefinition*, int, wchar_t*, std::size_t);
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

enum : int { transformationNone = 0, transformationPath = 1 };

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

#pragma GCC visibility pop
