// Wide text as a value of a drawing file: TEXT, or, where UTF-8 cannot hold it, a BLOB of its units, which begins with
// the byte-order mark of UTF-16 (FF FE) or of UTF-32 (FF FE 00 00), low bytes first.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Embedded {

struct StoredText {
    std::string bytes;
    bool isBlob = false;
};

StoredText storedFromWide(std::wstring_view text);
/// Nothing for bytes that no text is stored as.
std::optional<std::wstring> wideFromStored(std::string_view bytes, bool isBlob);

} // namespace Embedded
