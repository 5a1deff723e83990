// Which datums can be the same as another one by their names.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

/// The names of a datum, as PROJ compares them: it looks at letters and digits only and ignores accents, and two datums
/// are the same only if one of them has the name of the other, or an alternative name that is the other's.
class DatumNames {
public:
    /// Throws ErrorException when the catalog cannot be read.
    explicit DatumNames(const PJ* datum);

    /// False when a datum of the catalog with that name certainly is another one, which spares making an object of it.
    bool mayInclude(std::string_view name) const;

private:
    std::set<std::string> letters_; // of each name
    bool knowsAll_ = false;
};

} // namespace Embedded
