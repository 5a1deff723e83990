// The example of the page about the registry's file is what is written, and what it says is read.
#include "windows/posix/registry_file_test.h"

namespace Tests {
namespace {

class RegistryFormatPage : public RegistryFileTest {
protected:
    static std::string example()
    {
        std::ifstream stream(std::string(ORVEL_SOURCE_DIR) + "/docs/formats/registry-stand-in.md");
        const std::string page{std::istreambuf_iterator<char>(stream), {}};
        const std::string opening = "\n```registry-file\n";
        const std::size_t begin = page.find(opening);
        EXPECT_NE(begin, std::string::npos);
        const std::size_t end = page.find("```", begin + opening.size());
        return page.substr(begin + opening.size(), end - begin - opening.size());
    }
};

TEST_F(RegistryFormatPage, TheExampleIsWhatIsWritten)
{
    const OpenKey key = created(L"Software\\Example\\Transformation");
    ASSERT_EQ(set(key, L"Item1", L"<Item>K\u00F8benhavn</Item>"), ERROR_SUCCESS);
    ASSERT_EQ(set(key, L"", L""), ERROR_SUCCESS);
    ASSERT_EQ(setBytes(key, L"Flags", REG_DWORD, std::string("\x05\0\0\0", 4)), ERROR_SUCCESS);
    const std::wstring unended = L"ab";
    ASSERT_EQ(RegSetValueExW(key.get(), L"Unended", 0, REG_EXPAND_SZ, reinterpret_cast<const BYTE*>(unended.data()),
                             static_cast<DWORD>(unended.size() * sizeof(wchar_t))),
              ERROR_SUCCESS);
    const wchar_t unpaired[] = {L'x', static_cast<wchar_t>(0xD800), L'\0'};
    ASSERT_EQ(setBytes(key, unpaired, REG_BINARY, ""), ERROR_SUCCESS);
    ASSERT_EQ(RegDeleteValueW(key.get(), L"flags"), ERROR_SUCCESS);
    EXPECT_EQ(onDisk(), example());
}

TEST_F(RegistryFormatPage, TheExampleIsRead)
{
    put(example());
    ASSERT_EQ(Embedded::checkRegistryFile(), "");
    const OpenKey key = created(L"Software\\Example\\Transformation");
    EXPECT_EQ(textOf(key, L"Item1"), ended(L"<Item>K\u00F8benhavn</Item>"));
    EXPECT_EQ(textOf(key, L""), ended(L""));
    EXPECT_EQ(textOf(key, L"Flags"), std::nullopt);
    EXPECT_EQ(textOf(key, L"Unended"), L"ab");
    EXPECT_EQ(namesOf(key), (std::vector<std::wstring>{L"Item1", L"", L"Unended", L"x\xD800"}));
}

} // namespace
} // namespace Tests
