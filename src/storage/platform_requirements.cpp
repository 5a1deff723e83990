// What a product's platform headers can get wrong and the compiler can tell. Each message says what to change there;
// see docs/porting.md.
#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <type_traits>

#include "platform/foundation.h"
#include "platform/host.h"
#include "platform/spatial_reference.h"
#include "platform/win32.h"

namespace Orvel {
namespace {

namespace Spatial = Zentara::Infrastructure::SpatialReference;

/// The number of a constant, of an enumerator of any enumeration, or of a macro.
constexpr auto numberValue = [](auto value) { return static_cast<std::int64_t>(value); };

constexpr auto areDistinct = [](auto... values) {
    std::array numbers{numberValue(values)...};
    std::sort(numbers.begin(), numbers.end());
    return std::adjacent_find(numbers.begin(), numbers.end()) == numbers.end();
};

/// Whether each constant passes through `...` as an int.
constexpr auto passAsInt = [](auto... values) { return (std::is_same_v<decltype(+values), int> && ...); };

/// Whether each constant is compared with an int without a cast.
constexpr auto convertToInt = [](auto... values) { return (std::is_convertible_v<decltype(values), int> && ...); };

template <class Reactor>
using Decompose = Qeapp::ErrorStatus (Reactor::*)(QeDbDatabase*, QeDb::QeDbDwgVersion, QeDbSaveErrorRecorder*,
                                                  QeDbSaveErrorMessageRecorder*);

/// A protected function cannot be looked at from here; the compiler then says where the module overrides it.
template <class Reactor>
constexpr bool kDecomposesAsListed = !requires
{
    &Reactor::decomposeForSave;
}
|| requires
{
    static_cast<Decompose<Reactor>>(&Reactor::decomposeForSave);
};

template <class Class>
constexpr bool kIsMadeAndDeleted = requires(Class* object)
{
    new Class;
    delete object;
};

template <class Class>
constexpr bool kIsMadeWithoutThrowing = requires
{
    new (std::nothrow) Class;
};

template <class Integer, std::size_t lengthInBytes>
constexpr bool kIsUnsigned = std::is_unsigned_v<Integer> && sizeof(Integer) == lengthInBytes;

} // namespace

// Results of the host

static_assert(numberValue(Qeapp::eOk) == 0 && numberValue(Qeapp::eNotApplicable) == 2 &&
                  numberValue(Qeapp::eNoDatabase) == 124 && numberValue(Qeapp::eVetoed) == 325,
              "host.h: the module's clients rely on the numbers of Qeapp::eOk (0), eNotApplicable (2), eNoDatabase "
              "(124) and eVetoed (325). Where the product has other numbers, make Qeapp::ErrorStatus a type of host.h "
              "and convert the product's results into it");
static_assert(areDistinct(Qeapp::eOk, Qeapp::eNotApplicable, Qeapp::eInvalidInput, Qeapp::eOutOfMemory,
                          Qeapp::eInvalidResbuf, Qeapp::eNoTransaction, Qeapp::eNoObject, Qeapp::eNullObjectId,
                          Qeapp::eObjectErased, Qeapp::eKeyNotFound, Qeapp::eNotThatKindOfClass,
                          Qeapp::eInvalidDrawingVersion, Qeapp::eNoDatabase, Qeapp::eVetoed),
              "host.h: no two results of Qeapp may have the same number, since the module decides by them. Where the "
              "product has one result for two of them, tell the two apart in the call that returns it");

// Constants and types of the host

static_assert(areDistinct(QeRx::kInitAppMsg, QeRx::kUnloadAppMsg),
              "host.h: QeRx::kInitAppMsg and kUnloadAppMsg must be the host's two different messages");
static_assert(areDistinct(QeDb::kForRead, QeDb::kForWrite, QeDb::kForNotify),
              "host.h: the three values of QeDb::OpenMode must differ. Give kForNotify a number of its own where the "
              "product has no such mode: the module never passes it");
static_assert(areDistinct(QeRb::kText, QeRb::kBinaryChunk, QeRb::kXdataString, QeRb::kXdataAppName, QeRb::kXdataControl,
                          QeRb::kXdataInteger32, QeRb::kListEnd),
              "host.h: the group codes of QeRb and kListEnd must differ");
static_assert(convertToInt(QeRb::kText, QeRb::kBinaryChunk, QeRb::kXdataString, QeRb::kXdataAppName,
                           QeRb::kXdataControl, QeRb::kXdataInteger32, QeRb::kListEnd),
              "host.h: the group codes of QeRb must convert to int, since they are compared with resbuf::restype. Make "
              "them int constants or enumerators of an unscoped enumeration");
static_assert(passAsInt(QeRb::kText, QeRb::kXdataString, QeRb::kXdataAppName, QeRb::kListEnd),
              "host.h: the group codes of QeRb must be int constants or enumerators of an unscoped enumeration, since "
              "qeutBuildList takes them as variable arguments of the type int");
static_assert(std::is_integral_v<decltype(resbuf::restype)> && std::is_signed_v<decltype(resbuf::restype)> &&
                  sizeof(resbuf::restype) >= 2,
              "host.h: resbuf::restype must be a signed integer of 16 bits or more");
static_assert(std::is_same_v<decltype(resbuf::rbnext), resbuf*>, "host.h: resbuf::rbnext must be a resbuf*");
static_assert(std::is_integral_v<decltype(resbuf().resval.rlong)> && sizeof(resbuf().resval.rlong) == 4,
              "host.h: rlong in resbuf::resval must be an integer of 32 bits");
static_assert(std::is_same_v<decltype(resbuf().resval.rstring), wchar_t*>,
              "host.h: rstring in resbuf::resval must be a wchar_t*");
static_assert(std::is_integral_v<decltype(QeBinaryChunk::clen)> && sizeof(QeBinaryChunk::clen) >= 2,
              "host.h: QeBinaryChunk::clen must be an integer of 16 bits or more");
static_assert(std::is_same_v<decltype(QeBinaryChunk::buf), char*>, "host.h: QeBinaryChunk::buf must be a char*");

// Classes of the host

static_assert(std::is_default_constructible_v<QeDbObjectId> && std::is_copy_constructible_v<QeDbObjectId> &&
                  std::is_copy_assignable_v<QeDbObjectId>,
              "host.h: QeDbObjectId must be a value with a public default constructor, copies and an assignment");
static_assert(std::is_convertible_v<QeDbDictionary*, QeDbObject*> && std::is_convertible_v<QeDbXrecord*, QeDbObject*>,
              "host.h: QeDbDictionary and QeDbXrecord must be derived from QeDbObject in public, since "
              "QeDbDictionary::setAt takes both as such");
static_assert(kIsMadeAndDeleted<QeDbDictionary> && kIsMadeAndDeleted<QeDbXrecord> &&
                  kIsMadeAndDeleted<QeDbRegAppTableRecord> && kIsMadeAndDeleted<QeDbGeoData>,
              "host.h: QeDbDictionary, QeDbXrecord, QeDbRegAppTableRecord and QeDbGeoData must have public default "
              "constructors and destructors. Derive a class with both where the product makes its objects otherwise");
static_assert(kIsMadeWithoutThrowing<QeDbDictionary> && kIsMadeWithoutThrowing<QeDbXrecord> &&
                  kIsMadeWithoutThrowing<QeDbRegAppTableRecord>,
              "host.h: QeDbDictionary, QeDbXrecord and QeDbRegAppTableRecord are made with new (std::nothrow). A class "
              "with an operator new of its own needs one with const std::nothrow_t& too");
static_assert(std::is_destructible_v<QeDbRegAppTable>,
              "host.h: QeDbRegAppTable must have a public destructor, since the module's holder names it");
static_assert(std::is_destructible_v<QeDbDictionaryIterator> &&
                  (std::has_virtual_destructor_v<QeDbDictionaryIterator> ||
                   !std::is_abstract_v<QeDbDictionaryIterator>),
              "host.h: QeDbDictionaryIterator must have a public destructor, and a virtual one where it is abstract, "
              "since the module deletes what newIterator returns");
static_assert(std::is_base_of_v<QeRxObject, QeRxDynamicLinker>,
              "host.h: QeRxDynamicLinker must be derived from QeRxObject, to which a static_cast leads back");
static_assert(std::is_polymorphic_v<QeDbDecompositionReactor>,
              "host.h: QeDbDecompositionReactor::decomposeForSave must be virtual");
static_assert(
    kDecomposesAsListed<QeDbDecompositionReactor>,
    "host.h: QeDbDecompositionReactor::decomposeForSave must return Qeapp::ErrorStatus and have the parameters "
    "QeDbDatabase*, QeDb::QeDbDwgVersion, QeDbSaveErrorRecorder* and QeDbSaveErrorMessageRecorder*, since the "
    "module overrides it. Where the product's differs, derive a class with this function from the product's");

// The spatial-reference library

static_assert(
    numberValue(Spatial::statusOk) == 0 && numberValue(Spatial::statusCheckFailed) == 10 &&
        numberValue(Spatial::statusNotFound) == 35 && numberValue(Spatial::statusInexact) == 41 &&
        numberValue(Spatial::statusFailed) == 52 && numberValue(Spatial::statusNullText) == 54 &&
        numberValue(Spatial::statusEmptyText) == 55 && numberValue(Spatial::statusOutOfMemory) == 57,
    "spatial_reference.h: the module's clients rely on the numbers of Status (0, 10, 35, 41, 52, 54, 55, 57). "
    "Where the product has other numbers, make Status a type of spatial_reference.h and convert the "
    "product's statuses into it");
static_assert(areDistinct(Spatial::kindNotEarthReferenced, Spatial::kindGeographic, Spatial::kindProjected),
              "spatial_reference.h: the three kinds of systems must differ");
static_assert(convertToInt(Spatial::kindNotEarthReferenced, Spatial::kindGeographic, Spatial::kindProjected),
              "spatial_reference.h: the three kinds of systems must convert to int, since they are compared with what "
              "GetKind gives. Make them int constants or enumerators of an unscoped enumeration");
static_assert(convertToInt(Spatial::transformationNone, Spatial::transformationPath),
              "spatial_reference.h: transformationNone and transformationPath must convert to int, as the other kinds "
              "do");
static_assert(numberValue(Spatial::transformationNone) == 0 && numberValue(Spatial::transformationPath) == 1,
              "spatial_reference.h: transformationNone must be 0 and transformationPath 1, as in the stored "
              "configurations. Where the product has other numbers, convert them in TransformationInfo::SetKind");
static_assert(std::is_convertible_v<Spatial::CoordinateReferenceSystemDefinition*, Spatial::DefinitionBase*> &&
                  std::is_convertible_v<Spatial::DatumDefinition*, Spatial::DefinitionBase*> &&
                  std::is_convertible_v<Spatial::EllipsoidDefinition*, Spatial::DefinitionBase*>,
              "spatial_reference.h: the definitions of a system, a datum and an ellipsoid must be derived from "
              "DefinitionBase in public");
static_assert(std::is_polymorphic_v<Spatial::DefinitionBase>,
              "spatial_reference.h: DefinitionBase must have a virtual function, for the module's dynamic_cast");
static_assert(std::is_convertible_v<const Spatial::DefinitionBase*, const Spatial::Object*> &&
                  std::is_convertible_v<const Spatial::DefinitionBaseArray*, const Spatial::Object*> &&
                  std::is_convertible_v<const Spatial::DefinitionStream*, const Spatial::Object*> &&
                  std::is_convertible_v<const Spatial::CoordinateReferenceSystemOperation*, const Spatial::Object*> &&
                  std::is_convertible_v<const Spatial::TransformationInfo*, const Spatial::Object*>,
              "spatial_reference.h: what the library makes must be derived from Object in public, for Object::Destroy");

// The foundation library

static_assert(std::has_virtual_destructor_v<FqDisposable>,
              "foundation.h: FqDisposable must have a virtual destructor, public or protected");
static_assert(std::is_base_of_v<FqDisposable, FqGuardDisposable> &&
                  std::is_base_of_v<FqGuardDisposable, FqDisposableCollection>,
              "foundation.h: FqGuardDisposable must be derived from FqDisposable, and FqDisposableCollection from "
              "FqGuardDisposable");
static_assert(std::is_copy_constructible_v<Ptr<FqDisposable>> || std::is_move_constructible_v<Ptr<FqDisposable>>,
              "foundation.h: a Ptr must be one that can be moved or copied, as an element of a std::vector");

// Win32

static_assert(std::is_integral_v<BOOL> && numberValue(TRUE) == 1 && numberValue(FALSE) == 0,
              "win32.h: BOOL must be an integer, TRUE 1 and FALSE 0");
static_assert(kIsUnsigned<DWORD, 4>, "win32.h: DWORD must be an unsigned integer of 32 bits");
static_assert(kIsUnsigned<BYTE, 1>, "win32.h: BYTE must be an unsigned integer of 8 bits");
static_assert(std::is_pointer_v<HKEY> && std::is_pointer_v<HMODULE>, "win32.h: HKEY and HMODULE must be pointer types");
static_assert(sizeof(CLSID) == 16 && kIsUnsigned<decltype(CLSID::Data1), 4> && kIsUnsigned<decltype(CLSID::Data2), 2> &&
                  std::is_same_v<decltype(CLSID::Data3), decltype(CLSID::Data2)> && sizeof(CLSID::Data4) == 8,
              "win32.h: CLSID must have 16 bytes: unsigned integers of 32, 16 and 16 bits and an array of eight bytes");
static_assert(numberValue(S_OK) == 0 && numberValue(ERROR_SUCCESS) == 0, "win32.h: S_OK and ERROR_SUCCESS must be 0");
static_assert(areDistinct(ERROR_SUCCESS, ERROR_NO_MORE_ITEMS), "win32.h: ERROR_NO_MORE_ITEMS must not be a success");
static_assert(numberValue(CP_UTF8) == 65001, "win32.h: CP_UTF8 must be 65001");

} // namespace Orvel
