#include "storage/definition_group.h"

#include <map>

#include "storage/failing_calls.h"
#include "storage/packed_forms.h"
#include "storage/unusual_definitions.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::ResbufChain;

class DefinitionGroup : public PlatformTest {
protected:
    const EllipsoidHolder ellipsoid = catalogEllipsoid(L"EPSG:7019");

    static Items writeGroup(const Library::DefinitionBase* definition)
    {
        const ResbufChain chain = Orvel::DefinitionToResbufGroup(definition);
        return readChain(chain.get());
    }
    static std::wstring readGroup(const Items& items) { return readGroup(makeChain(items)); }
    static std::wstring readGroup(const ResbufChain& chain)
    {
        const Orvel::LibraryObject<Library::DefinitionBase> definition = Orvel::ResbufGroupToDefinition(chain.get());
        return describe(definition.get());
    }
    static std::wstring readChunk(const ResbufChain& chain)
    {
        const Orvel::LibraryObject<Library::DefinitionBase> definition = Orvel::ResbufChunkToDefinition(chain.get());
        return describe(definition.get());
    }

    /// Makes an ellipsoid whose packed form has exactly that length, by trying names and codes of several lengths.
    static EllipsoidHolder makeEllipsoidPackedInto(std::size_t length)
    {
        for (std::size_t name = 1; name < 400; ++name) {
            for (const wchar_t* const number : {L"1", L"12", L"123", L"1234", L"12345"}) {
                const UserSystem user{.ellipsoid = varied(name),
                                      .ellipsoidIdentifier = std::wstring(L"ID[\"MINE\",\"A") + number + L"\"]"};
                EllipsoidHolder candidate = user.makeEllipsoid();
                if (encoded(candidate.get()).size() == length)
                    return candidate;
            }
        }
        ADD_FAILURE() << "no ellipsoid is packed into " << length << " bytes";
        return {};
    }
    static std::vector<std::size_t> chunkLengths(const Items& items)
    {
        std::vector<std::size_t> lengths;
        for (const Item& item : items) {
            if (item.code == 310)
                lengths.push_back(std::get<Bytes>(item.value).size());
        }
        return lengths;
    }
};

using Lengths = std::vector<std::size_t>;

TEST_F(DefinitionGroup, HoldsThePackedBytesInChunksBetweenBraces)
{
    const auto system = catalogSystem(L"EPSG:25832");
    EXPECT_EQ(writeGroup(system.get()), makeGroup(encoded(system.get())));
}

TEST_F(DefinitionGroup, PackedFormIsSplitIntoChunksOf127Bytes)
{
    const std::map<std::size_t, Lengths> chunks{
        {126, {126}}, {127, {127}}, {128, {127, 1}}, {254, {127, 127}}, {255, {127, 127, 1}}};
    for (const auto& [length, expected] : chunks)
        EXPECT_EQ(chunkLengths(writeGroup(makeEllipsoidPackedInto(length).get())), expected);
}

TEST_F(DefinitionGroup, DefinitionOfAnyLengthIsSplitIntoChunks)
{
    for (std::size_t name = 1; name < 300; name += 7) {
        const auto system = UserSystem{.name = varied(name)}.makeSystem();
        EXPECT_EQ(writeGroup(system.get()), makeGroup(encoded(system.get()))) << "name of " << name << " characters";
    }
}

TEST_F(DefinitionGroup, NullGivesNoGroup)
{
    EXPECT_FALSE(Orvel::DefinitionToResbufGroup(nullptr));
}

TEST_F(DefinitionGroup, DefinitionThatCannotBePackedGivesNoGroup)
{
    EXPECT_FALSE(Orvel::DefinitionToResbufGroup(otherDefinition().get()));
    EXPECT_FALSE(Orvel::DefinitionToResbufGroup(UserSystem{.name = varied(3000)}.makeSystem().get()));
}

TEST_F(DefinitionGroup, EveryFailingCallGivesNoGroupAndLeaksNothing)
{
    const auto system = catalogSystem(L"EPSG:25832");
    const auto calls = recordFallibleCalls([&] { EXPECT_NE(writeGroup(system.get()), Items()); });
    EXPECT_GE(calls.size(), 4U + 2 * makeGroup(system.get()).size()) << "each resbuf and each value is an allocation";
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(Orvel::DefinitionToResbufGroup(system.get())) << call;
        EXPECT_EQ(Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now()), "") << call;
    }
}

TEST_F(DefinitionGroup, WrittenGroupIsReadBack)
{
    EXPECT_EQ(readGroup(makeGroup(ellipsoid.get())), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readGroup(makeGroup(catalogSystem(L"EPSG:25832").get())), L"system EPSG:25832");
}

TEST_F(DefinitionGroup, ChunksOfAnyLengthAreRead)
{
    const Bytes bytes = encoded(ellipsoid.get());
    Items items{{1002, L"{"}};
    for (const unsigned char byte : bytes)
        items.push_back({310, Bytes{byte}});
    EXPECT_EQ(readGroup(items), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readGroup({{1002, L"{"}, {310, bytes}}), L"ellipsoid EPSG:7019");
}

TEST_F(DefinitionGroup, TextOfTheOpeningBraceIsIgnored)
{
    Items items = makeGroup(ellipsoid.get());
    for (const wchar_t* const text : {L"}", L"", L"anything"}) {
        items.front().value = std::wstring(text);
        EXPECT_EQ(readGroup(items), L"ellipsoid EPSG:7019");
    }
}

TEST_F(DefinitionGroup, OpeningBraceWithoutTextIsAccepted)
{
    const ResbufChain chain = makeChain(makeGroup(ellipsoid.get()));
    qeapp_free(std::exchange(chain->resval.rstring, nullptr));
    EXPECT_EQ(readGroup(chain), L"ellipsoid EPSG:7019");
}

TEST_F(DefinitionGroup, GroupThatBeginsWithAnotherCodeGivesNoDefinition)
{
    const std::vector<Item> openers{{1000, L"{"}, {1001, L"{"}, {300, L"{"}, {1004, Bytes{1}}, {1040, 1.0}, {1071, 1}};
    for (const Item& opener : openers) {
        Items items = makeGroup(ellipsoid.get());
        items.front() = opener;
        EXPECT_EQ(readGroup(items), L"none") << opener;
    }
    EXPECT_EQ(readGroup(makeChunk(ellipsoid.get())), L"none");
}

TEST_F(DefinitionGroup, NullChainGivesNoDefinition)
{
    EXPECT_FALSE(Orvel::ResbufGroupToDefinition(nullptr));
}

TEST_F(DefinitionGroup, GroupWithoutChunksGivesNoDefinition)
{
    EXPECT_EQ(readGroup(Items{{1002, L"{"}, {1002, L"}"}}), L"none");
    EXPECT_EQ(readGroup(Items{{1002, L"{"}}), L"none");
}

TEST_F(DefinitionGroup, FirstItemWithAnotherCodeEndsTheGroup)
{
    const Items whole = makeGroup(ellipsoid.get());
    const Items body(whole.begin(), whole.end() - 1);
    EXPECT_EQ(readGroup(body), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readGroup(joinedItems({body, {{1000, L"x"}, {310, Bytes{1, 2, 3}}}})), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readGroup(joinedItems({body, {{1004, Bytes{1, 2, 3}}}})), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readGroup(joinedItems({{{1002, L"{"}, {300, L"x"}}, makeChunk(ellipsoid.get())})), L"none");
}

TEST_F(DefinitionGroup, EmptyChunkMakesTheGroupUnreadable)
{
    const Items whole = makeGroup(ellipsoid.get());
    for (std::size_t at = 1; at < whole.size(); ++at) {
        Items items = whole;
        items.insert(items.begin() + static_cast<std::ptrdiff_t>(at), Item{310, Bytes()});
        EXPECT_EQ(readGroup(items), L"none") << "before item " << at;
    }
}

TEST_F(DefinitionGroup, ChunkWithALengthBelowOneMakesTheGroupUnreadable)
{
    const ResbufChain chain = makeChain(joinedItems({{{1002, L"{"}}, makeChunk(ellipsoid.get()), {{310, Bytes{7}}}}));
    for (const short length : {short{0}, short{-1}}) {
        chain->rbnext->rbnext->resval.rbinary.clen = length;
        EXPECT_EQ(readGroup(chain), L"none") << length;
    }
}

TEST_F(DefinitionGroup, ChunkWithoutDataMakesTheGroupUnreadable)
{
    const ResbufChain chain = makeChain(joinedItems({{{1002, L"{"}}, makeChunk(ellipsoid.get()), {{310, Bytes()}}}));
    chain->rbnext->rbnext->resval.rbinary.clen = 5;
    EXPECT_EQ(readGroup(chain), L"none");
}

TEST_F(DefinitionGroup, StandaloneChunkHoldsADefinition)
{
    EXPECT_EQ(readChunk(makeChain(makeChunk(ellipsoid.get()))), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readChunk(makeChain(makeChunk(catalogSystem(L"EPSG:25832").get()))), L"system EPSG:25832");
}

TEST_F(DefinitionGroup, StandaloneChunkDoesNotContinueInTheNext)
{
    const Bytes bytes = encoded(ellipsoid.get());
    const auto middle = bytes.begin() + 20;
    EXPECT_EQ(readChunk(makeChain({{310, Bytes(bytes.begin(), middle)}, {310, Bytes(middle, bytes.end())}})), L"none");
}

TEST_F(DefinitionGroup, StandaloneChunkWithAnotherCodeGivesNoDefinition)
{
    EXPECT_FALSE(Orvel::ResbufChunkToDefinition(nullptr));
    EXPECT_EQ(readChunk(makeChain({{1004, encoded(ellipsoid.get())}})), L"none");
    EXPECT_EQ(readChunk(makeChain({{311, encoded(ellipsoid.get())}})), L"none");
    EXPECT_EQ(readChunk(makeChain({{1002, L"{"}})), L"none");
}

TEST_F(DefinitionGroup, StandaloneChunkWithALowerCodeGivesNoDefinition)
{
    const ResbufChain chain = makeChain(makeChunk(ellipsoid.get()));
    chain->restype = 309;
    EXPECT_EQ(readChunk(chain), L"none");
    chain->restype = 310; // the host releases the bytes under this code
}

TEST_F(DefinitionGroup, StandaloneChunkWithoutBytesGivesNoDefinition)
{
    const ResbufChain empty = makeChain({{310, Bytes()}});
    EXPECT_EQ(readChunk(empty), L"none");
    empty->resval.rbinary.clen = 5;
    EXPECT_EQ(readChunk(empty), L"none");
    const ResbufChain negative = makeChain(makeChunk(ellipsoid.get()));
    negative->resval.rbinary.clen = -1;
    EXPECT_EQ(readChunk(negative), L"none");
}

TEST_F(DefinitionGroup, StandaloneChunkOfOneByteGivesNoDefinition)
{
    EXPECT_EQ(readChunk(makeChain({{310, Bytes{1}}})), L"none");
}

} // namespace
} // namespace Tests
