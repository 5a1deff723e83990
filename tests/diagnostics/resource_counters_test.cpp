#include "embedded/diagnostics/resource_counters.h"

#include <gtest/gtest.h>

namespace Tests {
namespace {

using namespace Embedded;

TEST(ResourceCounters, Difference_NamesEachKindWithItsNumber)
{
    const ResourceCounts before = ResourceCounters::now();
    ResourceCounters::add(ResourceKind::openObject, 2);
    ResourceCounters::add(ResourceKind::resbuf);
    EXPECT_EQ(ResourceCounters::difference(before, ResourceCounters::now()), "2 open objects, 1 resbuf");
    ResourceCounters::remove(ResourceKind::openObject, 2);
    ResourceCounters::remove(ResourceKind::resbuf);
    EXPECT_EQ(ResourceCounters::difference(before, ResourceCounters::now()), "");
}

} // namespace
} // namespace Tests
