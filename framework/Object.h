// Root of the class library: run-time class records for IsKindOf.
#pragma once

struct CRuntimeClass {
    const char* m_lpszClassName;
    const CRuntimeClass* m_pBaseClass;
    bool IsDerivedFrom(const CRuntimeClass* base) const;
};

#define RUNTIME_CLASS(cls) (&cls::class##cls)

#define DECLARE_DYNAMIC(cls)                                                                       \
  public:                                                                                          \
    static const CRuntimeClass class##cls;                                                         \
    const CRuntimeClass* GetRuntimeClass() const override;

#define IMPLEMENT_DYNAMIC(cls, base)                                                               \
    const CRuntimeClass cls::class##cls = {#cls, RUNTIME_CLASS(base)};                             \
    const CRuntimeClass* cls::GetRuntimeClass() const                                              \
    {                                                                                              \
        return RUNTIME_CLASS(cls);                                                                 \
    }

class CObject
{
  public:
    static const CRuntimeClass classCObject;
    virtual ~CObject() = default;
    virtual const CRuntimeClass* GetRuntimeClass() const;
    bool IsKindOf(const CRuntimeClass* cls) const;

  protected:
    CObject() = default;
};
