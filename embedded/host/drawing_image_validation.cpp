#include <cstddef>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "embedded/foundation/text.h"
#include "embedded/host/drawing_format.h"
#include "embedded/host/drawing_image.h"
#include "embedded/host/drawing_refusal.h"
#include "embedded/host/drawing_scalars.h"
#include "embedded/host/image_chain_validation.h"
#include "embedded/host/symbol_name.h"
#include "platform/host/database.h"

namespace Embedded {
namespace {

constexpr Handle kLargestNextHandle = 0x7FFF'FFFF'FFFF'FFFF;

std::string objectPlace(std::size_t index)
{
    return "objects[" + std::to_string(index) + "]";
}

std::string itemPlace(std::size_t object, const char* list, std::size_t item)
{
    return objectPlace(object) + "." + list + "[" + std::to_string(item) + "]";
}

std::string quoted(const std::wstring& name)
{
    return std::string("\"").append(excerpt(utf8FromWide(name))).append("\"");
}

bool canBeEntry(const ObjectImage& object)
{
    return std::holds_alternative<DictionaryImage>(object.contents) ||
           std::holds_alternative<XrecordImage>(object.contents);
}

/// Stops at the first fault; every check answers whether the image is still without one.
class ImageValidator {
public:
    explicit ImageValidator(const DrawingImage& image) : image_(image), listed_(image.objects.size()) {}
    std::string firstFault();

private:
    bool fail(const std::string& place, const std::string& message);
    bool checkVersion();
    bool checkNextHandle();
    bool checkHandles();
    bool checkHandle(std::size_t index);
    template <class Contents>
    bool checkRoot(const char* place, Handle root);
    bool checkRoots();
    bool checkContents();
    bool checkModelSpace();
    bool checkOwners();
    bool checkOwnerCycles();

    bool check(std::size_t index, const DictionaryImage& dictionary);
    bool check(std::size_t index, const XrecordImage& record);
    bool check(std::size_t index, const RegAppTableImage& table);
    bool check(std::size_t index, const BlockTableImage& table);
    bool check(std::size_t index, const RegAppRecordImage& record) { return checkName(index, record.name); }
    bool check(std::size_t index, const BlockRecordImage& record) { return checkName(index, record.name); }
    bool check(std::size_t index, const GeoDataImage& geoData);

    using Names = std::set<std::wstring>; // folded
    template <class Record>
    bool checkRecords(std::size_t index, const std::vector<Handle>& records, Names& names);
    bool checkName(std::size_t index, const std::wstring& name);
    bool checkListed(const std::string& place, std::size_t owner, Handle handle);
    bool checkExtendedData(std::size_t index);
    bool checkChain(const std::string& place, const ImageChain& chain, ChainUse use);

    const ObjectImage* find(Handle handle) const;

    const DrawingImage& image_;
    std::unordered_map<Handle, std::size_t> positions_;
    std::vector<bool> listed_; // by its owner, for each object
    Names applications_;
    Names blocks_;
    bool hasGeoData_ = false;
    std::string fault_;
};

bool ImageValidator::fail(const std::string& place, const std::string& message)
{
    fault_ = place + ": " + message;
    return false;
}

const ObjectImage* ImageValidator::find(Handle handle) const
{
    const auto found = positions_.find(handle);
    return found == positions_.end() ? nullptr : &image_.objects[found->second];
}

std::string ImageValidator::firstFault()
{
    static_cast<void>(checkVersion() && checkNextHandle() && checkHandles() && checkRoots() && checkContents() &&
                      checkModelSpace() && checkOwners() && checkOwnerCycles()); // fault_ tells
    return std::move(fault_);
}

bool ImageValidator::checkVersion()
{
    if (image_.drawingVersion >= QeDb::kOldestDwg && image_.drawingVersion <= QeDb::kCurrentDwg)
        return true;
    return fail("drawingVersion", std::to_string(image_.drawingVersion) + " is not from " +
                                      std::to_string(QeDb::kOldestDwg) + " to " + std::to_string(QeDb::kCurrentDwg));
}

/// Leaves room for the handles of objects to come.
bool ImageValidator::checkNextHandle()
{
    if (image_.nextHandle <= kLargestNextHandle)
        return true;
    return fail("nextHandle", textFromHandle(image_.nextHandle) + " is above " + textFromHandle(kLargestNextHandle));
}

bool ImageValidator::checkHandles()
{
    for (std::size_t index = 0; index < image_.objects.size(); ++index) {
        if (!checkHandle(index))
            return false;
    }
    return true;
}

bool ImageValidator::checkHandle(std::size_t index)
{
    const Handle handle = image_.objects[index].handle;
    const std::string place = objectPlace(index) + ".handle";
    if (handle == 0)
        return fail(place, "is missing");
    if (handle >= image_.nextHandle)
        return fail(place, textFromHandle(handle) + " is not below nextHandle");
    if (const auto [position, isNew] = positions_.emplace(handle, index); !isNew)
        return fail(place, "duplicate handle " + textFromHandle(handle) + ", also of " + objectPlace(position->second));
    if (index > 0 && handle < image_.objects[index - 1].handle)
        return fail(place, textFromHandle(handle) + " is out of order, objects are in the order of their handles");
    return true;
}

template <class Contents>
bool ImageValidator::checkRoot(const char* place, Handle root)
{
    const ObjectImage* object = find(root);
    if (object == nullptr)
        return fail(place, textFromHandle(root) + " names no object");
    if (!std::holds_alternative<Contents>(object->contents))
        return fail(place, textFromHandle(root) + " is of the wrong class, " +
                               std::string(DrawingFormat::kClassNames[object->contents.index()]));
    if (object->owner != 0)
        return fail(place, textFromHandle(root) + " may not have an owner");
    return true;
}

bool ImageValidator::checkRoots()
{
    return checkRoot<DictionaryImage>("namedObjects", image_.namedObjects) &&
           checkRoot<RegAppTableImage>("regAppTable", image_.regAppTable) &&
           checkRoot<BlockTableImage>("blockTable", image_.blockTable);
}

// The tables come before the rest, which is checked against the names in them.
bool ImageValidator::checkContents()
{
    for (const Handle table : {image_.regAppTable, image_.blockTable}) {
        const std::size_t index = positions_.at(table);
        if (!std::visit([&](const auto& contents) { return check(index, contents); }, image_.objects[index].contents))
            return false;
    }
    for (std::size_t index = 0; index < image_.objects.size(); ++index) {
        const ObjectImage& object = image_.objects[index];
        const bool checked = object.handle == image_.regAppTable || object.handle == image_.blockTable;
        if (!checked && !std::visit([&](const auto& contents) { return check(index, contents); }, object.contents))
            return false;
        if (!checkExtendedData(index))
            return false;
    }
    return true;
}

bool ImageValidator::checkModelSpace()
{
    if (blocks_.contains(QeHost::foldedName(kQeDbModelSpaceName)))
        return true;
    return fail("blockTable", "has no block " + quoted(kQeDbModelSpaceName));
}

/// An object is in the list of its owner, once; GeoData is in no list, its block owns it.
bool ImageValidator::checkListed(const std::string& place, std::size_t owner, Handle handle)
{
    const auto found = positions_.find(handle);
    if (found == positions_.end())
        return fail(place, textFromHandle(handle) + " names no object");
    if (image_.objects[found->second].owner != image_.objects[owner].handle)
        return fail(place, textFromHandle(handle) + " has another owner");
    if (listed_[found->second])
        return fail(place, textFromHandle(handle) + " is listed twice");
    listed_[found->second] = true;
    return true;
}

bool ImageValidator::check(std::size_t index, const DictionaryImage& dictionary)
{
    std::set<std::wstring> keys;
    for (std::size_t item = 0; item < dictionary.entries.size(); ++item) {
        const auto& [key, handle] = dictionary.entries[item];
        const std::string place = itemPlace(index, "entries", item);
        if (key.empty() || !isStorableText(key))
            return fail(place + ".key", key.empty() ? "is empty" : "holds U+0000");
        if (!keys.insert(key).second)
            return fail(place + ".key", "duplicate key " + quoted(key));
        if (!checkListed(place + ".id", index, handle))
            return false;
        if (!canBeEntry(*find(handle)))
            return fail(place + ".id", textFromHandle(handle) + " is of the wrong class");
    }
    return true;
}

bool ImageValidator::check(std::size_t index, const XrecordImage& record)
{
    return checkChain(objectPlace(index) + ".chain", record.chain, ChainUse::xrecord);
}

bool ImageValidator::check(std::size_t index, const RegAppTableImage& table)
{
    if (image_.objects[index].handle != image_.regAppTable)
        return fail(objectPlace(index), "a second table of registered applications");
    return checkRecords<RegAppRecordImage>(index, table.records, applications_);
}

bool ImageValidator::check(std::size_t index, const BlockTableImage& table)
{
    if (image_.objects[index].handle != image_.blockTable)
        return fail(objectPlace(index), "a second block table");
    return checkRecords<BlockRecordImage>(index, table.records, blocks_);
}

template <class Record>
bool ImageValidator::checkRecords(std::size_t index, const std::vector<Handle>& records, Names& names)
{
    for (std::size_t item = 0; item < records.size(); ++item) {
        const std::string place = itemPlace(index, "records", item);
        const ObjectImage* object = find(records[item]);
        const auto* record = object == nullptr ? nullptr : std::get_if<Record>(&object->contents);
        if (object != nullptr && record == nullptr)
            return fail(place, textFromHandle(records[item]) + " is of the wrong class");
        if (!checkListed(place, index, records[item]))
            return false;
        if (!names.insert(QeHost::foldedName(record->name)).second)
            return fail(place, "duplicate name " + quoted(record->name));
    }
    return true;
}

bool ImageValidator::checkName(std::size_t index, const std::wstring& name)
{
    const std::string place = objectPlace(index);
    if (name.empty() || !isStorableText(name))
        return fail(place + ".name", name.empty() ? "is empty" : "holds U+0000");
    return image_.objects[index].owner != 0 || fail(place + ".owner", "is missing");
}

bool ImageValidator::check(std::size_t index, const GeoDataImage& geoData)
{
    const std::string place = objectPlace(index);
    if (hasGeoData_)
        return fail(place, "a second QeDbGeoData object");
    hasGeoData_ = true;
    const ObjectImage* block = find(geoData.block);
    if (block == nullptr || !std::holds_alternative<BlockRecordImage>(block->contents))
        return fail(place + ".block", textFromHandle(geoData.block) + " names no block");
    if (!isStorableText(geoData.coordinateSystem))
        return fail(place + ".coordinateSystem", "holds U+0000");
    if (image_.objects[index].owner != geoData.block)
        return fail(place + ".owner", "is not the block");
    listed_[index] = true;
    return true;
}

bool ImageValidator::checkExtendedData(std::size_t index)
{
    Names applications;
    const auto& extendedData = image_.objects[index].extendedData;
    for (std::size_t item = 0; item < extendedData.size(); ++item) {
        const auto& [application, chain] = extendedData[item];
        const std::string place = itemPlace(index, "extendedData", item);
        const std::wstring name = QeHost::foldedName(application);
        if (!applications_.contains(name))
            return fail(place + ".application", quoted(application) + " is not registered");
        if (!applications.insert(name).second)
            return fail(place + ".application", "duplicate application " + quoted(application));
        if (chain.empty())
            return fail(place + ".chain", "is empty");
        if (!checkChain(place + ".chain", chain, ChainUse::extendedData))
            return false;
    }
    return true;
}

bool ImageValidator::checkChain(const std::string& place, const ImageChain& chain, ChainUse use)
{
    const std::string fault = chainFault(chain, use);
    if (!fault.empty())
        fault_ = place + fault;
    return fault.empty();
}

bool ImageValidator::checkOwners()
{
    for (std::size_t index = 0; index < image_.objects.size(); ++index) {
        const Handle owner = image_.objects[index].owner;
        if (owner == 0)
            continue;
        if (find(owner) == nullptr)
            return fail(objectPlace(index) + ".owner", textFromHandle(owner) + " names no object");
        if (!listed_[index])
            return fail(objectPlace(index) + ".owner", textFromHandle(owner) + " does not list the object");
    }
    return true;
}

// Every owner exists by now, so each walk ends without an owner, at an object that was walked before, or in itself.
bool ImageValidator::checkOwnerCycles()
{
    std::vector<std::size_t> walk(image_.objects.size()); // the number of the walk that came by, 0 for none
    for (std::size_t start = 0; start < image_.objects.size(); ++start) {
        std::size_t index = start;
        while (walk[index] == 0) {
            walk[index] = start + 1;
            const Handle owner = image_.objects[index].owner;
            if (owner == 0)
                break;
            index = positions_.at(owner);
            if (walk[index] == start + 1)
                return fail(objectPlace(index) + ".owner", "the object owns itself, through its owners");
        }
    }
    return true;
}

} // namespace

std::string validateImage(const DrawingImage& image)
{
    return ImageValidator(image).firstFault();
}

} // namespace Embedded
