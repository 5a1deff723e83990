// The fixture of tests that write and read a file through the streams of _wfsopen.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "embedded/base/text.h"
#include "platform/win32.h"
#include "support/file_text.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

class TextFileTest : public PlatformTest {
protected:
    std::FILE* open(const wchar_t* mode) const { return _wfsopen(wideName(file).c_str(), mode, _SH_DENYNO); }
    static std::wstring wideName(const std::filesystem::path& path) { return Embedded::wideFromUtf8(path.string()); }

    void write(const std::string& text, const wchar_t* mode = L"w") const
    {
        std::FILE* const stream = open(mode);
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(std::fwrite(text.data(), 1, text.size(), stream), text.size());
        EXPECT_EQ(std::fclose(stream), 0);
    }
    std::string read(const wchar_t* mode = L"r") const
    {
        std::FILE* const stream = open(mode);
        EXPECT_NE(stream, nullptr);
        std::string text;
        for (int byte = std::fgetc(stream); byte != EOF; byte = std::fgetc(stream))
            text += static_cast<char>(byte);
        EXPECT_EQ(std::ferror(stream), 0);
        EXPECT_EQ(std::fclose(stream), 0);
        return text;
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "settings.xml";
};

} // namespace Tests
