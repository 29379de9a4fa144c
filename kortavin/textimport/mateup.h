#pragma once

#include "kortavin/base/arrays.h"

namespace kortavin {

// Has the user match the columns of a delimited text to the fields that are to be filled from it.
class KORTAVIN_API CMateup {
  public:
    CMateup& operator=(const CMateup&) { return *this; }  // there is nothing to copy
    CMateup() = default;
    CMateup(const CMateup&) = default;

    // The text's column names, one line of its values and the names of the fields, each separated by commas:
    // every item loses one enclosing quote at each end, and a list without any comma has no items. Runs a
    // modal dialog. TRUE when it was confirmed: `matches` then holds for each field, in their order, the
    // position of its column (from 1). Otherwise FALSE, and `matches` stays as it was. Throws
    // CResourceException when no window can be opened.
    static BOOL Mateup(CString& strColumns, CString& strSamples, CString& strTargets, CWordArray& matches);
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CMateup;
#endif
