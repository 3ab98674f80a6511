// What the commands on the resources and on the activity types of a group have in common: the item at hand.
#pragma once

#include "framework/AppCommand.h"
#include "framework/DataLayer.h"

namespace korvane
{

struct GroupItem
{
    ComPtr<IRoot> Root;
    long GroupID = 0; ///< the group that the item is added to or removed from
    long ItemID = 0;  ///< 0 for an item to create
    Bstr ItemText;
    long ItemColor = 0; ///< RGB; below 1 where none is chosen

    /// Whether an addition is of a new item, and not of one that exists. One that a failed attempt has created is
    /// still to be completed, and as new as before for the user.
    bool isNew() const noexcept { return ItemID == 0 || ItemID == halfMade_; }

protected:
    ~GroupItem() = default;

    /// What was read of the item, or written first.
    struct Stored
    {
        Bstr text;
        long color = 0;
        long flags = 0;
    };

    /// Takes over what was read of an item that exists.
    void takeOver(const Stored& read)
    {
        Stored kept = read;
        ItemText = Bstr(read.text);
        ItemColor = read.color;
        itemFlags_ = read.flags;
        stored_ = std::move(kept);
        halfMade_ = 0;
    }

    /// Creates the item. One that a failed attempt has created is not created twice, but follows what was entered
    /// since.
    template <class Collection> void create(const ComPtr<Collection>& items, long flags)
    {
        Stored made{ItemText, ItemColor, flags};
        if (ItemID == 0)
            halfMade_ = ItemID = fetch(items, &Collection::Add, made.text.get(), made.color, flags);
        else if (stored_.text.view() != ItemText.view() || stored_.color != ItemColor)
            fetch(items, &Collection::Update, ItemID, made.text.get(), made.color, flags);
        stored_ = std::move(made);
    }

    /// Makes the item a member of the group: the last step of its addition.
    template <class Collection> void join(const ComPtr<Collection>& items)
    {
        fetch(items, &Collection::AddToGroup, ItemID, GroupID, 0L);
        halfMade_ = 0;
    }

    template <class Collection> void leave(const ComPtr<Collection>& items)
    {
        ItemID = fetch(items, &Collection::RemoveFromGroup, ItemID, GroupID);
    }

    template <class Collection> void update(const ComPtr<Collection>& items)
    {
        ItemID = fetch(items, &Collection::Update, ItemID, ItemText.get(), ItemColor, itemFlags_);
    }

    Stored stored_;
    long itemFlags_ = 0; ///< belong to the data layer, and are given back to it
    long halfMade_ = 0;  ///< the item that an attempt has created and not completed
};

} // namespace korvane
