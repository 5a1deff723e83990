// A pipe in the place of the settings file, which tells no length.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "transformation/transformation_test.h"
#include "transformation/user_settings_file.h"

namespace Tests {
namespace {

using SettingsPipe = TransformationTest;

TEST_F(SettingsPipe, Content_IsReadUntilItEnds)
{
    ASSERT_EQ(::mkfifo(settingsFile().c_str(), 0600), 0);
    const int pipe = ::open(settingsFile().c_str(), O_RDWR);
    ASSERT_GE(pipe, 0);
    const std::string content = "<Item>\r\n" + std::string(5000, 'x') + "</Item>\r\n\x1A"; // a text ends at a control-Z
    EXPECT_EQ(::write(pipe, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    EXPECT_EQ(readWith(Orvel::ReadUserTransformationSettings),
              (ReadText{true, L"<Item>" + std::wstring(5000, L'x') + L"</Item>"}));
    EXPECT_EQ(::close(pipe), 0);
}

} // namespace
} // namespace Tests
