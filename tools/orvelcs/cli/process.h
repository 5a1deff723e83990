// Calls of the operating system: streams, terminal, environment.
#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>

#include "orvelcs/cli/exit_status.h"

namespace Orvelcs {

/// Makes an exception that nothing catches, and a fault of the processor, end the program with status 70 on Windows:
/// the system's own numbers do not fit into one byte. On other systems the program ends by a signal.
void prepareForUnhandledFailures();

/// Makes standard input and output binary. A write to a closed pipe or stream, or beyond the limit on the size of
/// files, then fails instead of ending the program or reaching another file.
void prepareStandardStreams();

/// The errno of the last call on a stream.
int streamError();

/// The text as one argument for this system's shell: in quotes where it needs them.
std::string quotedArgument(const std::string& text);

/// The number of the exit status. On Windows, where a closed pipe sends no signal, readerGone is a failure like others.
int systemExitStatus(ExitStatus status);

/// Reads from standard input, past the buffer of `stdin`, what is there: `length` bytes at most. Waits only while there
/// is nothing. Returns 0 at the end, and nothing with the reason in errno when it cannot be read.
std::optional<std::size_t> readStandardInput(char* bytes, std::size_t length);

bool isTerminal(std::FILE* stream);
/// Returns whether it is a terminal that understands escape sequences.
bool supportsEscapes(std::FILE* stream);

/// The number of columns of a terminal; nothing where it is none, or does not know it.
std::optional<std::size_t> terminalWidth(std::FILE* stream);

/// Returns null when the file cannot be opened, with the reason in errno.
std::FILE* openForReading(const std::string& file);

/// The environment variable in UTF-8; nothing where there is none.
std::optional<std::string> variable(const char* name);
/// Sets the variable for this process and its libraries, or removes it. Returns false when it cannot be set.
[[nodiscard]] bool setVariable(const char* name, const std::optional<std::string>& value);

} // namespace Orvelcs
