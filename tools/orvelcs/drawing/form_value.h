// Writes single stored forms into a drawing, as `forms --put` does.
#pragma once

#include <string>

#include "platform/host.h"

namespace Orvelcs {

enum class Form { legacy, legacyChain, definitionChain, geoData, configuration };

/// One FORM=VALUE of the command line.
struct FormValue {
    Form form = Form::legacy;
    std::string name; // as the user wrote it
    std::string value;
};

/// Throws Failure for wrong usage: no "=", no such form, a value that is not UTF-8.
FormValue parseFormValue(const std::string& argument);

/// Writes the form through the classes of the host. Throws Failure; the open drawing may then be half changed.
void putForm(QeDbDatabase* database, const FormValue& value);

} // namespace Orvelcs
