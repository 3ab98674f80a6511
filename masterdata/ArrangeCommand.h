// What the commands have in common that put the items of a collection into an order of the user's.
//
// A command class states which items it loads and how it stores the place of one:
//
//   class ArrangeThings final : public ArrangeCommand<ArrangeThings, IArrangeThings, IThings>
//   {
//   public:
//       void load(Subscription<IThings>& mThings) const;
//       static void store(const ComPtr<IThings>& things, long group, long id, long index);
//   };
#pragma once

#include "framework/AppCommand.h"
#include "framework/DataLayer.h"
#include "masterdata/Arrangement.h"

#include <KorvaneDlg.h>

namespace korvane
{

template <class Class, class ClassInterface, class Collection>
class ArrangeCommand : public AppCommand<Class, ClassInterface>, public Arrangement
{
public:
    static std::span<const Operand<Class>> operands()
    {
        static constexpr Operand<Class> table[] = {
            operand<&Arrangement::Root, Class>(L"Root"),
            operand<&Arrangement::GroupID, Class>(L"GroupID"),
            operand<&Arrangement::Pos, Class>(L"Pos"),
        };
        return table;
    }

    bool prepare()
    {
        if (this->operation != operationAdd)
            Load();
        return true;
    }

    bool execute()
    {
        const auto all = collection<Collection>(Root);
        if (this->operation == operationChange)
        {
            const auto chosen = order(); // the host may load anew in a call, and another group
            const long group = GroupID;
            for (std::size_t index = 0; index < chosen.size(); ++index)
                Class::store(all, group, chosen[index], static_cast<long>(index));
        }
        return false; // also after a successful write: hosts do not read a failure into it
    }

    /// Whether an announced item is arranged at all.
    static bool arranges(const EventArguments&) { return true; }

    STDMETHODIMP put_Pos(long index, long value) override
    {
        return guard([&] { setPos(index, value); });
    }

protected:
    HRESULT count(long* value) const { return read(value, items().count()); }
    HRESULT key(long index, long* value) const
    {
        return returns(value, [&] { return items().at(index).id; });
    }
    HRESULT text(long index, BSTR* value) const
    {
        return returns(value, [&] { return Bstr(items().at(index).text); });
    }

private:
    /// Only what the collection announces in this call is heard: what is arranged stays as the user sees it.
    void Load()
    {
        ItemTable loaded;
        Subscription<Collection> items;
        items.connect(Root, {.clear = [&] { loaded.clear(); },
                             .add =
                                 [&](const EventArguments& item) {
                                     if (Class::arranges(item))
                                         loaded.add(item.number(0), Bstr(item.text(1).view()));
                                 }});
        self().load(items);
        arrange(std::move(loaded));
    }

    const Class& self() const noexcept { return static_cast<const Class&>(*this); }
};

} // namespace korvane
