// Comparing codes ignores the case of letters and nothing else.
#include "recording/recording_test.h"

namespace Tests {
namespace {

/// Characters next to the letters, which differ by as much as the two cases of a letter.
const std::vector<std::pair<std::wstring, std::wstring>> kOthers{{L"@", L"`"},    {L"[", L"{"},  {L"\\", L"|"},
                                                                 {L"]", L"}"},    {L"^", L"~"},  {L"0", L"\x10"},
                                                                 {L"9", L"\x19"}, {L"-", L"\r"}, {L":", L"\x1A"}};

using Codes = RecordingTest;

Definition local(const std::wstring& code)
{
    return {.code = code, .kind = Library::kindNotEarthReferenced};
}

TEST_F(Codes, LettersOfEitherCase_AreEqual)
{
    storeXrecord(L"mine:az", {local(L"MINE:AZ")});
    EXPECT_EQ(read(), Texts{L"MINE:AZ"});
}

TEST_F(Codes, OtherCharacters_AreDifferent)
{
    for (const auto& [left, right] : kOthers) {
        storeXrecord(L"MINE:" + left, {local(L"MINE:" + right)});
        EXPECT_EQ(read(), Texts());
        EXPECT_EQ(result, Qeapp::eNotApplicable);
        storeXrecord(L"MINE:" + right, {local(L"MINE:" + left)});
        EXPECT_EQ(read(), Texts());
    }
}

TEST_F(Codes, CodesOfDatumAndEllipsoid_AreComparedIgnoringCase)
{
    const Definition system{.code = L"M:1", .datumCode = L"M:A@", .ellipsoidCode = L"M:E["};
    const auto datum = [](const wchar_t* code) {
        return Definition{.type = Type::datum, .code = code, .ellipsoidCode = L"M:E["};
    };
    const auto ellipsoid = [](const wchar_t* code) { return Definition{.type = Type::ellipsoid, .code = code}; };
    storeXrecord(L"M:1", {system, datum(L"m:a@"), ellipsoid(L"m:e[")});
    EXPECT_EQ(read().size(), 3U);
    storeXrecord(L"M:1", {system, datum(L"m:a`"), ellipsoid(L"m:e[")});
    EXPECT_EQ(read(), Texts());
    storeXrecord(L"M:1", {system, datum(L"m:a@"), ellipsoid(L"m:e{")});
    EXPECT_EQ(read(), Texts());
}

} // namespace
} // namespace Tests
