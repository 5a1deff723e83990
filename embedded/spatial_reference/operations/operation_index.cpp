#include "embedded/spatial_reference/operations/operation_index.h"

#include <map>

#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

struct Index {
    std::vector<IndexedOperation> operations;
    std::map<std::string, ProjObject> datums;
};

class IndexReader {
public:
    Index read()
    {
        const CatalogReadCheck check;
        for (const std::string& authority : catalogAuthorities()) {
            readCodes(authority, PJ_TYPE_TRANSFORMATION, DefinitionType::transformation);
            readCodes(authority, PJ_TYPE_CONCATENATED_OPERATION, DefinitionType::path);
        }
        requireReadable(check.finish());
        return std::move(index_);
    }

private:
    void readCodes(const std::string& authority, PJ_TYPE projType, DefinitionType type)
    {
        constexpr int kWithoutDeprecated = 0;
        PROJ_STRING_LIST codes =
            proj_get_codes_from_database(projContext(), authority.c_str(), projType, kWithoutDeprecated);
        const std::unique_ptr<char*, decltype(&proj_string_list_destroy)> holder(codes, proj_string_list_destroy);
        for (auto code = codes; code && *code; ++code)
            readOperation({authority, *code}, type);
    }

    void readOperation(const CatalogCode& code, DefinitionType type)
    {
        const ProjObject operation = catalogObject(code, PJ_CATEGORY_COORDINATE_OPERATION);
        if (!operation)
            return;
        OperationEnd source = readEnd(ProjObject(proj_get_source_crs(projContext(), operation.get())));
        OperationEnd target = readEnd(ProjObject(proj_get_target_crs(projContext(), operation.get())));
        if (source.datum.empty())
            source.datum = target.datum;
        if (target.datum.empty())
            target.datum = source.datum;
        if (!source.datum.empty())
            index_.operations.push_back({code, type, std::move(source), std::move(target)});
    }

    /// Caches the ends, since all operations together have only a few hundred different ones.
    OperationEnd readEnd(ProjObject system)
    {
        const std::string code = codeOfObject(system.get());
        if (const auto known = ends_.find(code); known != ends_.end() && !code.empty())
            return known->second;
        OperationEnd end;
        if (system) {
            SystemParts parts = splitSystem(std::move(system));
            end = {parts.datum ? codeOfObject(parts.datum.get()) : std::string(), parts.vertical};
            if (!end.datum.empty())
                index_.datums.try_emplace(end.datum, std::move(parts.datum));
        }
        return ends_[code] = end;
    }

    Index index_;
    std::map<std::string, OperationEnd> ends_;
};

const Index& operationIndex()
{
    static const Index index = IndexReader().read();
    return index;
}

} // namespace

const std::vector<IndexedOperation>& indexedOperations()
{
    return operationIndex().operations;
}

std::set<std::string> indexedDatumCodes(const PJ* datum)
{
    std::set<std::string> codes;
    for (const auto& [code, candidate] : operationIndex().datums) {
        if (isSameDatum(datum, candidate.get()))
            codes.insert(code);
    }
    return codes;
}

bool heightsMatch(const std::string& operationSource, const std::string& operationTarget,
                  const std::string& systemSource, const std::string& systemTarget)
{
    return (operationSource.empty() && operationTarget.empty()) ||
           (operationSource == systemSource && operationTarget == systemTarget);
}

} // namespace Embedded
