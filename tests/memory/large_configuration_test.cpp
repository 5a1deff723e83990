// Stores ten megabytes of configuration text in a drawing.
#include "coordsys/orvel_transformation_config.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "storage/host_holders.h"
#include "support/coordsys_test.h"
#include "support/error_text.h"
#include "support/scoped_document.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

constexpr auto kDrawing = Cs::CsTransformationConfigTargetType::Drawing;
constexpr std::size_t kBytesOfText = 10'000'000;

/// A sequence of items with numbers. Each eighth has a letter that takes two bytes in a file.
std::wstring longText()
{
    std::wstring text;
    for (std::size_t number = 0; text.size() * sizeof(wchar_t) < kBytesOfText; ++number) {
        text += L"<Item><Version>1.0</Version><SourceCs>EPSG:4258</SourceCs><TargetCs>EPSG:";
        text += std::to_wstring(number);
        text += number % 8 == 0 ? L"</TargetCs><Note>gepr\u00FCft</Note></Item>" : L"</TargetCs><Note></Note></Item>";
    }
    return text;
}

class LargeConfiguration : public PlatformTest {
protected:
    static bool isStored(const std::wstring& text)
    {
        wchar_t* read = nullptr;
        if (!Cs::GetCsTransformationConfig(read, kDrawing))
            return false; // the text then belongs to the module
        return Orvel::HostString(read).get() == text;
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "a.qedb";
    std::wstring text = longText();
};

TEST_F(LargeConfiguration, LargeConfiguration_IsSetReadAndRemoved)
{
    const ScopedDocument document;
    ASSERT_TRUE(Cs::SetCsTransformationConfig(text.c_str(), kDrawing));
    EXPECT_TRUE(isStored(text));
    ASSERT_TRUE(Cs::ClearCsTransformationConfig(kDrawing));
    EXPECT_FALSE(isStored(text));
}

TEST_F(LargeConfiguration, LargeConfiguration_IsSavedAndLoaded)
{
    {
        const ScopedDocument document;
        ASSERT_TRUE(Cs::SetCsTransformationConfig(text.c_str(), kDrawing));
        ASSERT_EQ(errorText(Embedded::saveDrawing(*document.database(), file, QeDb::kCurrentDwg)), "");
    }
    auto loaded = Embedded::loadDrawing(file);
    ASSERT_EQ(errorText(loaded), "");
    const ScopedDocument document(std::move(*loaded));
    EXPECT_TRUE(isStored(text));
}

} // namespace
} // namespace Tests
