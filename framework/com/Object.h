// The base of every COM object: identity, reference count, error support and late binding.
//
//   class Clock final : public Object<Clock, Inherits<IClock, IAlarm>, IClock, IAlarm> { ... };
//
// The interfaces after the base are what QueryInterface answers with. Their order matters twice: the first
// one is the object's identity, and the first dual one is its IDispatch. Late binding reaches the members of
// every dual interface through any of them, so that a script sees the whole class; dispatch ids are therefore
// distinct within a class.
#pragma once

#include "framework/com/Boundary.h"
#include "framework/com/Dispatch.h"
#include "framework/com/Module.h"
#include "framework/com/Platform.h"

#include <type_traits>

namespace korvane
{

/// The plain base of an object that only implements interfaces.
template <class... Interfaces> class Inherits : public Interfaces...
{
};

// Interfaces that are answered for by an interface that extends them.
template <class Interface> bool alsoAnswersFor(REFIID) noexcept
{
    return false;
}
template <> inline bool alsoAnswersFor<IOleInPlaceObject>(REFIID iid) noexcept
{
    return iid == IID_IOleWindow;
}
template <> inline bool alsoAnswersFor<IViewObject2>(REFIID iid) noexcept
{
    return iid == IID_IViewObject;
}
template <> inline bool alsoAnswersFor<IPersistStreamInit>(REFIID iid) noexcept
{
    return iid == IID_IPersist;
}
template <> inline bool alsoAnswersFor<IProvideClassInfo2>(REFIID iid) noexcept
{
    return iid == IID_IProvideClassInfo;
}

template <class Interface> constexpr bool isDual = std::is_base_of_v<IDispatch, Interface>;

/// The base of an object, late-bound where it has dual interfaces.
template <class Class, class Base, class... Interfaces>
using ObjectBase =
    std::conditional_t<(isDual<Interfaces> || ...), LateBound<Class, Base, Interfaces...>, Base>;

template <class Class, class Base, class... Interfaces>
class Object : public ObjectBase<Class, Base, Interfaces...>, public ISupportErrorInfo
{
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        static_cast<void>((offer<Interfaces>(iid, object) || ...));
        if (!*object && iid == IID_ISupportErrorInfo)
            *object = static_cast<ISupportErrorInfo*>(this);
        if (const GUID* id = Class::privateId(); !*object && id && iid == *id)
            *object = static_cast<Class*>(this);
        if (!*object)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }

    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG remaining = --references_;
        if (remaining == 0)
        {
            references_ = 1; // what the end calls may hold the object for a moment
            if constexpr (requires(Class& whole) { whole.lastReleased(); })
                static_cast<Class*>(this)->lastReleased(); // what has to happen while the object is whole
            delete static_cast<Class*>(this);
        }
        return remaining;
    }

    STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) override
    {
        return ((isDual<Interfaces> && iid == __uuidof(Interfaces)) || ...) ? S_OK : S_FALSE;
    }

    /// An interface id that answers with the C++ object itself, for use within this module only. A class that
    /// others of the module need to recognise returns its class id.
    static const GUID* privateId() noexcept { return nullptr; }

    ULONG referenceCount() const noexcept { return references_; }

protected:
    template <class... Arguments>
    explicit Object(Arguments&&... arguments)
        : ObjectBase<Class, Base, Interfaces...>(std::forward<Arguments>(arguments)...)
    {
    }
    ~Object() = default;

private:
    template <class Interface> bool offer(REFIID iid, void** object) noexcept
    {
        const bool answered = iid == __uuidof(Interface) || iid == IID_IUnknown ||
                              alsoAnswersFor<Interface>(iid) || (isDual<Interface> && iid == IID_IDispatch);
        if (answered)
            *object = static_cast<Interface*>(static_cast<Class*>(this));
        return answered;
    }

    ULONG references_ = 0;
    module::Lock lock_;
};

/// Makes an object and gives out one reference.
template <class Class, class... Arguments> ComPtr<Class> make(Arguments&&... arguments)
{
    return ComPtr<Class>(new Class(std::forward<Arguments>(arguments)...));
}

} // namespace korvane
