#include "tests/masterdata/ListEditorModel.h"

#include "tests/support/ComRules.h"

#include <algorithm>

namespace korvane::test
{

ListEditorModel::ListEditorModel(bool names, long ofOperation, long defaultColor)
    : operation(ofOperation), names_(names), defaultColor_(defaultColor)
{
    items_ = {{5, {L"Anna", 0x0000EE, {group}, L"anna"}},
              {6, {L"Ben", 0, {group}, {}}},
              {8, {L"Emil", 0, {group, 5}, {}}},
              {7, {L"Cleo", 0x123456, {5}, {}}},
              {9, {L"Dora", -1, {5}, {}}}};
    if (!names)
        items_[5].mailbox.clear();
    accounts_ = {{L"anna", {2, 5}}, {L"guest", {7, 8}}};
}

void ListEditorModel::storeInto(RecordingData& data) const
{
    data.names.clear();
    data.types.clear();
    data.accounts.clear();
    for (const auto& [id, item] : items_)
        for (const long each : item.groups)
        {
            data.names.push_back({id, item.text, each, item.color, 2, item.mailbox});
            data.types.push_back({id, item.text, item.color, each});
        }
    long id = 30;
    for (const auto& [login, account] : accounts_)
        data.accounts.push_back({id++, login, account.role, account.nameId});
}

namespace
{

std::string lineOf(long id, const std::wstring& text, long color, long of, const std::wstring& mailbox)
{
    return shown(id) + ' ' + narrow(text) + ' ' + shown(color) + ' ' + shown(of) + ' ' + narrow(mailbox);
}

} // namespace

std::vector<std::string> ListEditorModel::storedIn(const RecordingData& data, bool names)
{
    std::vector<std::string> lines;
    if (names)
    {
        for (const Name& name : data.names)
            lines.push_back(lineOf(name.id, name.text, name.color, name.group, name.mailbox));
        for (const auto& account : data.accounts)
            lines.push_back(narrow(account.login) + ' ' + shown(account.role) + ' ' + shown(account.nameId));
    }
    else
        for (const Type& type : data.types)
            lines.push_back(lineOf(type.id, type.text, type.color, type.group, {}));
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::vector<std::string> ListEditorModel::stored() const
{
    std::vector<std::string> lines;
    for (const auto& [id, item] : items_)
    {
        for (const long each : item.groups)
            lines.push_back(lineOf(id, item.text, item.color, each, item.mailbox));
        if (item.groups.empty())
            lines.push_back(lineOf(id, item.text, item.color, inNoGroup, item.mailbox));
    }
    if (names_)
        for (const auto& [login, account] : accounts_)
            lines.push_back(narrow(login) + ' ' + shown(account.role) + ' ' + shown(account.nameId));
    std::sort(lines.begin(), lines.end());
    return lines;
}

void ListEditorModel::open()
{
    startNew();
    refresh();
}

void ListEditorModel::startNew()
{
    held = {0, {}, held.color, -1, {}, false};
    half_ = 0;
    known_ = {};
    knownLogin_.clear();
    changed_ = false;
}

void ListEditorModel::refresh()
{
    held.color = held.color < 1 ? defaultColor_ : held.color;
    listed_.clear();
    for (const auto& [id, item] : items_)
        if (operation != 1 ? item.groups.contains(group)
                           : !item.groups.contains(group) && (!names_ || !item.groups.empty()))
            listed_.insert(id);
}

void ListEditorModel::changeByAnother(RecordingData& data)
{
    items_[8].text = L"Emilie";
    for (Name& name : data.names)
        name.text = name.id == 8 ? L"Emilie" : name.text;
    for (Type& type : data.types)
        type.text = type.id == 8 ? L"Emilie" : type.text;
}

bool ListEditorModel::select(long id, bool yes, bool fails)
{
    if (id == held.id)
        return false;
    const bool asked = changed_;
    if (asked && !yes)
        return true;
    if (id == 0)
        startNew();
    else if (!fails)
    {
        const Item& item = items_.at(id);
        held = {id, item.text, item.color, -1, {}, false};
        knownLogin_.clear();
        lent_ = false;
        for (const auto& [login, account] : accounts_)
            if (account.nameId == id)
            {
                held.login = knownLogin_ = login;
                held.role =
                    std::count(std::begin(roles), std::end(roles), account.role) > 0 ? account.role : -1;
            }
        if (!item.mailbox.empty())
        {
            held.sync = true;
            held.login = item.mailbox;
        }
        half_ = 0;
        changed_ = false;
    }
    return asked;
}

bool ListEditorModel::isRefused() const
{
    if (operation == 2)
        return held.id == 0;
    if (!names_)
        return false;
    if (held.text.empty())
        return true;
    if (operation == 1 && held.id != 0)
        return false;
    const bool hasLogin = !held.login.empty();
    return (held.sync && !hasLogin) || (held.role != -1 && !hasLogin) ||
           (hasLogin && held.role == -1 && !held.sync);
}

ListEditorModel::Step ListEditorModel::joining(long& id)
{
    return {names_ ? "Names.AddToGroup" : "Types.AddToGroup",
            [this, &id] { items_.at(id).groups.insert(group); }};
}

void ListEditorModel::addLogin(std::vector<Step>& steps, long& id, bool exists)
{
    steps.emplace_back(exists ? "Accounts.Attach" : "Accounts.Add", [this, &id, exists] {
        for (auto& [login, account] : accounts_)
            if (account.nameId == id)
                account.nameId = 0;
        accounts_[held.login].nameId = id;
        lent_ = knownLogin_ == held.login ? lent_ : exists;
        knownLogin_ = held.login;
    });
}

void ListEditorModel::removeLogin(std::vector<Step>& steps, long& id)
{
    if (knownLogin_.empty())
        return;
    steps.emplace_back("Accounts.Detach", [this, &id] {
        for (auto& [login, account] : accounts_)
            if (account.nameId == id)
                account.nameId = 0;
        if (lent_)
            knownLogin_.clear();
    });
    if (!lent_)
        steps.emplace_back("Accounts.Remove", [this] {
            accounts_.erase(knownLogin_);
            knownLogin_.clear();
        });
}

std::vector<ListEditorModel::Step> ListEditorModel::rights(long& id)
{
    return {{"Names.SetSyncLogin",
             [this, &id] {
                 if (items_.contains(id))
                     items_[id].mailbox = held.sync ? held.login : L"";
             }},
            {"Names.SetRole", [this, &id] {
                 for (auto& [login, account] : accounts_)
                     if (id != 0 && account.nameId == id)
                         account.role = held.role;
             }}};
}

std::vector<ListEditorModel::Step> ListEditorModel::creation()
{
    const std::string collection = names_ ? "Names" : "Types";
    std::vector<Step> steps;
    if (half_ == 0)
    {
        knownLogin_.clear();
        steps.emplace_back(collection + ".Add", [this] {
            half_ = nextId_++;
            items_[half_] = known_ = {held.text, held.color, {}, {}};
        });
    }
    else if (known_.text != held.text || known_.color != held.color)
        steps.emplace_back(collection + ".Update", [this] {
            items_[half_].text = known_.text = held.text;
            items_[half_].color = known_.color = held.color;
        });
    if (names_)
    {
        if (held.login.empty())
            removeLogin(steps, half_);
        else
            addLogin(steps, half_, accounts_.contains(held.login));
        for (Step& each : rights(half_))
            steps.push_back(std::move(each));
    }
    steps.push_back(joining(half_));
    return steps;
}

std::vector<ListEditorModel::Step> ListEditorModel::change()
{
    std::vector<Step> steps;
    if (names_)
    {
        const bool exists = !held.login.empty() && accounts_.contains(held.login);
        if (exists || (!held.login.empty() && held.role != -1))
            addLogin(steps, held.id, exists);
        else if (held.login.empty())
            removeLogin(steps, held.id);
    }
    steps.emplace_back(names_ ? "Names.Update" : "Types.Update", [this] {
        if (items_.contains(held.id))
        {
            items_[held.id].text = held.text;
            items_[held.id].color = held.color;
        }
    });
    if (names_)
        for (Step& each : rights(held.id))
            steps.push_back(std::move(each));
    return steps;
}

ListEditorModel::Ending ListEditorModel::confirm(const std::string& failing)
{
    hasCompleted = false;
    if (isRefused())
        return Ending::refused;
    std::vector<Step> steps;
    if (names_ && !held.login.empty())
        steps.emplace_back("Accounts.Lookup", [] {});
    const bool completes = operation == 1 && held.id == 0 && half_ != 0;
    std::vector<Step> writes;
    if (operation == 2)
        writes.emplace_back(names_ ? "Names.RemoveFromGroup" : "Types.RemoveFromGroup",
                            [this] { items_.at(held.id).groups.erase(group); });
    else if (operation == 3)
        writes = change();
    else if (held.id != 0)
        writes.push_back(joining(held.id));
    else
        writes = creation();
    for (Step& each : writes)
        steps.push_back(std::move(each));
    for (const auto& [name, perform] : steps)
    {
        if (name == failing)
            return Ending::failed;
        perform();
    }
    hasCompleted = completes;
    startNew();
    return Ending::saved;
}

} // namespace korvane::test
