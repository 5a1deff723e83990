#pragma once

#include "values.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace Draft {

/// What a record is held for.
enum class Purpose : std::uint8_t { reading, writing, notice };

/// A drawing: immutable records by number. A change puts a changed copy of a record into the drawing, so that a step
/// can be undone by going back to the records that there were.
class Drawing {
public:
    explicit Drawing(std::uint32_t number);
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    std::uint32_t number() const { return m_number; }
    Link root() const { return {m_number, 1}; }
    Link applications() const { return {m_number, 2}; }
    Link modelSpace() const { return {m_number, 3}; }
    /// The place of the drawing on the Earth, or an empty link.
    Link place() const;

    /// A record as it is now, or null. It stays as it is, whatever becomes of the drawing.
    std::shared_ptr<const Record> look(Link link) const;

    /// Many may hold a record for reading, or one for writing.
    Outcome hold(Link link, Purpose purpose);
    Outcome holdForWriting(Link link); ///< by the one that holds it for reading
    void letGo(Link link, Purpose purpose);
    /// Puts a changed record in the place of one that is held for writing.
    Outcome change(Link link, Record changed);

    /// Adds a new record below its owner and holds it for writing. What a folder has under the name is erased.
    Outcome addToFolder(Link folder, const Text& name, Record record, Link& added);
    Outcome addApplication(Record record, Link& added);
    Outcome addPlace(Link block, Record record, Link& added);
    /// Takes an entry out of a folder; the record stays in the drawing, without an owner.
    Outcome takeOut(Link folder, const Text& name, Link& taken);
    bool hasApplication(const Text& name) const;
    /// Replaces what the application has added to the record; no values remove it.
    Outcome extend(Link link, const Text& application, Values values);

    /// Steps nest. Undoing one takes back what has changed since it began.
    Outcome beginStep();
    Outcome keepStep();
    Outcome undoStep();
    std::size_t steps() const { return m_steps.size(); }
    std::size_t holds() const { return m_holds.size(); }

    /// What an add-on keeps with the drawing, for as long as the drawing is open.
    std::shared_ptr<void>& companion() { return m_companion; }

private:
    using Records = std::map<std::uint32_t, std::shared_ptr<const Record>>;
    struct Hold {
        unsigned readers = 0;
        bool writer = false;
        bool noticed = false;
    };

    Link add(Record record);
    void put(Link link, Record record);
    bool isHeldForWriting(Link link) const;

    std::uint32_t m_number;
    std::uint32_t m_lastRecord = 0;
    std::shared_ptr<const Records> m_records;
    std::vector<std::shared_ptr<const Records>> m_steps;
    std::map<std::uint32_t, Hold> m_holds;
    std::shared_ptr<void> m_companion;
};

/// The link that a folder or the table has under the name.
std::optional<Link> findEntry(const Record& record, const Text& name);

} // namespace Draft
