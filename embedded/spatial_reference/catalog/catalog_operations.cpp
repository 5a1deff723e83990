#include "embedded/spatial_reference/catalog/catalog_operations.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/catalog/irreversible_methods.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

bool hasSource(const PJ* operation)
{
    return ProjObject(proj_get_source_crs(projContext(), operation)) != nullptr;
}

/// PROJ has other types for transformations that it writes as pipelines or that only swap axes. A map projection is a
/// conversion as well, but has no source system.
bool isTransformation(const PJ* operation)
{
    const PJ_TYPE type = proj_get_type(operation);
    return type == PJ_TYPE_TRANSFORMATION || type == PJ_TYPE_OTHER_COORDINATE_OPERATION ||
           (type == PJ_TYPE_CONVERSION && hasSource(operation));
}

bool isOfType(const PJ* operation, DefinitionType type)
{
    return type == DefinitionType::path ? proj_get_type(operation) == PJ_TYPE_CONCATENATED_OPERATION
                                        : isTransformation(operation);
}

bool isStepReversible(const PJ* step)
{
    const char* authority = nullptr;
    const char* code = nullptr;
    if (!proj_coordoperation_get_method_info(projContext(), step, nullptr, &authority, &code))
        return false;
    // An inverted step has its method under the authority INVERSE(EPSG).
    const std::string_view text = authority ? authority : "";
    return !(text.find("EPSG") != std::string_view::npos && isIrreversibleMethod(code));
}

bool isReversible(const PJ* operation)
{
    if (proj_get_type(operation) != PJ_TYPE_CONCATENATED_OPERATION)
        return isStepReversible(operation);
    const int steps = proj_concatoperation_get_step_count(projContext(), operation);
    for (int index = 0; index < steps; ++index) {
        const ProjObject step(proj_concatoperation_get_step(projContext(), operation, index));
        if (!step || !isReversible(step.get()))
            return false;
    }
    return steps > 0;
}

DefinitionData operationData(const PJ* operation, DefinitionType type)
{
    DefinitionData data(type, codeOfObject(operation), Projjson{{"name", proj_get_name(operation)}});
    data.reversible = isReversible(operation);
    return data;
}

/// Sorts by authority, then by number.
bool comesBefore(const DefinitionData& left, const DefinitionData& right)
{
    const auto key = [](const DefinitionData& data) {
        const auto code = splitCode(data.codeUtf8).value_or(CatalogCode{});
        return std::tuple(code.authority, code.code.size(), code.code);
    };
    return key(left) < key(right);
}

/// The catalog's operation. PROJ finds an operation by name as a derivative, with the code DERIVED_FROM(EPSG):1241,
/// when it knows its grid under another file name.
ProjObject catalogOriginal(ProjObject object)
{
    constexpr std::string_view kDerived = "DERIVED_FROM(";
    if (!codeOfObject(object.get()).starts_with(kDerived))
        return object;
    const auto code = splitCode(originalCode(object.get()));
    return code ? catalogObject(*code, PJ_CATEGORY_COORDINATE_OPERATION) : nullptr;
}

/// The operations of exactly this name. PROJ itself also matches aliases and ignores case.
std::vector<ProjObject> objectsNamed(const std::string& name, DefinitionType type)
{
    constexpr int kExactMatch = 0;
    constexpr int kUnlimited = 0;
    const PJ_TYPE projType = type == DefinitionType::path ? PJ_TYPE_CONCATENATED_OPERATION : PJ_TYPE_TRANSFORMATION;
    const ProjList list(
        proj_create_from_name(projContext(), nullptr, name.c_str(), &projType, 1, kExactMatch, kUnlimited, nullptr));
    std::vector<ProjObject> objects;
    for (ProjObject& candidate : objectsOf(list)) {
        ProjObject object = catalogOriginal(std::move(candidate));
        if (object && name == proj_get_name(object.get()))
            objects.push_back(std::move(object));
    }
    return objects;
}

Expected<DefinitionData> loadByCode(const CatalogCode& code, DefinitionType type)
{
    const ProjObject object = catalogObject(code, PJ_CATEGORY_COORDINATE_OPERATION);
    if (!object)
        return failure(explainMissingCode(code, type));
    if (!isOfType(object.get(), type))
        return failure(notInCatalog());
    return operationData(object.get(), type);
}

Expected<DefinitionData> loadByName(const std::string& name, DefinitionType type)
{
    auto operations = operationsNamed(name, type);
    if (operations.empty())
        return failure(explainMissingName(name));
    if (operations.size() == 1)
        return std::move(operations.front());
    std::string codes;
    for (const DefinitionData& operation : operations)
        codes += (codes.empty() ? "" : ", ") + operation.codeUtf8;
    return failure(statusAmbiguous, "the name fits several: " + codes);
}

} // namespace

std::vector<DefinitionData> operationsNamed(std::string_view name, DefinitionType type)
{
    auto objects = objectsNamed(std::string(name), type);
    const auto isDeprecated = [](const ProjObject& object) { return proj_is_deprecated(object.get()) != 0; };
    if (!std::ranges::all_of(objects, isDeprecated))
        std::erase_if(objects, isDeprecated);
    std::vector<DefinitionData> operations;
    for (const ProjObject& object : objects)
        operations.push_back(operationData(object.get(), type));
    std::ranges::sort(operations, comesBefore);
    return operations;
}

Expected<DefinitionData> loadOperation(const wchar_t* codeOrName, DefinitionType type)
{
    if (!codeOrName || !*codeOrName)
        return failure(notInCatalog());
    const std::string text = utf8FromWide(codeOrName);
    if (const auto code = resolveCode(text)) {
        if (auto loaded = loadByCode(*code, type); loaded || loaded.error().status != statusNotFound)
            return loaded;
    }
    return loadByName(text, type);
}

} // namespace Embedded
