#include "platform/spatial_reference/definition_array.h"

#include <iterator>
#include <memory>
#include <vector>

#include "embedded/spatial_reference/definitions/library_call.h"
#include "embedded/spatial_reference/definitions/library_object.h"

namespace Zentara::Infrastructure::SpatialReference {

struct DefinitionArrayData {
    std::vector<Embedded::LibraryHolder<DefinitionBase>> definitions;

    bool has(int index) const { return index >= 0 && static_cast<std::size_t>(index) < definitions.size(); }
};

DefinitionBaseArray::DefinitionBaseArray() : data_(new DefinitionArrayData)
{
}

DefinitionBaseArray::~DefinitionBaseArray()
{
    delete data_;
}

Status DefinitionBaseArray::CreateInstance(DefinitionBaseArray*& array)
{
    array = nullptr;
    if (const auto failure = Embedded::injectedStatus("DefinitionBaseArray::CreateInstance", statusOutOfMemory))
        return *failure;
    array = new DefinitionBaseArray;
    return statusOk;
}

int DefinitionBaseArray::GetCount() const
{
    return static_cast<int>(data_->definitions.size());
}

Status DefinitionBaseArray::Add(DefinitionBase* definition)
{
    if (const auto failure = Embedded::injectedStatus("DefinitionBaseArray::Add", statusOutOfMemory))
        return *failure;
    if (!definition)
        return statusInvalidArgument;
    data_->definitions.reserve(data_->definitions.size() +
                               1); // so that no failure comes after the array owns the definition
    data_->definitions.emplace_back(definition);
    return statusOk;
}

const DefinitionBase* DefinitionBaseArray::GetItem(int index) const
{
    return data_->has(index) ? data_->definitions[static_cast<std::size_t>(index)].get() : nullptr;
}

DefinitionBase* DefinitionBaseArray::Remove(int index)
{
    if (!data_->has(index))
        return nullptr;
    const auto position = std::next(data_->definitions.begin(), index);
    DefinitionBase* definition = position->release();
    data_->definitions.erase(position);
    return definition;
}

} // namespace Zentara::Infrastructure::SpatialReference
