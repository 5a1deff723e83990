// A spatial-reference library of other names, as loose as docs/porting.md allows.
#pragma once

#include "product_sdk.h"
#include "windows_macros.h"

namespace Product::Geodesy {

enum Answer : std::uint64_t {
    Good = 0,
    Unchecked = 10,
    Unknown = 35,
    Rounded = 41,
    Broken = 52,
    NoText = 54,
    NothingInText = 55,
    Exhausted = 57
};
enum Form : unsigned long { AnyForm = 1, ByteForm = 20, TextForm = 300 };
using Flavor = const wchar_t*;

class Item : public Named, public Counted {
public:
    [[nodiscard]] static bool Destroy(const Item* item, bool now = true) noexcept;
    ~Item() override;
};

class Definition : public Item {
public:
    virtual Answer GetCode(const wchar_t*& code, int kind = 0) const;
    Answer GetCode(std::wstring& code) const;
};

class Ellipsoid : public Definition {
public:
    explicit Ellipsoid(double radius = 1);
};

class Datum : public Definition {
public:
    virtual Answer GetEllipsoidCode(const wchar_t*& code) const;
    virtual void SetEllipsoid(const Ellipsoid* ellipsoid, bool copies = true);
};

class System : public Definition {
public:
    static Answer Load(const wchar_t* code, System*& system, const wchar_t* catalog = nullptr);
    static Answer Load(int code, System*& system);
    virtual Answer GetKind(int& kind) const;
    virtual Answer GetDatumCode(const wchar_t*& code) const;
    virtual Answer GetEllipsoidCode(const wchar_t*& code) const;
    virtual Answer GetDatum(Datum*& datum) const;
    virtual Receipt SetDatum(const Datum* datum);
    virtual void SetEllipsoid(const Ellipsoid* ellipsoid);
};

class Group : public Item {
public:
    static Answer CreateInstance(Group*& group, std::size_t capacity = 0);
    virtual int GetCount() const;
    virtual Answer Add(Definition* definition, int position = -1);
    virtual Definition* Remove(std::size_t index);
};

class Stream : public Item {
public:
    static Answer CreateInstance(Stream*& stream, bool swaps = false);
    virtual Answer Add(const Definition* definition);
    virtual Answer Write(unsigned char* buffer, std::size_t& length, Form form, long flags = 0) const;
    virtual void Read(const unsigned char* bytes, std::size_t length, Form form, long flags = 0);
    virtual Answer GetDefinitions(Group*& group) const;
    static Answer Serialize_s(const Definition* definition, unsigned char* buffer, std::size_t length, Form form,
                              long schema = -1, bool dependents = true);
    static Answer Deserialize_s(Group*& group, const unsigned char* bytes, std::size_t length, Form form,
                                long schema = -1);
};

class Converter : public Named {
public:
    static Answer DefinitionToWkt_s(const System* system, Flavor flavor, wchar_t* buffer, std::size_t characters,
                                    bool pretty = false);
};

class Operation : public Item {
public:
    static Answer Load(const System* system, Operation*& operation);
    virtual Answer IsDatumBased(bool& answer) const;
};

class Util : public Named {
public:
    static Answer GetEllipsoid(const System* system, Ellipsoid*& ellipsoid, bool copies = true);
};

/// A step or a path of steps.
template <int kind>
class Change : public Definition {
public:
    static void Load(const wchar_t* name, Change*& change, const wchar_t* catalog = nullptr);
    virtual Answer IsReversible(bool& answer) const;
};

class Info : public Item {
public:
    static Answer CreateInstance(Info*& info);
    virtual Answer SetName(const wchar_t* name);
    Answer SetName(const std::string& utf8);
    virtual Answer SetKind(long kind);
};

} // namespace Product::Geodesy

namespace Zentara::Infrastructure::SpatialReference {

using Status = Product::Geodesy::Answer;
inline constexpr Status statusOk = Product::Geodesy::Good;
inline constexpr Status statusCheckFailed = Product::Geodesy::Unchecked;
inline constexpr Status statusNotFound = Product::Geodesy::Unknown;
inline constexpr Status statusInexact = Product::Geodesy::Rounded;
inline constexpr Status statusFailed = Product::Geodesy::Broken;
inline constexpr Status statusNullText = Product::Geodesy::NoText;
inline constexpr Status statusEmptyText = Product::Geodesy::NothingInText;
inline constexpr Status statusOutOfMemory = Product::Geodesy::Exhausted;

inline constexpr int kindNotEarthReferenced = -1;
inline constexpr int kindGeographic = 100;
inline constexpr int kindProjected = 200;
inline constexpr auto formatAutomatic = Product::Geodesy::AnyForm;
inline constexpr auto formatBinary = Product::Geodesy::ByteForm;
inline constexpr auto formatText = Product::Geodesy::TextForm;
inline constexpr Product::Geodesy::Flavor wktFlavorDefault = L"plain";
inline constexpr short transformationNone = 0;
inline constexpr short transformationPath = 1;

using Object = Product::Geodesy::Item;
using DefinitionBase = Product::Geodesy::Definition;
using EllipsoidDefinition = Product::Geodesy::Ellipsoid;
using DatumDefinition = Product::Geodesy::Datum;
using CoordinateReferenceSystemDefinition = Product::Geodesy::System;
using DefinitionBaseArray = Product::Geodesy::Group;
using DefinitionStream = Product::Geodesy::Stream;
using FormatConverter = Product::Geodesy::Converter;
using CoordinateReferenceSystemOperation = Product::Geodesy::Operation;
using CoordinateReferenceSystemUtil = Product::Geodesy::Util;
using GeodeticTransformationDefinition = Product::Geodesy::Change<2>;
using GeodeticPathDefinition = Product::Geodesy::Change<1>;
using TransformationInfo = Product::Geodesy::Info;

} // namespace Zentara::Infrastructure::SpatialReference
