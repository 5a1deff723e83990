#include "orvelcs/drawing/stored_forms.h"

#include "coordsys/orvel_coordinate_system.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/output/result_names.h"
#include "orvelcs/output/system_description.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

void requireRead(Qeapp::ErrorStatus result, const char* subject)
{
    if (result != Qeapp::eOk)
        throw Failure(subject, resultName(result), ExitStatus::failed, resultCode(result));
}

bool isString(const resbuf* buffer)
{
    return buffer != nullptr && qeutValueKind(buffer->restype) == QeRb::ValueKind::string &&
           buffer->resval.rstring != nullptr;
}

HostObject<QeDbDictionary> openNamedObjects(QeDbDatabase* database)
{
    HostObject<QeDbDictionary> namedObjects;
    requireRead(database->getNamedObjectsDictionary(namedObjects.put(), QeDb::kForRead), "named objects dictionary");
    return namedObjects;
}

std::optional<LegacyProjection> readLegacyProjection(const QeDbDictionary& namedObjects)
{
    const ResbufList chain(namedObjects.xData(kLegacyApplication));
    if (!chain)
        return std::nullopt;
    LegacyProjection legacy;
    const resbuf* code = chain->rbnext;
    if (isString(code) && code->restype == QeRb::kXdataString)
        legacy.code = code->resval.rstring;
    return legacy;
}

/// Returns whether the bytes are a definition's text in UTF-16, which begins with an ASCII character. The packed form
/// has the first byte of a class identifier there, which is not zero.
bool isText(const std::string& bytes)
{
    return bytes.size() > 1 && bytes[1] == '\0';
}

/// Adds the packed definition; nothing where the bytes hold none.
void addDefinition(std::vector<StoredDefinition>& definitions, std::string packed)
{
    constexpr std::string_view kNul("\0\0\0", 3); // at an even place too: the module looks for one in other bytes
    if (packed.empty() || isText(packed))
        return;
    const int length = static_cast<int>(packed.size());
    packed.append(kNul);
    LibraryObject<Library::DefinitionBaseArray> unpacked;
    if (CoordinateSystem::DeserializeCoordinateSystem(
            unpacked.put(), reinterpret_cast<const unsigned char*>(packed.data()), length) != Qeapp::eOk)
        return;
    const Library::DefinitionBase& definition = *unpacked->GetItem(0);
    StoredDefinition& stored = definitions.emplace_back();
    stored.type = definitionType(definition);
    if (const wchar_t* code = nullptr; definition.GetCode(code) == Library::statusOk && code != nullptr)
        stored.code = code;
}

/// The bytes of a chunk; empty for one without any.
std::string_view chunkBytes(const resbuf& buffer)
{
    const QeBinaryChunk& chunk = buffer.resval.rbinary;
    return chunk.buf != nullptr && chunk.clen > 0 ? std::string_view(chunk.buf, static_cast<std::size_t>(chunk.clen))
                                                  : std::string_view();
}

/// The bytes of the chunks behind the group's opening brace; empty when a chunk of them is.
std::string groupBytes(const resbuf* opening)
{
    std::string bytes;
    for (const resbuf* buffer = opening->rbnext; buffer != nullptr && buffer->restype == QeRb::kBinaryChunk;
         buffer = buffer->rbnext) {
        const std::string_view chunk = chunkBytes(*buffer);
        if (chunk.empty())
            return {};
        bytes += chunk;
    }
    return bytes;
}

bool opensGroup(const resbuf* buffer)
{
    return buffer->restype == QeRb::kXdataControl && isString(buffer) &&
           std::wstring_view(buffer->resval.rstring) == L"{";
}

// Layout 0 keeps each definition in a chunk of its own, later ones in groups of chunks.
std::vector<StoredDefinition> unpackDefinitions(const resbuf* chain, int layout)
{
    std::vector<StoredDefinition> definitions;
    for (const resbuf* buffer = chain; buffer != nullptr; buffer = buffer->rbnext) {
        if (layout == 0 && buffer->restype == QeRb::kBinaryChunk)
            addDefinition(definitions, std::string(chunkBytes(*buffer)));
        else if (layout != 0 && opensGroup(buffer))
            addDefinition(definitions, groupBytes(buffer));
    }
    return definitions;
}

bool closesGroup(const resbuf* buffer)
{
    return buffer->restype == QeRb::kXdataControl && isString(buffer) &&
           std::wstring_view(buffer->resval.rstring) == L"}";
}

// The module reads groups up to their closing braces. Nothing may follow the last group.
bool isReadable(const resbuf* chain, int layout)
{
    constexpr int kChunks = 0;
    constexpr int kGroups = 1;
    if (chain == nullptr || layout == kChunks)
        return chain != nullptr;
    const resbuf* last = chain;
    while (last->rbnext != nullptr)
        last = last->rbnext;
    return layout == kGroups && (last == chain || closesGroup(last));
}

HostObject<QeDbXrecord> openXrecord(const QeDbDictionary& dictionary, const wchar_t* key)
{
    HostObject<QeDbXrecord> xrecord;
    QeDbObjectId id;
    if (dictionary.getAt(key, id) != Qeapp::eOk)
        return xrecord;
    const Qeapp::ErrorStatus opened = xrecord.open(id, QeDb::kForRead);
    if (opened != Qeapp::eNotThatKindOfClass)
        requireRead(opened, "xrecord");
    return xrecord;
}

ResbufList readChain(const QeDbXrecord& xrecord)
{
    ResbufList chain;
    requireRead(xrecord.rbChain(chain.put()), "xrecord");
    return chain;
}

std::optional<DefinitionXrecord> readDefinitionXrecord(const QeDbDictionary& namedObjects)
{
    const auto xrecord = openXrecord(namedObjects, kDefinitionKey);
    if (!xrecord)
        return std::nullopt;
    DefinitionXrecord record;
    record.chain = readChain(*xrecord);
    if (record.chain && record.chain->restype == QeRb::kXdataInteger32)
        record.layout = record.chain->resval.rlong;
    record.readable = isReadable(record.chain.get(), record.layout);
    record.definitions = unpackDefinitions(record.chain.get(), record.layout);
    return record;
}

std::optional<TransformationConfiguration> readConfiguration(const QeDbDictionary& namedObjects)
{
    QeDbObjectId id;
    if (namedObjects.getAt(kConfigurationDictionary, id) != Qeapp::eOk)
        return std::nullopt;
    HostObject<QeDbDictionary> dictionary;
    if (dictionary.open(id, QeDb::kForRead) != Qeapp::eOk)
        return std::nullopt;
    const auto xrecord = openXrecord(*dictionary, kConfigurationKey);
    if (!xrecord)
        return std::nullopt;
    TransformationConfiguration configuration;
    const ResbufList chain = readChain(*xrecord);
    if (chain && chain->restype == QeRb::kText && isString(chain.get()))
        configuration.text = chain->resval.rstring;
    return configuration;
}

std::optional<std::wstring> blockName(QeDbObjectId id)
{
    HostObject<QeDbBlockTableRecord> block;
    if (block.open(id, QeDb::kForRead) != Qeapp::eOk)
        return std::nullopt;
    const std::wstring name = block->getName();
    return name == kQeDbModelSpaceName ? L"model space" : name;
}

std::optional<StoredGeoData> readGeoData(QeDbDatabase* database)
{
    QeDbObjectId id;
    if (qedbGetGeoDataObjId(database, id) != Qeapp::eOk || id.isNull())
        return std::nullopt;
    HostObject<QeDbGeoData> geoData;
    requireRead(geoData.open(id, QeDb::kForRead), "GeoData object");
    return StoredGeoData{geoData->coordinateSystem(), blockName(geoData->ownerId())};
}

} // namespace

StoredForms readStoredForms(QeDbDatabase* database)
{
    const auto namedObjects = openNamedObjects(database);
    StoredForms forms;
    forms.legacyProjection = readLegacyProjection(*namedObjects);
    forms.definitionXrecord = readDefinitionXrecord(*namedObjects);
    forms.geoData = readGeoData(database);
    forms.transformationConfiguration = readConfiguration(*namedObjects);
    return forms;
}

std::wstring readLegacyCode(QeDbDatabase* database)
{
    const auto namedObjects = openNamedObjects(database);
    const std::optional<LegacyProjection> legacy = readLegacyProjection(*namedObjects);
    const std::wstring code = legacy ? legacy->code.value_or(L"") : L"";
    return isLegacyCode(code) ? code : L"";
}

bool isLegacyCode(const std::wstring& code)
{
    return !code.empty() && code != L".";
}

} // namespace Orvelcs
