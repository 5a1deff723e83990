#include "session.h"

#include "../core/trial.h"

namespace Draft {

Session& Session::get()
{
    static Session session;
    return session;
}

Drawing& Session::open()
{
    const std::uint32_t number = ++m_lastDrawing;
    Drawing& drawing = *(m_drawings[number] = std::make_unique<Drawing>(number));
    m_current = &drawing;
    return drawing;
}

void Session::close(Drawing& drawing)
{
    if (m_current == &drawing)
        m_current = nullptr;
    m_claims.erase(drawing.number());
    m_drawings.erase(drawing.number());
}

Drawing* Session::find(std::uint32_t number) const
{
    const auto found = m_drawings.find(number);
    return found == m_drawings.end() ? nullptr : found->second.get();
}

Outcome Session::claim(const Drawing& drawing)
{
    if (Core::failsNow())
        return Outcome::trialFailure;
    ++m_claims[drawing.number()];
    return Outcome::done;
}

Outcome Session::release(const Drawing& drawing)
{
    const auto claim = m_claims.find(drawing.number());
    if (claim == m_claims.end())
        return Outcome::badArgument;
    if (--claim->second == 0)
        m_claims.erase(claim);
    return Outcome::done;
}

Session::Subscription Session::subscribe(BeforeSave listener)
{
    m_listeners.emplace_back(++m_lastSubscription, std::move(listener));
    return m_lastSubscription;
}

void Session::unsubscribe(Subscription subscription)
{
    m_listeners.remove_if([subscription](const auto& listener) { return listener.first == subscription; });
}

Outcome Session::prepareSave(Drawing& drawing, int edition, SaveLog& log)
{
    Outcome result = drawing.beginStep();
    if (result != Outcome::done)
        return result;
    for (const auto& [subscription, listener] : m_listeners) {
        const Outcome answer = listener(drawing, edition, log);
        if (result == Outcome::done)
            result = answer;
    }
    if (result == Outcome::done && !log.entries.empty())
        result = log.entries.front().first;
    if (result == Outcome::done)
        result = drawing.keepStep();
    if (result != Outcome::done)
        drawing.undoStep();
    return result;
}

} // namespace Draft
