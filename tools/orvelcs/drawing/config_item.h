// The items of a configuration text, as the program shows and makes them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "orvelcs/cli/json.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// One item as the module reads it.
struct ConfigItem {
    std::wstring source;
    std::wstring target;
    std::wstring name;
    std::wstring note;
    std::wstring version;
    int type = 0;
    std::wstring xml; // what the module writes for it; empty for an incomplete one
};

/// "path" for 1, "transformation" for 2, "neither path nor transformation" for anything else.
std::string transformationKindName(int kind);

/// One for each "</Item>" of the text.
std::vector<ConfigItem> itemsOf(const std::wstring& text);
Json asJson(const ConfigItem& item);
std::string asLine(const ConfigItem& item);

/// An item as it stands in the command line.
struct ConfigItemText {
    std::string source;
    std::string target;
    std::string name;
    std::string note;
    int type = 0;
};

/// Its element. Throws Failure for a field that is empty, or that a configuration text cannot hold.
std::wstring elementOf(const ConfigItemText& item);
/// What the loading of a path or transformation, which an item names by its name or code, comes to.
Zentara::Infrastructure::SpatialReference::Status statusOfOperation(const std::wstring& name, int kind);
/// Whether the catalog could be asked: it has the name, lacks it or has it several times.
bool isCatalogAnswer(Zentara::Infrastructure::SpatialReference::Status status);
/// "the catalog cannot be read: ...", with the cause, for a status that is no answer.
std::string describeCatalogFailure(Zentara::Infrastructure::SpatialReference::Status status);
/// Notes a name that the catalog lacks or has more than once; the item can be stored all the same.
void noteDoubtfulName(const ConfigItemText& item, Output& output);

/// The text with one element more, behind its last item.
std::wstring withElement(const std::wstring& text, const std::wstring& element);
/// Where the last item ends; 0 in a text without items. The settings file and the registry keep nothing behind it.
std::size_t endOfLastItem(std::wstring_view text);

} // namespace Orvelcs
