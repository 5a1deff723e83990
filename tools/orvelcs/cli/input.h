// Reading files and standard input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Orvelcs {

/// The name that stands for standard input or output where a file is expected.
inline constexpr const char* kStandardStream = "-";

/// May stand before a text in UTF-8.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// How messages name the file: "standard input" for "-".
std::string inputName(const std::string& file);

/// Reads the file to its end; for "-", standard input. Throws Failure when it cannot be read or is longer than
/// `limitInBytes` (0: no limit).
std::string readWhole(const std::string& file, std::size_t limitInBytes = 0);

/// Reads the file as a text in UTF-8, with or without a byte-order mark. Throws Failure as readWhole does, and for a
/// text that is not UTF-8 or holds a NUL.
std::wstring readText(const std::string& file, std::size_t limitInBytes = 0);

/// The bytes as such a text. Throws Failure about `subject`.
std::wstring decodeText(const std::string& subject, std::string_view bytes);

/// A stream of bytes that is read piece by piece.
struct InputStream {
    /// Reads `length` bytes at most. Returns how many, 0 at the end alone. Throws Failure when the stream cannot be
    /// read.
    std::function<std::size_t(char* bytes, std::size_t length)> read;
    std::optional<std::uintmax_t> sizeInBytes; // of a regular file
};

/// Opens the file; "-" is standard input. Throws Failure when it cannot be opened.
InputStream openInput(const std::string& file);

/// Reads what standard input has so far, `length` bytes at most, and waits only while it has none. Returns 0 at the
/// end. Throws Failure when it cannot be read.
std::size_t readAvailable(char* bytes, std::size_t length);

} // namespace Orvelcs
