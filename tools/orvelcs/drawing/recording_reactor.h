// A reactor that records every event and vetoes changes on request.
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

/// Which changes the reactor vetoes: those with a name (an empty one too), and those with a null name.
struct Vetoes {
    bool named = false;
    bool removal = false;
};

/// Registered with the module as long as it lives. Throws Failure when the module refuses it.
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
