#pragma once

#include "kortavin/base/export.h"
#include "kortavin/base/geometry.h"

namespace kortavin {

class CDC;

// Small pictures by number, as a host has them. A control that shows them borrows the list, which must
// outlive it.
class KORTAVIN_API CImageList {
  public:
    virtual ~CImageList() = default;
    virtual int GetImageCount() const = 0;
    virtual CSize GetImageSize(int image) const = 0;  // pixels
    // With its upper left corner at the point; FALSE when there is no such picture.
    virtual BOOL Draw(CDC* dc, int image, CPoint corner) = 0;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CImageList;
#endif
