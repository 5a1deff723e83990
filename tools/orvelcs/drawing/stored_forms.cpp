#include "orvelcs/drawing/stored_forms.h"

#include "orvelcs/cli/definition_type.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/output/result_names.h"
#include "storage/definition_group.h"
#include "storage/library_holder.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

using StoredObject = Orvel::LibraryObject<Library::DefinitionBase>;

void requireRead(Qeapp::ErrorStatus result, const char* subject)
{
    if (result != Qeapp::eOk)
        throw Failure(subject, resultName(result));
}

bool isString(const resbuf* buffer)
{
    return buffer != nullptr && qeutValueKind(buffer->restype) == QeRb::ValueKind::string &&
           buffer->resval.rstring != nullptr;
}

std::optional<LegacyProjection> readLegacyProjection(const QeDbDictionary& namedObjects)
{
    const Orvel::ResbufChain chain(namedObjects.xData(kLegacyApplication));
    if (!chain)
        return std::nullopt;
    LegacyProjection legacy;
    const resbuf* code = chain->rbnext;
    if (isString(code) && code->restype == QeRb::kXdataString)
        legacy.code = code->resval.rstring;
    return legacy;
}

void addDefinition(std::vector<StoredDefinition>& definitions, const StoredObject& definition)
{
    if (!definition)
        return;
    StoredDefinition& stored = definitions.emplace_back();
    stored.type = definitionType(*definition.get());
    if (const wchar_t* code = nullptr; definition->GetCode(code) == Library::statusOk && code != nullptr)
        stored.code = code;
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
            addDefinition(definitions, Orvel::ResbufChunkToDefinition(buffer));
        else if (layout != 0 && opensGroup(buffer))
            addDefinition(definitions, Orvel::ResbufGroupToDefinition(buffer));
    }
    return definitions;
}

bool closesGroup(const resbuf* buffer)
{
    return buffer->restype == QeRb::kXdataControl && isString(buffer) &&
           std::wstring_view(buffer->resval.rstring) == L"}";
}

// The module takes groups up to their closing braces, and nothing may stand behind the last.
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

Orvel::HostObject<QeDbXrecord> openXrecord(const QeDbDictionary& dictionary, const wchar_t* key)
{
    Orvel::HostObject<QeDbXrecord> xrecord;
    QeDbObjectId id;
    if (dictionary.getAt(key, id) != Qeapp::eOk)
        return xrecord;
    const Qeapp::ErrorStatus opened = xrecord.open(id, QeDb::kForRead);
    if (opened != Qeapp::eNotThatKindOfClass)
        requireRead(opened, "xrecord");
    return xrecord;
}

Orvel::ResbufChain chainOf(const QeDbXrecord& xrecord)
{
    Orvel::ResbufChain chain;
    requireRead(xrecord.rbChain(chain.put()), "xrecord");
    return chain;
}

std::optional<DefinitionXrecord> readDefinitionXrecord(const QeDbDictionary& namedObjects)
{
    const auto xrecord = openXrecord(namedObjects, kDefinitionKey);
    if (!xrecord)
        return std::nullopt;
    DefinitionXrecord record;
    record.chain = chainOf(*xrecord.get());
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
    Orvel::HostObject<QeDbDictionary> dictionary;
    if (dictionary.open(id, QeDb::kForRead) != Qeapp::eOk)
        return std::nullopt;
    const auto xrecord = openXrecord(*dictionary.get(), kConfigurationKey);
    if (!xrecord)
        return std::nullopt;
    TransformationConfiguration configuration;
    const Orvel::ResbufChain chain = chainOf(*xrecord.get());
    if (chain && chain->restype == QeRb::kText && isString(chain.get()))
        configuration.text = chain->resval.rstring;
    return configuration;
}

std::optional<std::wstring> blockName(QeDbObjectId id)
{
    Orvel::HostObject<QeDbBlockTableRecord> block;
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
    Orvel::HostObject<QeDbGeoData> geoData;
    requireRead(geoData.open(id, QeDb::kForRead), "GeoData object");
    return StoredGeoData{geoData->coordinateSystem(), blockName(geoData->ownerId())};
}

} // namespace

StoredForms readStoredForms(QeDbDatabase* database)
{
    Orvel::NamedObjects namedObjects;
    requireRead(namedObjects.openIn(database, QeDb::kForRead), "named objects dictionary");
    StoredForms forms;
    forms.legacyProjection = readLegacyProjection(*namedObjects.get());
    forms.definitionXrecord = readDefinitionXrecord(*namedObjects.get());
    forms.geoData = readGeoData(database);
    forms.transformationConfiguration = readConfiguration(*namedObjects.get());
    return forms;
}

bool hasLegacyCode(QeDbDatabase* database)
{
    Orvel::NamedObjects namedObjects;
    requireRead(namedObjects.openIn(database, QeDb::kForRead), "named objects dictionary");
    const std::optional<LegacyProjection> legacy = readLegacyProjection(*namedObjects.get());
    return legacy && legacy->code && !legacy->code->empty() && *legacy->code != L".";
}

} // namespace Orvelcs
