#include "bench/MemoryData.h"

#include "bench/Announcer.h"
#include "bench/Library.h"
#include "bench/Measurement.h"
#include "framework/com/Decimal.h"
#include "tests/support/EmptyData.h"

namespace korvane::bench
{

class MemoryData::Groups final : public Announcer<Groups, IGroups, IGroupsEvents, test::EmptyGroups>
{
public:
    explicit Groups(MemoryData& data) : data_(data) {}

    void raiseAdd(long id, BSTR name) const
    {
        VARIANT arguments[] = {of(3L), of(name), of(id)}; // a group of the user's
        raise(eventAdd, arguments, 3);
    }

    // IGroups
    STDMETHODIMP Load(VARIANT_BOOL* result) override
    {
        raise(eventClear);
        long id = firstId;
        for (const Bstr& name : data_.texts_)
            raiseAdd(id++, name.get());
        *result = VARIANT_TRUE;
        return S_OK;
    }

    STDMETHODIMP Fetch(long, BSTR* name, long* flags, VARIANT_BOOL* result) override
    {
        *flags = 1;
        *result = SysReAllocString(name, L"Group") ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }

    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL* result) override
    {
        *result = VARIANT_TRUE;
        return S_OK;
    }

    STDMETHODIMP SetPosition(long, long position) override
    {
        data_.lastPosition_ = position;
        return S_OK;
    }

private:
    MemoryData& data_;
};

class MemoryData::Names final : public Announcer<Names, INames, INamesEvents, test::EmptyNames>
{
public:
    explicit Names(MemoryData& data) : data_(data) {}

    // INames
    STDMETHODIMP Load(long groupId, VARIANT_BOOL* result) override
    {
        raise(eventClear);
        long id = firstId;
        for (const Bstr& name : data_.texts_)
        {
            VARIANT arguments[] = {of(0x0000FFL), of(groupId), of(name.get()), of(id++)};
            raise(eventAdd, arguments, 4);
        }
        *result = VARIANT_TRUE;
        return S_OK;
    }

    STDMETHODIMP HasAccess(long, long, VARIANT_BOOL* result) override
    {
        *result = VARIANT_TRUE;
        return S_OK;
    }

private:
    MemoryData& data_;
};

/// There are none.
class MemoryData::Accounts final : public Announcer<Accounts, IAccounts, IAccountsEvents, test::EmptyAccounts>
{
public:
    // IAccounts
    STDMETHODIMP Load(VARIANT_BOOL* result) override
    {
        raise(eventClear);
        *result = VARIANT_TRUE;
        return S_OK;
    }
};

class MemoryData::Scope final : public Object<Scope, Inherits<IScope>, IScope>
{
public:
    explicit Scope(MemoryData& data) : data_(data) {}

    STDMETHODIMP Close(long, long) override
    {
        data_.stepEnd_ = now();
        return S_OK;
    }

private:
    MemoryData& data_;
};

class MemoryData::Root final : public Object<Root, Inherits<test::EmptyRoot>, IRoot>
{
public:
    explicit Root(MemoryData& data) : data_(data) {}

    STDMETHODIMP get_Groups(IGroups** collection) override
    {
        *collection = ComPtr<IGroups>(data_.groups_.get()).detach();
        return S_OK;
    }

    STDMETHODIMP get_Names(INames** collection) override
    {
        *collection = ComPtr<INames>(data_.names_.get()).detach();
        return S_OK;
    }

    STDMETHODIMP get_Accounts(IAccounts** collection) override
    {
        *collection = ComPtr<IAccounts>(data_.accounts_.get()).detach();
        return S_OK;
    }

    STDMETHODIMP OpenScope(long, BSTR, IScope** scope) override
    {
        *scope = ComPtr<IScope>(make<Scope>(data_).get()).detach();
        data_.stepStart_ = now();
        return S_OK;
    }

private:
    MemoryData& data_;
};

MemoryData::MemoryData()
    : groups_(make<Groups>(*this)), names_(make<Names>(*this)), accounts_(make<Accounts>()),
      root_(ComPtr<IRoot>(make<Root>(*this).get()))
{
}

MemoryData::~MemoryData() = default;

void MemoryData::resize(int groups)
{
    texts_.clear();
    texts_.reserve(static_cast<std::size_t>(groups));
    for (long index = 0; index < groups; ++index)
        texts_.emplace_back(L"Resource group " + decimal(index));
}

void MemoryData::announce(long id, BSTR name) const
{
    groups_->raiseAdd(id, name);
}

bool MemoryData::hasSubscriber() const noexcept
{
    return groups_->hasSubscriber();
}

ComPtr<IEditGroups> commandFor(const MemoryData& data)
{
    constexpr long operationChange = 3; // shows all controls of the dialog
    auto command = create<IEditGroups>(commandProgId);
    call(command, &IEditGroups::putref_Root, data.root());
    call(command, &IEditGroups::put_GroupID, 4L);
    call(command.as<IAppCommand>(), &IAppCommand::put_Operation, operationChange);
    return command;
}

ComPtr<IEditNames> resourceCommandFor(const MemoryData& data)
{
    constexpr long operationChange = 3;
    auto command = create<IEditNames>(L"KorvaneDlg.EditNames");
    call(command, &IEditNames::putref_Root, data.root());
    call(command, &IEditNames::put_GroupID, 4L);
    call(command.as<IAppCommand>(), &IAppCommand::put_Operation, operationChange);
    return command;
}

} // namespace korvane::bench
