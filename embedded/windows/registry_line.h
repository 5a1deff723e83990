// The frame of a line in the registry's file: the checksum of everything up to it, and its JSON text.
#pragma once

#include <string>
#include <string_view>

#include "embedded/windows/running_checksum.h"

namespace Embedded {

/// The line with its end; the checksum goes on over it.
std::string framedLine(std::string_view json, RunningChecksum& checksum);
/// The JSON text of a line without its end. Throws RegistryDamage when the checksum does not fit.
std::string_view unframed(std::string_view line, RunningChecksum& checksum);

std::string headerJson();
/// Throws RegistryDamage unless this is the first line of a file that can be read here.
void checkHeader(std::string_view line);

} // namespace Embedded
