#include <algorithm>

#include "host/database/model_run.h"
#include "host/database/model_values.h"

namespace Tests {
namespace {

/// The values of each application in a chain of extended data.
std::map<std::wstring, DrawingModel::Values> splitByApplication(const resbuf* chain)
{
    std::map<std::wstring, DrawingModel::Values> data;
    std::wstring application;
    for (; chain != nullptr; chain = chain->rbnext) {
        if (chain->restype == QeRb::kXdataAppName) {
            application = chain->resval.rstring;
            continue;
        }
        resbuf single = *chain;
        single.rbnext = nullptr;
        data[application].push_back(modelValues(&single).front());
    }
    return data;
}

} // namespace

bool ModelRun::compareSummary()
{
    QeDbObjectId geoData;
    const auto status = qedbGetGeoDataObjId(database_.get(), geoData);
    EXPECT_EQ(status == Qeapp::eOk, !geoData.isNull());
    agrees_ = agrees_ && geoData.handle() == model_.geoData() &&
              database_->transactionManager()->numActiveTransactions() == model_.depth();
    EXPECT_TRUE(agrees_) << "GeoData object or number of transactions differ";
    return agrees_;
}

bool ModelRun::compare()
{
    EXPECT_EQ(drawingContents(*database_), model_.print());
    for (const auto& [number, object] : model_.objects()) {
        if (agrees_ && !compareObject(number, object)) {
            ADD_FAILURE() << "object " << number << " differs";
            agrees_ = false;
        }
    }
    return agrees_ && !testing::Test::HasFailure();
}

bool ModelRun::compareObject(Number number, const DrawingModel::Object& expected)
{
    const auto open =
        std::find_if(opens_.begin(), opens_.end(), [&](const Open& each) { return each.number == number; });
    if (open != opens_.end())
        return compareContents(*open->object, expected);
    QeDbObject* object = nullptr;
    if (qedbOpenQeDbObject(object, idOf(number), QeDb::kForRead, true) != Qeapp::eOk)
        return false;
    const bool same = compareContents(*object, expected);
    return object->close() == Qeapp::eOk && same;
}

bool ModelRun::compareContents(const QeDbObject& object, const DrawingModel::Object& expected)
{
    if (object.isErased() != expected.erased || object.ownerId().handle() != expected.owner ||
        !compareExtendedData(object, expected))
        return false;
    switch (expected.kind) {
    case Kind::dictionary:
        return compareEntries(static_cast<const QeDbDictionary&>(object), object.objectId().handle());
    case Kind::xrecord: {
        ResbufChain chain;
        return static_cast<const QeDbXrecord&>(object).rbChain(chain.put()) == Qeapp::eOk &&
               modelValues(chain.get()) == expected.values;
    }
    case Kind::application:
        return static_cast<const QeDbRegAppTableRecord&>(object).getName() == expected.text;
    case Kind::geoData:
        return static_cast<const QeDbGeoData&>(object).coordinateSystem() == expected.text;
    case Kind::fixture:
        return true;
    }
    return false;
}

bool ModelRun::compareEntries(const QeDbDictionary& dictionary, Number number)
{
    std::map<std::wstring, Number> entries;
    const std::unique_ptr<QeDbDictionaryIterator> iterator(dictionary.newIterator());
    for (; !iterator->done(); iterator->next())
        entries.emplace(iterator->name(), iterator->objectId().handle());
    return entries == model_.entriesOf(number) && dictionary.numEntries() == entries.size();
}

bool ModelRun::compareExtendedData(const QeDbObject& object, const DrawingModel::Object& expected)
{
    std::map<std::wstring, DrawingModel::Values> data;
    for (const auto& [application, values] : expected.extendedData) {
        if (model_.isLive(application))
            data.emplace(model_.objects().at(application).text, values);
    }
    const ResbufChain chain(object.xData());
    return splitByApplication(chain.get()) == data;
}

} // namespace Tests
