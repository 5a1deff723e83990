#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// What calls of the drafting library answer, and what drawings hold.
namespace Draft {

/// How a call ended. Numbers from 4096 on tell a failure.
enum class Outcome : std::uint16_t {
    done = 0,
    badArgument = 4097,
    outOfMemory,
    badValue,
    noStep,
    noRecord,
    emptyLink,
    erased,
    unknownName,
    otherKind,
    badEdition,
    busy,
    notForWriting,
    unregisteredApplication,
    trialFailure,
};

using Text = std::u16string;
using Bytes = std::vector<std::uint8_t>;

/// A value with a tag that says what it is for.
struct Value {
    std::int16_t tag = 0;
    std::variant<std::int32_t, Text, Bytes> content;
};
using Values = std::vector<Value>;

enum class Kind : std::uint8_t { folder, note, applicationTable, application, block, place };

/// Leads to a record of a drawing; the drawing is known by its number in the session. Number 0 is no record.
struct Link {
    std::uint32_t drawing = 0;
    std::uint32_t record = 0;
    friend bool operator==(const Link&, const Link&) = default;
};

using Entries = std::vector<std::pair<Text, Link>>;

/// A record of a drawing. Which fields mean something depends on its kind.
struct Record {
    Kind kind = Kind::note;
    bool erased = false;
    Link owner;
    Text text;                                      ///< an application's name, a place's coordinate system
    Entries entries;                                ///< a folder's and the table's, by name
    Values values;                                  ///< a note's
    std::vector<std::pair<Text, Values>> extension; ///< what applications add, by their name
};

} // namespace Draft
