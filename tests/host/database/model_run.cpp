#include "host/database/model_run.h"

#include <algorithm>
#include <array>

#include "embedded/host/drawing_file/drawing_file.h"
#include "host/database/model_values.h"
#include "support/error_text.h"

namespace Tests {
namespace {

constexpr std::size_t kMaxOpens = 12;

} // namespace

ModelRun::ModelRun(std::uint64_t seed, std::filesystem::path file) : random_(seed), file_(std::move(file))
{
    QeDbDatabase empty;
    EXPECT_EQ(errorText(Embedded::saveDrawing(empty, file_, empty.drawingVersion())), "");
    load();
}

ModelRun::~ModelRun()
{
    closeAll();
}

std::wstring ModelRun::randomApplicationName()
{
    std::wstring name = L"app" + std::to_wstring(below(4));
    if (chance(50))
        name[0] = L'A';
    return name;
}

DrawingModel::Values ModelRun::randomValues(const std::vector<int>& codes)
{
    DrawingModel::Values values(below(4));
    for (auto& [code, number] : values) {
        code = codes[below(codes.size())];
        number = static_cast<int>(below(1000));
    }
    return values;
}

ModelRun::Number ModelRun::randomObject(Kind kind)
{
    std::vector<Number> numbers;
    for (const auto& [number, object] : model_.objects()) {
        if (object.kind == kind)
            numbers.push_back(number);
    }
    return numbers.empty() ? 0 : numbers[below(numbers.size())];
}

ModelRun::Number ModelRun::randomObject()
{
    auto object = model_.objects().begin();
    std::advance(object, below(model_.objects().size()));
    return object->first;
}

bool ModelRun::expectStatus(const char* operation, Qeapp::ErrorStatus actual, Qeapp::ErrorStatus expected)
{
    auto& [made, succeeded] = counts_[operation];
    ++made;
    succeeded += actual == Qeapp::eOk ? 1 : 0;
    if (actual == expected)
        return true;
    ADD_FAILURE() << operation << " returned " << actual << " instead of " << expected;
    agrees_ = false;
    return false;
}

std::optional<ModelRun::Open> ModelRun::openNew(Number number, bool write, bool openErased)
{
    if (opens_.size() >= kMaxOpens)
        close(opens_[below(opens_.size())]);
    Open open{number, write, nullptr};
    const auto status =
        qedbOpenQeDbObject(open.object, idOf(number), write ? QeDb::kForWrite : QeDb::kForRead, openErased);
    if (!expectStatus("open", status, model_.open(number, write, openErased)) || status != Qeapp::eOk)
        return std::nullopt;
    opens_.push_back(open);
    return open;
}

std::optional<ModelRun::Open> ModelRun::openOrReuse(Number number)
{
    if (number == 0)
        return std::nullopt;
    const auto found =
        std::find_if(opens_.begin(), opens_.end(), [&](const Open& open) { return open.number == number; });
    if (found != opens_.end() && chance(80))
        return *found;
    return openNew(number, chance(85), chance(20));
}

void ModelRun::close(const Open& open)
{
    const Open closed = open; // it may be the element that is erased
    const auto found = std::find_if(opens_.begin(), opens_.end(), [&](const Open& each) {
        return each.number == closed.number && each.write == closed.write;
    });
    opens_.erase(found);
    model_.close(closed.number, closed.write);
    expectStatus("close", closed.object->close(), Qeapp::eOk);
}

void ModelRun::closeSometimes(const Open& open)
{
    if (chance(75))
        close(open);
}

void ModelRun::addCreated(QeDbObject* object)
{
    const QeDbObjectId id = object->objectId();
    ids_[id.handle()] = id;
    opens_.push_back({id.handle(), true, object});
    EXPECT_EQ(id.handle() + 1, model_.nextNumber());
    closeSometimes(opens_.back());
}

void ModelRun::stepOpen()
{
    openNew(randomObject(), chance(50), chance(30));
}

void ModelRun::stepClose()
{
    if (!opens_.empty())
        close(opens_[below(opens_.size())]);
}

void ModelRun::stepUpgrade()
{
    if (opens_.empty())
        return;
    Open& open = opens_[below(opens_.size())];
    const bool up = chance(60);
    const auto status = up ? open.object->upgradeOpen() : open.object->downgradeOpen();
    const auto expected = up ? model_.upgrade(open.number, open.write) : model_.downgrade(open.number, open.write);
    if (expectStatus(up ? "upgrade" : "downgrade", status, expected) && status == Qeapp::eOk)
        open.write = up;
}

void ModelRun::stepErase()
{
    const auto open = openOrReuse(randomObject());
    if (!open)
        return;
    const bool erasing = chance(60);
    expectStatus(erasing ? "erase" : "unerase", open->object->erase(erasing),
                 model_.erase(open->number, open->write, erasing));
    closeSometimes(*open);
}

void ModelRun::stepWrite()
{
    const auto open = openOrReuse(randomObject(Kind::xrecord));
    if (!open)
        return;
    const DrawingModel::Values written = randomValues({300, 301, 310, 1002, 1040, 1070, 1071});
    const ResbufChain chain(newChain(written));
    expectStatus("write", static_cast<QeDbXrecord*>(open->object)->setFromRbChain(chain.get(), database_.get()),
                 model_.setValues(open->number, open->write, written));
    closeSometimes(*open);
}

void ModelRun::stepExtendedData()
{
    const auto open = openOrReuse(randomObject());
    if (!open)
        return;
    const std::wstring application = randomApplicationName();
    const DrawingModel::Values written = randomValues({1000, 1004, 1040, 1070, 1071});
    const ResbufChain chain(qeutBuildList(QeRb::kXdataAppName, application.c_str(), QeRb::kListEnd));
    chain.get()->rbnext = newChain(written);
    expectStatus("extended data", open->object->setXData(chain.get()),
                 model_.setExtendedData(open->number, open->write, application, written));
    closeSometimes(*open);
}

void ModelRun::stepSetAt()
{
    const auto open = openOrReuse(chance(60) ? DrawingModel::kNamedObjects : randomObject(Kind::dictionary));
    if (!open)
        return;
    const bool nested = chance(15);
    std::unique_ptr<QeDbObject> object;
    if (nested)
        object = std::make_unique<QeDbDictionary>();
    else
        object = std::make_unique<QeDbXrecord>();
    const std::wstring entry = randomKey();
    rememberId(model_.findEntry(open->number, entry));
    QeDbObjectId id;
    const auto status = static_cast<QeDbDictionary*>(open->object)->setAt(entry.c_str(), object.get(), id);
    const Kind kind = nested ? Kind::dictionary : Kind::xrecord;
    if (expectStatus("add", status, model_.setAt(open->number, open->write, entry, kind)) && status == Qeapp::eOk)
        addCreated(object.release());
    closeSometimes(*open);
}

void ModelRun::stepRemove()
{
    const auto open = openOrReuse(chance(50) ? DrawingModel::kNamedObjects : randomObject(Kind::dictionary));
    if (!open)
        return;
    auto& dictionary = static_cast<QeDbDictionary&>(*open->object);
    if (chance(50)) {
        const std::wstring entry = randomKey();
        rememberId(model_.findEntry(open->number, entry));
        expectStatus("remove", dictionary.remove(entry.c_str()), model_.remove(open->number, open->write, entry));
    } else {
        const auto entries = model_.entriesOf(open->number);
        const Number number = entries.empty() || chance(30) ? randomObject() : entries.begin()->second;
        const auto status = dictionary.remove(idOf(number)); // before the model removes it
        expectStatus("remove by id", status, model_.removeByNumber(open->number, open->write, number));
    }
    closeSometimes(*open);
}

void ModelRun::stepRegister()
{
    const auto open = openOrReuse(DrawingModel::kRegAppTable);
    if (!open)
        return;
    const std::wstring name = randomApplicationName();
    auto record = std::make_unique<QeDbRegAppTableRecord>();
    EXPECT_EQ(record->setName(name.c_str()), Qeapp::eOk);
    QeDbObjectId id;
    const auto status = static_cast<QeDbRegAppTable*>(open->object)->add(id, record.get());
    if (expectStatus("register", status, model_.addApplication(open->write, name)) && status == Qeapp::eOk)
        addCreated(record.release());
    closeSometimes(*open);
}

void ModelRun::stepRename()
{
    const auto open = openOrReuse(randomObject(Kind::application));
    if (!open)
        return;
    const std::wstring name = randomApplicationName();
    expectStatus("rename", static_cast<QeDbRegAppTableRecord*>(open->object)->setName(name.c_str()),
                 model_.setName(open->number, open->write, name));
    closeSometimes(*open);
}

void ModelRun::stepGeoData()
{
    if (chance(40)) {
        auto geoData = std::make_unique<QeDbGeoData>();
        EXPECT_EQ(geoData->setBlockTableRecordId(ids_.at(DrawingModel::kModelSpace)), Qeapp::eOk);
        QeDbObjectId id;
        const auto status = geoData->postToDb(id);
        if (expectStatus("post", status, model_.postGeoData()) && status == Qeapp::eOk)
            addCreated(geoData.release());
        return;
    }
    const auto open = openOrReuse(randomObject(Kind::geoData));
    if (!open)
        return;
    const std::wstring text = std::to_wstring(below(1000));
    expectStatus("set text", static_cast<QeDbGeoData*>(open->object)->setCoordinateSystem(text.c_str()),
                 model_.setText(open->number, open->write, text));
    closeSometimes(*open);
}

void ModelRun::stepTransaction()
{
    QeDbTransactionManager& transactions = *database_->transactionManager();
    const std::uint64_t choice = below(10);
    if (choice < 5 && model_.depth() < 5) {
        expectStatus("begin", transactions.startTransaction() != nullptr ? Qeapp::eOk : Qeapp::eNoTransaction,
                     Qeapp::eOk);
        model_.begin();
    } else if (choice < 7) {
        expectStatus("commit", transactions.endTransaction(), model_.commit());
    } else {
        expectStatus("abort", transactions.abortTransaction(), model_.abort());
        closeUndoneObjects();
    }
}

bool ModelRun::step()
{
    const std::uint64_t choice = below(1000);
    const std::array<std::pair<std::uint64_t, void (ModelRun::*)()>, 15> steps = {{
        {100, &ModelRun::stepOpen},
        {250, &ModelRun::stepClose},
        {290, &ModelRun::stepUpgrade},
        {400, &ModelRun::stepErase},
        {560, &ModelRun::stepWrite},
        {620, &ModelRun::stepExtendedData},
        {740, &ModelRun::stepSetAt},
        {800, &ModelRun::stepRemove},
        {830, &ModelRun::stepRegister},
        {840, &ModelRun::stepRename},
        {870, &ModelRun::stepGeoData},
        {990, &ModelRun::stepTransaction},
        {995, &ModelRun::stepSave},
        {997, &ModelRun::stepCopy},
        {1000, &ModelRun::stepReopen},
    }};
    const auto chosen =
        std::find_if(steps.begin(), steps.end(), [choice](const auto& each) { return choice < each.first; });
    (this->*chosen->second)();
    return agrees_ && compareSummary();
}

void ModelRun::closeAll()
{
    while (!opens_.empty())
        close(opens_.back());
    while (model_.depth() > 0) {
        if (chance(50)) {
            expectStatus("commit", database_->transactionManager()->endTransaction(), model_.commit());
        } else {
            expectStatus("abort", database_->transactionManager()->abortTransaction(), model_.abort());
            closeUndoneObjects();
        }
    }
}

/// Open objects whose creation was undone can only be closed.
void ModelRun::closeUndoneObjects()
{
    for (const Open& open : opens_) {
        if (model_.has(open.number))
            continue;
        EXPECT_TRUE(open.object->isErased());
        expectStatus("unerase undone", open.object->erase(false),
                     open.write ? Qeapp::eObjectErased : Qeapp::eNotOpenForWrite);
        expectStatus("close", open.object->close(), Qeapp::eOk);
    }
    std::erase_if(opens_, [this](const Open& open) { return !model_.has(open.number); });
    ids_.erase(ids_.lower_bound(model_.nextNumber()), ids_.end());
}

} // namespace Tests
