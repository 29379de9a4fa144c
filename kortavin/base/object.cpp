#include "framework/base/object.h"

constinit const CRuntimeClass CObject::classCObject{"CObject", nullptr};

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetRuntimeClass() const {
    return &classCObject;
}

BOOL CObject::IsKindOf(const CRuntimeClass* runtimeClass) const {
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}
