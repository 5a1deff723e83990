#include "embedded/spatial_reference/operations/operation_index.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "embedded/spatial_reference/catalog/catalog_connection.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/operations/datum_names.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

struct IndexedDatum {
    CatalogCode system; // one that has it
    std::string name;
};

struct Index {
    std::vector<IndexedOperation> operations;
    std::map<std::string, IndexedDatum> datums;
};

/// From each table alone, since coordinate_operation_view reads the columns that nobody asks for (16 ms, where this
/// takes 9 ms).
std::string operationsIn(const char* table)
{
    return std::string("SELECT auth_name, code, '") + table +
           "' AS table_name, source_crs_auth_name, source_crs_code, target_crs_auth_name, target_crs_code FROM " +
           table + " WHERE deprecated = 0";
}

std::string operationsQuery()
{
    return operationsIn("helmert_transformation") + " UNION ALL " + operationsIn("grid_transformation") +
           " UNION ALL " + operationsIn("other_transformation") + " UNION ALL " +
           operationsIn("concatenated_operation");
}

/// The systems at the ends of all operations, with the datum and the height system that each consists of.
std::string endsQuery()
{
    return "WITH operations AS (" + operationsQuery() + ") " +
           "SELECT ends.auth_name, ends.code, datum.auth_name, datum.code, datum.name, "
           "coalesce(vertical.auth_name, compound.vertical_crs_auth_name), "
           "coalesce(vertical.code, compound.vertical_crs_code) "
           "FROM (SELECT source_crs_auth_name AS auth_name, source_crs_code AS code FROM operations UNION "
           "SELECT target_crs_auth_name, target_crs_code FROM operations) ends "
           "LEFT JOIN compound_crs compound ON compound.auth_name = ends.auth_name AND compound.code = ends.code "
           "LEFT JOIN vertical_crs vertical ON vertical.auth_name = ends.auth_name AND vertical.code = ends.code "
           "LEFT JOIN projected_crs projected ON projected.auth_name = coalesce(compound.horiz_crs_auth_name, "
           "ends.auth_name) "
           "AND projected.code = coalesce(compound.horiz_crs_code, ends.code) "
           "LEFT JOIN geodetic_crs geodetic ON geodetic.auth_name = "
           "coalesce(projected.geodetic_crs_auth_name, compound.horiz_crs_auth_name, ends.auth_name) "
           "AND geodetic.code = coalesce(projected.geodetic_crs_code, compound.horiz_crs_code, ends.code) "
           "LEFT JOIN geodetic_datum datum ON datum.auth_name = geodetic.datum_auth_name "
           "AND datum.code = geodetic.datum_code";
}

std::string codeAt(const CatalogRow& row, int column)
{
    const std::string_view authority = row.text(column);
    return authority.empty() ? std::string()
                             : CatalogCode{std::string(authority), std::string(row.text(column + 1))}.text();
}

/// PROJ tells the same through an object of each of the 3,600 operations: `transformation list` took 523 ms with them,
/// and takes 54 ms without.
class IndexReader {
public:
    Index read()
    {
        requireReadable(checkCatalogIsOpen());
        requireReadable(openedCatalog().forEachRow(endsQuery(), {}, [this](const CatalogRow& row) { readEnd(row); }));
        requireReadable(
            openedCatalog().forEachRow(operationsQuery(), {}, [this](const CatalogRow& row) { readOperation(row); }));
        return std::move(index_);
    }

private:
    void readEnd(const CatalogRow& row)
    {
        constexpr int kSystem = 0;
        constexpr int kDatum = 2;
        constexpr int kDatumName = 4;
        constexpr int kVertical = 5;
        const std::string code = codeAt(row, kSystem);
        const std::optional<CatalogCode> system = splitCode(code);
        const auto [place, isNew] = ends_.try_emplace(code);
        if (!system || !isNew)
            return;
        OperationEnd& end = place->second;
        end = {.datum = codeAt(row, kDatum), .vertical = codeAt(row, kVertical)};
        if (end.datum.empty() && end.vertical.empty())
            end = endOfObject(*system);
        else if (!end.datum.empty())
            index_.datums.try_emplace(end.datum, IndexedDatum{*system, std::string(row.text(kDatumName))});
    }

    /// The end that is a system without a datum of its own in the tables, but with a text as its definition.
    OperationEnd endOfObject(const CatalogCode& code)
    {
        ProjObject system = catalogObject(code, PJ_CATEGORY_CRS);
        if (!system)
            return {};
        const SystemParts parts = splitSystem(std::move(system));
        OperationEnd end{.datum = parts.datum ? codeOfObject(parts.datum.get()) : std::string(),
                         .vertical = parts.vertical};
        if (!end.datum.empty())
            index_.datums.try_emplace(end.datum, IndexedDatum{code, proj_get_name(parts.datum.get())});
        return end;
    }

    void readOperation(const CatalogRow& row)
    {
        constexpr int kOperation = 0;
        constexpr int kTable = 2;
        constexpr int kSource = 3;
        constexpr int kTarget = 5;
        OperationEnd source = ends_[codeAt(row, kSource)];
        OperationEnd target = ends_[codeAt(row, kTarget)];
        if (source.datum.empty())
            source.datum = target.datum;
        if (target.datum.empty())
            target.datum = source.datum;
        const bool isPath = row.text(kTable) == "concatenated_operation";
        std::string code = codeAt(row, kOperation);
        const std::optional<CatalogCode> operation = splitCode(code);
        if (operation && !source.datum.empty() && seen_.insert(std::move(code)).second)
            index_.operations.push_back({*operation, isPath ? DefinitionType::path : DefinitionType::transformation,
                                         std::move(source), std::move(target)});
    }

    Index index_;
    std::map<std::string, OperationEnd> ends_;
    std::set<std::string> seen_; // a database of the user's own may repeat operations
};

const Index& operationIndex()
{
    static const Index index = IndexReader().read();
    return index;
}

ProjObject loadDatum(const IndexedDatum& datum)
{
    ProjObject system = catalogObject(datum.system, PJ_CATEGORY_CRS);
    return system ? splitSystem(std::move(system)).datum : nullptr;
}

} // namespace

const std::vector<IndexedOperation>& indexedOperations()
{
    return operationIndex().operations;
}

std::set<std::string> indexedDatumCodes(const PJ* datum)
{
    const DatumNames names(datum);
    const std::string code = codeOfObject(datum);
    std::set<std::string> codes;
    for (const auto& [candidate, indexed] : operationIndex().datums) {
        if (candidate == code || (names.mayInclude(indexed.name) && isSameDatum(datum, loadDatum(indexed).get())))
            codes.insert(candidate);
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
