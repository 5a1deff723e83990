#include "orvelcs/drawing/swapped_arguments.h"

#include "embedded/base/case_folding.h"
#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "embedded/spatial_reference/catalog/code_notations.h"

namespace Orvelcs {
namespace {

bool exists(const std::string& name)
{
    return Embedded::fileKind(Embedded::pathFromUtf8(name)).has_value();
}

bool isCatalogCode(const std::string& word)
{
    if (!Embedded::isValidUtf8(word))
        return false;
    const std::wstring code = Embedded::plainCode(Embedded::wideFromUtf8(word));
    return code.find(L':') != std::wstring::npos && Embedded::findCatalogEntry(code).has_value();
}

bool looksLikeFile(const std::string& word)
{
    return Embedded::toLowerAscii(word).ends_with(".qedb") || exists(word);
}

} // namespace

std::optional<std::string> findSwappedCode(const std::string& code, const std::vector<std::string>& files)
{
    if (files.empty() || !looksLikeFile(code))
        return std::nullopt;
    for (const std::string& word : {files.front(), files.back()})
        if (!exists(word) && isCatalogCode(word))
            return word;
    return std::nullopt;
}

std::string codeInPlaceOfFileClause(const std::string& file)
{
    return isCatalogCode(file) ? "; it is a code of the catalog, where a file is expected" : "";
}

std::string fileInPlaceOfCodeClause(const std::string& code)
{
    return looksLikeFile(code) ? "; it is a file, where a code is expected" : "";
}

} // namespace Orvelcs
