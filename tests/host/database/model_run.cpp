#include "host/database/model_run.h"

#include <algorithm>
#include <array>

#include "host/database/model_values.h"
#include "support/error_text.h"

namespace Tests {
namespace {

constexpr std::size_t kMostOpens = 12;

} // namespace

ModelRun::ModelRun(std::uint64_t seed, std::filesystem::path file) : random_(seed), file_(std::move(file))
{
    QeDbDatabase empty;
    EXPECT_EQ(errorText(Embedded::saveDrawing(empty, file_, empty.drawingVersion())), "");
    load();
}

ModelRun::~ModelRun()
{
    endEverything();
}

std::wstring ModelRun::applicationName()
{
    std::wstring name = L"app" + std::to_wstring(below(4));
    if (chance(50))
        name[0] = L'A';
    return name;
}

DrawingModel::Values ModelRun::values(const std::vector<int>& codes)
{
    DrawingModel::Values values(below(4));
    for (auto& [code, number] : values) {
        code = codes[below(codes.size())];
        number = static_cast<int>(below(1000));
    }
    return values;
}

ModelRun::Number ModelRun::anyNumber(Kind kind)
{
    std::vector<Number> numbers;
    for (const auto& [number, object] : model_.objects()) {
        if (object.kind == kind)
            numbers.push_back(number);
    }
    return numbers.empty() ? 0 : numbers[below(numbers.size())];
}

ModelRun::Number ModelRun::anyNumber()
{
    auto object = model_.objects().begin();
    std::advance(object, below(model_.objects().size()));
    return object->first;
}

bool ModelRun::agree(const char* operation, Qeapp::ErrorStatus actual, Qeapp::ErrorStatus expected)
{
    auto& [made, succeeded] = tally_[operation];
    ++made;
    succeeded += actual == Qeapp::eOk ? 1 : 0;
    if (actual == expected)
        return true;
    ADD_FAILURE() << operation << " answered " << actual << " and not " << expected;
    same_ = false;
    return false;
}

std::optional<ModelRun::Open> ModelRun::openNew(Number number, bool write, bool openErased)
{
    if (opens_.size() >= kMostOpens)
        close(opens_[below(opens_.size())]);
    Open open{number, write, nullptr};
    const auto status =
        qedbOpenQeDbObject(open.object, idOf(number), write ? QeDb::kForWrite : QeDb::kForRead, openErased);
    if (!agree("open", status, model_.open(number, write, openErased)) || status != Qeapp::eOk)
        return std::nullopt;
    opens_.push_back(open);
    return open;
}

std::optional<ModelRun::Open> ModelRun::openSome(Number number)
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
    const Open closed = open; // it may be an element of what follows
    const auto found = std::find_if(opens_.begin(), opens_.end(), [&](const Open& each) {
        return each.number == closed.number && each.write == closed.write;
    });
    opens_.erase(found);
    model_.close(closed.number, closed.write);
    agree("close", closed.object->close(), Qeapp::eOk);
}

void ModelRun::maybeClose(const Open& open)
{
    if (chance(75))
        close(open);
}

void ModelRun::created(QeDbObject* object)
{
    const QeDbObjectId id = object->objectId();
    ids_[id.handle()] = id;
    opens_.push_back({id.handle(), true, object});
    EXPECT_EQ(id.handle() + 1, model_.nextNumber());
    maybeClose(opens_.back());
}

void ModelRun::stepOpen()
{
    openNew(anyNumber(), chance(50), chance(30));
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
    if (agree(up ? "upgrade" : "downgrade", status, expected) && status == Qeapp::eOk)
        open.write = up;
}

void ModelRun::stepErase()
{
    const auto open = openSome(anyNumber());
    if (!open)
        return;
    const bool erasing = chance(60);
    agree(erasing ? "erase" : "unerase", open->object->erase(erasing),
          model_.erase(open->number, open->write, erasing));
    maybeClose(*open);
}

void ModelRun::stepWrite()
{
    const auto open = openSome(anyNumber(Kind::xrecord));
    if (!open)
        return;
    const DrawingModel::Values written = values({300, 301, 310, 1002, 1040, 1070, 1071});
    const Chain chain(chainOf(written));
    agree("write", static_cast<QeDbXrecord*>(open->object)->setFromRbChain(chain.get(), database_.get()),
          model_.setValues(open->number, open->write, written));
    maybeClose(*open);
}

void ModelRun::stepExtendedData()
{
    const auto open = openSome(anyNumber());
    if (!open)
        return;
    const std::wstring application = applicationName();
    const DrawingModel::Values written = values({1000, 1004, 1040, 1070, 1071});
    const Chain chain(qeutBuildList(QeRb::kXdataAppName, application.c_str(), QeRb::kListEnd));
    chain.get()->rbnext = chainOf(written);
    agree("extended data", open->object->setXData(chain.get()),
          model_.setExtendedData(open->number, open->write, application, written));
    maybeClose(*open);
}

void ModelRun::stepSetAt()
{
    const auto open = openSome(chance(60) ? DrawingModel::kNamedObjects : anyNumber(Kind::dictionary));
    if (!open)
        return;
    const bool nested = chance(15);
    std::unique_ptr<QeDbObject> object;
    if (nested)
        object = std::make_unique<QeDbDictionary>();
    else
        object = std::make_unique<QeDbXrecord>();
    const std::wstring entry = key();
    meet(model_.findEntry(open->number, entry));
    QeDbObjectId id;
    const auto status = static_cast<QeDbDictionary*>(open->object)->setAt(entry.c_str(), object.get(), id);
    const Kind kind = nested ? Kind::dictionary : Kind::xrecord;
    if (agree("add", status, model_.setAt(open->number, open->write, entry, kind)) && status == Qeapp::eOk)
        created(object.release());
    maybeClose(*open);
}

void ModelRun::stepRemove()
{
    const auto open = openSome(chance(50) ? DrawingModel::kNamedObjects : anyNumber(Kind::dictionary));
    if (!open)
        return;
    auto& dictionary = static_cast<QeDbDictionary&>(*open->object);
    if (chance(50)) {
        const std::wstring entry = key();
        meet(model_.findEntry(open->number, entry));
        agree("remove", dictionary.remove(entry.c_str()), model_.remove(open->number, open->write, entry));
    } else {
        const auto entries = model_.entriesOf(open->number);
        const Number number = entries.empty() || chance(30) ? anyNumber() : entries.begin()->second;
        const auto status = dictionary.remove(idOf(number)); // before the model forgets where it is
        agree("remove by id", status, model_.removeByNumber(open->number, open->write, number));
    }
    maybeClose(*open);
}

void ModelRun::stepRegister()
{
    const auto open = openSome(DrawingModel::kRegAppTable);
    if (!open)
        return;
    const std::wstring name = applicationName();
    auto record = std::make_unique<QeDbRegAppTableRecord>();
    EXPECT_EQ(record->setName(name.c_str()), Qeapp::eOk);
    QeDbObjectId id;
    const auto status = static_cast<QeDbRegAppTable*>(open->object)->add(id, record.get());
    if (agree("register", status, model_.addApplication(open->write, name)) && status == Qeapp::eOk)
        created(record.release());
    maybeClose(*open);
}

void ModelRun::stepRename()
{
    const auto open = openSome(anyNumber(Kind::application));
    if (!open)
        return;
    const std::wstring name = applicationName();
    agree("rename", static_cast<QeDbRegAppTableRecord*>(open->object)->setName(name.c_str()),
          model_.setName(open->number, open->write, name));
    maybeClose(*open);
}

void ModelRun::stepGeoData()
{
    if (chance(40)) {
        auto geoData = std::make_unique<QeDbGeoData>();
        EXPECT_EQ(geoData->setBlockTableRecordId(ids_.at(DrawingModel::kModelSpace)), Qeapp::eOk);
        QeDbObjectId id;
        const auto status = geoData->postToDb(id);
        if (agree("post", status, model_.postGeoData()) && status == Qeapp::eOk)
            created(geoData.release());
        return;
    }
    const auto open = openSome(anyNumber(Kind::geoData));
    if (!open)
        return;
    const std::wstring text = std::to_wstring(below(1000));
    agree("set text", static_cast<QeDbGeoData*>(open->object)->setCoordinateSystem(text.c_str()),
          model_.setText(open->number, open->write, text));
    maybeClose(*open);
}

void ModelRun::stepTransaction()
{
    QeDbTransactionManager& transactions = *database_->transactionManager();
    const std::uint64_t choice = below(10);
    if (choice < 5 && model_.depth() < 5) {
        agree("begin", transactions.startTransaction() != nullptr ? Qeapp::eOk : Qeapp::eNoTransaction, Qeapp::eOk);
        model_.begin();
    } else if (choice < 7) {
        agree("commit", transactions.endTransaction(), model_.commit());
    } else {
        agree("abort", transactions.abortTransaction(), model_.abort());
        closeUndone();
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
    return same_ && compareShape();
}

void ModelRun::endEverything()
{
    while (!opens_.empty())
        close(opens_.back());
    while (model_.depth() > 0) {
        if (chance(50)) {
            agree("commit", database_->transactionManager()->endTransaction(), model_.commit());
        } else {
            agree("abort", database_->transactionManager()->abortTransaction(), model_.abort());
            closeUndone();
        }
    }
}

/// What was created in an aborted transaction and is open still can be closed and nothing else.
void ModelRun::closeUndone()
{
    for (const Open& open : opens_) {
        if (model_.has(open.number))
            continue;
        EXPECT_TRUE(open.object->isErased());
        agree("revive", open.object->erase(false), open.write ? Qeapp::eObjectErased : Qeapp::eNotOpenForWrite);
        agree("close", open.object->close(), Qeapp::eOk);
    }
    std::erase_if(opens_, [this](const Open& open) { return !model_.has(open.number); });
    ids_.erase(ids_.lower_bound(model_.nextNumber()), ids_.end());
}

} // namespace Tests
