#include <gtest/gtest.h>

#include <algorithm>

#include "storage/byte_patterns.h"
#include "storage/run_length.h"
#include "storage/run_length_calls.h"
#include "support/case_name.h"

namespace Tests {
namespace {

struct Case {
    const char* name;
    Bytes unpacked;
    Bytes packed;
};

void PrintTo(const Case& one, std::ostream* out)
{
    *out << one.name;
}

std::vector<Case> runCases()
{
    return {
        {"ThreeEqual", repeated(7, 3), {0x83, 7}},
        {"FourEqual", repeated(7, 4), {0x84, 7}},
        {"HundredAndTwentySevenEqual", repeated(7, 127), {0xFF, 7}},
        {"HundredAndTwentyEightEqual", repeated(7, 128), {0x80, 7}},
        {"HundredAndTwentyNineEqual", repeated(7, 129), {0x80, 7, 0x01, 7}},
        {"HundredAndThirtyEqual", repeated(7, 130), {0x80, 7, 0x02, 7, 7}},
        {"HundredAndThirtyOneEqual", repeated(7, 131), {0x80, 7, 0x83, 7}},
        {"TwoLongestRuns", repeated(7, 256), {0x80, 7, 0x80, 7}},
        {"TwoRunsSideBySide", joined({repeated(7, 3), repeated(8, 3)}), {0x83, 7, 0x83, 8}},
        {"RunOfZeros", repeated(0, 3), {0x83, 0}},
        {"RunOfHighBytes", repeated(0xFF, 5), {0x85, 0xFF}},
        {"LongestRunThenOneMoreThenAnother", joined({repeated(7, 129), {8}}), {0x80, 7, 0x02, 7, 8}},
        {"LongestRunThenOneMoreThenTwo", joined({repeated(7, 129), {8, 9}}), {0x80, 7, 0x03, 7, 8, 9}},
        {"LongestRunThenOneMoreThenARun", joined({repeated(7, 129), repeated(8, 3)}), {0x80, 7, 0x01, 7, 0x83, 8}},
        {"LongestRunThenTwoMoreThenARun", joined({repeated(7, 130), repeated(8, 3)}), {0x80, 7, 0x02, 7, 7, 0x83, 8}},
    };
}

std::vector<Case> literalCases()
{
    return {
        {"OneByte", {42}, {0x01, 42}},
        {"TwoDifferent", {1, 2}, {0x02, 1, 2}},
        {"TwoEqual", {7, 7}, {0x02, 7, 7}},
        {"ThreeDifferent", {1, 2, 3}, {0x03, 1, 2, 3}},
        {"PairAtTheEnd", {1, 2, 2}, {0x03, 1, 2, 2}},
        {"PairAtTheBeginning", {1, 1, 2}, {0x03, 1, 1, 2}},
        {"PairsAlone", {1, 1, 2, 2, 3, 3}, {0x06, 1, 1, 2, 2, 3, 3}},
        {"HundredAndTwentySixDistinct", distinct(126), joined({{0x7E}, distinct(126)})},
        {"HundredAndTwentySevenDistinct", distinct(127), joined({{0x7F}, distinct(127)})},
        {"HundredAndTwentyEightDistinct", distinct(128), joined({{0x00}, distinct(128)})},
        {"HundredAndTwentyNineDistinct", distinct(129), joined({{0x00}, distinct(128), {0x01, 128}})},
        {"HundredAndThirtyDistinct", distinct(130), joined({{0x00}, distinct(128), {0x02, 128, 129}})},
        {"TwoLongestLiterals", distinct(256), joined({{0x00}, distinct(128), {0x00}, distinct(128, 128)})},
        {"PairEndsAtTheLongest", joined({distinct(126), {200, 200}}), joined({{0x00}, distinct(126), {200, 200}})},
        {"PairCrossesTheLongest", joined({distinct(127), {200, 200}}),
         joined({{0x00}, distinct(127), {200}, {0x01, 200}})},
        {"PairCrossesTheLongestAndMoreFollows", joined({distinct(127), {200, 200, 1, 2}}),
         joined({{0x00}, distinct(127), {200}, {0x03, 200, 1, 2}})},
        {"PairCrossesTheLongestBeforeARun", joined({distinct(127), {200, 200, 1, 1, 1}}),
         joined({{0x00}, distinct(127), {200}, {0x01, 200, 0x83, 1}})},
        {"RunCutsTheLongestShortByOne", joined({distinct(127), {200, 200, 200}}),
         joined({{0x7F}, distinct(127), {0x83, 200}})},
        {"RunFollowsTheLongest", joined({distinct(128), {200, 200, 200}}),
         joined({{0x00}, distinct(128), {0x83, 200}})},
    };
}

std::vector<Case> mixedCases()
{
    return {
        {"OneThenRun", {1, 2, 2, 2}, {0x01, 1, 0x83, 2}},
        {"PairThenRun", {1, 1, 2, 2, 2}, {0x02, 1, 1, 0x83, 2}},
        {"RunThenOne", {2, 2, 2, 1}, {0x83, 2, 0x01, 1}},
        {"RunThenPair", {2, 2, 2, 1, 1}, {0x83, 2, 0x02, 1, 1}},
        {"LiteralRunLiteral", {1, 2, 1, 1, 1, 2}, {0x02, 1, 2, 0x83, 1, 0x01, 2}},
        {"RunLiteralRun", {1, 1, 1, 2, 3, 4, 4, 4, 4}, {0x83, 1, 0x02, 2, 3, 0x84, 4}},
    };
}

class RunLengthTable : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(Runs, RunLengthTable, testing::ValuesIn(runCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Literals, RunLengthTable, testing::ValuesIn(literalCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Mixed, RunLengthTable, testing::ValuesIn(mixedCases()), caseName);

TEST_P(RunLengthTable, PacksIntoTheListedBytes)
{
    EXPECT_EQ(toHex(packed(GetParam().unpacked)), toHex(GetParam().packed));
}

TEST_P(RunLengthTable, UnpacksIntoTheListedBytes)
{
    EXPECT_EQ(toHex(unpacked(GetParam().packed)), toHex(GetParam().unpacked));
}

TEST_P(RunLengthTable, PackingFailsForEveryCapacityThatIsTooSmall)
{
    for (std::size_t capacity = 0; capacity < GetParam().packed.size(); ++capacity)
        EXPECT_EQ(packInto(capacity, GetParam().unpacked).length, 0U) << capacity << " bytes";
}

TEST_P(RunLengthTable, UnpackingFailsForEveryCapacityThatIsTooSmall)
{
    for (std::size_t capacity = 0; capacity < GetParam().unpacked.size(); ++capacity)
        EXPECT_EQ(unpackInto(capacity, GetParam().packed).length, 0U) << capacity << " bytes";
}

TEST_P(RunLengthTable, LargerCapacityGivesTheSameBytes)
{
    EXPECT_EQ(packInto(GetParam().packed.size() + 1, GetParam().unpacked).bytes, GetParam().packed);
    EXPECT_EQ(unpackInto(GetParam().unpacked.size() + 1, GetParam().packed).bytes, GetParam().unpacked);
}

/// The packets of distinct bytes: literals of at most 128 bytes.
Bytes literalPackets(const Bytes& bytes)
{
    Bytes packets;
    for (std::size_t at = 0; at < bytes.size(); at += 128) {
        const std::size_t count = std::min<std::size_t>(128, bytes.size() - at);
        packets.push_back(static_cast<unsigned char>(count & 0x7F));
        packets.insert(packets.end(), bytes.data() + at, bytes.data() + at + count);
    }
    return packets;
}

/// Calls `check` for literals of 126 to 130 bytes, split at every position.
template <class Check>
void forEverySplit(Check check)
{
    for (std::size_t length = 126; length <= 130; ++length) {
        for (std::size_t at = 0; at <= length; ++at) {
            SCOPED_TRACE(testing::Message() << "literal of " << length << " bytes, split at " << at);
            const Bytes literal = distinct(length);
            const auto middle = literal.begin() + static_cast<std::ptrdiff_t>(at);
            check(Bytes(literal.begin(), middle), Bytes(middle, literal.end()));
        }
    }
}

TEST(RunLength, RunOfThreeAtEveryPositionEndsTheLiteral)
{
    forEverySplit([](const Bytes& before, const Bytes& after) {
        EXPECT_EQ(toHex(packed(joined({before, repeated(200, 3), after}))),
                  toHex(joined({literalPackets(before), {0x83, 200}, literalPackets(after)})));
    });
}

TEST(RunLength, PairAtEveryPositionStaysInTheLiteral)
{
    forEverySplit([](const Bytes& before, const Bytes& after) {
        const Bytes input = joined({before, repeated(200, 2), after});
        EXPECT_EQ(toHex(packed(input)), toHex(literalPackets(input)));
    });
}

TEST(RunLength, CountsTheFirstByte)
{
    const Bytes bytes{1, 2};
    EXPECT_EQ(Orvel::RunLength(bytes.data(), bytes.data() + 2), 1U);
}

TEST(RunLength, StopsAtTheEnd)
{
    const Bytes bytes = repeated(7, 5);
    EXPECT_EQ(Orvel::RunLength(bytes.data(), bytes.data() + 5), 5U);
    EXPECT_EQ(Orvel::RunLength(bytes.data(), bytes.data() + 4), 4U);
    EXPECT_EQ(Orvel::RunLength(bytes.data() + 4, bytes.data() + 5), 1U);
}

TEST(RunLength, StopsAtAnotherByte)
{
    const Bytes bytes{7, 7, 8, 7};
    EXPECT_EQ(Orvel::RunLength(bytes.data(), bytes.data() + 4), 2U);
}

TEST(RunLength, StopsAtHundredAndTwentyEight)
{
    const Bytes bytes = repeated(7, 300);
    EXPECT_EQ(Orvel::RunLength(bytes.data(), bytes.data() + 127), 127U);
    EXPECT_EQ(Orvel::RunLength(bytes.data(), bytes.data() + 128), 128U);
    EXPECT_EQ(Orvel::RunLength(bytes.data(), bytes.data() + 129), 128U);
    EXPECT_EQ(Orvel::RunLength(bytes.data(), bytes.data() + 300), 128U);
}

TEST(RunLength, EmptyInputHasSizeZero)
{
    EXPECT_EQ(packedSize({}), 0U);
    EXPECT_EQ(unpackedSize({}), 0U);
    EXPECT_EQ(packInto(100, {}).length, 0U);
    EXPECT_EQ(unpackInto(100, {}).length, 0U);
}

TEST(RunLength, PacketsThatThePackerNeverWritesAreUnpacked)
{
    EXPECT_EQ(unpacked({0x81, 7}), (Bytes{7}));                                // run of one
    EXPECT_EQ(unpacked({0x82, 7, 0x82, 7}), (Bytes{7, 7, 7, 7}));              // runs that could be one
    EXPECT_EQ(unpacked({0x03, 7, 7, 7}), (Bytes{7, 7, 7}));                    // literal that could be a run
    EXPECT_EQ(unpacked({0x01, 1, 0x01, 2, 0x01, 3}), (Bytes{1, 2, 3}));        // literals that could be one
    EXPECT_EQ(unpacked(joined({{0x00}, repeated(7, 128)})), repeated(7, 128)); // longest literal that could be a run
}

struct Malformed {
    const char* name;
    Bytes bytes;
};

void PrintTo(const Malformed& one, std::ostream* out)
{
    *out << one.name;
}

class MalformedRunLength : public testing::TestWithParam<Malformed> {};

INSTANTIATE_TEST_SUITE_P(Table, MalformedRunLength,
                         testing::Values(Malformed{"LiteralHeaderAlone", {0x01}},
                                         Malformed{"LongestLiteralHeaderAlone", {0x00}},
                                         Malformed{"RunHeaderAlone", {0x83}},
                                         Malformed{"LongestRunHeaderAlone", {0x80}},
                                         Malformed{"LiteralCutShort", {0x05, 0x01, 0x02}},
                                         Malformed{"LiteralCutShortByOne", {0x03, 0x01, 0x02}},
                                         Malformed{"LongestLiteralCutShort", joined({{0x00}, distinct(127)})},
                                         Malformed{"LiteralHeaderAfterARun", {0x83, 7, 0x01}},
                                         Malformed{"RunHeaderAfterALiteral", {0x01, 7, 0x83}},
                                         Malformed{"LiteralCutShortAfterARun", {0x83, 7, 0x02, 1}},
                                         Malformed{"ZerosAlone", repeated(0, 128)}),
                         caseName);

TEST_P(MalformedRunLength, IsRefused)
{
    EXPECT_EQ(unpackedSize(GetParam().bytes), 0U);
    EXPECT_EQ(unpackInto(100000, GetParam().bytes).length, 0U);
}

} // namespace
} // namespace Tests
