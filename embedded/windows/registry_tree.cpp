#include "embedded/windows/registry_tree.h"

#include "embedded/windows/registry_name.h"

namespace Embedded {
namespace {

std::wstring foldedPath(std::wstring_view path)
{
    std::wstring folded;
    for (const std::wstring_view part : pathParts(path))
        folded += (folded.empty() ? L"" : L"\\") + foldedName(part);
    return folded;
}

} // namespace

std::size_t RegistryKey::NameHash::operator()(std::wstring_view name) const
{
    return std::hash<std::wstring>()(foldedName(name));
}

bool RegistryKey::NameEqual::operator()(std::wstring_view name, Entry entry) const
{
    return name.size() == entry->name.size() && foldedName(name) == foldedName(entry->name);
}

const RegistryValue* RegistryKey::find(std::wstring_view name) const
{
    const auto found = byName_.find(name);
    return found == byName_.end() ? nullptr : &**found;
}

const RegistryValue* RegistryKey::at(std::size_t index) const
{
    if (index >= values_.size())
        return nullptr;
    if (last_ == values_.cend() || index < lastIndex_) {
        lastIndex_ = 0;
        last_ = values_.cbegin();
    }
    for (; lastIndex_ < index; ++lastIndex_)
        ++last_;
    return &*last_;
}

void RegistryKey::set(RegistryValue value)
{
    const auto found = byName_.find(std::wstring_view(value.name));
    if (found == byName_.end()) {
        byName_.insert(values_.insert(values_.end(), std::move(value)));
        return;
    }
    RegistryValue& present = **found;
    value.name = std::move(present.name);
    present = std::move(value);
}

void RegistryKey::remove(std::wstring_view name)
{
    const auto found = byName_.find(name);
    const auto entry = *found;
    last_ = values_.cend();
    byName_.erase(found);
    values_.erase(entry);
}

RegistryTree::RegistryTree()
{
    keys_.try_emplace(L"", L"");
}

const RegistryKey* RegistryTree::find(std::wstring_view path) const
{
    const auto found = keys_.find(foldedPath(path));
    return found == keys_.end() ? nullptr : &found->second;
}

RegistryKey& RegistryTree::required(std::wstring_view path)
{
    const auto found = keys_.find(foldedPath(path));
    if (found == keys_.end())
        throw RegistryDamage{"there is no such key"};
    return found->second;
}

/// With the keys above it, which keep the spelling they have.
void RegistryTree::create(std::wstring_view path, std::size_t lineInBytes)
{
    std::wstring spelled;
    bool isNew = false;
    for (const std::wstring_view part : pathParts(path)) {
        spelled += (spelled.empty() ? L"" : L"\\") + std::wstring(part);
        const auto [entry, added] = keys_.try_emplace(foldedPath(spelled), spelled);
        spelled = entry->second.path();
        isNew = added;
    }
    if (isNew)
        liveBytes_ += lineInBytes;
}

void RegistryTree::apply(const RegistryChange& change, std::size_t lineInBytes)
{
    if (change.kind == RegistryChange::Kind::createKey) {
        create(change.key, lineInBytes);
        return;
    }
    RegistryKey& key = required(change.key);
    const RegistryValue* const present = key.find(change.name);
    if (present == nullptr && change.kind == RegistryChange::Kind::deleteValue)
        throw RegistryDamage{"there is no such value"};
    liveBytes_ -= present != nullptr ? present->lineInBytes : 0;
    if (change.kind == RegistryChange::Kind::deleteValue) {
        key.remove(change.name);
    } else {
        key.set({change.name, change.type, change.data, lineInBytes});
        liveBytes_ += lineInBytes;
    }
}

std::vector<RegistryChange> RegistryTree::changes() const
{
    std::vector<RegistryChange> changes;
    for (const auto& [folded, key] : keys_) {
        if (!folded.empty())
            changes.push_back({RegistryChange::Kind::createKey, key.path(), {}, REG_NONE, {}});
        for (const RegistryValue& value : key.values())
            changes.push_back({RegistryChange::Kind::setValue, key.path(), value.name, value.type, value.data});
    }
    return changes;
}

} // namespace Embedded
