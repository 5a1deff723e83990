#pragma once

#include "values.h"

#include <cstdint>
#include <filesystem>
#include <map>

namespace Draft {

/// Add-ons: shared libraries that are loaded into the product's process.
class Extensions {
public:
    /// The number by which an add-on is known; 0 is none.
    using Number = std::uintptr_t;

    static Extensions& get();

    /// Loads the library and starts it. It must be made for this version of the interface.
    Outcome load(const std::filesystem::path& library, Number& number);
    /// Stops an add-on that allows it and unmaps it.
    Outcome unload(Number number);
    /// Says that the add-on may be unloaded; asked by the add-on itself.
    Outcome allowUnloading(Number number);

private:
    Extensions() = default;

    struct Extension {
        void* library = nullptr;
        bool mayBeUnloaded = false;
    };

    std::map<Number, Extension> m_extensions;
    Number m_lastNumber = 0;
};

} // namespace Draft
