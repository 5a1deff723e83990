#include "embedded/spatial_reference/catalog/catalog_operations.h"

#include <algorithm>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/irreversible_methods.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

PJ_TYPE projTypeOf(DefinitionType type)
{
    return type == DefinitionType::path ? PJ_TYPE_CONCATENATED_OPERATION : PJ_TYPE_TRANSFORMATION;
}

bool hasSource(const PJ* operation)
{
    return ProjObject(proj_get_source_crs(projContext(), operation)) != nullptr;
}

/// Transformations that PROJ writes as pipelines, or that only swap axes, have types of their own; a map projection is
/// a conversion too, but between no two systems in particular.
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

/// By authority and, where they are numbers, by number.
bool comesBefore(const DefinitionData& left, const DefinitionData& right)
{
    const auto key = [](const DefinitionData& data) {
        const auto code = splitCode(data.codeUtf8).value_or(CatalogCode{});
        return std::tuple(code.authority, code.code.size(), code.code);
    };
    return key(left) < key(right);
}

/// Found by name, an operation whose grid PROJ knows under another file's name is a derivative with a code of its own
/// making, DERIVED_FROM(EPSG):1241; this gives the original.
ProjObject originalOf(ProjObject object)
{
    constexpr std::string_view kDerived = "DERIVED_FROM(";
    const auto code = splitCode(codeOfObject(object.get()));
    if (!code || !code->authority.starts_with(kDerived))
        return object;
    const std::string authority = code->authority.substr(kDerived.size(), code->authority.size() - kDerived.size() - 1);
    return catalogObject({authority, code->code}, PJ_CATEGORY_COORDINATE_OPERATION);
}

/// The operations of exactly this name; PROJ itself matches aliases and ignores case.
std::vector<ProjObject> objectsNamed(const std::string& name, DefinitionType type)
{
    const PJ_TYPE wanted = projTypeOf(type);
    const ProjList list(proj_create_from_name(projContext(), nullptr, name.c_str(), &wanted, 1,
                                              /* approximateMatch */ 0, /* limitResultCount */ 0, nullptr));
    std::vector<ProjObject> objects;
    const int count = list ? proj_list_get_count(list.get()) : 0;
    for (int index = 0; index < count; ++index) {
        ProjObject object = originalOf(ProjObject(proj_list_get(projContext(), list.get(), index)));
        if (object && name == proj_get_name(object.get()))
            objects.push_back(std::move(object));
    }
    return objects;
}

Loaded loadByCode(const CatalogCode& code, DefinitionType type)
{
    const ProjObject object = catalogObject(code, PJ_CATEGORY_COORDINATE_OPERATION);
    if (!object)
        return {statusOfMissing(faultBehindMissingCode(code, type)), std::nullopt};
    if (!isOfType(object.get(), type))
        return {statusNotFound, std::nullopt};
    return {statusOk, operationData(object.get(), type)};
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

Loaded loadOperation(const wchar_t* codeOrName, DefinitionType type)
{
    if (!codeOrName || !*codeOrName)
        return {statusNotFound, std::nullopt};
    const std::string text = utf8FromWide(codeOrName);
    if (const auto code = resolveCode(text)) {
        if (auto loaded = loadByCode(*code, type); loaded.status != statusNotFound)
            return loaded;
    }
    auto operations = operationsNamed(text, type);
    if (operations.empty())
        return {statusOfMissing(faultBehindMissingName(text)), std::nullopt};
    if (operations.size() > 1)
        return {statusAmbiguous, std::nullopt};
    return {statusOk, std::move(operations.front())};
}

} // namespace Embedded
