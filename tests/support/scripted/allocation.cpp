#include <cstdlib>
#include <new>

// The driver's own allocator: where a test lets its program's memory run out, the driver must not be what
// fails. The driver is linked so that nothing else in the process sees it.

void* operator new(std::size_t size) {
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
