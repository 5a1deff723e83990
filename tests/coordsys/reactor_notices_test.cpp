#include <functional>

#include "coordsys/coordinate_system_reactors.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;

/// Has three registered reactors A, B and C, and D, which is not registered.
class ReactorNotices : public CoordsysTest {
protected:
    RecordingReactor& first = reactor;
    RecordingReactor second{log, "B"};
    RecordingReactor third{log, "C"};
    RecordingReactor spare{log, "D"};

    void SetUp() override
    {
        ASSERT_EQ(first.add(), Qeapp::eOk);
        ASSERT_EQ(second.add(), Qeapp::eOk);
        ASSERT_EQ(third.add(), Qeapp::eOk);
    }

    /// Sends an event. Returns the names of the reactors that it reaches, in order.
    std::string notifyReactors(const std::function<void()>& send)
    {
        log.clear();
        send();
        std::string names;
        for (const Notice& notice : log)
            names += notice.reactor;
        return names;
    }
    const std::function<void()> sendQuestion = [this] { EXPECT_TRUE(ask()); };
    const std::function<void()> sendChange = [this] { Cs::NotifyCoordinateSystemChanged(database(), kAssignedCode); };
    const std::function<void()> sendVeto = [this] {
        Cs::NotifyCoordinateSystemChangeVetoed(database(), kAssignedCode);
    };
    const std::function<void()> sendTransformationChange = [] { Cs::NotifyCsTransformationChanged(); };
    const std::vector<std::function<void()>> events{sendQuestion, sendChange, sendVeto, sendTransformationChange};

    bool ask(const wchar_t* name = kAssignedCode) { return Cs::NotifyCoordinateSystemWillChange(database(), name); }
};

Notices noticesToAll(Event event, const std::optional<std::wstring>& name)
{
    return {{event, name, "A"}, {event, name, "B"}, {event, name, "C"}};
}

TEST_F(ReactorNotices, Question_ReachesEveryReactorWithDrawingAndName)
{
    EXPECT_TRUE(ask());
    EXPECT_EQ(log, noticesToAll(Event::asked, kAssignedCode));
    EXPECT_EQ(third.databases, std::vector<QeDbDatabase*>{database()});
}

TEST_F(ReactorNotices, NullName_IsPassedAsNull)
{
    EXPECT_TRUE(ask(nullptr));
    Cs::NotifyCoordinateSystemChanged(database(), nullptr);
    Notices expected = noticesToAll(Event::asked, std::nullopt);
    for (const Notice& notice : noticesToAll(Event::changed, std::nullopt))
        expected.push_back(notice);
    EXPECT_EQ(log, expected);
}

TEST_F(ReactorNotices, EmptyName_IsPassedAsEmpty)
{
    EXPECT_TRUE(ask(L""));
    EXPECT_EQ(log, noticesToAll(Event::asked, L""));
}

TEST_F(ReactorNotices, Change_ReachesEveryReactor)
{
    Cs::NotifyCoordinateSystemChanged(database(), kAssignedCode);
    EXPECT_EQ(log, noticesToAll(Event::changed, kAssignedCode));
}

TEST_F(ReactorNotices, Veto_ReachesEveryReactor)
{
    Cs::NotifyCoordinateSystemChangeVetoed(database(), kAssignedCode);
    EXPECT_EQ(log, noticesToAll(Event::vetoed, kAssignedCode));
}

TEST_F(ReactorNotices, TransformationChange_ReachesEveryReactor)
{
    Cs::NotifyCsTransformationChanged();
    EXPECT_EQ(log, noticesToAll(Event::transformationChanged, std::nullopt));
}

TEST_F(ReactorNotices, VetoOfTheSecondReactor_SkipsTheThirdQuestionAndNotifiesAll)
{
    second.answer = [](const Notice&) { return false; };
    EXPECT_FALSE(ask());
    EXPECT_EQ(log, Notices({{Event::asked, kAssignedCode, "A"},
                            {Event::asked, kAssignedCode, "B"},
                            {Event::vetoed, kAssignedCode, "A"},
                            {Event::vetoed, kAssignedCode, "B"},
                            {Event::vetoed, kAssignedCode, "C"}}));
}

TEST_F(ReactorNotices, VetoOfTheLastReactor_ComesAfterAllQuestions)
{
    third.answer = [](const Notice&) { return false; };
    EXPECT_FALSE(ask());
    Notices expected = noticesToAll(Event::asked, kAssignedCode);
    for (const Notice& notice : noticesToAll(Event::vetoed, kAssignedCode))
        expected.push_back(notice);
    EXPECT_EQ(log, expected);
}

TEST_F(ReactorNotices, VetoOfANullName_IsNotifiedWithANullName)
{
    first.answer = [](const Notice&) { return false; };
    EXPECT_FALSE(ask(nullptr));
    EXPECT_EQ(log, Notices({{Event::asked, std::nullopt, "A"},
                            {Event::vetoed, std::nullopt, "A"},
                            {Event::vetoed, std::nullopt, "B"},
                            {Event::vetoed, std::nullopt, "C"}}));
}

TEST_F(ReactorNotices, ReactorAddedDuringAVetoedQuestion_IsNotifiedOfTheVeto)
{
    second.answer = [&](const Notice&) { return spare.add() != Qeapp::eOk; };
    EXPECT_FALSE(ask());
    EXPECT_EQ(log.back(), (Notice{Event::vetoed, kAssignedCode, "D"}));
}

TEST_F(ReactorNotices, ReactorRemovedDuringAVetoedQuestion_IsNotNotifiedOfTheVeto)
{
    second.answer = [&](const Notice&) { return first.remove() != Qeapp::eOk; };
    EXPECT_FALSE(ask());
    EXPECT_EQ(log, Notices({{Event::asked, kAssignedCode, "A"},
                            {Event::asked, kAssignedCode, "B"},
                            {Event::vetoed, kAssignedCode, "B"},
                            {Event::vetoed, kAssignedCode, "C"}}));
}

TEST_F(ReactorNotices, ReactorAddedDuringAnEvent_IsNotifiedFromTheNextEventOn)
{
    first.action = [&](const Notice&) { static_cast<void>(spare.add()); }; // refused the second time
    for (const auto& send : events) {
        EXPECT_EQ(notifyReactors(send), "ABC");
        EXPECT_EQ(notifyReactors(send), "ABCD");
        ASSERT_EQ(spare.remove(), Qeapp::eOk);
    }
}

TEST_F(ReactorNotices, ReactorRemovedDuringAnEvent_IsNotifiedOfThatEventOnly)
{
    first.action = [&](const Notice&) { static_cast<void>(third.remove()); }; // refused the second time
    for (const auto& send : events) {
        EXPECT_EQ(notifyReactors(send), "ABC");
        EXPECT_EQ(notifyReactors(send), "AB");
        ASSERT_EQ(third.add(), Qeapp::eOk);
    }
}

TEST_F(ReactorNotices, ReactorThatRemovesItself_SkipsNoOtherReactor)
{
    second.action = [&](const Notice&) { static_cast<void>(second.remove()); }; // refused the second time
    EXPECT_EQ(notifyReactors(sendQuestion), "ABC");
    EXPECT_EQ(notifyReactors(sendChange), "AC");
}

TEST_F(ReactorNotices, ReactorsThatAllRemoveThemselves_AreEachNotifiedOnce)
{
    for (RecordingReactor* const each : {&first, &second, &third})
        each->action = [each](const Notice&) { static_cast<void>(each->remove()); }; // refused the second time
    EXPECT_EQ(notifyReactors(sendChange), "ABC");
    EXPECT_EQ(notifyReactors(sendChange), "");
}

TEST_F(ReactorNotices, ReactorAddedDuringAnAssignment_IsNotifiedFromTheNextNoticeOn)
{
    first.action = [&](const Notice&) { static_cast<void>(spare.add()); }; // refused the second time
    ASSERT_EQ(second.remove(), Qeapp::eOk);
    ASSERT_EQ(third.remove(), Qeapp::eOk);
    ASSERT_EQ(assign(kAssignedCode), Qeapp::eOk);
    EXPECT_EQ(log, Notices({{Event::asked, kAssignedCode, "A"},
                            {Event::asked, std::nullopt, "A"},
                            {Event::asked, std::nullopt, "D"},
                            {Event::changed, std::nullopt, "A"},
                            {Event::changed, std::nullopt, "D"},
                            {Event::changed, kAssignedCode, "A"},
                            {Event::changed, kAssignedCode, "D"}}));
}

} // namespace
