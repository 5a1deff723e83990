#include <array>

#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class ClassDescriptor : public PlatformTest {};

TEST_F(ClassDescriptor, EveryClass_NamesItselfAndItsParent)
{
    struct Case {
        const QeRxClass* descriptor;
        const wchar_t* name;
        const QeRxClass* parent;
    };
    const std::array<Case, 13> cases = {{
        {QeRxObject::desc(), L"QeRxObject", nullptr},
        {QeRxDictionary::desc(), L"QeRxDictionary", QeRxObject::desc()},
        {QeRxDynamicLinker::desc(), L"QeRxDynamicLinker", QeRxObject::desc()},
        {QeDbObject::desc(), L"QeDbObject", QeRxObject::desc()},
        {QeDbDictionary::desc(), L"QeDbDictionary", QeDbObject::desc()},
        {QeDbXrecord::desc(), L"QeDbXrecord", QeDbObject::desc()},
        {QeDbGeoData::desc(), L"QeDbGeoData", QeDbObject::desc()},
        {QeDbSymbolTable::desc(), L"QeDbSymbolTable", QeDbObject::desc()},
        {QeDbRegAppTable::desc(), L"QeDbRegAppTable", QeDbSymbolTable::desc()},
        {QeDbBlockTable::desc(), L"QeDbBlockTable", QeDbSymbolTable::desc()},
        {QeDbSymbolTableRecord::desc(), L"QeDbSymbolTableRecord", QeDbObject::desc()},
        {QeDbRegAppTableRecord::desc(), L"QeDbRegAppTableRecord", QeDbSymbolTableRecord::desc()},
        {QeDbBlockTableRecord::desc(), L"QeDbBlockTableRecord", QeDbSymbolTableRecord::desc()},
    }};
    for (const Case& each : cases) {
        EXPECT_STREQ(each.descriptor->name(), each.name);
        EXPECT_EQ(each.descriptor->parent(), each.parent) << each.name;
    }
}

TEST_F(ClassDescriptor, Object_IsOfItsClassAndItsAncestors)
{
    const QeDbXrecord xrecord;
    EXPECT_EQ(xrecord.isA(), QeDbXrecord::desc());
    EXPECT_TRUE(xrecord.isKindOf(QeDbXrecord::desc()));
    EXPECT_TRUE(xrecord.isKindOf(QeRxObject::desc()));
    EXPECT_FALSE(xrecord.isKindOf(QeDbDictionary::desc()));
    EXPECT_FALSE(xrecord.isKindOf(nullptr));
}

TEST_F(ClassDescriptor, ObjectOfAClassWithoutADescriptor_IsOfItsParentClass)
{
    class Service final : public QeRxObject {};
    EXPECT_EQ(Service().isA(), QeRxObject::desc());
    EXPECT_EQ(qerxSysRegistry()->isA(), QeRxDictionary::desc());
}

} // namespace
} // namespace Tests
