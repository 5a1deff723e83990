// Memory straight from the system: what watches the heap must not use it.
#pragma once

#include <cstddef>

namespace GuardedHeap {

/// Zeroed; ends the process when the system has none left.
void* newPages(std::size_t bytes);
void releasePages(void* pages);

template <class Element>
Element* newPagesOf(std::size_t number)
{
    return static_cast<Element*>(newPages(number * sizeof(Element)));
}

} // namespace GuardedHeap
