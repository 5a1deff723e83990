// How a drawing file stores wide texts and resbuf values. Wide text is TEXT, or, where UTF-8 cannot hold it, a BLOB of
// its units, which begins with the byte-order mark of UTF-16 (FF FE) or of UTF-32 (FF FE 00 00), low bytes first.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "embedded/base/error.h"
#include "embedded/host/database/resbuf_value.h"

namespace Embedded {

/// TEXT, or a BLOB.
struct StoredText {
    std::string bytes;
    bool isBlob = false;
};

/// A value of a row: null, INTEGER, REAL, TEXT or BLOB.
using StoredValue = std::variant<std::monostate, std::int64_t, double, StoredText>;

StoredText storedFromWide(std::wstring_view text);
/// Returns eFileDamaged for a value that storedFromWide does not make.
Expected<std::wstring> wideFromStored(const StoredValue& value);

StoredValue storedFromResbuf(const ResbufValue& value);
/// Returns eFileDamaged for a value that does not fit the group code.
Expected<ResbufValue> resbufFromStored(std::int64_t code, const StoredValue& value);

} // namespace Embedded
