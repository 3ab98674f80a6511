#include "tests/demo/datalayer/Office.h"

#include <filesystem>

namespace korvane::store::test
{

namespace
{

constexpr const char* setUp =
    "INSERT INTO accounts (id, login, role) VALUES (3, 'manager', 2), (4, 'user', 3);"
    "UPDATE names SET account = 3 WHERE id = 2;"
    "UPDATE names SET account = 4 WHERE id = 3";

template <class Collection>
std::vector<long> idsOf(const ComPtr<Collection>& items, REFIID events, long group)
{
    const Listener::Subscription listener(items, events);
    EXPECT_TRUE(korvane::fetch(items, &Collection::Load, group));
    std::vector<long> result;
    for (const std::wstring& line : listener->events())
        if (line != L"OnClear")
            result.push_back(std::stol(line.substr(6)));
    return result;
}

std::wstring text(const Bstr& value)
{
    return value.c_str();
}

} // namespace

void PrintTo(const Resource& resource, std::ostream* stream)
{
    *stream << std::filesystem::path(resource.text).string() << ", " << resource.color << ", "
            << resource.loginId << ' ' << std::filesystem::path(resource.login).string() << ", "
            << resource.flags << ", " << resource.role;
}

Office::Office(const ComPtr<IRoot>& opened)
    : root(opened), groups(korvane::fetch(root, &IRoot::get_Groups)),
      names(korvane::fetch(root, &IRoot::get_Names)), types(korvane::fetch(root, &IRoot::get_Types)),
      accounts(korvane::fetch(root, &IRoot::get_Accounts)),
      messages(korvane::fetch(root, &IRoot::get_Messages))
{
}

long Office::addName(const wchar_t* name, long color) const
{
    return korvane::fetch(names, &INames::Add, Bstr(name).get(), color, 2L);
}

void Office::updateName(long id, const wchar_t* name, long color) const
{
    EXPECT_EQ(id, korvane::fetch(names, &INames::Update, id, Bstr(name).get(), color, 2L));
}

Resource Office::fetchName(long id) const
{
    Resource result{L"before", 71, 72, L"before", 73, 74};
    Bstr name(result.text);
    Bstr login(result.login);
    call(names, &INames::Fetch, id, name.inOut(), &result.color, &result.loginId, login.inOut(),
         &result.flags, &result.role);
    result.text = text(name);
    result.login = text(login);
    return result;
}

std::wstring Office::mailbox(long name) const
{
    return text(korvane::fetch(names, &INames::GetMailbox, name));
}

void Office::setSyncLogin(long name, const wchar_t* login) const
{
    call(names, &INames::SetSyncLogin, name, Bstr(login).get());
}

Lines Office::info(long name) const
{
    const Listener::Subscription listener(names, DIID_INamesEvents);
    EXPECT_TRUE(korvane::fetch(names, &INames::LoadInfo, name));
    return listener->events();
}

void Office::setInfo(long name, const wchar_t* label, long position, const wchar_t* value) const
{
    call(names, &INames::SetInfo, name, Bstr(label).get(), position, Bstr(value).get());
}

long Office::addType(const wchar_t* type, long color) const
{
    return korvane::fetch(types, &ITypes::Add, Bstr(type).get(), color, 3L);
}

void Office::updateType(long id, const wchar_t* type, long color) const
{
    EXPECT_EQ(id, korvane::fetch(types, &ITypes::Update, id, Bstr(type).get(), color, 3L));
}

std::vector<long> Office::members(const ComPtr<INames>& items, long group)
{
    return idsOf(items, DIID_INamesEvents, group);
}

std::vector<long> Office::members(const ComPtr<ITypes>& items, long group)
{
    return idsOf(items, DIID_ITypesEvents, group);
}

Lines Office::logins() const
{
    const Listener::Subscription listener(accounts, DIID_IAccountsEvents);
    EXPECT_TRUE(korvane::fetch(accounts, &IAccounts::Load));
    return listener->events();
}

std::vector<long> Office::lookup(const wchar_t* login) const
{
    long id = 71;
    long role = 72;
    const long name = korvane::fetch(accounts, &IAccounts::Lookup, Bstr(login).get(), &id, &role);
    return {id, role, name};
}

long Office::addAccount(const wchar_t* login, long name, long role) const
{
    return korvane::fetch(accounts, &IAccounts::Add, Bstr(login).get(), role, Variant(name).get());
}

void Office::attach(long name, const wchar_t* login) const
{
    EXPECT_TRUE(korvane::fetch(accounts, &IAccounts::Attach, name, Bstr(login).get()));
}

bool Office::removeAccount(const wchar_t* login) const
{
    return korvane::fetch(accounts, &IAccounts::Remove, Bstr(login).get());
}

long Office::leave(long name, const Note& note) const
{
    return korvane::fetch(messages, &IMessages::Add, name, note.time, Bstr(note.about).get(),
                          Bstr(note.phone).get(), Bstr(note.contact).get(), note.kind);
}

Note Office::read(long message) const
{
    Note result;
    Bstr from;
    Bstr phone;
    Bstr contact;
    Bstr about;
    VARIANT_BOOL wasRead = VARIANT_FALSE;
    call(messages, &IMessages::Fetch, message, from.inOut(), &result.time, phone.inOut(), contact.inOut(),
         about.inOut(), &result.kind, &wasRead);
    return {text(from),
            result.time,
            text(phone),
            text(contact),
            text(about),
            result.kind,
            wasRead != VARIANT_FALSE};
}

Lines Office::messagesFor(long name) const
{
    const Listener::Subscription listener(messages, DIID_IMessagesEvents);
    EXPECT_TRUE(korvane::fetch(messages, &IMessages::LoadFor, name, -1L));
    return listener->events();
}

OfficeTest::OfficeTest()
{
    sql(setUp);
    office.emplace(open());
    manager.emplace(open(L"manager"));
    user.emplace(open(L"user"));
}

void OfficeTest::TearDown()
{
    office.reset();
    manager.reset();
    user.reset();
    ActivityTest::TearDown();
}

std::wstring OfficeTest::masterData() const
{
    return sqlText(
        "SELECT group_concat(line, x'0a') FROM ("
        " SELECT concat_ws(',', 'group', id, name, flags, position) AS line FROM groups"
        " UNION ALL SELECT concat_ws(',', 'name', id, name, color, account, 'role', role, sync_login) FROM "
        "names"
        " UNION ALL SELECT concat_ws(',', 'type', id, name, color, flags) FROM types"
        " UNION ALL SELECT concat_ws(',', 'member', group_id, name_id, position) FROM group_names"
        " UNION ALL SELECT concat_ws(',', 'of group', group_id, type_id, position) FROM group_types"
        " UNION ALL SELECT concat_ws(',', 'account', id, login, role) FROM accounts"
        " UNION ALL SELECT concat_ws(',', 'info', name_id, label, position, value) FROM info"
        " UNION ALL SELECT concat_ws(',', 'message', id, name_id, about, was_read) FROM messages)");
}

} // namespace korvane::store::test
