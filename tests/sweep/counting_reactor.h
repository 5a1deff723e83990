// A reactor that counts what it hears, objects as the scenario wants it, and can throw at a notice. It allocates
// nothing, so that all that is allocated during a call is the module's or its platform's.
#pragma once

#include <cstddef>

#include "coordsys/orvel_coordinate_system.h"

namespace Tests {

/// What the reactor throws.
struct ReactorRefused {};

enum class Veto {
    none,
    everything,
    removals // what is asked with a null name
};

class CountingReactor : public Zentara::Gis::Orvel::CoordinateSystem::OrvelCoordinateSystemReactor {
public:
    explicit CountingReactor(Veto veto) : veto_(veto) {}

    /// Counts from zero; 0 throws at none.
    void throwAt(std::size_t notice)
    {
        heard_ = 0;
        throwing_ = notice;
    }
    std::size_t heard() const { return heard_; }

    bool CoordinateSystemWillChange(QeDbDatabase* /*db*/, const wchar_t* const name) override
    {
        hear();
        return veto_ == Veto::none || (veto_ == Veto::removals && name != nullptr);
    }
    void CoordinateSystemChanged(QeDbDatabase* /*db*/, const wchar_t* const /*name*/) override { hear(); }
    void CoordinateSystemChangeVetoed(QeDbDatabase* /*db*/, const wchar_t* const /*name*/) override { hear(); }
    void CsTransformationChanged() override { hear(); }

private:
    void hear()
    {
        if (++heard_ == throwing_)
            throw ReactorRefused();
    }

    Veto veto_;
    std::size_t heard_ = 0;
    std::size_t throwing_ = 0;
};

} // namespace Tests
