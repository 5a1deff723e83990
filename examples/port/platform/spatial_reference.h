// What the module needs of a spatial-reference library. Copy this header and fill it. A comment with three slashes says
// what the module expects; S1, S2 … are promises of docs/porting.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/trial.h"
#include "survey/definitions.h"

#if !defined(_WIN32)
#pragma GCC visibility push(default)
#endif

namespace Zentara::Infrastructure::SpatialReference {

/// The result of a library call, returned by value and compared with `==` and `!=`. It may be an enumeration of any
/// width, scoped or not, or an alias of one: the values below are names in this namespace of its type. Callers of the
/// module see the numbers.
enum Status : std::uint16_t {
    /// Success. The number is fixed.
    statusOk = 0,
    /// Made by the module. The number is fixed.
    statusCheckFailed = 10,
    /// The catalog has no such code (S2). The number is fixed.
    statusNotFound = 35,
    /// `DefinitionToWkt_s` converted, though not exactly (S13). The number is fixed.
    statusInexact = 41,
    /// Made by the module. The number is fixed.
    statusFailed = 52,
    /// Made by the module. The number is fixed.
    statusNullText = 54,
    /// Made by the module. The number is fixed.
    statusEmptyText = 55,
    /// Memory is short. The number is fixed.
    statusOutOfMemory = 57,
    statusBadText = 101,
    statusNoRoom = 102,
    statusTrialFailure = 103
};

/// The kinds of systems, `int` constants or enumerators of an unscoped enumeration. Other numbers occur. No source of
/// the module names it.
enum CoordinateReferenceSystemKind : int {
    /// Stored without datum and ellipsoid.
    kindNotEarthReferenced = 1,
    /// Stored with its ellipsoid, and with its datum if it has one.
    kindGeographic = 2,
    /// The same.
    kindProjected = 3
};

/// The forms of a serialized definition, of the library's own type. No source of the module names it.
enum SerializationFormat : int {
    /// For `Deserialize_s`: the library finds the form of the text out.
    formatAutomatic = 0,
    /// For `Write` and `Read`.
    formatBinary = 2,
    /// For `Serialize_s`.
    formatText = 4
};

/// The flavors of well-known text, of the library's own type. No source of the module names it.
enum WktFlavor : int {
    /// The flavor that the module asks for.
    wktFlavorDefault = 0
};

/// The base of what is destroyed (S1). The module does not copy or delete it.
class Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    /// Destroys an object of the library. Null is allowed. It must not throw.
    static void Destroy(const Object* object);

protected:
    Object() = default;
    virtual ~Object() = default;

private:
    Core::Living m_living{"survey objects"};
};

/// The base of the definitions, polymorphic (S5).
class DefinitionBase : public Object {
public:
    /// The code (S4).
    Status GetCode(const wchar_t*& code) const;

    // A new definition with the value, a system, a datum or an ellipsoid.
    static DefinitionBase* make(const Survey::Definition& value);
    // Nothing for a transformation or a path.
    virtual std::optional<Survey::Definition> value() const { return std::nullopt; }

protected:
    explicit DefinitionBase(const std::string& code);

private:
    std::wstring m_code;
};

/// An ellipsoid.
class EllipsoidDefinition final : public DefinitionBase {
public:
    explicit EllipsoidDefinition(Survey::Ellipsoid ellipsoid);
    std::optional<Survey::Definition> value() const override { return m_ellipsoid; }
    const Survey::Ellipsoid& ellipsoid() const { return m_ellipsoid; }

private:
    Survey::Ellipsoid m_ellipsoid;
};

/// A datum.
class DatumDefinition final : public DefinitionBase {
public:
    /// The code of its ellipsoid (S6).
    Status GetEllipsoidCode(const wchar_t*& code) const;
    /// Copies the ellipsoid into the datum. The result is not looked at.
    Status SetEllipsoid(const EllipsoidDefinition* ellipsoid);

    explicit DatumDefinition(Survey::Datum datum);
    std::optional<Survey::Definition> value() const override { return m_datum; }
    const Survey::Datum& datum() const { return m_datum; }

private:
    Survey::Datum m_datum;
    std::wstring m_ellipsoidCode;
};

/// A coordinate reference system.
class CoordinateReferenceSystemDefinition final : public DefinitionBase {
public:
    /// Makes a definition from the catalog (S1, S2). A null code is a failure.
    static Status Load(const wchar_t* code, CoordinateReferenceSystemDefinition*& definition);
    /// One of the kinds above, or another number.
    Status GetKind(int& kind) const;
    /// The code of its datum (S6). Empty for a system without a datum.
    Status GetDatumCode(const wchar_t*& code) const;
    /// The code of its ellipsoid (S6).
    Status GetEllipsoidCode(const wchar_t*& code) const;
    /// Makes a definition of its datum (S1, S6).
    Status GetDatum(DatumDefinition*& datum) const;
    /// Copies the datum into the system. The result is not looked at.
    Status SetDatum(const DatumDefinition* datum);
    /// Copies the ellipsoid into a system without a datum. The result is not looked at.
    Status SetEllipsoid(const EllipsoidDefinition* ellipsoid);

    explicit CoordinateReferenceSystemDefinition(Survey::System system);
    std::optional<Survey::Definition> value() const override { return m_system; }
    const Survey::System& system() const { return m_system; }

private:
    void copyCodes();

    Survey::System m_system;
    std::wstring m_datumCode;
    std::wstring m_ellipsoidCode;
};

/// Owns definitions (S8).
class DefinitionBaseArray final : public Object {
public:
    /// Makes an empty array (S1).
    static Status CreateInstance(DefinitionBaseArray*& array);
    /// The number of definitions.
    int GetCount() const { return static_cast<int>(m_definitions.size()); }
    /// Adds a definition (S8).
    Status Add(DefinitionBase* definition);
    /// Takes the definition at the index out (S8). Null out of range.
    DefinitionBase* Remove(int index);

    // Makes an array of new definitions with the values.
    static DefinitionBaseArray* make(const Survey::Definitions& values);
    ~DefinitionBaseArray() override;

private:
    std::vector<DefinitionBase*> m_definitions;
};

/// Definitions as bytes and as text.
class DefinitionStream final : public Object {
public:
    /// Makes an empty stream (S1).
    static Status CreateInstance(DefinitionStream*& stream);
    /// Adds a copy of the definition.
    Status Add(const DefinitionBase* definition);
    /// Writes the stream's definitions (S9). The length is the buffer's before, 1,024, and what was written after. The
    /// flags are 0. Fails when the buffer is too small.
    Status Write(unsigned char* buffer, std::size_t& lengthInBytes, SerializationFormat format, int flags) const;
    /// Reads what `Write` wrote (S10). The flags are 1. The result is not looked at: what the stream then holds
    /// decides.
    Status Read(const unsigned char* bytes, std::size_t lengthInBytes, SerializationFormat format, int flags);
    /// Makes an array of copies of what the stream holds (S1).
    Status GetDefinitions(DefinitionBaseArray*& definitions) const;
    /// Writes a definition as text (S11). The buffer has 65,536 bytes, and `schemaVersion` is -1, the newest.
    /// `includeDependents` is true for the GeoData text and false for `SerializeCoordinateSystem`.
    static Status Serialize_s(const DefinitionBase* definition, unsigned char* buffer,
                              std::uint64_t bufferLengthInBytes, SerializationFormat format, int schemaVersion,
                              bool includeDependents);
    /// Reads such a text into a new array (S1, S12). The length includes the text's NUL, and `schemaVersion` is -1.
    static Status Deserialize_s(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                std::uint64_t lengthInBytes, SerializationFormat format, int schemaVersion);

private:
    Survey::Definitions m_definitions;
};

/// A class of static functions.
class FormatConverter {
public:
    /// Writes well-known text with its NUL (S13). The buffer has 4,096 characters.
    static Status DefinitionToWkt_s(const CoordinateReferenceSystemDefinition* definition, WktFlavor flavor,
                                    wchar_t* buffer, std::size_t bufferCharacters);
};

/// What a system does.
class CoordinateReferenceSystemOperation final : public Object {
public:
    /// Makes an operation of a system (S1).
    static Status Load(const CoordinateReferenceSystemDefinition* definition,
                       CoordinateReferenceSystemOperation*& operation);
    /// Whether the system has a datum of its own (S6).
    Status IsDatumBased(bool& answer) const;

private:
    explicit CoordinateReferenceSystemOperation(bool isDatumBased) : m_isDatumBased(isDatumBased) {}
    bool m_isDatumBased;
};

/// A class of static functions.
class CoordinateReferenceSystemUtil {
public:
    /// Makes a definition of the system's ellipsoid, by its datum or its own (S1, S6).
    static Status GetEllipsoid(const CoordinateReferenceSystemDefinition* definition, EllipsoidDefinition*& ellipsoid);
};

/// A step between two datums.
class GeodeticTransformationDefinition final : public DefinitionBase {
public:
    /// Makes a definition of that name (S1, S14). The result is not looked at: null means that there is none.
    static Status Load(const wchar_t* name, GeodeticTransformationDefinition*& definition);
    /// Whether it may be applied in reverse (S14).
    Status IsReversible(bool& answer) const;

    explicit GeodeticTransformationDefinition(const Survey::Shift& shift);

private:
    bool m_isReversible;
};

/// Steps between two datums, one after the other.
class GeodeticPathDefinition final : public DefinitionBase {
public:
    /// Makes a definition of that name (S1, S14). The result is not looked at: null means that there is none.
    static Status Load(const wchar_t* name, GeodeticPathDefinition*& definition);
    /// Whether it may be applied in reverse (S14).
    Status IsReversible(bool& answer) const;

    explicit GeodeticPathDefinition(const Survey::Shift& shift);

private:
    bool m_isReversible;
};

/// The kinds of a `TransformationInfo`, `int` constants or enumerators of an unscoped enumeration. 2 is a
/// transformation. No source of the module names it.
enum TransformationKind : int {
    /// Neither. The number is fixed.
    transformationNone = 0,
    /// A geodetic path. The number is fixed.
    transformationPath = 1
};

/// Names a transformation or a path. The module hands it to its callers (S15).
class TransformationInfo final : public Object {
public:
    /// Makes an object (S1).
    static Status CreateInstance(TransformationInfo*& info);
    /// Copies the name.
    Status SetName(const wchar_t* name);
    /// One of 0, 1 and 2.
    Status SetKind(int kind);

    const wchar_t* GetName() const { return m_name.c_str(); }
    int GetKind() const { return m_kind; }

private:
    std::wstring m_name;
    int m_kind = transformationNone;
};

} // namespace Zentara::Infrastructure::SpatialReference

#if !defined(_WIN32)
#pragma GCC visibility pop
#endif
