#pragma once

#include <cstddef>

// The product's own test mode: calls that can fail are counted, and one of them can be made to fail.
namespace Core {

/// Makes the n-th fallible call from now on fail, once; 0 lets every call work.
void failCall(std::size_t n);
/// How many fallible calls there were since the last `failCall`.
std::size_t countedCalls();
/// Asked by every call of the product that can fail: whether it is to fail now.
bool failsNow();

} // namespace Core
