// Saves and reopens the drawing of a model run, and looks up the ids of objects that are not loaded yet.
#include <algorithm>
#include <array>

#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "host/database/model_run.h"
#include "host/database/model_values.h"
#include "support/error_text.h"

namespace Tests {

/// Saves while objects are open and transactions are active.
void ModelRun::stepSave()
{
    const Embedded::Expected<void> result = Embedded::saveDrawing(*database_, file_, database_->drawingVersion());
    EXPECT_EQ(errorText(result), "");
    if (!expectStatus("save", Embedded::hostStatus(result), Qeapp::eOk))
        return;
    saved_ = model_.savedState();
    const auto other = Embedded::loadDrawing(file_);
    EXPECT_EQ(errorText(other), "");
    agrees_ = other.has_value();
    if (agrees_)
        expectSaved(**other);
}

/// Saves a copy, which must not change the drawing.
void ModelRun::stepCopy()
{
    const auto bytes = Embedded::saveDrawingToBytes(*database_, database_->drawingVersion());
    EXPECT_EQ(errorText(bytes), "");
    if (!expectStatus("copy", Embedded::hostStatus(bytes), Qeapp::eOk))
        return;
    const std::string text = drawingContents(*loadFromBytes(*bytes));
    agrees_ = text == model_.print();
    EXPECT_EQ(text, model_.print());
}

void ModelRun::expectSaved(const QeDbDatabase& other)
{
    const std::string text = drawingContents(other);
    agrees_ = agrees_ && text == saved_.print();
    EXPECT_EQ(text, saved_.print());
}

/// Discards the unsaved changes.
void ModelRun::stepReopen()
{
    closeAll();
    ids_.clear();
    database_.reset();
    model_ = saved_;
    load();
    expectStatus("reopen", database_ != nullptr ? Qeapp::eOk : Qeapp::eFileDamaged, Qeapp::eOk);
}

void ModelRun::load()
{
    using enum Embedded::DrawingAccess;
    constexpr std::array kAccesses = {reading, changing, sharing};
    database_.reset();
    auto result = Embedded::loadDrawing(file_, kAccesses[below(kAccesses.size())]);
    EXPECT_EQ(errorText(result), "");
    if (result)
        database_ = std::move(*result);
    agrees_ = agrees_ && database_ != nullptr;
    if (agrees_)
        rememberRootIds();
}

QeDbObjectId ModelRun::idOf(Number number)
{
    const auto known = ids_.find(number);
    if (known != ids_.end())
        return known->second;
    const QeDbObjectId id = findId(number);
    EXPECT_EQ(id.handle(), number);
    agrees_ = agrees_ && id.handle() == number;
    ids_[number] = id;
    return id;
}

QeDbObjectId ModelRun::findId(Number number)
{
    const Number owner = model_.objects().at(number).owner;
    std::wstring key;
    for (const auto& [name, entry] : model_.objects().at(owner).entries)
        key = entry == number ? name : key;
    QeDbObjectId id;
    const auto open =
        std::find_if(opens_.begin(), opens_.end(), [&](const Open& each) { return each.number == owner; });
    if (open != opens_.end()) {
        EXPECT_EQ(static_cast<QeDbDictionary*>(open->object)->getAt(key.c_str(), id), Qeapp::eOk);
        return id;
    }
    QeDbDictionary* dictionary = nullptr;
    EXPECT_EQ(qedbOpenObject(dictionary, idOf(owner), QeDb::kForRead, true), Qeapp::eOk);
    const Opened<QeDbDictionary> opened(dictionary);
    if (dictionary != nullptr) {
        EXPECT_EQ(dictionary->getAt(key.c_str(), id), Qeapp::eOk);
    }
    return id;
}

/// Looks up the id of an object that is about to be removed, after which it cannot be found any more.
void ModelRun::rememberId(Number number)
{
    if (number != 0)
        static_cast<void>(idOf(number)); // it is kept in ids_
}

/// Remembers the ids that cannot be found through owners. Loads no dictionary entry.
void ModelRun::rememberRootIds()
{
    ids_.clear();
    QeDbDictionary* dictionary = nullptr;
    QeDbRegAppTable* applications = nullptr;
    QeDbBlockTable* blocks = nullptr;
    ASSERT_EQ(database_->getNamedObjectsDictionary(dictionary), Qeapp::eOk);
    ASSERT_EQ(database_->getRegAppTable(applications), Qeapp::eOk);
    ASSERT_EQ(database_->getBlockTable(blocks), Qeapp::eOk);
    const Opened<QeDbObject> opened[] = {Opened<QeDbObject>(dictionary), Opened<QeDbObject>(applications),
                                         Opened<QeDbObject>(blocks)};
    for (const auto& each : opened)
        ids_[each->objectId().handle()] = each->objectId();
    QeDbObjectId id;
    ASSERT_EQ(blocks->getAt(kQeDbModelSpaceName, id), Qeapp::eOk);
    ids_[id.handle()] = id;
    if (qedbGetGeoDataObjId(database_.get(), id) == Qeapp::eOk)
        ids_[id.handle()] = id;
    for (const auto& [number, object] : model_.objects()) {
        if (object.kind == Kind::application && applications->getAt(object.text.c_str(), id) == Qeapp::eOk)
            ids_[id.handle()] = id;
    }
}

} // namespace Tests
