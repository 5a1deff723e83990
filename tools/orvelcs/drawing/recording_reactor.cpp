#include "orvelcs/drawing/recording_reactor.h"

#include <fmt/format.h>

#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

RecordingReactor::RecordingReactor(Vetoes vetoes) : vetoes_(vetoes)
{
    const Qeapp::ErrorStatus result = CoordinateSystem::AddCoordinateSystemReactor(this);
    if (result != Qeapp::eOk)
        throw Failure("reactor", "cannot be registered: " + resultName(result), ExitStatus::failed, resultCode(result));
}

RecordingReactor::~RecordingReactor()
{
    static_cast<void>(CoordinateSystem::RemoveCoordinateSystemReactor(this)); // it is registered
}

bool RecordingReactor::CoordinateSystemWillChange(QeDbDatabase*, const wchar_t* name)
{
    record("willChange", name);
    return name != nullptr ? !vetoes_.named : !vetoes_.removal;
}

void RecordingReactor::CoordinateSystemChanged(QeDbDatabase*, const wchar_t* name)
{
    record("changed", name);
}

void RecordingReactor::CoordinateSystemChangeVetoed(QeDbDatabase*, const wchar_t* name)
{
    record("vetoed", name);
}

void RecordingReactor::CsTransformationChanged()
{
    record("transformationChanged", nullptr);
}

void RecordingReactor::record(const char* event, const wchar_t* name)
{
    Event& last = events_.emplace_back();
    last.event = event;
    if (name != nullptr)
        last.name = name;
}

Json eventsAsJson(const std::vector<Event>& events)
{
    Json array = Json::array();
    for (const Event& event : events)
        array.push_back({{"event", event.event}, {"name", jsonText(event.name)}});
    return array;
}

std::string eventAsLine(const Event& event)
{
    if (!event.name)
        return fmt::format("{} null", event.event);
    return fmt::format("{} {}", event.event, event.name->empty() ? "\"\"" : oneLine(*event.name));
}

} // namespace Orvelcs
