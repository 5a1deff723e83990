#include "storage/definition_group.h"

#include <optional>

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

    static Items writtenAs(const Library::DefinitionBase* definition)
    {
        const ResbufChain chain = Orvel::DefinitionToResbufGroup(definition);
        return readChain(chain.get());
    }
    static std::wstring readFrom(const Items& items) { return readFrom(makeChain(items)); }
    static std::wstring readFrom(const ResbufChain& chain)
    {
        const Orvel::LibraryObject<Library::DefinitionBase> definition = Orvel::ResbufGroupToDefinition(chain.get());
        return describe(definition.get());
    }
    static std::wstring readFromChunk(const ResbufChain& chain)
    {
        const Orvel::LibraryObject<Library::DefinitionBase> definition = Orvel::ResbufChunkToDefinition(chain.get());
        return describe(definition.get());
    }

    /// An ellipsoid whose packed form has exactly that length. It tries names and codes of several lengths.
    static EllipsoidHolder ellipsoidPackedInto(std::size_t length)
    {
        for (std::size_t name = 1; name < 400; ++name) {
            for (const wchar_t* const number : {L"1", L"12", L"123", L"1234", L"12345"}) {
                const UserSystem user{.ellipsoid = varied(name),
                                      .ellipsoidIdentifier = std::wstring(L"ID[\"MINE\",\"A") + number + L"\"]"};
                EllipsoidHolder candidate = user.ellipsoidOfSystem();
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
    EXPECT_EQ(writtenAs(system.get()), groupOf(encoded(system.get())));
}

TEST_F(DefinitionGroup, BeginsAndEndsWithAControlString)
{
    const Items items = writtenAs(ellipsoid.get());
    EXPECT_EQ(items.front(), (Item{1002, L"{"}));
    EXPECT_EQ(items.back(), (Item{1002, L"}"}));
}

TEST_F(DefinitionGroup, PackedBytesOf126AreOneChunk)
{
    EXPECT_EQ(chunkLengths(writtenAs(ellipsoidPackedInto(126).get())), (Lengths{126}));
}

TEST_F(DefinitionGroup, PackedBytesOf127AreOneChunk)
{
    EXPECT_EQ(chunkLengths(writtenAs(ellipsoidPackedInto(127).get())), (Lengths{127}));
}

TEST_F(DefinitionGroup, PackedBytesOf128AreAWholeChunkAndOneByte)
{
    EXPECT_EQ(chunkLengths(writtenAs(ellipsoidPackedInto(128).get())), (Lengths{127, 1}));
}

TEST_F(DefinitionGroup, PackedBytesOf254AreTwoWholeChunks)
{
    EXPECT_EQ(chunkLengths(writtenAs(ellipsoidPackedInto(254).get())), (Lengths{127, 127}));
}

TEST_F(DefinitionGroup, PackedBytesOf255AreTwoWholeChunksAndOneByte)
{
    EXPECT_EQ(chunkLengths(writtenAs(ellipsoidPackedInto(255).get())), (Lengths{127, 127, 1}));
}

TEST_F(DefinitionGroup, DefinitionsOfEveryLengthAreChunkedAlike)
{
    for (std::size_t name = 1; name < 300; name += 7) {
        const auto system = UserSystem{.name = varied(name)}.system();
        EXPECT_EQ(writtenAs(system.get()), groupOf(encoded(system.get()))) << "name of " << name << " characters";
    }
}

TEST_F(DefinitionGroup, NullGivesNoGroup)
{
    EXPECT_FALSE(Orvel::DefinitionToResbufGroup(nullptr));
}

TEST_F(DefinitionGroup, DefinitionThatCannotBePackedGivesNoGroup)
{
    EXPECT_FALSE(Orvel::DefinitionToResbufGroup(otherDefinition().get()));
    EXPECT_FALSE(Orvel::DefinitionToResbufGroup(UserSystem{.name = varied(3000)}.system().get()));
}

TEST_F(DefinitionGroup, EveryFailingCallGivesNoGroupAndLeavesNothing)
{
    const auto system = catalogSystem(L"EPSG:25832");
    const auto calls = fallibleCallsOf([&] { EXPECT_NE(writtenAs(system.get()), Items()); });
    EXPECT_GE(calls.size(), 4U + 2 * groupOf(system.get()).size()) << "each resbuf and each value is an allocation";
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(Orvel::DefinitionToResbufGroup(system.get())) << call;
        EXPECT_EQ(Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now()), "") << call;
    }
}

TEST_F(DefinitionGroup, IsReadBack)
{
    EXPECT_EQ(readFrom(groupOf(ellipsoid.get())), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readFrom(groupOf(catalogSystem(L"EPSG:25832").get())), L"system EPSG:25832");
}

TEST_F(DefinitionGroup, ChunksOfOtherLengthsAreReadToo)
{
    const Bytes bytes = encoded(ellipsoid.get());
    Items items{{1002, L"{"}};
    for (const unsigned char byte : bytes)
        items.push_back({310, Bytes{byte}});
    EXPECT_EQ(readFrom(items), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readFrom({{1002, L"{"}, {310, bytes}}), L"ellipsoid EPSG:7019");
}

TEST_F(DefinitionGroup, TextOfTheOpeningBraceIsNotExamined)
{
    Items items = groupOf(ellipsoid.get());
    for (const wchar_t* const text : {L"}", L"", L"anything"}) {
        items.front().value = std::wstring(text);
        EXPECT_EQ(readFrom(items), L"ellipsoid EPSG:7019");
    }
}

TEST_F(DefinitionGroup, OpeningBraceMayHaveNoTextAtAll)
{
    const ResbufChain chain = makeChain(groupOf(ellipsoid.get()));
    qeapp_free(std::exchange(chain->resval.rstring, nullptr));
    EXPECT_EQ(readFrom(chain), L"ellipsoid EPSG:7019");
}

TEST_F(DefinitionGroup, AnyOtherCodeInFrontGivesNone)
{
    const std::vector<Item> openers{{1000, L"{"}, {1001, L"{"}, {300, L"{"}, {1004, Bytes{1}}, {1040, 1.0}, {1071, 1}};
    for (const Item& opener : openers) {
        Items items = groupOf(ellipsoid.get());
        items.front() = opener;
        EXPECT_EQ(readFrom(items), L"none") << opener;
    }
    EXPECT_EQ(readFrom(chunkOf(ellipsoid.get())), L"none");
}

TEST_F(DefinitionGroup, NullGivesNone)
{
    EXPECT_FALSE(Orvel::ResbufGroupToDefinition(nullptr));
}

TEST_F(DefinitionGroup, GroupWithoutChunksGivesNone)
{
    EXPECT_EQ(readFrom(Items{{1002, L"{"}, {1002, L"}"}}), L"none");
    EXPECT_EQ(readFrom(Items{{1002, L"{"}}), L"none");
}

TEST_F(DefinitionGroup, FirstOtherCodeEndsTheBytes)
{
    const Items whole = groupOf(ellipsoid.get());
    const Items body(whole.begin(), whole.end() - 1);
    EXPECT_EQ(readFrom(body), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readFrom(joinedItems({body, {{1000, L"x"}, {310, Bytes{1, 2, 3}}}})), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readFrom(joinedItems({body, {{1004, Bytes{1, 2, 3}}}})), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readFrom(joinedItems({{{1002, L"{"}, {300, L"x"}}, chunkOf(ellipsoid.get())})), L"none");
}

TEST_F(DefinitionGroup, EmptyChunkSpoilsTheWholeGroup)
{
    const Items whole = groupOf(ellipsoid.get());
    for (std::size_t at = 1; at < whole.size(); ++at) {
        Items items = whole;
        items.insert(items.begin() + static_cast<std::ptrdiff_t>(at), Item{310, Bytes()});
        EXPECT_EQ(readFrom(items), L"none") << "before item " << at;
    }
}

TEST_F(DefinitionGroup, ChunkWithDataButALengthBelowOneSpoilsTheWholeGroup)
{
    const ResbufChain chain = makeChain(joinedItems({{{1002, L"{"}}, chunkOf(ellipsoid.get()), {{310, Bytes{7}}}}));
    for (const short length : {short{0}, short{-1}}) {
        chain->rbnext->rbnext->resval.rbinary.clen = length;
        EXPECT_EQ(readFrom(chain), L"none") << length;
    }
}

TEST_F(DefinitionGroup, ChunkWithoutDataSpoilsTheWholeGroup)
{
    const ResbufChain chain = makeChain(joinedItems({{{1002, L"{"}}, chunkOf(ellipsoid.get()), {{310, Bytes()}}}));
    chain->rbnext->rbnext->resval.rbinary.clen = 5;
    EXPECT_EQ(readFrom(chain), L"none");
}

TEST_F(DefinitionGroup, StandaloneChunkHoldsAWholeDefinition)
{
    EXPECT_EQ(readFromChunk(makeChain(chunkOf(ellipsoid.get()))), L"ellipsoid EPSG:7019");
    EXPECT_EQ(readFromChunk(makeChain(chunkOf(catalogSystem(L"EPSG:25832").get()))), L"system EPSG:25832");
}

TEST_F(DefinitionGroup, StandaloneChunkStandsForItself)
{
    const Bytes bytes = encoded(ellipsoid.get());
    const auto middle = bytes.begin() + 20;
    EXPECT_EQ(readFromChunk(makeChain({{310, Bytes(bytes.begin(), middle)}, {310, Bytes(middle, bytes.end())}})),
              L"none");
}

TEST_F(DefinitionGroup, StandaloneChunkMustBeAChunk)
{
    EXPECT_FALSE(Orvel::ResbufChunkToDefinition(nullptr));
    EXPECT_EQ(readFromChunk(makeChain({{1004, encoded(ellipsoid.get())}})), L"none");
    EXPECT_EQ(readFromChunk(makeChain({{311, encoded(ellipsoid.get())}})), L"none");
    EXPECT_EQ(readFromChunk(makeChain({{1002, L"{"}})), L"none");
}

TEST_F(DefinitionGroup, BytesUnderALowerCodeAreNoStandaloneChunk)
{
    const ResbufChain chain = makeChain(chunkOf(ellipsoid.get()));
    chain->restype = 309;
    EXPECT_EQ(readFromChunk(chain), L"none");
    chain->restype = 310; // under which the host releases the bytes
}

TEST_F(DefinitionGroup, StandaloneChunkMustHoldBytes)
{
    const ResbufChain empty = makeChain({{310, Bytes()}});
    EXPECT_EQ(readFromChunk(empty), L"none");
    empty->resval.rbinary.clen = 5;
    EXPECT_EQ(readFromChunk(empty), L"none");
    const ResbufChain negative = makeChain(chunkOf(ellipsoid.get()));
    negative->resval.rbinary.clen = -1;
    EXPECT_EQ(readFromChunk(negative), L"none");
}

TEST_F(DefinitionGroup, StandaloneChunkOfOneByteGivesNone)
{
    EXPECT_EQ(readFromChunk(makeChain({{310, Bytes{1}}})), L"none");
}

} // namespace
} // namespace Tests
