#include "framework/Object.h"

const CRuntimeClass CObject::classCObject = {"CObject", nullptr};

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const
{
    for (const CRuntimeClass* cls = this; cls; cls = cls->m_pBaseClass)
        if (cls == base)
            return true;
    return false;
}

const CRuntimeClass* CObject::GetRuntimeClass() const
{
    return &classCObject;
}

bool CObject::IsKindOf(const CRuntimeClass* cls) const
{
    return GetRuntimeClass()->IsDerivedFrom(cls);
}
