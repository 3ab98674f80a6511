// The messages collection.
#pragma once

#include "demo/datalayer/Announcer.h"
#include "demo/datalayer/MessageTable.h"
#include "framework/com/Object.h"

#include <KorvaneData.h>

namespace korvane::store
{

class Messages final : public Object<Messages, Inherits<IMessages, Announcer<IMessagesEvents>>, IMessages,
                                     IConnectionPointContainer>
{
public:
    explicit Messages(std::shared_ptr<Store> store) : store_(std::move(store)), table_(*store_) {}

    STDMETHODIMP LoadFor(long nameId, long flags, VARIANT_BOOL* result) override;
    STDMETHODIMP Fetch(long msgId, BSTR* fromName, DATE* dtg, BSTR* tlf, BSTR* contact, BSTR* about,
                       long* kind, VARIANT_BOOL* wasRead) override;
    STDMETHODIMP Add(long nameId, DATE dtg, BSTR about, BSTR tlf, BSTR contact, long kind,
                     long* newId) override;
    STDMETHODIMP Remove(long msgId) override;

    /// Announces what has arrived for the resource whose messages were loaded last.
    void announceNew();

    long unread() const { return table_.unread(); }

private:
    Trace& trace() const noexcept { return store_->trace(); }
    void announce(const std::vector<ListedMessage>& messages);

    std::shared_ptr<Store> store_;
    MessageTable table_;
    long loaded_ = 0; ///< the resource; 0 for none
    long last_ = 0;   ///< the message that was announced last
};

} // namespace korvane::store
