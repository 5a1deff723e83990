#include "embedded/spatial_reference/catalog/operation_names.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_connection.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"
#include "embedded/spatial_reference/catalog/catalog_words.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

std::string tableCondition(TransformationKind kind)
{
    return std::string("table_name ") + (kind == transformationPath ? "=" : "<>") + " 'concatenated_operation'";
}

Expected<std::vector<OperationCandidate>> operationsInUse(TransformationKind kind)
{
    std::vector<OperationCandidate> operations;
    const auto read = [&operations](const CatalogRow& row) {
        operations.push_back({wideFromUtf8(row.text(0)), wideFromUtf8(row.text(1))});
    };
    return checkCatalogIsOpen()
        .and_then([&] {
            return openedCatalog().forEachRow("SELECT auth_name || ':' || code, name FROM coordinate_operation_view "
                                              "WHERE deprecated = 0 AND " +
                                                  tableCondition(kind),
                                              {}, read);
        })
        .map([&operations] { return std::move(operations); });
}

using Words = std::vector<std::wstring>; // sorted

Words sortedWords(std::wstring_view text)
{
    Words words = splitIntoWords(text);
    std::ranges::sort(words);
    return words;
}

/// How many of the words of both are common to them, from 0 to 1.
double similarity(const Words& left, const Words& right)
{
    Words common;
    std::ranges::set_intersection(left, right, std::back_inserter(common));
    const std::size_t all = left.size() + right.size();
    return all == 0 ? 0 : 2 * static_cast<double>(common.size()) / static_cast<double>(all);
}

/// The name, or what it may be when slips in its words are mended.
std::vector<Words> readings(std::wstring_view name, const std::vector<OperationCandidate>& operations)
{
    constexpr std::size_t kMost = 4;
    WordCorrection correction;
    for (const OperationCandidate& operation : operations)
        correction.learn(operation.name);
    std::vector<Words> readings{sortedWords(name)};
    for (const std::wstring& corrected : correction.correct(name, kMost))
        readings.push_back(sortedWords(corrected));
    return readings;
}

struct SimilarOperation {
    double similarity;
    CatalogOrder order;
    const OperationCandidate* operation;
};

} // namespace

Expected<std::vector<std::wstring>> operationSpellings(std::wstring_view codeOrName, TransformationKind kind)
{
    const std::string text = utf8FromWide(codeOrName);
    if (const auto open = checkCatalogIsOpen(); !open)
        return failure(open.error());
    const auto resolved = resolveCode(text);
    const CatalogCode code = resolved.value_or(CatalogCode());
    const auto names = openedCatalog().query("SELECT DISTINCT CASE WHEN name = ?1 COLLATE NOCASE THEN name "
                                             "ELSE auth_name || ':' || code END FROM coordinate_operation_view "
                                             "WHERE (name = ?1 COLLATE NOCASE OR (auth_name = ?2 AND code = ?3)) AND " +
                                                 tableCondition(kind),
                                             {text, code.authority, code.code});
    if (!names)
        return failure(names.error());
    std::vector<std::wstring> spellings;
    for (const std::string& name : *names)
        spellings.push_back(wideFromUtf8(name));
    return spellings;
}

std::vector<OperationCandidate> suggestOperations(std::wstring_view name, TransformationKind kind, std::size_t limit)
{
    constexpr double kLeast = 0.7; // below it most words differ in short names
    const std::vector<OperationCandidate> operations =
        operationsInUse(kind).value_or(std::vector<OperationCandidate>());
    const std::vector<Words> wanted = readings(name, operations);
    std::vector<SimilarOperation> similar;
    for (const OperationCandidate& operation : operations) {
        const Words words = sortedWords(operation.name);
        double best = 0;
        for (const Words& reading : wanted)
            best = std::max(best, similarity(reading, words));
        if (best >= kLeast)
            similar.push_back({best, catalogOrder(operation.code), &operation});
    }
    std::ranges::sort(similar, {}, [](const SimilarOperation& s) { return std::tuple(-s.similarity, s.order); });
    std::vector<OperationCandidate> candidates;
    for (const SimilarOperation& candidate : similar)
        if (candidates.size() < limit)
            candidates.push_back(*candidate.operation);
    return candidates;
}

} // namespace Embedded
