#include "scarcememory.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t goesWell = kortavin::testing::ScarceMemory::kForEver;
std::size_t failing = 0;
bool anyFailed = false;

bool Fails() {
    if (goesWell > 0) {
        --goesWell;
        return false;
    }
    if (failing == 0)
        return false;
    --failing;
    anyFailed = true;
    return true;
}

}  // namespace

namespace kortavin::testing {

ScarceMemory::ScarceMemory(std::size_t well, std::size_t many) {
    anyFailed = false;
    failing = many;
    goesWell = well;
}

ScarceMemory::~ScarceMemory() {
    goesWell = kForEver;
}

bool ScarceMemory::WasFelt() const {
    return anyFailed;
}

}  // namespace kortavin::testing

// The other forms end in these.
void* operator new(std::size_t size) {
    void* const memory = Fails() ? nullptr : std::malloc(size > 0 ? size : 1);
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
