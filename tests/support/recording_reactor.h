// A reactor that records its notices and answers and acts as the test says.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"

namespace Tests {

enum class Event { asked, changed, vetoed, transformationChanged };

/// One call of a reactor. A missing name is a null pointer, which is not the empty text.
struct Notice {
    Event event = Event::asked;
    std::optional<std::wstring> name;
    std::string reactor = "A";
    friend bool operator==(const Notice&, const Notice&) = default;
};
using Notices = std::vector<Notice>;

inline std::ostream& operator<<(std::ostream& out, const Notice& notice)
{
    const char* const events[] = {"asked", "changed", "vetoed", "transformationChanged"};
    out << notice.reactor << ' ' << events[static_cast<int>(notice.event)] << ' ';
    if (notice.name)
        return out << '"' << Embedded::utf8FromWide(*notice.name) << '"';
    return out << "null";
}

/// Several reactors may share a log, which then shows the order of their calls.
class RecordingReactor : public Zentara::Gis::Orvel::CoordinateSystem::OrvelCoordinateSystemReactor {
public:
    explicit RecordingReactor(Notices& log, std::string name = "A") : log_(&log), name_(std::move(name)) {}
    RecordingReactor(const RecordingReactor&) = delete;
    RecordingReactor& operator=(const RecordingReactor&) = delete;
    ~RecordingReactor() override { static_cast<void>(remove()); } // the test may have removed it already

    Qeapp::ErrorStatus add() { return Zentara::Gis::Orvel::CoordinateSystem::AddCoordinateSystemReactor(this); }
    Qeapp::ErrorStatus remove() { return Zentara::Gis::Orvel::CoordinateSystem::RemoveCoordinateSystemReactor(this); }

    /// Answers a question. Without it the answer is yes.
    std::function<bool(const Notice&)> answer;
    /// Runs after a notice is recorded.
    std::function<void(const Notice&)> action;
    /// The drawing of each notice that has one, in order.
    std::vector<QeDbDatabase*> databases;

    bool CoordinateSystemWillChange(QeDbDatabase* db, const wchar_t* const name) override
    {
        const Notice notice = record(Event::asked, db, name);
        return !answer || answer(notice);
    }
    void CoordinateSystemChanged(QeDbDatabase* db, const wchar_t* const name) override
    {
        record(Event::changed, db, name);
    }
    void CoordinateSystemChangeVetoed(QeDbDatabase* db, const wchar_t* const name) override
    {
        record(Event::vetoed, db, name);
    }
    void CsTransformationChanged() override { store({Event::transformationChanged, std::nullopt, name_}); }

private:
    Notice record(Event event, QeDbDatabase* db, const wchar_t* name)
    {
        databases.push_back(db);
        return store({event, name != nullptr ? std::optional<std::wstring>(name) : std::nullopt, name_});
    }
    Notice store(Notice notice)
    {
        log_->push_back(notice);
        if (action)
            action(notice);
        return notice;
    }

    Notices* log_;
    std::string name_;
};

/// The notices of a successful assignment to one reactor.
inline Notices assignmentNotices(const std::wstring& name, const std::string& reactor = "A")
{
    return {{Event::asked, name, reactor},
            {Event::asked, std::nullopt, reactor},
            {Event::changed, std::nullopt, reactor},
            {Event::changed, name, reactor}};
}

} // namespace Tests
