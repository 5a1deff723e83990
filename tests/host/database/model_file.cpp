// Saving the drawing of a model run, opening it again, and finding the objects of one that is loaded bit by bit.
#include <algorithm>
#include <array>

#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "host/database/model_run.h"
#include "host/database/model_values.h"
#include "support/error_text.h"

namespace Tests {

/// Whatever is open and whatever transactions are active.
void ModelRun::stepSave()
{
    const Embedded::Expected<void> result = Embedded::saveDrawing(*database_, file_, database_->drawingVersion());
    EXPECT_EQ(errorText(result), "");
    if (!agree("save", Embedded::hostStatus(result), Qeapp::eOk))
        return;
    saved_ = model_.saved();
    const auto other = Embedded::loadDrawing(file_);
    EXPECT_EQ(errorText(other), "");
    same_ = other.has_value();
    if (same_)
        expectSaved(**other);
}

/// The whole drawing goes elsewhere, and stays what it is.
void ModelRun::stepCopy()
{
    const auto bytes = Embedded::saveDrawingToBytes(*database_, database_->drawingVersion());
    EXPECT_EQ(errorText(bytes), "");
    if (!agree("copy", Embedded::hostStatus(bytes), Qeapp::eOk))
        return;
    const std::string printed = drawingContents(*loadFromBytes(*bytes));
    same_ = printed == model_.printed();
    EXPECT_EQ(printed, model_.printed());
}

void ModelRun::expectSaved(const QeDbDatabase& other)
{
    const std::string printed = drawingContents(other);
    same_ = same_ && printed == saved_.printed();
    EXPECT_EQ(printed, saved_.printed());
}

/// What was not saved is gone.
void ModelRun::stepReopen()
{
    endEverything();
    ids_.clear();
    database_.reset();
    model_ = saved_;
    load();
    agree("reopen", database_ != nullptr ? Qeapp::eOk : Qeapp::eFileDamaged, Qeapp::eOk);
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
    same_ = same_ && database_ != nullptr;
    if (same_)
        collectRoots();
}

QeDbObjectId ModelRun::idOf(Number number)
{
    const auto known = ids_.find(number);
    if (known != ids_.end())
        return known->second;
    const QeDbObjectId id = askFor(number);
    EXPECT_EQ(id.handle(), number);
    same_ = same_ && id.handle() == number;
    ids_[number] = id;
    return id;
}

QeDbObjectId ModelRun::askFor(Number number)
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

/// Keeps hold of what is about to leave its dictionary: nobody can ask for it afterwards.
void ModelRun::meet(Number number)
{
    if (number != 0)
        static_cast<void>(idOf(number)); // which remembers it
}

/// What is not found along the owners. No entry of a dictionary is looked at.
void ModelRun::collectRoots()
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
