#pragma once

#include "drawing.h"

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>

namespace Draft {

/// What went wrong while a drawing was prepared for a save.
struct SaveLog {
    std::vector<std::pair<Outcome, Text>> entries;
};

/// Is told before a drawing is written in another edition of the format.
using BeforeSave = std::function<Outcome(Drawing&, int edition, SaveLog&)>;

/// The open drawings, and what the user does with them. There is one in a process.
class Session {
public:
    static Session& get();

    Drawing& open();
    void close(Drawing& drawing);
    Drawing* find(std::uint32_t number) const;

    /// The drawing in front of the user, or null; commands act on it.
    Drawing* current() const { return m_current; }
    void setCurrent(Drawing* drawing) { m_current = drawing; }

    /// Keeps other commands from writing to the drawing, until as many releases.
    Outcome claim(const Drawing& drawing);
    Outcome release(const Drawing& drawing);
    std::size_t claims() const { return m_claims.size(); }

    using Subscription = std::uint32_t;
    Subscription subscribe(BeforeSave listener);
    void unsubscribe(Subscription subscription);
    /// Tells every listener, in one step that is undone when a listener answers or logs a failure.
    Outcome prepareSave(Drawing& drawing, int edition, SaveLog& log);

    /// Where the user's settings of the product are, below the user's part of the registry.
    static const char* settingsKey() { return "Software\\Imaginary\\Draft\\1"; }

private:
    Session() = default;

    std::map<std::uint32_t, std::unique_ptr<Drawing>> m_drawings;
    std::uint32_t m_lastDrawing = 0;
    Drawing* m_current = nullptr;
    std::map<std::uint32_t, unsigned> m_claims;
    std::list<std::pair<Subscription, BeforeSave>> m_listeners;
    Subscription m_lastSubscription = 0;
};

} // namespace Draft
