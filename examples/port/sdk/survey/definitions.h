#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

// Coordinate systems as plain values. Texts are UTF-8.
namespace Survey {

/// How a call of the survey library ended.
enum class Answer : std::uint16_t { ok = 0, unknown, lossy, noRoom, badText, trialFailure };

struct Ellipsoid {
    std::string code;
    std::string name;
    double semiMajorAxis = 0; ///< in metres
    double inverseFlattening = 0;
};

struct Datum {
    std::string code;
    std::string name;
    std::string ellipsoidCode;
    std::optional<Ellipsoid> ellipsoid; ///< where it is the user's own, or was given
};

enum class SystemKind : std::uint8_t { local, geographic, projected };

struct System {
    std::string code;
    std::string name;
    SystemKind kind = SystemKind::local;
    std::string datumCode;     ///< empty for a system without a datum
    std::string ellipsoidCode; ///< for a system without a datum; empty for others
    std::string projection;    ///< its method, and after it its parameters as name=value, with blanks between them
    std::optional<Datum> datum;
    std::optional<Ellipsoid> ellipsoid;
};

using Definition = std::variant<System, Datum, Ellipsoid>;
using Definitions = std::vector<Definition>;

/// A way from one system to another: a transformation, or a path of several of them.
struct Shift {
    std::string name;
    bool isPath = false;
    bool isReversible = false;
};

// The catalog. Codes are compared without regard to case.
std::optional<System> findSystem(std::string_view code);
std::optional<Datum> findDatum(std::string_view code);
std::optional<Ellipsoid> findEllipsoid(std::string_view code);
std::optional<Shift> findShift(std::string_view name, bool isPath);

// What a system stands on: what it was given, or what the catalog has under the code.
std::optional<Datum> datumUnder(const System& system);
std::optional<Ellipsoid> ellipsoidUnder(const Datum& datum);
std::optional<Ellipsoid> ellipsoidUnder(const System& system);

/// The system with its datum and its ellipsoid, each a definition of its own, or just the definition.
Definitions withDependents(const Definition& definition);

} // namespace Survey
