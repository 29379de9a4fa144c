#pragma once

#include "kortavin/base/export.h"
#include "kortavin/base/types.h"

namespace kortavin {

// Names a class and its base for run-time queries; one constant object per class.
struct CRuntimeClass {
    const char* m_lpszClassName;
    const CRuntimeClass* m_pBaseClass;

    // TRUE when this class is `base` or derives from it.
    BOOL IsDerivedFrom(const CRuntimeClass* base) const {
        for (const CRuntimeClass* c = this; c != nullptr; c = c->m_pBaseClass)
            if (c == base)
                return TRUE;
        return FALSE;
    }
};

// Root of the classes that answer what they are at run time. Never copied through this type.
class KORTAVIN_API CObject {
  public:
    static const CRuntimeClass classCObject;

    virtual ~CObject();
    virtual const CRuntimeClass* GetRuntimeClass() const;
    BOOL IsKindOf(const CRuntimeClass* runtimeClass) const;

  protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CObject;
using kortavin::CRuntimeClass;
#endif
