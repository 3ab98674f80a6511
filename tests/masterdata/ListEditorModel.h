// What a list editor is to hold and to store, told step by step: where a step fails, what came before it stays.
#pragma once

#include "tests/masterdata/ListEditor.h"

#include <map>
#include <set>

namespace korvane::test
{

class ListEditorModel
{
public:
    static constexpr long group = 4;
    static constexpr long roles[]{1, 2, 3, -1};

    enum class Ending
    {
        saved,
        failed, ///< by the data layer
        refused ///< by the dialog
    };

    struct Counts
    {
        int endings[3] = {};
        int questions = 0;
        int completed = 0; ///< items that had been half made
    };

    struct Held
    {
        long id = 0;
        std::wstring text;
        long color = 0;
        long role = -1;
        std::wstring login;
        bool sync = false;
    };

    ListEditorModel() = default;
    ListEditorModel(bool names, long ofOperation, long defaultColor);

    void storeInto(RecordingData& data) const;
    static std::vector<std::string> storedIn(const RecordingData& data, bool names);
    std::vector<std::string> stored() const;

    void open();
    template <class Value> void edit(Value& field, const Value& value)
    {
        field = value;
        changed_ = true;
    }
    /// Another user renames an item.
    void changeByAnother(RecordingData& data);
    void refresh();
    bool asksBefore(long id) const { return changed_ && id != held.id; }
    /// Whether the user is asked.
    bool select(long id, bool yes, bool fails);
    Ending confirm(const std::string& failing);

    bool isListed(long id) const { return listed_.contains(id); }

    long operation = 0;
    Held held;
    bool hasCompleted = false; ///< the last confirmation

private:
    struct Item
    {
        std::wstring text;
        long color = 0;
        std::set<long> groups;
        std::wstring mailbox;
    };
    struct Account
    {
        long role = 3;
        long nameId = 0;
    };
    using Step = std::pair<std::string, std::function<void()>>;

    bool isRefused() const;
    void startNew();
    void addLogin(std::vector<Step>& steps, long& id, bool exists);
    void removeLogin(std::vector<Step>& steps, long& id);
    std::vector<Step> creation();
    std::vector<Step> change();
    std::vector<Step> rights(long& id);
    Step joining(long& id);

    bool names_ = false;
    long defaultColor_ = 0;
    long nextId_ = 100;
    std::map<long, Item> items_;
    std::map<std::wstring, Account> accounts_;
    std::set<long> listed_;
    bool changed_ = false;
    long half_ = 0; ///< created, and still to be completed
    Item known_;    ///< what the command has read or written
    std::wstring knownLogin_;
    bool lent_ = false; ///< the account of that login was there before
};

} // namespace korvane::test
