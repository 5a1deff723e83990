#include "host/database/drawing_model.h"

namespace Tests {
namespace {

/// The names of the model have only ASCII letters.
std::wstring lower(std::wstring name)
{
    for (wchar_t& character : name) {
        if (character >= L'A' && character <= L'Z')
            character = static_cast<wchar_t>(character - L'A' + L'a');
    }
    return name;
}

} // namespace

using Status = DrawingModel::Status;

DrawingModel::DrawingModel()
{
    objects_[kNamedObjects].kind = Kind::dictionary;
    objects_[kRegAppTable].kind = Kind::fixture;
    objects_[kBlockTable].kind = Kind::fixture;
    objects_[kModelSpace].kind = Kind::fixture;
    objects_[kModelSpace].owner = kBlockTable;
}

bool DrawingModel::isLive(Number number) const
{
    const auto found = objects_.find(number);
    return found != objects_.end() && !found->second.erased;
}

bool DrawingModel::isOpenForWrite(Number number) const
{
    const auto found = opens_.find(number);
    return found != opens_.end() && found->second.writing;
}

Status DrawingModel::conflict(Number number, bool write) const
{
    const auto found = opens_.find(number);
    if (found == opens_.end())
        return Qeapp::eOk;
    if (found->second.writing)
        return Qeapp::eOpenForWrite;
    return write && found->second.readers > 0 ? Qeapp::eOpenForRead : Qeapp::eOk;
}

Status DrawingModel::open(Number number, bool write, bool openErased)
{
    if (objects_.at(number).erased && !openErased)
        return Qeapp::eObjectErased;
    if (const Status status = conflict(number, write); status != Qeapp::eOk)
        return status;
    Opens& opens = opens_[number];
    opens.writing = write;
    opens.readers += write ? 0 : 1;
    return Qeapp::eOk;
}

void DrawingModel::close(Number number, bool write)
{
    Opens& opens = opens_[number];
    if (write)
        opens.writing = false;
    else
        --opens.readers;
}

Status DrawingModel::upgrade(Number number, bool write)
{
    Opens& opens = opens_[number];
    if (write)
        return Qeapp::eOpenForWrite;
    if (opens.readers > 1)
        return Qeapp::eOpenForRead;
    opens = {0, true};
    return Qeapp::eOk;
}

Status DrawingModel::downgrade(Number number, bool write)
{
    if (!write)
        return Qeapp::eNotOpenForWrite;
    opens_[number] = {1, false};
    return Qeapp::eOk;
}

Status DrawingModel::erase(Number number, bool write, bool erasing)
{
    Object& object = objects_.at(number);
    if (!write)
        return Qeapp::eNotOpenForWrite;
    if (object.erased == erasing)
        return Qeapp::eOk;
    if (erasing && number <= kModelSpace)
        return Qeapp::eNotApplicable;
    if (!erasing && object.kind == Kind::geoData && geoData() != 0)
        return Qeapp::eDuplicateKey;
    if (!erasing && object.kind == Kind::application && findApplication(object.text) != 0)
        return Qeapp::eDuplicateKey;
    object.erased = erasing;
    return Qeapp::eOk;
}

Status DrawingModel::setValues(Number number, bool write, const Values& values)
{
    if (!write)
        return Qeapp::eNotOpenForWrite;
    objects_.at(number).values = values;
    return Qeapp::eOk;
}

Status DrawingModel::setText(Number number, bool write, const std::wstring& text)
{
    if (!write)
        return Qeapp::eNotOpenForWrite;
    objects_.at(number).text = text;
    return Qeapp::eOk;
}

Status DrawingModel::setName(Number number, bool write, const std::wstring& name)
{
    const Number holder = findApplication(name);
    if (!write)
        return Qeapp::eNotOpenForWrite;
    if (holder != 0 && holder != number)
        return Qeapp::eDuplicateKey;
    objects_.at(number).text = name;
    return Qeapp::eOk;
}

Status DrawingModel::setExtendedData(Number number, bool write, const std::wstring& application, const Values& values)
{
    const Number record = findApplication(application);
    if (!write)
        return Qeapp::eNotOpenForWrite;
    if (record == 0)
        return Qeapp::eRegappNotRegistered;
    auto& data = objects_.at(number).extendedData;
    data.erase(record);
    if (!values.empty())
        data[record] = values;
    return Qeapp::eOk;
}

void DrawingModel::create(Kind kind, Number owner, const std::wstring& text)
{
    Object& object = objects_[nextNumber_];
    object.kind = kind;
    object.owner = owner;
    object.text = text;
    opens_[nextNumber_] = {0, true};
    ++nextNumber_;
}

Status DrawingModel::setAt(Number dictionary, bool write, const std::wstring& key, Kind kind)
{
    if (!write)
        return Qeapp::eNotOpenForWrite;
    auto& entries = objects_.at(dictionary).entries;
    const auto old = entries.find(key);
    if (old != entries.end() && isLive(old->second)) {
        if (const Status status = conflict(old->second, true); status != Qeapp::eOk)
            return status;
    }
    if (old != entries.end()) {
        objects_.at(old->second).erased = true;
        objects_.at(old->second).owner = 0;
    }
    entries[key] = nextNumber_;
    create(kind, dictionary, L"");
    return Qeapp::eOk;
}

Status DrawingModel::remove(Number dictionary, bool write, const std::wstring& key)
{
    const Number number = findEntry(dictionary, key);
    if (!write)
        return Qeapp::eNotOpenForWrite;
    if (number == 0)
        return Qeapp::eKeyNotFound;
    objects_.at(dictionary).entries.erase(key);
    objects_.at(number).owner = 0;
    return Qeapp::eOk;
}

Status DrawingModel::removeByNumber(Number dictionary, bool write, Number number)
{
    if (!write)
        return Qeapp::eNotOpenForWrite;
    for (const auto& [key, entry] : entriesOf(dictionary)) {
        if (entry == number)
            return remove(dictionary, write, key);
    }
    return Qeapp::eKeyNotFound;
}

Status DrawingModel::addApplication(bool write, const std::wstring& name)
{
    if (!write)
        return Qeapp::eNotOpenForWrite;
    if (findApplication(name) != 0)
        return Qeapp::eDuplicateKey;
    create(Kind::application, kRegAppTable, name);
    return Qeapp::eOk;
}

Status DrawingModel::postGeoData()
{
    if (geoData() != 0)
        return Qeapp::eDuplicateKey;
    create(Kind::geoData, kModelSpace, L"");
    return Qeapp::eOk;
}

Status DrawingModel::commit()
{
    if (snapshots_.empty())
        return Qeapp::eNoTransaction;
    snapshots_.pop_back();
    return Qeapp::eOk;
}

Status DrawingModel::abort()
{
    if (snapshots_.empty())
        return Qeapp::eNoTransaction;
    std::tie(objects_, nextNumber_) = snapshots_.back();
    snapshots_.pop_back();
    opens_.erase(opens_.lower_bound(nextNumber_), opens_.end());
    return Qeapp::eOk;
}

void DrawingModel::markReachable(Number number, std::map<Number, bool>& reachable) const
{
    if (!isLive(number) || reachable[number])
        return;
    reachable[number] = true;
    for (const auto& [key, entry] : objects_.at(number).entries)
        markReachable(entry, reachable);
}

DrawingModel DrawingModel::savedState() const
{
    std::map<Number, bool> reachable;
    markReachable(kNamedObjects, reachable);
    for (const auto& [number, object] : objects_) {
        if (object.kind != Kind::dictionary && object.kind != Kind::xrecord)
            markReachable(number, reachable);
    }
    DrawingModel state;
    state.nextNumber_ = nextNumber_;
    state.objects_ = objects_;
    std::erase_if(state.objects_, [&](const auto& each) { return !reachable[each.first]; });
    for (auto& [number, object] : state.objects_) {
        std::erase_if(object.entries, [&](const auto& entry) { return !state.objects_.contains(entry.second); });
        std::erase_if(object.extendedData, [&](const auto& data) { return !state.objects_.contains(data.first); });
    }
    return state;
}

DrawingModel::Number DrawingModel::geoData() const
{
    for (const auto& [number, object] : objects_) {
        if (object.kind == Kind::geoData && !object.erased)
            return number;
    }
    return 0;
}

DrawingModel::Number DrawingModel::findApplication(const std::wstring& name) const
{
    for (const auto& [number, object] : objects_) {
        if (object.kind == Kind::application && !object.erased && lower(object.text) == lower(name))
            return number;
    }
    return 0;
}

std::map<std::wstring, DrawingModel::Number> DrawingModel::applications() const
{
    std::map<std::wstring, Number> live;
    for (const auto& [number, object] : objects_) {
        if (object.kind == Kind::application && !object.erased)
            live.emplace(lower(object.text), number);
    }
    return live;
}

DrawingModel::Number DrawingModel::findEntry(Number dictionary, const std::wstring& key) const
{
    const auto& entries = objects_.at(dictionary).entries;
    const auto found = entries.find(key);
    return found != entries.end() && isLive(found->second) ? found->second : 0;
}

std::map<std::wstring, DrawingModel::Number> DrawingModel::entriesOf(Number dictionary) const
{
    std::map<std::wstring, Number> live = objects_.at(dictionary).entries;
    std::erase_if(live, [this](const auto& entry) { return !isLive(entry.second); });
    return live;
}

} // namespace Tests
