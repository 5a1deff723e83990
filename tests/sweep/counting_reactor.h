// A reactor that counts its notices, vetoes what a scenario wants vetoed, and can throw at a notice. It allocates
// nothing, so every allocation during a call is the module's or its platform's.
#pragma once

#include <cstddef>

#include "coordsys/orvel_coordinate_system.h"

namespace Tests {

/// The exception that the reactor throws.
struct ReactorException {};

enum class Veto {
    none,
    everything,
    removals // questions with a null name
};

enum class LastNotice {
    none,
    question, // or a veto
    removed,  // the drawing has no coordinate system any more
    assigned,
    transformationChanged
};

class CountingReactor : public Zentara::Gis::Orvel::CoordinateSystem::OrvelCoordinateSystemReactor {
public:
    explicit CountingReactor(Veto veto) : veto_(veto) {}

    /// Restarts the count. The reactor throws at that notice, counted from 1; 0 throws at none.
    void throwAt(std::size_t notice)
    {
        notices_ = 0;
        lastNotice_ = LastNotice::none;
        throwing_ = notice;
    }
    std::size_t notices() const { return notices_; }
    LastNotice lastNotice() const { return lastNotice_; }

    bool CoordinateSystemWillChange(QeDbDatabase* /*db*/, const wchar_t* const name) override
    {
        count(LastNotice::question);
        return veto_ == Veto::none || (veto_ == Veto::removals && name != nullptr);
    }
    void CoordinateSystemChanged(QeDbDatabase* /*db*/, const wchar_t* const name) override
    {
        count(name == nullptr ? LastNotice::removed : LastNotice::assigned);
    }
    void CoordinateSystemChangeVetoed(QeDbDatabase* /*db*/, const wchar_t* const /*name*/) override
    {
        count(LastNotice::question);
    }
    void CsTransformationChanged() override { count(LastNotice::transformationChanged); }

private:
    void count(LastNotice notice)
    {
        lastNotice_ = notice;
        if (++notices_ == throwing_)
            throw ReactorException();
    }

    Veto veto_;
    std::size_t notices_ = 0;
    LastNotice lastNotice_ = LastNotice::none;
    std::size_t throwing_ = 0;
};

} // namespace Tests
