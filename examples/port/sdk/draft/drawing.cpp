#include "drawing.h"

#include "../core/trial.h"

#include <algorithm>

namespace Draft {

std::optional<Link> findEntry(const Record& record, const Text& name)
{
    const auto entry = std::find_if(record.entries.begin(), record.entries.end(),
                                    [&name](const auto& each) { return each.first == name; });
    return entry == record.entries.end() ? std::nullopt : std::optional(entry->second);
}

Drawing::Drawing(std::uint32_t number) : m_number(number), m_records(std::make_shared<const Records>())
{
    for (const Kind kind : {Kind::folder, Kind::applicationTable, Kind::block}) {
        Record record;
        record.kind = kind;
        add(std::move(record));
    }
}

Link Drawing::place() const
{
    for (const auto& [number, record] : *m_records) {
        if (record->kind == Kind::place && !record->erased)
            return {m_number, number};
    }
    return {};
}

std::shared_ptr<const Record> Drawing::look(Link link) const
{
    const auto found = m_records->find(link.drawing == m_number ? link.record : 0);
    return found == m_records->end() ? nullptr : found->second;
}

void Drawing::put(Link link, Record record)
{
    auto changed = std::make_shared<Records>(*m_records);
    (*changed)[link.record] = std::make_shared<const Record>(std::move(record));
    m_records = std::move(changed);
}

Link Drawing::add(Record record)
{
    // A number is never given again, so that a link to a record that was undone leads nowhere.
    const Link link{m_number, ++m_lastRecord};
    put(link, std::move(record));
    return link;
}

Outcome Drawing::hold(Link link, Purpose purpose)
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    if (link == Link{})
        return Outcome::emptyLink;
    const auto record = look(link);
    if (!record)
        return Outcome::noRecord;
    if (record->erased)
        return Outcome::erased;
    const auto present = m_holds.find(link.record);
    if (present != m_holds.end() &&
        (present->second.writer || (purpose == Purpose::writing && present->second.readers)))
        return Outcome::busy;
    Hold& hold = m_holds[link.record];
    hold.readers += purpose == Purpose::reading ? 1u : 0u;
    hold.writer = purpose == Purpose::writing;
    hold.noticed = hold.noticed || purpose == Purpose::notice;
    return Outcome::done;
}

Outcome Drawing::holdForWriting(Link link)
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    const auto present = m_holds.find(link.record);
    if (present == m_holds.end() || present->second.readers != 1)
        return Outcome::busy;
    present->second = {.readers = 0, .writer = true, .noticed = present->second.noticed};
    return Outcome::done;
}

void Drawing::letGo(Link link, Purpose purpose)
{
    const auto present = m_holds.find(link.record);
    if (present == m_holds.end())
        return;
    Hold& hold = present->second;
    if (purpose == Purpose::reading && hold.readers > 0)
        --hold.readers;
    hold.writer = hold.writer && purpose != Purpose::writing;
    hold.noticed = hold.noticed && purpose != Purpose::notice;
    if (hold.readers == 0 && !hold.writer && !hold.noticed)
        m_holds.erase(present);
}

bool Drawing::isHeldForWriting(Link link) const
{
    const auto present = m_holds.find(link.record);
    return present != m_holds.end() && present->second.writer;
}

Outcome Drawing::change(Link link, Record changed)
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    if (!isHeldForWriting(link) || !look(link))
        return Outcome::notForWriting;
    put(link, std::move(changed));
    return Outcome::done;
}

Outcome Drawing::addToFolder(Link folder, const Text& name, Record record, Link& added)
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    const auto present = look(folder);
    if (!present || !isHeldForWriting(folder))
        return Outcome::notForWriting;
    if (name.empty())
        return Outcome::badArgument;
    Record changed = *present;
    if (const auto old = findEntry(changed, name)) {
        Record replaced = *look(*old);
        replaced.erased = true;
        put(*old, std::move(replaced));
        std::erase_if(changed.entries, [&name](const auto& entry) { return entry.first == name; });
    }
    record.owner = folder;
    added = add(std::move(record));
    changed.entries.emplace_back(name, added);
    put(folder, std::move(changed));
    m_holds[added.record].writer = true;
    return Outcome::done;
}

Outcome Drawing::addApplication(Record record, Link& added)
{
    if (hasApplication(record.text))
        return Outcome::badArgument;
    const Text name = record.text;
    return addToFolder(applications(), name, std::move(record), added);
}

Outcome Drawing::addPlace(Link block, Record record, Link& added)
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    const auto owner = look(block);
    if (!owner || owner->kind != Kind::block || place() != Link{})
        return Outcome::badArgument;
    record.owner = block;
    added = add(std::move(record));
    m_holds[added.record].writer = true;
    return Outcome::done;
}

Outcome Drawing::takeOut(Link folder, const Text& name, Link& taken)
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    const auto present = look(folder);
    if (!present || !isHeldForWriting(folder))
        return Outcome::notForWriting;
    const auto found = findEntry(*present, name);
    if (!found)
        return Outcome::unknownName;
    Record changed = *present;
    std::erase_if(changed.entries, [&name](const auto& entry) { return entry.first == name; });
    put(folder, std::move(changed));
    Record orphan = *look(*found);
    orphan.owner = {};
    put(*found, std::move(orphan));
    taken = *found;
    return Outcome::done;
}

bool Drawing::hasApplication(const Text& name) const
{
    return findEntry(*look(applications()), name).has_value();
}

Outcome Drawing::extend(Link link, const Text& application, Values values)
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    const auto present = look(link);
    if (!present || !isHeldForWriting(link))
        return Outcome::notForWriting;
    if (!hasApplication(application))
        return Outcome::unregisteredApplication;
    Record changed = *present;
    std::erase_if(changed.extension, [&application](const auto& each) { return each.first == application; });
    if (!values.empty())
        changed.extension.emplace_back(application, std::move(values));
    put(link, std::move(changed));
    return Outcome::done;
}

Outcome Drawing::beginStep()
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    m_steps.push_back(m_records);
    return Outcome::done;
}

Outcome Drawing::keepStep()
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    if (m_steps.empty())
        return Outcome::noStep;
    m_steps.pop_back();
    return Outcome::done;
}

Outcome Drawing::undoStep()
{
    if (m_steps.empty())
        return Outcome::noStep;
    m_records = m_steps.back();
    m_steps.pop_back();
    return Outcome::done;
}

} // namespace Draft
