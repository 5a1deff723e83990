// A reactor that writes down every notice and answers no where it was told to.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "orvelcs/cli/json.h"

namespace Orvelcs {

struct Event {
    std::string event;
    std::optional<std::wstring> name;
};

/// Which questions are answered with no: those with a name (the empty one too), those with a null one.
struct Vetoes {
    bool named = false;
    bool removal = false;
};

/// Registered with the module as long as it lives. Throws Failure when the module does not take it.
class RecordingReactor final : public Zentara::Gis::Orvel::CoordinateSystem::OrvelCoordinateSystemReactor {
public:
    explicit RecordingReactor(Vetoes vetoes);
    RecordingReactor(const RecordingReactor&) = delete;
    RecordingReactor& operator=(const RecordingReactor&) = delete;
    ~RecordingReactor() override;

    const std::vector<Event>& events() const { return events_; }

    bool CoordinateSystemWillChange(QeDbDatabase* db, const wchar_t* name) override;
    void CoordinateSystemChanged(QeDbDatabase* db, const wchar_t* name) override;
    void CoordinateSystemChangeVetoed(QeDbDatabase* db, const wchar_t* name) override;
    void CsTransformationChanged() override;

private:
    void record(const char* event, const wchar_t* name);

    Vetoes vetoes_;
    std::vector<Event> events_;
};

Json eventsAsJson(const std::vector<Event>& events);
/// "changed EPSG:25832", "willChange null", "willChange \"\"".
std::string eventAsLine(const Event& event);

} // namespace Orvelcs
