// An owning interface pointer.
#pragma once

#include "framework/com/Platform.h"

#include <utility>

namespace korvane
{

template <class Interface> class ComPtr
{
public:
    ComPtr() noexcept = default;
    ComPtr(std::nullptr_t) noexcept {}

    /// Shares ownership: adds a reference.
    explicit ComPtr(Interface* shared) noexcept : pointer_(shared)
    {
        if (pointer_)
            pointer_->AddRef();
    }

    ComPtr(const ComPtr& other) noexcept : ComPtr(other.pointer_) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ~ComPtr() { reset(); }

    ComPtr& operator=(ComPtr other) noexcept
    {
        std::swap(pointer_, other.pointer_);
        return *this;
    }

    /// Takes over a reference that the caller owns.
    static ComPtr adopt(Interface* owned) noexcept
    {
        ComPtr result;
        result.pointer_ = owned;
        return result;
    }

    Interface* get() const noexcept { return pointer_; }
    Interface* operator->() const noexcept { return pointer_; }
    Interface& operator*() const noexcept { return *pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

    /// The address for an out parameter; what was held is released.
    Interface** put() noexcept
    {
        reset();
        return &pointer_;
    }

    void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }

    /// Gives the reference away, to an out parameter for example.
    Interface* detach() noexcept { return std::exchange(pointer_, nullptr); }

    void reset() noexcept
    {
        // Cleared first: the release may lead back to this pointer's owner.
        if (auto* released = std::exchange(pointer_, nullptr))
            released->Release();
    }

    /// Another interface of the same object; empty when the object does not have it. What a refusal leaves in the out
    /// parameter is nobody's.
    template <class Other> ComPtr<Other> as() const noexcept
    {
        void* found = nullptr;
        const bool has = pointer_ && SUCCEEDED(pointer_->QueryInterface(__uuidof(Other), &found));
        return ComPtr<Other>::adopt(has ? static_cast<Other*>(found) : nullptr);
    }

private:
    Interface* pointer_ = nullptr;
};

/// Another interface of an object that the caller holds; empty when the object does not have it.
template <class Other> ComPtr<Other> queryFor(IUnknown* object) noexcept
{
    return ComPtr<IUnknown>(object).as<Other>();
}

} // namespace korvane
