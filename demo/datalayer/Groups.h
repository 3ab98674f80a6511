// The groups collection.
#pragma once

#include "demo/datalayer/Announcer.h"
#include "demo/datalayer/GroupTable.h"
#include "demo/datalayer/Store.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

namespace korvane::store
{

class Groups final
    : public Object<Groups, Inherits<IGroups, Announcer<IGroupsEvents>>, IGroups, IConnectionPointContainer>
{
public:
    explicit Groups(std::shared_ptr<Store> store) : store_(std::move(store)), table_(*store_) {}

    STDMETHODIMP Load(VARIANT_BOOL* result) override;
    STDMETHODIMP Fetch(long id, BSTR* text, long* flags, VARIANT_BOOL* result) override;
    STDMETHODIMP HasAccess(long operation, long id, VARIANT_BOOL* result) override;
    STDMETHODIMP Add(BSTR text, long flags, long* newId) override;
    STDMETHODIMP Remove(long id, long* removedId) override;
    STDMETHODIMP Update(long id, BSTR text, long flags, long* updatedId) override;
    STDMETHODIMP SetPosition(long id, long position) override;

    void announceAnew() { announce(table_.all()); }
    /// The same after a write that was not made through here.
    void announceChange();

private:
    Trace& trace() const noexcept { return store_->trace(); }
    void announce(const std::vector<Group>& groups);
    long announced(GroupChange change);

    std::shared_ptr<Store> store_;
    GroupTable table_;
};

} // namespace korvane::store
