// A coordinate reference system as text for other programs: what --format prints alone, and what sidecar files hold.
#pragma once

#include <optional>
#include <span>
#include <string>

#include <CLI/App.hpp>

#include "embedded/spatial_reference/definitions/system_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/json.h"
#include "orvelcs/output/system_description.h"

namespace Orvelcs {

struct TextFormat {
    const char* name;
    Embedded::SystemTextFormat format;
    const char* ending; // of the sidecar files in which programs expect it; null without one
};

/// Every format, in the order in which the help lists them.
std::span<const TextFormat> textFormats();

struct FormatOption {
    std::string name;
    CLI::Option* option = nullptr;

    bool isGiven() const { return option->count() > 0; }
};

/// What the help says below the options of a command with --format.
inline constexpr const char* kFormatHelp =
    "With --format the definition is printed alone, on one line for each system. What is printed is the same system "
    "when PROJ reads it back; names and identifiers may differ. A format that cannot say the whole system is refused "
    "with what it cannot say: wkt1 and esri lack some kinds of systems, and a proj string has names for few datums, "
    "such as WGS84, NAD83 and NAD27. The order of axes is a part of wkt2, wkt1 and projjson; in the other two an "
    "easting or a longitude comes first. In JSON the members are format and definition.";

/// Adds --format.
void addFormatOption(CLI::App& command, FormatOption& option);
/// Throws Failure for wrong usage: an unknown format, or one together with --wkt.
void checkFormatOption(const FormatOption& option, bool wantsWkt);
/// The system in the format that was given. Throws Failure about `subject` when the format cannot say it.
std::string writeInFormat(const System& system, const FormatOption& option, const std::string& subject);
/// Adds the format and what was written in it; null where there is none.
void addFormatted(Json& json, const FormatOption& option, const std::optional<std::string>& definition);

/// How a message names a format: "wkt2", or ".wkt" where the user chose among files.
enum class FormatNotation { name, ending };

/// The Failure about `subject` for a format that cannot say the system: what it lacks, and the formats that can say it.
Failure formatFailure(const System& system, const Embedded::Error& error, FormatNotation notation,
                      const std::string& subject);

} // namespace Orvelcs
