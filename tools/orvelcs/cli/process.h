// What the program asks of its operating system.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

namespace Orvelcs {

/// Lets what nothing catches, a fault of the processor among it, end the program with status 70 on Windows, whose own
/// numbers for it are cut off where a caller keeps one byte. Elsewhere the program's signal tells.
void prepareForUnhandledFailures();

/// Makes standard input and output carry bytes as they are, and a write to a closed pipe or a closed stream, or beyond
/// the process's limit on the size of files, fail instead of ending the program or landing in another file.
void prepareStandardStreams();

/// The reason why the stream's last call failed, a number of errno.
int streamError();

bool isTerminal(std::FILE* stream);
/// Whether it is a terminal that understands escape sequences.
bool takesEscapes(std::FILE* stream);

/// Null when it cannot be opened, with the reason in errno.
std::FILE* openForReading(const std::string& file);

/// The environment variable, UTF-8; nothing where there is none.
std::optional<std::string> variable(const char* name);
/// For this process and the libraries in it; removed without a value. False when it cannot be set.
[[nodiscard]] bool setVariable(const char* name, const std::optional<std::string>& value);

} // namespace Orvelcs
