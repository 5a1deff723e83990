// Errors, and the result type that has a value or an error.
#include "embedded/base/error.h"

#include <gtest/gtest.h>

namespace Tests {
namespace {

using namespace Embedded;

TEST(ErrorTest, Text_BeginsWithThePlace)
{
    EXPECT_EQ((Error{1, "is damaged", "a.qedb"}.text()), "a.qedb: is damaged");
    EXPECT_EQ((Error{1, "is damaged", {}}.text()), "is damaged");
}

TEST(ErrorTest, CatchError_ReturnsTheValue)
{
    EXPECT_EQ(catchError([] { return 7; }).value(), 7);
    EXPECT_TRUE(catchError([] {}).has_value());
}

TEST(ErrorTest, CatchError_ReturnsTheThrownError)
{
    const Expected<int> result = catchError([]() -> int { throw ErrorException({3, "is missing", "row 2"}); });
    ASSERT_FALSE(result.has_value());
    EXPECT_EQ(result.error().status, 3);
    EXPECT_EQ(result.error().text(), "row 2: is missing");
}

TEST(ErrorTest, CatchError_LetsOtherExceptionsPass)
{
    EXPECT_THROW(static_cast<void>(catchError([] { throw std::bad_alloc(); })), std::bad_alloc);
}

TEST(ErrorTest, OutOfMemory_NeedsNoMemory)
{
    EXPECT_LT(Error::outOfMemory(1).message.size(), std::string().capacity() + 1)
        << "the message fits into the string object";
}

} // namespace
} // namespace Tests
