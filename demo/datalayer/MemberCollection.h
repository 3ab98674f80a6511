// A collection of what belongs to groups, with the operations that resources and activity types have alike.
#pragma once

#include "demo/datalayer/Announcer.h"
#include "demo/datalayer/Store.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

#include <optional>

namespace korvane::store
{

template <class Interface, class Events, class Table>
class MemberCollection : public Inherits<Interface, Announcer<Events>>
{
public:
    explicit MemberCollection(std::shared_ptr<Store> store) : store_(std::move(store)), table_(*store_) {}

    STDMETHODIMP Load(long groupId, VARIANT_BOOL* result) override
    {
        return returns(result, [&] {
            return traced(trace(), called(L"Load", groupId), [&] {
                announceGroup(groupId);
                loaded_ = groupId;
                return true;
            });
        });
    }

    STDMETHODIMP HasAccess(long operation, long id, VARIANT_BOOL* result) override
    {
        return returns(result, [&] {
            return traced(trace(), called(L"HasAccess", operation, id),
                          [&] { return table_.mayPerform(operation, id); });
        });
    }

    STDMETHODIMP Add(BSTR text, long color, long flags, long* newId) override
    {
        return write(newId, called(L"Add", view(text), color, flags),
                     [&] { return table_.add(view(text), color, flags); });
    }

    STDMETHODIMP Update(long id, BSTR text, long color, long flags, long* updatedId) override
    {
        return write(updatedId, called(L"Update", id, view(text), color, flags), [&] {
            table_.update(id, view(text), color, flags);
            return id;
        });
    }

    STDMETHODIMP AddToGroup(long id, long groupId, long position, long* memberPosition) override
    {
        return write(memberPosition, called(L"AddToGroup", id, groupId, position), [&] {
            table_.addToGroup(id, groupId, position);
            return position;
        });
    }

    STDMETHODIMP RemoveFromGroup(long id, long groupId, long* removedId) override
    {
        return write(removedId, called(L"RemoveFromGroup", id, groupId), [&] {
            table_.removeFromGroup(id, groupId);
            return id;
        });
    }

    /// Tells that what was announced no longer holds. Subscribers load again what they show.
    void announceChange()
    {
        attempt([&] { this->announceClear(trace()); });
    }

    /// Announces what was loaded last once more.
    void announceAnew()
    {
        if (loaded_)
            announceGroup(*loaded_);
        else
            this->announceClear(trace());
    }

protected:
    Trace& trace() const noexcept { return store_->trace(); }

    /// A call as the trace shows it.
    template <class... Arguments>
    std::wstring called(const wchar_t* method, const Arguments&... arguments) const
    {
        return line(table_.className() + (L'.' + std::wstring(method)), arguments...);
    }

    std::shared_ptr<Store> store_;
    Table table_;

private:
    void announceGroup(long group)
    {
        const auto items = table_.list(group);
        this->announceClear(trace());
        for (const auto& item : items)
            std::apply([&](const auto&... values) { this->announceItem(trace(), values...); },
                       item.announced());
    }

    template <class Body> HRESULT write(long* result, std::wstring call, Body&& body)
    {
        return returns(result, [&] {
            return traced(trace(), std::move(call), [&] {
                const long written = body();
                announceChange();
                return written;
            });
        });
    }

    std::optional<long> loaded_; ///< the group
};

} // namespace korvane::store
