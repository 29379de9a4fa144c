#include "kortavin/base/object.h"

namespace kortavin {

constinit const CRuntimeClass CObject::classCObject{"CObject", nullptr};

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetRuntimeClass() const {
    return &classCObject;
}

BOOL CObject::IsKindOf(const CRuntimeClass* runtimeClass) const {
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}

}  // namespace kortavin
