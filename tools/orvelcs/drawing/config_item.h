// The items of a transformation configuration: reading, printing and making them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "orvelcs/cli/json.h"
#include "orvelcs/cli/output.h"
#include "platform/spatial_reference/status.h"

namespace Orvelcs {

/// One item as the module reads it.
struct ConfigItem {
    std::wstring source;
    std::wstring target;
    std::wstring name;
    std::wstring note;
    std::wstring version;
    int type = 0;
    std::wstring xml; // as the module writes it; empty for an incomplete item
};

/// "path" for 1, "transformation" for 2, "neither path nor transformation" for anything else.
std::string transformationKindName(int kind);

/// Parses a configuration text into one item for each "</Item>".
std::vector<ConfigItem> parseItems(const std::wstring& text);
Json asJson(const ConfigItem& item);
std::string asLine(const ConfigItem& item);

/// An item as the command line gives it.
struct ConfigItemText {
    std::string source;
    std::string target;
    std::string name;
    std::string note;
    int type = 0;
};

/// The XML element of the item. Throws Failure for a field that is empty or that a configuration text cannot hold.
std::wstring makeElement(const ConfigItemText& item);
/// The status of loading a path (kind 1) or a transformation by its name or code.
Zentara::Infrastructure::SpatialReference::Status operationStatus(const std::wstring& name, int kind);
/// Returns whether the status says that the catalog has the name, lacks it or has it several times, and not that
/// reading failed.
bool catalogWasRead(Zentara::Infrastructure::SpatialReference::Status status);
/// "the catalog cannot be read: ...", with the cause, for a status of a reading that failed.
std::string describeCatalogFailure(Zentara::Infrastructure::SpatialReference::Status status);
/// Prints a note about a name that the catalog lacks or has more than once. The item can be stored all the same.
void noteDoubtfulName(const ConfigItemText& item, Output& output);

/// Inserts the element behind the last item of the text.
std::wstring withElement(const std::wstring& text, const std::wstring& element);
/// Where the last item ends; 0 in a text without items. The settings file and the registry keep nothing behind it.
std::size_t endOfLastItem(std::wstring_view text);

} // namespace Orvelcs
