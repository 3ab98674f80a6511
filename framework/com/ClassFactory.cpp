#include "framework/com/ClassFactory.h"

#include "framework/com/Object.h"

namespace korvane
{

namespace
{

class ClassFactory final : public Object<ClassFactory, Inherits<IClassFactory>, IClassFactory>
{
public:
    explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override
    {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        return outer ? CLASS_E_NOAGGREGATION : entry_.create(iid, object);
    }

    STDMETHODIMP LockServer(BOOL lock) override
    {
        lock ? module::lock() : module::unlock();
        return S_OK;
    }

private:
    const ClassEntry& entry_;
};

} // namespace

HRESULT classObject(REFCLSID classId, REFIID iid, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    prepareForFailures();
    for (const ClassEntry& entry : classCatalogue())
        if (*entry.classId == classId)
            return guard([&] { return make<ClassFactory>(entry)->QueryInterface(iid, object); });
    return CLASS_E_CLASSNOTAVAILABLE;
}

} // namespace korvane
