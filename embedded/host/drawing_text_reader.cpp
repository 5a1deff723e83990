#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/host/drawing_file.h"
#include "embedded/host/drawing_format.h"
#include "embedded/host/drawing_refusal.h"
#include "embedded/host/json_document.h"
#include "embedded/host/json_node.h"
#include "platform/host/resbuf.h"

namespace Embedded {
namespace {

using Contents = decltype(ObjectImage::contents);

template <class Read>
auto listFrom(const JsonNode& array, Read read)
{
    std::vector<decltype(read(array))> list;
    const std::size_t size = array.size();
    list.reserve(size);
    for (std::size_t index = 0; index < size; ++index)
        list.push_back(read(array.element(index)));
    return list;
}

template <class Integer>
std::int32_t integerFrom(const JsonNode& node)
{
    using Limits = std::numeric_limits<Integer>;
    return static_cast<std::int32_t>(node.integer(Limits::min(), Limits::max()));
}

ImageValue valueFrom(const JsonNode& node)
{
    const JsonNode codeNode = node.member("code");
    const auto code = static_cast<int>(codeNode.integer(0, std::numeric_limits<short>::max()));
    const QeRb::ValueKind kind = qeutValueKind(code);
    if (kind == QeRb::ValueKind::none)
        codeNode.refuse(std::to_string(code) + " is not a group code of a stored value");
    const char* const name = kind == QeRb::ValueKind::binary ? "hex" : "value";
    node.allowOnly({"code", name});
    const JsonNode value = node.member(name);
    switch (kind) {
    case QeRb::ValueKind::binary:
        return {code, value.bytes()};
    case QeRb::ValueKind::real:
        return {code, value.real()};
    case QeRb::ValueKind::integer16:
        return {code, integerFrom<std::int16_t>(value)};
    case QeRb::ValueKind::integer32:
        return {code, integerFrom<std::int32_t>(value)};
    default:
        return {code, value.text()};
    }
}

ImageChain chainFrom(const JsonNode& object)
{
    return listFrom(object.member("chain"), valueFrom);
}

std::vector<Handle> handlesFrom(const JsonNode& array)
{
    return listFrom(array, [](const JsonNode& handle) { return handle.handle(); });
}

std::pair<std::wstring, Handle> entryFrom(const JsonNode& node)
{
    node.allowOnly({"key", "id"});
    return {node.member("key").text(), node.member("id").handle()};
}

std::pair<std::wstring, ImageChain> applicationDataFrom(const JsonNode& node)
{
    node.allowOnly({"application", "chain"});
    return {node.member("application").text(), chainFrom(node)};
}

void allowOwnFields(const JsonNode& object, std::initializer_list<std::string_view> names)
{
    object.allowOnly({"handle", "owner", "class", "extendedData"}, names);
}

Contents dictionaryFrom(const JsonNode& object)
{
    allowOwnFields(object, {"entries"});
    return DictionaryImage{listFrom(object.member("entries"), entryFrom)};
}

Contents xrecordFrom(const JsonNode& object)
{
    allowOwnFields(object, {"chain"});
    return XrecordImage{chainFrom(object)};
}

template <class Table>
Contents tableFrom(const JsonNode& object)
{
    allowOwnFields(object, {"records"});
    return Table{handlesFrom(object.member("records"))};
}

template <class Record>
Contents recordFrom(const JsonNode& object)
{
    allowOwnFields(object, {"name"});
    return Record{object.member("name").text()};
}

Contents geoDataFrom(const JsonNode& object)
{
    allowOwnFields(object, {"coordinateSystem", "block"});
    return GeoDataImage{object.member("coordinateSystem").text(), object.member("block").handle()};
}

/// In the order of DrawingFormat::kClassNames.
constexpr std::array<Contents (*)(const JsonNode&), DrawingFormat::kClassNames.size()> kContentsReaders = {
    dictionaryFrom,
    xrecordFrom,
    tableFrom<RegAppTableImage>,
    recordFrom<RegAppRecordImage>,
    tableFrom<BlockTableImage>,
    recordFrom<BlockRecordImage>,
    geoDataFrom};

Contents contentsFrom(const JsonNode& object)
{
    const JsonNode className = object.member("class");
    const auto& names = DrawingFormat::kClassNames;
    const auto found = std::find(names.begin(), names.end(), className.utf8());
    if (found == names.end())
        className.refuse("unknown class \"" + excerpt(className.utf8()) + "\"");
    return kContentsReaders[static_cast<std::size_t>(found - names.begin())](object);
}

ObjectImage objectFrom(const JsonNode& node)
{
    ObjectImage object;
    object.handle = node.member("handle").handle();
    if (node.has("owner"))
        object.owner = node.member("owner").handle();
    object.contents = contentsFrom(node);
    if (node.has("extendedData"))
        object.extendedData = listFrom(node.member("extendedData"), applicationDataFrom);
    return object;
}

void requireFormat(const JsonNode& root)
{
    if (!root.has("format") || root.member("format").utf8() != DrawingFormat::kName)
        root.refuse(R"(not a drawing file: its field "format" is not ")" + std::string(DrawingFormat::kName) + '"');
    const auto version = root.member("formatVersion").integer(1, std::numeric_limits<int>::max());
    if (version > DrawingFormat::kVersion)
        throw DrawingRefusal{Qeapp::eFileTooNew, "formatVersion: " + std::to_string(version) +
                                                     " is newer than this program, which understands " +
                                                     std::to_string(DrawingFormat::kVersion)};
}

DrawingImage imageFrom(const JsonNode& root)
{
    requireFormat(root);
    root.allowOnly({"format", "formatVersion", "drawingVersion", "nextHandle", "namedObjects", "regAppTable",
                    "blockTable", "objects"});
    DrawingImage image;
    image.drawingVersion = integerFrom<std::int32_t>(root.member("drawingVersion"));
    image.nextHandle = root.member("nextHandle").handle();
    image.namedObjects = root.member("namedObjects").handle();
    image.regAppTable = root.member("regAppTable").handle();
    image.blockTable = root.member("blockTable").handle();
    image.objects = listFrom(root.member("objects"), objectFrom);
    if (std::string fault = validateImage(image); !fault.empty())
        throw DrawingRefusal{Qeapp::eFileDamaged, std::move(fault)};
    return image;
}

} // namespace

FileResult drawingImageFrom(std::string_view text, DrawingImage& image)
{
    try {
        const nlohmann::json document = parseJsonDocument(text);
        image = imageFrom(JsonNode(document));
        return {};
    } catch (const DrawingRefusal& refusal) {
        return {refusal.status, refusal.message};
    } catch (const std::bad_alloc&) {
        return {Qeapp::eOutOfMemory, "not enough memory for the drawing"};
    }
}

} // namespace Embedded
