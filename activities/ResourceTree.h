// The tree of groups and their resources, in which the user chooses what an activity is booked for.
#pragma once

#include "framework/com/Bstr.h"
#include "framework/control/TreeView.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace korvane
{

class ResourceTree
{
public:
    ResourceTree(Surface surface, const Design& design);

    // What the choice is kept in.
    std::function<bool(long nameId)> hasName;
    std::function<void(long nameId, bool checked)> setName;

    void clearGroups();
    void addGroup(long id, BSTR text);
    /// Removes the resources of all groups.
    void clearNames();
    /// Adds a resource to a group, unless it is there already. Where the group is not shown, the resource has to be
    /// settled.
    void addName(long id, BSTR text, long groupId);
    /// Adds the resources that no group shows to a group.
    void settleNames(long groupId);

    /// Brings every check in line with the choice, so that a resource of several groups shows one state everywhere
    /// and a group is checked when all of its resources are.
    void showChoice();

    /// Selects a resource in a group and shows it.
    void select(long nameId, long groupId);

    TreeView tvwNames;

private:
    struct Group;

    struct Node
    {
        TreeView::Node node = nullptr;
        long id = 0;
        bool checked = false;
        Group* group = nullptr; ///< null for a group itself
    };

    struct Group : Node
    {
        std::deque<Node> names; // nodes keep their address: the tree knows them by it
    };

    struct Unsettled
    {
        long id;
        Bstr text;
    };

    static std::uint64_t key(long nameId, long groupId) noexcept;

    void toggled(TreeView::Node changed);
    void show(Node& node, bool checked);

    std::vector<std::unique_ptr<Group>> groups_;
    std::unordered_map<long, Group*> groupsById_;
    std::unordered_map<std::uint64_t, Node*> names_;
    std::vector<Unsettled> unsettled_;
};

} // namespace korvane
