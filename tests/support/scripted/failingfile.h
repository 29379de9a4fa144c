#pragma once

#include "kortavin/base/file.h"

namespace kortavin::testing {

// A host's file that lets so many calls go well and then throws whatever the host throws.
struct FailingFile : CMemFile {
    explicit FailingFile(int calls) : goesWell(calls) {}

    void Write(const void* buffer, UINT count) override {
        FailIfDue();
        CMemFile::Write(buffer, count);
    }
    void Flush() override {
        FailIfDue();
        wasFlushed = true;
    }
    ULONGLONG Seek(LONGLONG offset, UINT from) override {
        FailIfDue();
        return CMemFile::Seek(offset, from);
    }
    void FailIfDue() {
        if (goesWell-- <= 0)
            throw goesWell;
    }

    int goesWell;
    bool wasFlushed = false;
};

}  // namespace kortavin::testing
