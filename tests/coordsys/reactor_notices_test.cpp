#include "coordsys/coordinate_system_reactors.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;

/// Three registered reactors A, B, C and one, D, that is not.
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

    /// The reactors that the event notifies, in order.
    template <class Notify>
    std::string heardOf(const Notify& notify)
    {
        log.clear();
        notify();
        std::string names;
        for (const Notice& notice : log)
            names += notice.reactor;
        return names;
    }
    std::string heardOfQuestion()
    {
        return heardOf([&] { EXPECT_TRUE(Cs::NotifyCoordinateSystemWillChange(database(), kAssignedCode)); });
    }
    std::string heardOfChange()
    {
        return heardOf([&] { Cs::NotifyCoordinateSystemChanged(database(), kAssignedCode); });
    }
    std::string heardOfVeto()
    {
        return heardOf([&] { Cs::NotifyCoordinateSystemChangeVetoed(database(), kAssignedCode); });
    }
    std::string heardOfTransformation()
    {
        return heardOf([] { Cs::NotifyCsTransformationChanged(); });
    }
    bool ask(const wchar_t* name = kAssignedCode) { return Cs::NotifyCoordinateSystemWillChange(database(), name); }
};

Notices toEach(Event event, const std::optional<std::wstring>& name)
{
    return {{event, name, "A"}, {event, name, "B"}, {event, name, "C"}};
}

TEST_F(ReactorNotices, AQuestionGoesToEachReactorWithDrawingAndName)
{
    EXPECT_TRUE(ask());
    EXPECT_EQ(log, toEach(Event::asked, kAssignedCode));
    EXPECT_EQ(third.databases, std::vector<QeDbDatabase*>{database()});
}

TEST_F(ReactorNotices, ANullNameStaysNull)
{
    EXPECT_TRUE(ask(nullptr));
    Cs::NotifyCoordinateSystemChanged(database(), nullptr);
    Notices expected = toEach(Event::asked, std::nullopt);
    for (const Notice& notice : toEach(Event::changed, std::nullopt))
        expected.push_back(notice);
    EXPECT_EQ(log, expected);
}

TEST_F(ReactorNotices, AnEmptyNameStaysEmpty)
{
    EXPECT_TRUE(ask(L""));
    EXPECT_EQ(log, toEach(Event::asked, L""));
}

TEST_F(ReactorNotices, AChangeGoesToEachReactor)
{
    Cs::NotifyCoordinateSystemChanged(database(), kAssignedCode);
    EXPECT_EQ(log, toEach(Event::changed, kAssignedCode));
}

TEST_F(ReactorNotices, AVetoGoesToEachReactor)
{
    Cs::NotifyCoordinateSystemChangeVetoed(database(), kAssignedCode);
    EXPECT_EQ(log, toEach(Event::vetoed, kAssignedCode));
}

TEST_F(ReactorNotices, AChangeOfTheTransformationsGoesToEachReactor)
{
    Cs::NotifyCsTransformationChanged();
    EXPECT_EQ(log, toEach(Event::transformationChanged, std::nullopt));
}

TEST_F(ReactorNotices, WhenTheSecondVetoesTheThirdIsNotAskedAndAllHearOfIt)
{
    second.answer = [](const Notice&) { return false; };
    EXPECT_FALSE(ask());
    EXPECT_EQ(log, Notices({{Event::asked, kAssignedCode, "A"},
                            {Event::asked, kAssignedCode, "B"},
                            {Event::vetoed, kAssignedCode, "A"},
                            {Event::vetoed, kAssignedCode, "B"},
                            {Event::vetoed, kAssignedCode, "C"}}));
}

TEST_F(ReactorNotices, WhenTheLastVetoesAllWereAsked)
{
    third.answer = [](const Notice&) { return false; };
    EXPECT_FALSE(ask());
    Notices expected = toEach(Event::asked, kAssignedCode);
    for (const Notice& notice : toEach(Event::vetoed, kAssignedCode))
        expected.push_back(notice);
    EXPECT_EQ(log, expected);
}

TEST_F(ReactorNotices, AVetoOfANullNameIsToldWithANullName)
{
    first.answer = [](const Notice&) { return false; };
    EXPECT_FALSE(ask(nullptr));
    EXPECT_EQ(log, Notices({{Event::asked, std::nullopt, "A"},
                            {Event::vetoed, std::nullopt, "A"},
                            {Event::vetoed, std::nullopt, "B"},
                            {Event::vetoed, std::nullopt, "C"}}));
}

TEST_F(ReactorNotices, AReactorAddedDuringAVetoedQuestionHearsOfTheVeto)
{
    second.answer = [&](const Notice&) { return spare.add() != Qeapp::eOk; };
    EXPECT_FALSE(ask());
    EXPECT_EQ(log.back(), (Notice{Event::vetoed, kAssignedCode, "D"}));
}

TEST_F(ReactorNotices, AReactorRemovedDuringAVetoedQuestionDoesNotHearOfTheVeto)
{
    second.answer = [&](const Notice&) { return first.remove() != Qeapp::eOk; };
    EXPECT_FALSE(ask());
    EXPECT_EQ(log, Notices({{Event::asked, kAssignedCode, "A"},
                            {Event::asked, kAssignedCode, "B"},
                            {Event::vetoed, kAssignedCode, "B"},
                            {Event::vetoed, kAssignedCode, "C"}}));
}

TEST_F(ReactorNotices, AReactorThatAddsAnotherDuringAQuestion_AddsItForTheNextEvent)
{
    first.action = [&](const Notice&) { static_cast<void>(spare.add()); }; // refused the second time
    EXPECT_EQ(heardOfQuestion(), "ABC");
    EXPECT_EQ(heardOfQuestion(), "ABCD");
}

TEST_F(ReactorNotices, AReactorThatAddsAnotherDuringAChange_AddsItForTheNextEvent)
{
    first.action = [&](const Notice&) { static_cast<void>(spare.add()); }; // refused the second time
    EXPECT_EQ(heardOfChange(), "ABC");
    EXPECT_EQ(heardOfChange(), "ABCD");
}

TEST_F(ReactorNotices, AReactorThatAddsAnotherDuringAVeto_AddsItForTheNextEvent)
{
    first.action = [&](const Notice&) { static_cast<void>(spare.add()); }; // refused the second time
    EXPECT_EQ(heardOfVeto(), "ABC");
    EXPECT_EQ(heardOfVeto(), "ABCD");
}

TEST_F(ReactorNotices, AReactorThatAddsAnotherDuringAChangeOfTheTransformations_AddsItForTheNextEvent)
{
    first.action = [&](const Notice&) { static_cast<void>(spare.add()); }; // refused the second time
    EXPECT_EQ(heardOfTransformation(), "ABC");
    EXPECT_EQ(heardOfTransformation(), "ABCD");
}

TEST_F(ReactorNotices, AReactorThatRemovesALaterOneDuringAQuestion_RemovesItFromTheNextEvent)
{
    first.action = [&](const Notice&) { static_cast<void>(third.remove()); }; // refused the second time
    EXPECT_EQ(heardOfQuestion(), "ABC");
    EXPECT_EQ(heardOfQuestion(), "AB");
}

TEST_F(ReactorNotices, AReactorThatRemovesALaterOneDuringAChange_RemovesItFromTheNextEvent)
{
    first.action = [&](const Notice&) { static_cast<void>(third.remove()); }; // refused the second time
    EXPECT_EQ(heardOfChange(), "ABC");
    EXPECT_EQ(heardOfChange(), "AB");
}

TEST_F(ReactorNotices, AReactorThatRemovesALaterOneDuringAVeto_RemovesItFromTheNextEvent)
{
    first.action = [&](const Notice&) { static_cast<void>(third.remove()); }; // refused the second time
    EXPECT_EQ(heardOfVeto(), "ABC");
    EXPECT_EQ(heardOfVeto(), "AB");
}

TEST_F(ReactorNotices, AReactorThatRemovesALaterOneDuringAChangeOfTheTransformations_RemovesItFromTheNextEvent)
{
    first.action = [&](const Notice&) { static_cast<void>(third.remove()); }; // refused the second time
    EXPECT_EQ(heardOfTransformation(), "ABC");
    EXPECT_EQ(heardOfTransformation(), "AB");
}

TEST_F(ReactorNotices, AReactorThatRemovesItself_SkipsNoOther)
{
    second.action = [&](const Notice&) { static_cast<void>(second.remove()); }; // refused the second time
    EXPECT_EQ(heardOfQuestion(), "ABC");
    EXPECT_EQ(heardOfChange(), "AC");
}

TEST_F(ReactorNotices, ReactorsThatAllRemoveThemselves_AreEachCalledOnce)
{
    for (RecordingReactor* const each : {&first, &second, &third})
        each->action = [each](const Notice&) { static_cast<void>(each->remove()); }; // refused the second time
    EXPECT_EQ(heardOfChange(), "ABC");
    EXPECT_EQ(heardOfChange(), "");
}

TEST_F(ReactorNotices, AnAssignmentTakesAReactorUpFromItsNextNotice)
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
